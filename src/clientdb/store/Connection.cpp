#include "clientdb/store/Connection.h"

#include "clientdb/store/ChangeLog.h"
#include "clientdb/store/StoreFaults.h"

#include <fmt/format.h>
#include <utility>

namespace quillmere {
namespace {

/// No record is longer than the longest texts that the boxes of a screen take, all together; a change of the history
/// holds it twice.
constexpr int MostBytesOfRecord = 4'194'304;

/// How long a statement waits for another program's lock, in milliseconds.
constexpr int BusyTimeout = 2000;

StoreFaultHook& FaultHook()
{
    static StoreFaultHook hook;
    return hook;
}

} // namespace

StoreError::StoreError(int errorNumber, const std::string& text, std::string statementText)
    : Failure(errorNumber, text), statement(std::move(statementText))
{
}

bool StoreError::OutOfReach() const
{
    switch (Number() & 0xff) {
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
    case SQLITE_READONLY:
    case SQLITE_CANTOPEN:
        return true;
    default:
        return false;
    }
}

bool StoreError::IsDamage() const
{
    const long kind = Number() & 0xff;
    // The last is what the store says of a head that speaks of formats that it does not know.
    return kind == SQLITE_NOTADB || kind == SQLITE_CORRUPT || kind == SQLITE_ERROR;
}

void SetStoreFaultHook(StoreFaultHook hook)
{
    FaultHook() = std::move(hook);
}

int FaultOf(const char* statement)
{
    const StoreFaultHook& hook = FaultHook();
    return hook ? hook(statement) : SQLITE_OK;
}

std::string Quoted(std::string_view name)
{
    return fmt::format("[{}]", name);
}

std::string PathText(const std::filesystem::path& path)
{
    const std::u8string text = path.u8string();
    return {text.begin(), text.end()};
}

// ---- one run of a statement ---------------------------------------------------------------------

Run::Run(Database::Connection& of, sqlite3_stmt* prepared) : connection(of), statement(prepared)
{
}

Run& Run::Bind(std::string_view text)
{
    // A null pointer would bind null, and an empty text is not null.
    sqlite3_bind_text64(statement, ++parameter, text.data() == nullptr ? "" : text.data(), text.size(), SQLITE_STATIC,
                        SQLITE_UTF8);
    return *this;
}

Run& Run::Bind(std::int64_t number)
{
    sqlite3_bind_int64(statement, ++parameter, number);
    return *this;
}

Run& Run::BindBytes(std::string_view bytes)
{
    sqlite3_bind_blob64(statement, ++parameter, bytes.data() == nullptr ? "" : bytes.data(), bytes.size(),
                        SQLITE_STATIC);
    return *this;
}

Run& Run::BindNull()
{
    sqlite3_bind_null(statement, ++parameter);
    return *this;
}

bool Run::Step()
{
    if (!started) {
        started = true;
        if (const int fault = FaultOf(sqlite3_sql(statement)); fault != SQLITE_OK)
            throw StoreError(fault, sqlite3_errstr(fault), sqlite3_sql(statement));
    }
    const int result = sqlite3_step(statement);
    if (result == SQLITE_ROW)
        return true;
    if (result != SQLITE_DONE)
        Fail(result);
    return false;
}

int Run::Change()
{
    Step();
    return sqlite3_changes(connection.handle);
}

void Run::FailOfText(int column) const
{
    throw StoreError(SQLITE_TOOBIG,
                     fmt::format("{} has a text that is too long.", sqlite3_column_name(statement, column)),
                     sqlite3_sql(statement));
}

void Run::Fail(int result)
{
    const int extended = sqlite3_extended_errcode(connection.handle);
    throw StoreError(extended != SQLITE_OK ? extended : result, sqlite3_errmsg(connection.handle),
                     sqlite3_sql(statement));
}

// ---- the statements of a table ------------------------------------------------------------------

TableStatements::TableStatements(Database::Connection& of, const TableLayout& tableLayout)
    : connection(of),
      layout(tableLayout),
      fields(FieldsOf(tableLayout)),
      employerColumn(fields.Find("EmployerName")),
      employeeColumn(fields.Find("EmployeeName")),
      table(Quoted(tableLayout.name))
{
}

template<class MakeText>
sqlite3_stmt* TableStatements::Shape(char kind, std::span<const std::uint16_t> columns, MakeText text)
{
    key.assign(1, kind);
    if (!columns.empty())
        key.append(reinterpret_cast<const char*>(columns.data()), columns.size_bytes());
    const auto [found, isNew] = shapes.try_emplace(key, nullptr);
    if (isNew)
        try {
            found->second = connection.Prepare(text());
        } catch (...) {
            shapes.erase(found);
            throw;
        }
    return found->second;
}

std::string TableStatements::Columns(std::span<const std::uint16_t> columns, bool all, std::string_view between) const
{
    std::string text;
    const std::size_t count = all ? fields.Count() : columns.size();
    for (std::size_t i = 0; i < count; ++i) {
        if (i > 0)
            text += between;
        text += Quoted(fields.All()[all ? i : columns[i]].name);
    }
    return text.empty() ? "NULL" : text;
}

sqlite3_stmt* TableStatements::Seek(const TableIndex& index, std::span<const std::uint16_t> columns, bool all)
{
    const bool twoParts = !index.part2.empty();
    const char kind = all ? (twoParts ? 'K' : 'k') : (twoParts ? 'S' : 's');
    return Shape(kind, columns, [&] {
        const std::string text =
            fmt::format("SELECT rowid,{} FROM {} WHERE [{}]=?", Columns(columns, all, ","), table, index.part1);
        return twoParts ? fmt::format("{} AND [{}]=?", text, index.part2) : text;
    });
}

sqlite3_stmt* TableStatements::Read(std::span<const std::uint16_t> columns, bool all)
{
    return Shape(all ? 'R' : 'r', columns,
                 [&] { return fmt::format("SELECT {} FROM {} WHERE rowid=?", Columns(columns, all, ","), table); });
}

sqlite3_stmt* TableStatements::ReadNumbered()
{
    return Shape('n', {},
                 [&] { return fmt::format("SELECT rowid,{} FROM {} WHERE rowid=?", Columns({}, true, ","), table); });
}

sqlite3_stmt* TableStatements::ReadList(std::span<const std::uint16_t> columns, bool all)
{
    // A cross join is never turned round, so the rows come in the order of the list.
    return Shape(all ? 'L' : 'l', columns, [&] {
        return fmt::format("SELECT {0}.rowid,{1} FROM json_each(?) AS rowids CROSS JOIN {0} ON {0}.rowid=rowids.value",
                           table, Columns(columns, all, ","));
    });
}

sqlite3_stmt* TableStatements::ReadAfter(std::span<const std::uint16_t> columns, bool all)
{
    return Shape(all ? 'A' : 'a', columns, [&] {
        return fmt::format("SELECT rowid,{} FROM {} WHERE rowid>? ORDER BY rowid", Columns(columns, all, ","), table);
    });
}

sqlite3_stmt* TableStatements::Order(const TableIndex* index, bool ofEmployer)
{
    const int parts = index == nullptr ? 0 : index->part2.empty() ? 1 : 2;
    return Shape(static_cast<char>('0' + parts + (ofEmployer ? 3 : 0)), {}, [&] {
        return fmt::format("SELECT rowid FROM {}{}{}{}", table, ofEmployer ? " WHERE [EmployerName]=?" : "",
                           parts > 0 ? fmt::format(" ORDER BY [{}]", index->part1) : "",
                           parts > 1 ? fmt::format(",[{}]", index->part2) : "");
    });
}

sqlite3_stmt* TableStatements::Exists()
{
    return Shape('e', {}, [&] { return fmt::format("SELECT 1 FROM {} WHERE rowid=?", table); });
}

sqlite3_stmt* TableStatements::Insert(std::span<const std::uint16_t> columns)
{
    return Shape('i', columns, [&] {
        if (columns.empty())
            return fmt::format("INSERT INTO {} DEFAULT VALUES", table);
        const std::vector<std::string_view> places(columns.size(), "?");
        return fmt::format("INSERT INTO {}({}) VALUES({})", table, Columns(columns, false, ","),
                           fmt::join(places, ","));
    });
}

sqlite3_stmt* TableStatements::InsertWhole()
{
    return Shape('I', {}, [&] {
        const std::vector<std::string_view> places(fields.Count() + 1, "?");
        return fmt::format("INSERT INTO {}(rowid,{}) VALUES({})", table, Columns({}, true, ","),
                           fmt::join(places, ","));
    });
}

sqlite3_stmt* TableStatements::Update(std::span<const std::uint16_t> columns)
{
    return Shape('u', columns, [&] {
        return fmt::format("UPDATE {} SET {}=? WHERE rowid=?", table, Columns(columns, false, "=?,"));
    });
}

sqlite3_stmt* TableStatements::Delete()
{
    return Shape('d', {}, [&] { return fmt::format("DELETE FROM {} WHERE rowid=?", table); });
}

sqlite3_stmt* TableStatements::Employers()
{
    return Shape('E', {}, [&] {
        return fmt::format("SELECT [EmployerName],min(rowid) FROM {} WHERE [EmployerName] IS NOT NULL "
                           "GROUP BY [EmployerName] ORDER BY 2",
                           table);
    });
}

// ---- the connection -----------------------------------------------------------------------------

Database::Connection::Connection(const std::filesystem::path& path, int flags)
    : file(path), log(std::make_unique<ChangeLog>(*this))
{
    const int result =
        sqlite3_open_v2(PathText(path).c_str(), &handle, flags | SQLITE_OPEN_NOMUTEX | SQLITE_OPEN_EXRESCODE, nullptr);
    if (result != SQLITE_OK) {
        const std::string words = handle != nullptr ? sqlite3_errmsg(handle) : sqlite3_errstr(result);
        Close();
        throw StoreError(result, PathText(path) + ": " + words, "");
    }
    sqlite3_busy_timeout(handle, BusyTimeout);
    sqlite3_limit(handle, SQLITE_LIMIT_LENGTH, 2 * MostBytesOfRecord);
    sqlite3_db_config(handle, SQLITE_DBCONFIG_ENABLE_TRIGGER, 0, nullptr);
    sqlite3_db_config(handle, SQLITE_DBCONFIG_ENABLE_VIEW, 0, nullptr);
    sqlite3_db_config(handle, SQLITE_DBCONFIG_DQS_DML, 0, nullptr);
    sqlite3_db_config(handle, SQLITE_DBCONFIG_DQS_DDL, 0, nullptr);
    sqlite3_db_config(handle, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
    sqlite3_db_config(handle, SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
}

Database::Connection::~Connection()
{
    Close();
}

void Database::Connection::Close()
{
    for (const auto& [text, statement] : own)
        sqlite3_finalize(statement);
    own.clear();
    for (sqlite3_stmt* statement = nullptr;
         handle != nullptr && (statement = sqlite3_next_stmt(handle, nullptr)) != nullptr;)
        sqlite3_finalize(statement);
    tables.clear();
    sqlite3_close(handle);
    handle = nullptr;
}

void Database::Connection::RequireOpen() const
{
    if (handle == nullptr)
        throw StoreError(SQLITE_MISUSE, "The database has been closed.", "");
}

TableStatements& Database::Connection::Statements(const TableLayout& layout)
{
    for (const auto& statements : tables)
        if (&statements->Layout() == &layout)
            return *statements;
    return *tables.emplace_back(std::make_unique<TableStatements>(*this, layout));
}

sqlite3_stmt* Database::Connection::Prepare(const std::string& text)
{
    RequireOpen();
    sqlite3_stmt* statement = nullptr;
    const int result = sqlite3_prepare_v3(handle, text.c_str(), static_cast<int>(text.size()) + 1,
                                          SQLITE_PREPARE_PERSISTENT, &statement, nullptr);
    if (result != SQLITE_OK)
        throw StoreError(result, sqlite3_errmsg(handle), text);
    return statement;
}

sqlite3_stmt* Database::Connection::Own(const std::string& text)
{
    sqlite3_stmt*& statement = own[text];
    if (statement == nullptr)
        statement = Prepare(text);
    return statement;
}

void Database::Connection::Execute(const std::string& text)
{
    Run run(*this, Own(text));
    while (run.Step()) {
    }
}

std::int64_t Database::Connection::Number(const std::string& text)
{
    Run run(*this, Own(text));
    return run.Step() ? run.Number(0) : 0;
}

std::int64_t Database::Connection::Pragma(const std::string& text)
{
    sqlite3_stmt* statement = Prepare(text);
    struct Finalizer {
        sqlite3_stmt* of;
        ~Finalizer() { sqlite3_finalize(of); }
    } finalizer{statement};
    Run run(*this, statement);
    return run.Step() ? run.Number(0) : 0;
}

std::int64_t Database::Connection::Writes() const
{
    return sqlite3_total_changes64(handle) - log->OwnChanges();
}

void Database::Connection::BeforeWrite()
{
    RequireOpen();
    if (InTransaction())
        return;
    log->Lost();
    try {
        Execute("BEGIN IMMEDIATE");
    } catch (const StoreError& failure) {
        if (batches > 0)
            throw BatchLost(failure);
        throw;
    }
    isSingleWrite = batches == 0;
}

void Database::Connection::AfterWrite()
{
    if (isSingleWrite)
        CommitWithHistory();
    else if (batches == 0)
        log->Store();
}

void Database::Connection::AfterFailedWrite(const StoreError& failure)
{
    if (batches == 0)
        return DropSingleWrite();
    // A full disk, for one, takes the transaction along with the write.
    if (!InTransaction())
        throw BatchLost(failure);
    log->StoreOrGiveUp();
    try {
        Commit();
    } catch (const StoreError&) {
        // The failure of the write is the one that is told; Commit has left no transaction open.
        throw BatchLost(failure);
    }
}

void Database::Connection::DropSingleWrite()
{
    if (isSingleWrite)
        RollBack();
}

void Database::Connection::Commit()
{
    if (handle == nullptr || !InTransaction())
        return;
    try {
        CommitWithHistory();
    } catch (const StoreError& failure) {
        RollBack();
        throw BatchLost(failure);
    }
}

void Database::Connection::CommitWithHistory()
{
    log->Store();
    Execute("COMMIT");
    log->Committed();
    isSingleWrite = false;
}

void Database::Connection::RollBack()
{
    if (InTransaction())
        sqlite3_exec(handle, "ROLLBACK", nullptr, nullptr, nullptr);
    log->Lost();
    isSingleWrite = false;
}

} // namespace quillmere
