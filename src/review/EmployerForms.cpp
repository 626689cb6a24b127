#include "review/EmployerForms.h"

#include "screens/ScheduleNotepad.h"

#include <algorithm>
#include <iterator>

namespace quillmere::review {

EmployerForms::EmployerForms(Database& database, std::string_view employer, std::string_view after)
    : employer(employer), employee(after)
{
    tables.push_back({"P11D", database.OpenRecordset("P11D")});
    tables.push_back({"ExtraCars", database.OpenRecordset("ExtraCars")});
    for (const NotepadMember& notepad : Notepads())
        tables.push_back({notepad.name, database.OpenRecordset(notepad.name)});
    for (Table& table : tables)
        Start(table, after);
}

/// Stands on the record of `after`, or on the first of the employer where there is none such.
void EmployerForms::Start(Table& table, std::string_view after) const
{
    Recordset& records = table.records;
    records.Index("IndKey");
    if (!after.empty()) {
        records.Seek(employer, after);
        if (!records.NoMatch())
            return;
    }
    records.MoveFirstOf(employer);
}

bool EmployerForms::HasRecord(const Table& table) const
{
    return !table.records.AtEnd() && table.records.Field("EmployerName") == employer;
}

bool EmployerForms::Next()
{
    Table& forms = tables.front();
    // Behind the one who was looked at last; his record may have gone meanwhile.
    while (HasRecord(forms) && (begun || !employee.empty()) && forms.records.Field("EmployeeName") <= employee)
        forms.records.MoveNext();
    begun = true;
    forms.isOfEmployee = HasRecord(forms);
    if (!forms.isOfEmployee)
        return false;
    employee = forms.records.Field("EmployeeName");
    for (auto table = std::next(tables.begin()); table != tables.end(); ++table)
        Follow(*table);
    return true;
}

/// Moves on to the employee's record; before the next one's if he has none.
void EmployerForms::Follow(Table& table) const
{
    while (HasRecord(table) && table.records.Field("EmployeeName") < employee)
        table.records.MoveNext();
    table.isOfEmployee = HasRecord(table) && table.records.Field("EmployeeName") == employee;
}

std::string_view EmployerForms::Field(std::string_view table, std::string_view field) const
{
    if (tables[asked].name != table) {
        const auto found = std::ranges::find(tables, table, &Table::name);
        if (found == tables.end())
            return {};
        asked = static_cast<std::size_t>(found - tables.begin());
    }
    return tables[asked].isOfEmployee ? tables[asked].records.Field(field) : std::string_view();
}

} // namespace quillmere::review
