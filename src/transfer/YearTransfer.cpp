#include "transfer/YearTransfer.h"

#include "clientdb/Employees.h"
#include "clientdb/store/TableLayouts.h"
#include "edition/Edition.h"
#include "frame/CheckedFile.h"
#include "frame/Folders.h"
#include "frame/Settings.h"
#include "frame/Text.h"

#include <cerrno>
#include <fmt/format.h>
#include <utility>

namespace quillmere {

namespace {

constexpr std::string_view BeforeEmployee = " - (";

constexpr std::string_view SingleClientError = "P11D Single Client - File Transfer error";
constexpr std::string_view ExtraCarsError = "Notepad Extra Cars - File Transfer error";
constexpr std::string_view EmployerError = "P11DB Single Client - File Transfer error";

constexpr std::string_view EmployeeNotFound = "Employee not found";
constexpr std::string_view EmployerNotFound = "Employer not found";
constexpr std::string_view RecordExists = "There is a record already. It has been left as it is.";

/// So many employees are stored with one sync.
constexpr std::size_t EmployeesOfOneSync = 200;

/// Puts the cursor on the record with the key. False if there is none.
bool Find(Recordset& records, std::string_view key)
{
    records.Seek(key);
    return !records.NoMatch();
}

LastYearRecord ReaderOf(const Recordset& records)
{
    return [&records](std::string_view field) { return records.Field(field); };
}

void Write(Recordset& records, const CarriedFields& carried)
{
    for (const CarriedField& field : carried)
        if (field.text.empty())
            records.SetNull(field.field);
        else
            records.SetField(field.field, field.text);
}

} // namespace

std::filesystem::path LastYearDatabaseOf(const std::filesystem::path& programFolder)
{
    const std::filesystem::path priorFolder = PriorProgramFolderOf(programFolder);
    const std::string clientFolder = LastYearSelectedPath(priorFolder);
    if (clientFolder.empty())
        throw FileError(priorFolder / SettingsFileName, ENOENT);
    return std::filesystem::path(clientFolder) / edition::PriorClientDatabaseName;
}

std::vector<LastYearEmployee> ListLastYearEmployees(Database& lastYear)
{
    std::vector<LastYearEmployee> employees;
    Recordset records = lastYear.OpenRecordset("P11D");
    records.Fetch({"EmployerName", "EmployeeName", "FirstName", "Surname"});
    for (records.MoveFirst(); !records.AtEnd(); records.MoveNext()) {
        LastYearEmployee listed;
        listed.employer = records.Field("EmployerName");
        if (listed.employer.empty() || listed.employer == SampleEmployer)
            continue;
        listed.employee = records.Field("EmployeeName");
        listed.firstName = records.Field("FirstName");
        listed.surname = records.Field("Surname");
        employees.push_back(std::move(listed));
    }
    return employees;
}

std::string ListText(const LastYearEmployee& employee)
{
    return employee.employer + std::string(BeforeEmployee) + employee.employee + ")";
}

LastYearEmployee ParseListText(std::string_view text)
{
    // Kept: the first " - (" parts the two names, also where it belongs to the employer's own.
    const std::size_t end = text.find(BeforeEmployee);
    if (end == std::string_view::npos)
        return {};
    LastYearEmployee parsed;
    parsed.employer = text.substr(0, end);
    std::string_view employee = text.substr(end + BeforeEmployee.size());
    if (!employee.empty())
        employee.remove_suffix(1);
    parsed.employee = employee;
    const std::size_t blank = employee.rfind(' ');
    if (blank == std::string_view::npos) {
        parsed.surname = employee;
    } else {
        parsed.surname = Trim(employee.substr(blank + 1));
        parsed.firstName = employee.substr(0, blank);
    }
    return parsed;
}

// ---- who is there this year -----------------------------------------------------------------------

std::string ExistingEmployees::Key(std::string_view employer, std::string_view employee)
{
    std::string key(employer);
    key += '\0';
    key += employee;
    return key;
}

void ExistingEmployees::Add(std::string_view employer, std::string_view employee)
{
    if (count == Room)
        throw TooManyEmployees(fmt::format("There are more than {} employees", Room));
    // Kept: the look-up ends before the last place of the list.
    if (count++ < Searched)
        found.insert(Key(employer, employee));
}

bool ExistingEmployees::Contains(std::string_view employer, std::string_view employee) const
{
    return found.contains(Key(employer, employee));
}

// ---- last year's records of a table ---------------------------------------------------------------

YearTransfer::LastYearTable::LastYearTable(Database& lastYear, std::string_view table)
    : sought(lastYear.OpenRecordset(table)), following(lastYear.OpenRecordset(table))
{
    sought.Index("PrimaryKey");
    following.Fetch({"Name"});
}

const Recordset* YearTransfer::LastYearTable::Find(std::string_view name, bool inOrder)
{
    if (inOrder && IsNext(name)) {
        follows = false;
        return &following;
    }
    if (!quillmere::Find(sought, name))
        return nullptr;
    if (inOrder)
        GoOnTo(name);
    return &sought;
}

/// True if the next record that nobody has had is the one of that name. What cannot be read is left to the Seek, which
/// says so of the record that it is true of.
bool YearTransfer::LastYearTable::IsNext(std::string_view name)
{
    if (isExhausted)
        return false;
    try {
        if (!follows) {
            following.MoveNext();
            isExhausted = following.AtEnd();
            follows = !isExhausted;
        }
        return follows && following.Field("Name") == name;
    } catch (const StoreError& failure) {
        if (failure.OutOfReach())
            throw;
        isExhausted = true;
        return false;
    }
}

/// Passes over records that are not to be transferred, such as the sample's, up to the one that has been sought. It
/// may lie before them too, so there is an end.
void YearTransfer::LastYearTable::GoOnTo(std::string_view name)
{
    constexpr int MostBetween = 16;
    for (int passed = 0; passed < MostBetween && !isExhausted; ++passed) {
        const bool found = IsNext(name);
        follows = false;
        if (found)
            return;
    }
}

// ---- the run --------------------------------------------------------------------------------------

YearTransfer::YearTransfer(const std::filesystem::path& thisYearFile, const std::filesystem::path& lastYearFile,
                           std::shared_ptr<OperationNote> note)
    : thisYear(Database::OpenDatabase(thisYearFile, OpenMode::ReadWrite, std::move(note))),
      lastYear(Database::OpenDatabase(lastYearFile, OpenMode::ReadOnly)),
      p11d(Open("P11D")),
      extraCars(Open("ExtraCars")),
      p11db(thisYear.OpenRecordset("P11DB")),
      lastYearP11DB(lastYear.OpenRecordset("P11DB")),
      addedSchedule(thisYear.OpenRecordset("P11DBNotepad1")),
      deductedSchedule(thisYear.OpenRecordset("P11DBNotepad2"))
{
    notepads.reserve(TransferTables.size());
    for (const TransferTable& row : TransferTables)
        notepads.push_back(Open(row.table));
    for (Recordset* ofEmployer : {&p11db, &lastYearP11DB, &addedSchedule, &deductedSchedule})
        ofEmployer->Index("PrimaryKey");
    Recordset& records = p11d.thisYear;
    for (records.MoveFirst(); !records.AtEnd(); records.MoveNext())
        if (const std::string_view employer = records.Field("EmployerName");
            !employer.empty() && employer != SampleEmployer)
            existing.Add(employer, records.Field("EmployeeName"));
    // Nobody is to wait for what has only been looked at.
    batch.emplace(thisYear);
}

YearTransfer::Tables YearTransfer::Open(std::string_view table)
{
    return {.thisYear = thisYear.OpenRecordset(table), .lastYear = LastYearTable(lastYear, table)};
}

bool YearTransfer::EmployeeExists(std::string_view employer, std::string_view employee) const
{
    return existing.Contains(employer, employee);
}

void YearTransfer::Transfer(const LastYearEmployee& employee, TransferMode mode, std::vector<TransferNotice>& notices)
{
    if (EmployeeExists(employee.employer, employee.employee))
        return;
    const std::size_t toldBefore = notices.size();
    noticed = &notices;
    inHand = &employee;
    if (notStored++ == 0)
        firstNotStored = employee;
    try {
        AddRecords(employee, mode);
    } catch (const BatchLost&) {
        throw;
    } catch (const StoreError&) {
        // Those before him are to be stored still.
        Commit();
        firstNotStored = employee;
        throw;
    }
    // A box may stand for an hour: nobody is to wait for the store meanwhile.
    if (notStored >= EmployeesOfOneSync || notices.size() > toldBefore)
        Commit();
}

void YearTransfer::AddRecords(const LastYearEmployee& employee, TransferMode mode)
{
    const ReadBatch reading(lastYear);
    const Keys keys{.employer = employee.employer,
                    .employee = employee.employee,
                    .name = JoinedName(employee.employer, employee.employee)};
    for (std::size_t i = 0; i < TransferTables.size(); ++i)
        AddRecord(TransferTables[i], notepads[i], keys, mode);
    AddEmployeeAndCars(employee, keys, mode);
    if (keys.employer == employerThere)
        return;
    const bool isAdded = AddEmployer(keys);
    const bool areSchedulesAdded = AddEmployerSchedule(addedSchedule, keys);
    if (AddEmployerSchedule(deductedSchedule, keys) && areSchedulesAdded && isAdded)
        employerThere = keys.employer;
}

void YearTransfer::Commit()
{
    employerThere.clear();
    batch->Commit();
    notStored = 0;
}

template<class Work>
bool YearTransfer::Attempt(std::string_view title, Work work)
{
    try {
        work();
        return true;
    } catch (const BatchLost&) {
        throw;
    } catch (const StoreError& failure) {
        if (failure.OutOfReach())
            throw;
        Notice(title, failure.what());
        // A write that fails leaves what was written before it stored; a read is to be no different.
        Commit();
        notStored = 1;
        firstNotStored = *inHand;
        return false;
    }
}

void YearTransfer::Notice(std::string_view title, std::string_view text)
{
    noticed->push_back({std::string(title.empty() ? TransferTitle : title), std::string(text)});
}

void YearTransfer::Add(Recordset& records, std::string_view title)
{
    if (!records.TryUpdate())
        Notice(title, RecordExists);
}

void YearTransfer::BeginRecord(Recordset& records, const Keys& keys)
{
    records.AddNew();
    records.SetField("EmployerName", keys.employer);
    records.SetField("EmployeeName", keys.employee);
    records.SetField("Name", keys.name);
}

template<class Find, class Rule>
std::optional<CarriedFields> YearTransfer::CarriedFrom(Find find, std::string_view title, std::string_view notFound,
                                                       Rule rule)
{
    std::optional<CarriedFields> carried = CarriedFields();
    Attempt(title, [&] {
        if (const Recordset* const record = find()) {
            carried = rule(ReaderOf(*record));
        } else {
            Notice(title, notFound);
            carried.reset();
        }
    });
    return carried;
}

void YearTransfer::AddRecord(const TransferTable& row, Tables& tables, const Keys& keys, TransferMode mode)
{
    std::optional<CarriedFields> carried = CarriedFields();
    const auto find = [&] { return tables.lastYear.Find(keys.name, mode == TransferMode::All); };
    if (!row.errorTitle.empty())
        carried = CarriedFrom(find, row.errorTitle, EmployeeNotFound, [&](const LastYearRecord& record) {
            return Carry(row.carries, record, [this]() -> const CurrencyRates& { return Rates(); });
        });
    if (!carried)
        return;
    Attempt(row.errorTitle, [&] {
        BeginRecord(tables.thisYear, keys);
        Write(tables.thisYear, *carried);
        Add(tables.thisYear, row.errorTitle);
    });
}

void YearTransfer::AddEmployeeAndCars(const LastYearEmployee& employee, const Keys& keys, TransferMode mode)
{
    const std::string_view pageTitle = mode == TransferMode::Single ? SingleClientError : std::string_view();
    const bool inOrder = mode == TransferMode::All;
    LastYearRecord pageRecord;
    CarriedFields identity;
    CarriedCars cars;
    const auto carsOf = [&](const LastYearRecord* extra) {
        return CarryCars(pageRecord ? &pageRecord : nullptr, extra);
    };
    const bool pageRead = Attempt(pageTitle, [&] {
        if (const Recordset* const found = p11d.lastYear.Find(keys.name, inOrder))
            pageRecord = ReaderOf(*found);
        if (pageRecord)
            identity = CarryIdentity(pageRecord);
        else if (mode == TransferMode::Single)
            Notice(pageTitle, EmployeeNotFound);
        cars = carsOf(nullptr);
    });
    // Without its cars the page is not made, and neither are the others, which fill the places behind them: the next
    // run finds nobody and transfers him anew.
    if (!pageRead)
        return;
    // Without those that cannot be read the others keep to their own places, and the record has its keys alone.
    Attempt(ExtraCarsError, [&] {
        LastYearRecord extraRecord;
        if (const Recordset* const found = extraCars.lastYear.Find(keys.name, inOrder))
            extraRecord = ReaderOf(*found);
        else
            Notice(ExtraCarsError, EmployeeNotFound);
        cars = carsOf(extraRecord ? &extraRecord : nullptr);
    });
    Attempt(pageTitle, [&] {
        // Kept: the employee is made even if last year's database does not have him.
        BeginRecord(p11d.thisYear, keys);
        Write(p11d.thisYear, {{"FirstName", employee.firstName}, {"Surname", employee.surname}});
        Write(p11d.thisYear, cars.p11d);
        Write(p11d.thisYear, identity);
        Add(p11d.thisYear, pageTitle);
    });
    Attempt(ExtraCarsError, [&] {
        BeginRecord(extraCars.thisYear, keys);
        Write(extraCars.thisYear, cars.extraCars);
        Add(extraCars.thisYear, ExtraCarsError);
    });
}

bool YearTransfer::AddEmployer(const Keys& keys)
{
    bool isThere = false;
    if (!Attempt(EmployerError, [&] { isThere = Find(p11db, keys.employer); }) || isThere)
        return isThere;
    const auto find = [&] { return Find(lastYearP11DB, keys.employer) ? &lastYearP11DB : nullptr; };
    const auto carried = CarriedFrom(find, EmployerError, EmployerNotFound, CarryEmployer);
    if (!carried)
        return false;
    return Attempt(EmployerError, [&] {
        p11db.AddNew();
        p11db.SetField("EmployerName", keys.employer);
        Write(p11db, *carried);
        Add(p11db, EmployerError);
    });
}

bool YearTransfer::AddEmployerSchedule(Recordset& schedule, const Keys& keys)
{
    return Attempt({}, [&] {
        if (Find(schedule, keys.employer))
            return;
        schedule.AddNew();
        schedule.SetField("EmployerName", keys.employer);
        Add(schedule, {});
    });
}

/// This year's currencies, read when the first loan needs them.
const CurrencyRates& YearTransfer::Rates()
{
    if (!rates) {
        Recordset currencies = thisYear.OpenRecordset("HNotepad2");
        currencies.MoveFirst();
        rates = currencies.AtEnd() ? CurrencyRates{} : ReadCurrencyRates(ReaderOf(currencies));
    }
    return *rates;
}

} // namespace quillmere
