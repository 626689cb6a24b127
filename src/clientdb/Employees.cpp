#include "clientdb/Employees.h"

#include "clientdb/store/FormMarks.h"
#include "frame/Text.h"

#include <algorithm>
#include <fmt/ranges.h>
#include <optional>
#include <utility>

namespace quillmere {
namespace {

std::string NotMadeText(const StoreError& failure, std::string_view failedTable, const std::vector<std::string>& made)
{
    std::string text = failure.what();
    if (!failedTable.empty())
        text += fmt::format(" (table {})", failedTable);
    if (!made.empty())
        text += fmt::format("\nRecords already made: {}", fmt::join(made, ", "));
    return text;
}

void AddEmployeeRecord(Recordset& records, const TableLayout& table, const NewEmployee& employee, std::string_view name,
                       std::span<const RecordText> texts)
{
    records.AddNew();
    records.SetField("EmployerName", employee.employer);
    records.SetField("EmployeeName", name);
    records.SetField("Name", JoinedName(employee.employer, name));
    if (table.name == "P11D")
        records.SetField("PAYEBox", employee.payeReference);
    if (table.name == "P11D" || table.name == "ExtraCars") {
        records.SetField("FirstName", employee.firstName);
        records.SetField("Surname", employee.surname);
    }
    for (const RecordText& text : texts)
        if (text.table == table.name)
            records.SetField(text.field, text.text);
    records.Update();
}

/// False if the employer has a record already.
bool AddEmployerRecord(Recordset& records, const TableLayout& table, const NewEmployee& employee)
{
    records.Index("PrimaryKey");
    records.Seek(employee.employer);
    if (!records.NoMatch())
        return false;
    records.AddNew();
    records.SetField("EmployerName", employee.employer);
    if (table.name == "P11DB") {
        records.SetField("EmployerReference", employee.payeReference);
        records.SetField("EmployerAdd1", employee.employer);
    }
    records.Update();
    return true;
}

bool HasRecord(Database& database, std::string_view table, std::string_view employer, std::string_view employee)
{
    Recordset records = database.OpenRecordset(table);
    if (FindTable(table).level == TableLevel::Employer) {
        records.Index("PrimaryKey");
        records.Seek(employer);
    } else {
        records.Index("IndKey");
        records.Seek(employer, employee);
    }
    return !records.NoMatch();
}

/// Those of the tables in which there is such a record after all; none of them if the batch could not be committed and
/// nobody can look.
std::vector<std::string> Stored(Database& database, const std::vector<std::string>& made, bool isLost,
                                std::string_view employer, std::string_view employee)
{
    try {
        std::vector<std::string> stored;
        for (const std::string& table : made)
            if (HasRecord(database, table, employer, employee))
                stored.push_back(table);
        return stored;
    } catch (const StoreError&) {
        return isLost ? std::vector<std::string>() : made;
    }
}

} // namespace

std::string EmployeeName(std::string_view firstName, std::string_view surname)
{
    return Trim(std::string(firstName) + " " + std::string(surname));
}

std::string JoinedName(std::string_view employer, std::string_view employee)
{
    return std::string(employer) + " " + std::string(employee);
}

std::vector<std::string> EveryEmployer(Database& database)
{
    std::vector<std::string> employers = database.EmployersInOrder("P11D");
    std::erase_if(employers, [](const std::string& name) { return name.empty() || name == SampleEmployer; });
    return employers;
}

std::vector<std::string> ListEmployers(Database& database)
{
    std::vector<std::string> listed = EveryEmployer(database);
    // Kept: the list has room for so many, and one more is a fault of the program and not a longer list.
    if (listed.size() > EmployerNameSlots)
        throw TooManyEmployers(fmt::format("There are more than {} employers", EmployerNameSlots));
    return listed;
}

std::vector<std::string> ListEmployees(Database& database, std::string_view employer)
{
    std::vector<std::string> names;
    Recordset records = database.OpenRecordset("P11D");
    records.Fetch({"EmployeeName"});
    for (records.MoveFirstOf(employer); !records.AtEnd(); records.MoveNext())
        names.emplace_back(records.Field("EmployeeName"));
    return names;
}

bool EmployerExists(Database& database, std::string_view employer)
{
    Recordset records = database.OpenRecordset("P11D");
    records.MoveFirstOf(employer);
    return !records.AtEnd();
}

bool EmployeeExists(Database& database, std::string_view employer, std::string_view employee)
{
    Recordset records = database.OpenRecordset("P11D");
    records.Fetch({"EmployeeName"});
    records.Index("IndKey");
    records.Seek(employer, employee);
    return !records.NoMatch();
}

std::string FirstPayeReference(Database& database, std::string_view employer)
{
    Recordset records = database.OpenRecordset("P11D");
    records.Fetch({"PAYEBox"});
    for (records.MoveFirstOf(employer); !records.AtEnd(); records.MoveNext())
        if (const std::string_view reference = records.Field("PAYEBox"); !reference.empty())
            return std::string(reference);
    return {};
}

RecordsNotMade::RecordsNotMade(const StoreError& failure, std::string_view failedTable,
                               std::vector<std::string> madeBefore)
    : StoreError(failure.Number(), NotMadeText(failure, failedTable, madeBefore), failure.Statement()),
      made(std::move(madeBefore))
{
}

void EmployeeRecords::WillMake(const NewEmployee& employee)
{
    inHand = NewEmployeeTables().front()->name;
    database.WillAdd(NewEmployeeTables());
    for (const TableLayout* const layout : NewEmployeeTables())
        if (layout->level == TableLevel::Employer)
            database.WillSeek(layout->name, employee.employer);
}

void EmployeeRecords::Make(const NewEmployee& employee, std::span<const RecordText> texts)
{
    const std::string name = EmployeeName(employee.firstName, employee.surname);
    const bool isNewEmployer = employers.insert(employee.employer).second;
    made.clear();
    for (const TableLayout* const layout : NewEmployeeTables()) {
        inHand = layout->name;
        if (layout->level != TableLevel::Employer)
            AddEmployeeRecord(At(*layout), *layout, employee, name, texts);
        else if (!isNewEmployer || !AddEmployerRecord(At(*layout), *layout, employee))
            continue;
        made.push_back(layout->name);
    }
    inHand = {};
}

void EmployeeRecords::Change(std::string_view employer, std::string_view employee, std::span<const RecordText> texts)
{
    for (const TableLayout* const layout : NewEmployeeTables()) {
        const auto isOf = [&](const RecordText& text) { return text.table == layout->name; };
        if (std::ranges::none_of(texts, isOf))
            continue;
        Recordset& records = At(*layout);
        records.Index("IndKey");
        records.Seek(employer, employee);
        records.Edit();
        for (const RecordText& text : texts)
            if (isOf(text))
                records.SetField(text.field, text.text);
        records.Update();
    }
}

Recordset& EmployeeRecords::At(const TableLayout& table)
{
    const auto known = tables.find(table.name);
    return known != tables.end() ? known->second
                                 : tables.emplace(table.name, database.OpenRecordset(table.name)).first->second;
}

void CreateEmployee(Database& database, const NewEmployee& employee)
{
    std::optional<EmployeeRecords> records(std::in_place, database);
    try {
        WriteAtOnce(database, [&] {
            records.emplace(database).WillMake(employee);
            records->Make(employee);
        });
    } catch (const StoreError& failure) {
        const bool isLost = dynamic_cast<const BatchLost*>(&failure) != nullptr;
        const std::vector<std::string> made(records->Made().begin(), records->Made().end());
        throw RecordsNotMade(
            failure, records->InHand(),
            Stored(database, made, isLost, employee.employer, EmployeeName(employee.firstName, employee.surname)));
    }
}

void DeleteEmployer(Database& database, std::string_view employer)
{
    WriteBatch batch(database);
    for (const TableLayout* const layout : NewEmployeeTables()) {
        Recordset records = database.OpenRecordset(layout->name);
        for (records.MoveFirstOf(employer); !records.AtEnd(); records.MoveNext())
            records.Delete();
    }
    FormMarks(database).Forget(employer);
    batch.Commit();
}

namespace {

/// Does the work for the employee's record in each table that has one.
template<class Work>
void ForEachRecordOf(Database& database, std::string_view employer, std::string_view employee, Work work)
{
    for (const TableLayout* const layout : NewEmployeeTables())
        if (layout->level == TableLevel::Employee)
            database.WillSeek(layout->name, employer, employee);
    for (const TableLayout* const layout : NewEmployeeTables()) {
        if (layout->level != TableLevel::Employee)
            continue;
        Recordset records = database.OpenRecordset(layout->name);
        records.Fetch({"EmployeeName"});
        records.Index("IndKey");
        records.Seek(employer, employee);
        if (!records.NoMatch())
            work(records);
    }
}

} // namespace

void DeleteEmployee(Database& database, std::string_view employer, std::string_view employee)
{
    WriteAtOnce(database, [&] {
        ForEachRecordOf(database, employer, employee, [](Recordset& records) { records.Delete(); });
        FormMarks(database).Forget(employer, employee);
    });
}

void RenameEmployer(Database& database, std::string_view employer, std::string_view newName,
                    std::string_view newPayeReference)
{
    WriteBatch batch(database);
    for (const TableLayout* const layout : NewEmployeeTables()) {
        Recordset records = database.OpenRecordset(layout->name);
        if (layout->level == TableLevel::Employee)
            records.Fetch({"EmployeeName"});
        for (records.MoveFirstOf(employer); !records.AtEnd(); records.MoveNext()) {
            records.Edit();
            records.SetField("EmployerName", newName);
            if (layout->level == TableLevel::Employee)
                records.SetField("Name", JoinedName(newName, records.Field("EmployeeName")));
            if (layout->name == "P11D")
                records.SetField("PAYEBox", newPayeReference);
            if (layout->name == "P11DB") {
                records.SetField("EmployerReference", newPayeReference);
                records.SetField("EmployerAdd1", newName);
            }
            // Kept: a name that is taken is passed over; that record goes on under the old one.
            (void)records.TryUpdate();
        }
    }
    FormMarks(database).RenameEmployer(employer, newName);
    batch.Commit();
}

void RenameEmployee(Database& database, std::string_view employer, std::string_view employee, std::string_view newName)
{
    WriteAtOnce(database, [&] {
        ForEachRecordOf(database, employer, employee, [&](Recordset& records) {
            records.Edit();
            records.SetField("EmployeeName", newName);
            records.SetField("Name", JoinedName(employer, newName));
            records.Update();
        });
        FormMarks(database).RenameEmployee(employer, employee, newName);
    });
}

} // namespace quillmere
