#include "clientdb/store/ServerEngine.h"

#include "clientdb/store/ChangeLog.h"
#include "clientdb/store/IdleLinks.h"
#include "clientdb/store/Schema.h"
#include "clientdb/store/ServerSchema.h"
#include "clientdb/store/ServerWords.h"
#include "clientdb/store/TablesBeside.h"

#include <algorithm>
#include <chrono>
#include <fmt/format.h>
#include <fmt/ranges.h>
#include <thread>
#include <utility>

namespace quillmere {
namespace {

/// What has become of a transaction whose end the server was told and has not confirmed. It may have to come back
/// first, or to find out that it has lost the old connection, so it is asked for a while.
bool HasBeenStored(const ServerService& service, const std::string& transaction, const StoreError& lost)
{
    using Clock = std::chrono::steady_clock;
    constexpr std::chrono::seconds Patience(8);
    constexpr std::chrono::milliseconds BetweenQuestions(200);
    const std::string ask = fmt::format("SELECT pg_xact_status('{}')::text", transaction);
    for (const auto end = Clock::now() + Patience; Clock::now() < end; std::this_thread::sleep_for(BetweenQuestions))
        try {
            ServerLink link(service);
            const ServerLink::Result result = link.Wait(link.Send(ask, ask, {}, true));
            const std::string_view status = PQgetvalue(result.get(), 0, 0);
            if (status == "committed" || status == "aborted")
                return status == "committed";
        } catch (const StoreError&) {
            // It is not back yet.
        }
    throw OutcomeUnknown(lost);
}

[[noreturn]] void Fail(std::string_view table, std::string_view what)
{
    throw StoreError(SQLITE_CORRUPT, fmt::format("its table {} {}", table, what), "");
}

} // namespace

// ---- the connection -------------------------------------------------------------------------------

ServerConnection::ServerConnection(const ServerService& of, OpenMode mode)
    : Connection(of.file), service(of), readOnly(mode == OpenMode::ReadOnly), link(TakeLink(of))
{
    if (!link->tableWords)
        RequireTables();
}

ServerConnection::ServerConnection(const ServerService& of, WithNewTables)
    : Connection(of.file), service(of), readOnly(false), link(std::make_unique<ServerLink>(of))
{
    Say("BEGIN");
    transaction = Transaction::Alone;
    newSchema = Number(fmt::format("SELECT count(*) FROM pg_namespace WHERE nspname='{}'", service.schema)) == 0
                    ? NewSchema::Yes
                    : NewSchema::No;
    if (newSchema == NewSchema::Yes)
        Say(fmt::format("CREATE SCHEMA \"{}\"", service.schema));
    else if (Number("SELECT count(*) FROM pg_class WHERE relnamespace=current_schema()::regnamespace") > 0)
        throw StoreError(SQLITE_CONSTRAINT, fmt::format("The schema {} is not empty.", service.schema), {});
    for (const std::string& statement : CreateTableStatements())
        Say(statement);
    RequireTables();
}

void ServerConnection::Close()
{
    const bool wasAsked = !foreseen.empty();
    ForgetRecords();
    ForgetStatements();
    if (link == nullptr)
        return;
    GiveUpTransaction();
    try {
        // What has been asked for and was not sought may have come to the server in part: it would wait for the rest,
        // or for somebody to take its answers, and hold the tables as long.
        if (wasAsked)
            link->Settle();
    } catch (const StoreError&) {
        // Nobody wants the answers.
    }
    if (link->IsAlive())
        KeepLink(service, std::move(link));
    link.reset();
}

std::unique_ptr<Prepared> ServerConnection::Prepare(const std::string& text)
{
    RequireOpen();
    return std::make_unique<ServerPrepared>(*this, text);
}

/// Within a transaction each statement has a savepoint in front of it, behind whatever has been written, so that its
/// failure takes nothing else along.
ServerLink::Ticket ServerConnection::Send(const std::string& text, std::string_view words,
                                          std::span<const ServerLink::Parameter> parameters, bool writes, bool isWanted)
{
    RequireOpen();
    if (writes && (readOnly || transaction == Transaction::Reading))
        throw StoreError(SQLITE_READONLY, "The database is open for reading only.", std::string(words));
    if (transaction == Transaction::Writing && !isMarked) {
        if (everMarked)
            Say("RELEASE SAVEPOINT Statement");
        Say("SAVEPOINT Statement");
        isMarked = everMarked = true;
    }
    const ServerLink::Ticket ticket = link->Send(text, words, parameters, isWanted);
    // The number of the operation that this will be comes along with the first answer; a refusal of the statement
    // itself says more than one of this.
    if (transaction == Transaction::Writing && !std::exchange(isNumberAsked, true))
        AskForNumber();
    if (writes) {
        ForgetUnknown();
        isUnknown = true;
        isMarked = false;
    }
    return ticket;
}

void ServerConnection::AskForNumber()
{
    // Where it will be looked how large the history is, that comes along.
    const std::string next = fmt::format("SELECT number,CASE WHEN number%{}=0 THEN ({}) END FROM (SELECT "
                                         "nextval('\"{}_Number_seq\"') AS number) AS next",
                                         OperationsBetweenLooks, ServerStatement(HistoryBytesText()), OperationTable);
    operationAsked = link->Send(next, next, {}, true);
}

ServerLink::Result ServerConnection::Wait(ServerLink::Ticket ticket)
{
    try {
        return link->Wait(ticket);
    } catch (const StoreError& failure) {
        ForgetRecords();
        if (operationAsked && !link->HasAnswer(*operationAsked))
            operationAsked.reset();
        if (!link->IsAlive()) {
            Over();
        } else if (waitsForNoAnswer) {
            GiveUpTransaction();
            isUntold = true;
            throw BatchLost(failure, true);
        } else if (transaction == Transaction::Writing && everMarked) {
            Say("ROLLBACK TO SAVEPOINT Statement");
            isMarked = true;
        }
        throw;
    }
}

/// Says something that has no parameters and no answer.
void ServerConnection::Say(const std::string& text)
{
    link->Send(text, text, {}, false);
}

/// The transaction is over.
void ServerConnection::Over() noexcept
{
    transaction = Transaction::None;
    ForgetRecords();
    for (std::optional<ServerLink::Ticket>* const asked : {&operationAsked, &addingAsked})
        if (*asked)
            link->Drop(*std::exchange(*asked, std::nullopt));
    adding.clear();
    addingNumbers.reset();
    everMarked = isMarked = false;
}

void ServerConnection::BeginReading()
{
    FailIfAsked("BEGIN");
    ForgetRecords();
    Say("BEGIN ISOLATION LEVEL REPEATABLE READ READ ONLY");
    transaction = Transaction::Reading;
}

void ServerConnection::EndReading() noexcept
{
    GiveUpTransaction();
}

void ServerConnection::BeginWriting()
{
    FailIfAsked("BEGIN IMMEDIATE");
    if (readOnly)
        throw StoreError(SQLITE_READONLY, "The database is open for reading only.", "BEGIN IMMEDIATE");
    ForgetRecords();
    Say("BEGIN");
    transaction = Transaction::Writing;
    everMarked = isMarked = isNumberAsked = false;
}

void ServerConnection::BeginAlone()
{
    std::vector<std::string_view> tables;
    for (const auto& [table, remark] : *link->tableWords)
        tables.push_back(table);
    Say("BEGIN");
    transaction = Transaction::Alone;
    try {
        Execute(fmt::format("LOCK TABLE \"{}\" IN EXCLUSIVE MODE", fmt::join(tables, "\",\"")));
    } catch (const StoreError& failure) {
        if (failure.Number() != SQLITE_BUSY)
            throw;
        throw StoreError(SQLITE_BUSY, "Somebody else is writing in this folder just now.", failure.Statement());
    }
}

void ServerConnection::EndTransaction()
{
    FailIfAsked("COMMIT");
    constexpr std::string_view NotStored = "The server has not stored what was written.";
    if (transaction == Transaction::None) // it has been given up meanwhile
        throw StoreError(SQLITE_IOERR, std::string(NotStored), "COMMIT");
    const ServerLink::Ticket ended = link->Send("COMMIT", "COMMIT", {}, true);
    const ServerLink::Result result = Wait(ended);
    Over();
    if (std::string_view(PQcmdStatus(result.get())) != "COMMIT")
        throw StoreError(SQLITE_IOERR, std::string(NotStored), "COMMIT");
}

void ServerConnection::EndTransactionForSure()
{
    const std::string ask = "SELECT pg_current_xact_id()::text";
    const ServerLink::Result asked = link->Wait(link->Send(ask, ask, {}, true));
    const std::string number = PQgetvalue(asked.get(), 0, 0);
    try {
        EndTransaction();
    } catch (const StoreError& failure) {
        if (link->IsAlive() || !HasBeenStored(service, number, failure))
            throw;
    }
}

void ServerConnection::GiveUpTransaction() noexcept
{
    if (link == nullptr || transaction == Transaction::None)
        return;
    if (transaction == Transaction::Alone)
        link->tableWords.reset(); // they may have been made in it
    try {
        Say("ROLLBACK");
        link->SendOff();
    } catch (const StoreError&) {
        // The server gives it up as well when the connection goes.
    }
    Over();
}

void ServerConnection::MarkPlace(const std::string& name)
{
    Say("SAVEPOINT " + name);
    isMarked = everMarked = false;
}

void ServerConnection::GoBackTo(const std::string& name) noexcept
{
    ForgetRecords();
    try {
        Say("ROLLBACK TO SAVEPOINT " + name);
    } catch (const StoreError&) {
        Over();
    }
    isMarked = everMarked = false;
}

std::string_view ServerConnection::ReadListWords() const
{
    return "SELECT {0}.rowid,{1} FROM unnest(CAST(CAST(? AS text) AS bigint ARRAY)) WITH ORDINALITY AS "
           "rowids(value,place) JOIN {0} "
           "ON {0}.rowid=rowids.value ORDER BY rowids.place";
}

std::string ServerConnection::RowidList(std::span<const std::int64_t> rowids) const
{
    return fmt::format("{{{}}}", fmt::join(rowids, ","));
}

std::int64_t ServerConnection::NumberForOperation()
{
    if (!operationAsked)
        AskForNumber();
    const ServerLink::Result result = Wait(*std::exchange(operationAsked, std::nullopt));
    historyBytes.reset();
    if (PQgetisnull(result.get(), 0, 1) == 0)
        historyBytes = NumberIn(result.get(), 0, 1);
    return NumberIn(result.get(), 0, 0);
}

std::int64_t ServerConnection::HistoryBytes()
{
    return historyBytes ? *historyBytes : Connection::HistoryBytes();
}

// ---- what is known of records

void ServerConnection::ForgetRecords() noexcept
{
    held.Clear();
    foreseen.clear();
    isUnknown = false;
}

/// A write that no cursor has told of may have gone to any record.
void ServerConnection::ForgetUnknown()
{
    if (isUnknown)
        ForgetRecords();
}

const HeldRecord* ServerConnection::Held(const TableLayout& table, std::int64_t record)
{
    ForgetUnknown();
    return held.Find(table, record);
}

const HeldRecord* ServerConnection::Held(const TableStatements& statements, const TableIndex& index, const Key& key)
{
    ForgetUnknown();
    return held.Find(statements, index, key);
}

const HeldRecord* ServerConnection::HeldFirst(const TableLayout& table)
{
    ForgetUnknown();
    return held.FindFirst(table);
}

void ServerConnection::NoteHeld(const TableLayout& table, std::int64_t record, const Cells& texts, bool isFirst)
{
    if (HoldsRecords())
        held.Hold(table, record, texts, isFirst);
}

void ServerConnection::NoteWritten(const TableLayout& table, std::int64_t record, const PendingEdit& edit)
{
    isUnknown = false;
    held.Change(table, record, edit);
    std::erase_if(foreseen, [&](const Question& question) { return question.table == &table; });
}

void ServerConnection::NoteDeleted(const TableLayout& table, std::int64_t record)
{
    isUnknown = false;
    held.Release(table, record);
    std::erase_if(foreseen, [&](const Question& question) { return question.table == &table; });
}

void ServerConnection::BeforeSeek()
{
    if (batches > 0 && !readOnly)
        BeforeWrite();
}

std::vector<ServerConnection::Question>::iterator
ServerConnection::FindQuestion(const TableStatements& statements, const TableIndex& index, const Key& key)
{
    ForgetUnknown();
    return std::ranges::find_if(foreseen, [&](const Question& question) {
        return question.table == &statements.Layout() && question.index == &index && question.part1 == key.part1 &&
               question.part2 == key.part2;
    });
}

void ServerConnection::Foresee(TableStatements& statements, const TableIndex& index, const Key& key)
{
    BeforeSeek();
    if (Held(statements, index, key) != nullptr || FindQuestion(statements, index, key) != foreseen.end())
        return;
    auto question = std::make_unique<ServerPrepared>(*this, std::string(statements.Seek(index, {}, true).Words()));
    question->BindText(1, key.part1);
    if (key.part2)
        question->BindText(2, *key.part2);
    question->Ask();
    foreseen.push_back({.index = &index,
                        .part1 = std::string(key.part1),
                        .part2 = key.part2 ? std::optional<std::string>(*key.part2) : std::nullopt,
                        .prepared = std::move(question),
                        .table = &statements.Layout()});
}

Prepared* ServerConnection::Foreseen(const TableStatements& statements, const TableIndex& index, const Key& key)
{
    const auto found = FindQuestion(statements, index, key);
    if (found == foreseen.end())
        return nullptr;
    answering = std::move(found->prepared);
    foreseen.erase(found);
    return answering.get();
}

// ---- records that will be added

void ServerConnection::ForeseeAdding(std::span<const TableLayout* const> tables)
{
    BeforeSeek();
    std::vector<std::string> numbers;
    for (const TableLayout* const table : tables)
        numbers.push_back(fmt::format("nextval('\"{}_rowid_seq\"')", table->name));
    const std::string next = fmt::format("SELECT {}", fmt::join(numbers, ","));
    addingAsked = Send(next, next, {}, false, true);
    adding.assign(tables.begin(), tables.end());
}

std::int64_t ServerConnection::NumberForRecord(const TableLayout& table)
{
    const auto found = std::ranges::find(adding, &table);
    if (found == adding.end())
        return 0;
    if (addingAsked)
        addingNumbers = Wait(*std::exchange(addingAsked, std::nullopt));
    *found = nullptr; // the next one after it is added by itself
    return NumberIn(addingNumbers.get(), 0, static_cast<int>(found - adding.begin()));
}

// ---- the tables that are there

HistoryState ServerConnection::LookAtHistory()
{
    HistoryLook look;
    for (const auto& [table, remark] : *link->tableWords)
        look.Meet(table, table, remark);
    return look.Found();
}

std::string ServerConnection::TableWords(std::string_view table)
{
    RequireOpen();
    const auto found = link->tableWords->find(table);
    return found == link->tableWords->end() ? std::string() : found->second;
}

void ServerConnection::CountOn(std::string_view table, std::string_view number)
{
    // Nobody has to be allowed to set a number that is set already.
    Execute(
        fmt::format("SELECT setval('\"{0}_{1}_seq\"',top) FROM (SELECT max(\"{1}\") AS top FROM \"{0}\") AS all_of, "
                    "\"{0}_{1}_seq\" WHERE top>last_value OR (top=last_value AND NOT is_called)",
                    table, number));
}

std::vector<std::string> ServerConnection::OthersAt(std::string_view desk, std::string_view employer,
                                                    std::string_view employee)
{
    RequireOpen();
    const Presence presence{.desk = std::string(desk),
                            .schema = service.schema,
                            .employer = std::string(employer),
                            .employee = std::string(employee)};
    SilenceIdleLinks(service);
    SayPresence(*link, presence);
    std::vector<std::string> others;
    if (employee.empty())
        return others;
    const std::string beginning = presence.Beginning();
    Run run(Own(fmt::format("SELECT DISTINCT substr(application_name,{0}) FROM pg_stat_activity WHERE "
                            "datname=current_database() AND left(application_name,{0}-1)=? ORDER BY 1",
                            beginning.size() + 1)));
    run.Bind(beginning);
    while (run.Step())
        if (run.Text(0) != presence.Desk())
            others.emplace_back(run.Text(0));
    return others;
}

bool ServerConnection::OwnsSchema()
{
    return Number("SELECT count(*) FROM pg_namespace WHERE nspname=current_schema() AND pg_has_role(nspowner,'USAGE') "
                  "AND has_database_privilege(current_database(),'CREATE')") == 1;
}

void ServerConnection::RenameSchema(std::string_view newName)
{
    Execute(fmt::format("ALTER SCHEMA \"{}\" RENAME TO \"{}\"", service.schema, newName));
}

void ServerConnection::RequireTables()
{
    std::map<std::string, std::string, std::less<>> found, remarks;
    std::vector<std::string> indexes;
    {
        Run tables(Prepare(std::string(AskForTables)));
        while (tables.Step()) {
            found.emplace(tables.Text(0), tables.Bytes(1));
            remarks.emplace(tables.Text(0), tables.Bytes(2));
        }
        Run unique(Prepare(std::string(AskForIndexes)));
        while (unique.Step())
            indexes.emplace_back(unique.Text(0));
    }
    if (found.empty())
        throw StoreError(SQLITE_CANTOPEN, fmt::format("The schema {} has no tables of clients.", service.schema), {});
    for (const TableOnServer& table : TablesOnServer()) {
        const auto columns = found.find(table.name);
        if (columns == found.end())
            Fail(table.name, "is missing");
        if (columns->second != table.columns)
            Fail(table.name, "is not as this program makes it");
    }
    for (const TableLayout& table : ClientTables())
        for (const TableIndex& index : table.indexes)
            if (std::ranges::find(indexes, fmt::format("{}_{}", table.name, index.name)) == indexes.end())
                Fail(table.name, fmt::format("has no index {}", index.name));
    link->tableWords = std::move(remarks);
}

// ---- opening --------------------------------------------------------------------------------------

std::shared_ptr<ServerConnection> OpenServer(const ServerService& service, OpenMode mode,
                                             std::shared_ptr<OperationNote> note)
{
    try {
        auto connection = std::make_shared<ServerConnection>(service, mode);
        connection->log->Begin(connection->LookAtHistory(), std::move(note));
        return connection;
    } catch (const StoreError& failure) {
        throw StoreError(static_cast<int>(failure.Number()),
                         PathText(service.file) + " cannot be opened: " + failure.what(), failure.Statement());
    }
}

void CreateServerTables(const ServerService& service)
{
    ServerConnection(service, ServerConnection::WithNewTables()).EndTransaction();
}

void DropServerTables(const ServerService& service, NewSchema schema)
{
    std::vector<std::string> names;
    for (const TableOnServer& table : TablesOnServer())
        names.push_back(table.name);
    for (const TableBeside& table : TablesBeside())
        names.emplace_back(table.name);
    const std::string drop = schema == NewSchema::Yes ? fmt::format("DROP SCHEMA \"{}\" CASCADE", service.schema)
                                                      : fmt::format("DROP TABLE \"{}\"", fmt::join(names, "\",\""));
    ServerLink link(service);
    static_cast<void>(link.Wait(link.Send(drop, drop, {}, true)));
}

} // namespace quillmere
