#include "clientdb/store/Connection.h"

#include "clientdb/store/ChangeLog.h"
#include "clientdb/store/StoreFaults.h"

#include <fmt/format.h>
#include <utility>

namespace quillmere {
namespace {

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

void FailIfAsked(std::string_view statement)
{
    const StoreFaultHook& hook = FaultHook();
    if (const int fault = hook ? hook(statement) : SQLITE_OK; fault != SQLITE_OK)
        throw StoreError(fault, sqlite3_errstr(fault), std::string(statement));
}

void Run::Start()
{
    started = true;
    if (FaultHook())
        FailIfAsked(statement.Words());
}

void FailOfText(std::string_view column, std::string_view statement)
{
    throw StoreError(SQLITE_TOOBIG, fmt::format("{} has a text that is too long.", column), std::string(statement));
}

std::string PathText(const std::filesystem::path& path)
{
    const std::u8string text = path.u8string();
    return {text.begin(), text.end()};
}

Database::Connection::Connection(std::filesystem::path path)
    : file(std::move(path)), log(std::make_unique<ChangeLog>(*this))
{
}

Database::Connection::~Connection() = default;

void Database::Connection::ForgetStatements()
{
    own.clear();
    tables.clear();
}

void Database::Connection::RequireOpen() const
{
    if (!IsOpen())
        throw StoreError(SQLITE_MISUSE, "The database has been closed.", "");
}

TableStatements& Database::Connection::Statements(const TableLayout& layout)
{
    for (const auto& statements : tables)
        if (&statements->Layout() == &layout)
            return *statements;
    return *tables.emplace_back(std::make_unique<TableStatements>(*this, layout));
}

void Key::BindTo(Run& run) const
{
    run.Bind(part1);
    if (part2)
        run.Bind(*part2);
}

const HeldRecord* Database::Connection::Hold(TableStatements& statements, std::int64_t record)
{
    const TableLayout& layout = statements.Layout();
    if (const HeldRecord* const held = Held(layout, record))
        return held;
    Run run(statements.Read({}, true));
    if (!run.Bind(record).Step())
        return nullptr;
    Cells texts;
    run.Take(texts, 0, statements.Fields().Count());
    NoteHeld(layout, record, texts, false);
    return Held(layout, record);
}

const HeldRecord* Database::Connection::HoldFirst(TableStatements& statements)
{
    const TableLayout& layout = statements.Layout();
    if (const HeldRecord* const held = HeldFirst(layout))
        return held;
    Run run(statements.ReadFirst());
    if (!run.Step())
        return nullptr;
    Cells texts;
    run.Take(texts, 1, statements.Fields().Count());
    NoteHeld(layout, run.Number(0), texts, true);
    return HeldFirst(layout);
}

Prepared& Database::Connection::Own(const std::string& text)
{
    std::unique_ptr<Prepared>& statement = own[text];
    if (statement == nullptr)
        statement = Prepare(text);
    return *statement;
}

void Database::Connection::Execute(const std::string& text)
{
    Run run(Own(text));
    while (run.Step()) {
    }
}

std::int64_t Database::Connection::Number(const std::string& text)
{
    Run run(Own(text));
    return run.Step() ? run.Number(0) : 0;
}

std::int64_t Database::Connection::HistoryBytes()
{
    return Number(HistoryBytesText());
}

std::int64_t Database::Connection::Writes() const
{
    return Changes() - log->OwnChanges();
}

void Database::Connection::BeforeWrite()
{
    RequireOpen();
    if (InTransaction())
        return;
    log->Lost();
    try {
        BeginWriting();
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
        throw BatchLost(failure, isUntold);
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
    if (!IsOpen() || !InTransaction())
        return;
    try {
        CommitWithHistory();
    } catch (const StoreError& failure) {
        RollBack();
        throw BatchLost(failure, isUntold);
    }
}

void Database::Connection::CommitWithHistory()
{
    log->Store();
    try {
        EndTransaction();
    } catch (const StoreError& failure) {
        if (!InTransaction() || !log->GoOnWithout(failure))
            throw;
        EndTransaction();
    }
    log->Committed();
    isSingleWrite = false;
}

void Database::Connection::RollBack()
{
    if (InTransaction())
        GiveUpTransaction();
    log->Lost();
    isSingleWrite = false;
}

} // namespace quillmere
