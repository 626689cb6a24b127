#include "clientdb/store/ChangeLog.h"

#include <algorithm>
#include <fmt/format.h>
#include <utility>

namespace quillmere {
namespace {

/// Of a record that is written in single fields so many are looked at one by one; with more of them it is read whole.
constexpr std::size_t MostFieldsApart = 4;
/// With more bytes than these waiting they are stored before the transaction ends.
constexpr std::size_t MostBytesWaiting = 1'048'576;
/// Changes of one employee are put together up to about so many bytes.
constexpr std::size_t MostBytesTogether = 65'536;
/// What a row of changes and an operation take besides the fields, about.
constexpr std::int64_t BytesOfChange = 60, BytesOfOperation = 100;
/// The savepoint before what belongs to the history.
constexpr std::string_view Place = "History";

/// A failure that tells of the history itself and not of the disk or of others at work.
bool IsOfHistory(const StoreError& failure)
{
    switch (failure.Number() & 0xff) {
    case SQLITE_CORRUPT:
    case SQLITE_ERROR:
    case SQLITE_CONSTRAINT:
    case SQLITE_MISMATCH:
    case SQLITE_TOOBIG:
        return true;
    default:
        return false;
    }
}

std::optional<std::string> TextOf(const Cells& cells, std::size_t cell)
{
    return cells.IsNull(cell) ? std::nullopt : std::optional<std::string>(cells.Text(cell));
}

std::optional<std::string> TextOf(const PendingEdit::Change& change)
{
    return change.isNull ? std::nullopt : std::optional(change.text);
}

FieldChange* Find(std::vector<FieldChange>& fields, std::size_t column)
{
    const auto found = std::ranges::find(fields, column, &FieldChange::column);
    return found == fields.end() ? nullptr : &*found;
}

} // namespace

// ---- noting ---------------------------------------------------------------------------------------

void ChangeLog::Begin(HistoryState found, std::shared_ptr<OperationNote> newNote)
{
    state = found;
    note = std::move(newNote);
}

bool ChangeLog::IsOn()
{
    const bool isOff = state == HistoryState::Foreign;
    if (isOff && note)
        note->historyIsOff = true;
    return !isOff;
}

/// Does the work. A failure that is the history's own turns it off.
template<class Work>
void ChangeLog::TurnOffUnless(Work work)
{
    try {
        work();
    } catch (const StoreError& failure) {
        if (!IsOfHistory(failure))
            throw;
        TurnOff();
    }
}

void ChangeLog::TurnOff()
{
    state = HistoryState::Foreign;
    inHand.reset();
    waiting.clear();
    waitingBytes = 0;
    if (note)
        note->historyIsOff = true;
}

void ChangeLog::LookAt(TableStatements& statements, std::int64_t record, std::span<const PendingEdit::Change> changes)
{
    if (!IsOn())
        return;
    TurnOffUnless([&] {
        lookedAt.clear();
        looked.Clear();
        lookedWhole.reset();
        const bool goesOn = IsInHand(statements, record);
        if (goesOn && inHand->before)
            return;
        if (connection.HoldsRecords()) {
            const HeldRecord* const held = connection.Hold(statements, record);
            if (held != nullptr)
                (goesOn ? inHand->before : lookedWhole) = held->texts;
            return;
        }
        for (const PendingEdit::Change& change : changes)
            if (!goesOn || Find(inHand->fields, change.column) == nullptr)
                lookedAt.push_back(change.column);
        if (!goesOn)
            for (const std::size_t key : {statements.EmployerColumn(), statements.EmployeeColumn()})
                if (key != TableFields::None)
                    lookedAt.push_back(static_cast<std::uint16_t>(key));
        if (lookedAt.empty())
            return;
        const bool whole = goesOn && inHand->fields.size() + lookedAt.size() > MostFieldsApart;
        Run run(statements.Read(whole ? std::span<const std::uint16_t>() : lookedAt, whole));
        if (!run.Bind(record).Step())
            return;
        if (whole)
            run.Take(inHand->before.emplace(), 0, statements.Fields().Count());
        else
            run.Take(looked, 0, lookedAt.size());
    });
}

void ChangeLog::LookAtWhole(TableStatements& statements, std::int64_t record)
{
    if (!IsOn())
        return;
    TurnOffUnless([&] {
        looked.Clear();
        if (connection.HoldsRecords()) {
            if (const HeldRecord* const held = connection.Hold(statements, record))
                looked = held->texts;
            return;
        }
        Run run(statements.Read({}, true));
        if (run.Bind(record).Step())
            run.Take(looked, 0, statements.Fields().Count());
    });
}

/// What a field held that has been looked at; null if it has not.
std::optional<std::string> ChangeLog::LookedAt(std::size_t column) const
{
    if (column == TableFields::None)
        return std::nullopt;
    if (inHand && inHand->before)
        return TextOf(*inHand->before, column);
    const auto found = std::ranges::find(lookedAt, column);
    return found == lookedAt.end() ? std::nullopt : TextOf(looked, static_cast<std::size_t>(found - lookedAt.begin()));
}

/// Lets a change be put with the one before, if it is of the same employee or employer.
template<class Put>
void ChangeLog::Wait(std::string_view employer, std::string_view employee, Put put)
{
    if (waiting.empty() || waiting.back().employer != employer || waiting.back().employee != employee ||
        waiting.back().bytes.size() + waiting.back().bytesLeft > MostBytesTogether) {
        waiting.push_back({.employer = std::string(employer), .employee = std::string(employee)});
        waitingBytes += static_cast<std::size_t>(BytesOfChange);
    }
    Waiting& row = waiting.back();
    const std::size_t before = row.bytes.size();
    put(row);
    ++row.records;
    waitingBytes += row.bytes.size() - before;
    if (waitingBytes > MostBytesWaiting)
        StoreWaiting();
}

void ChangeLog::NoteChanged(TableStatements& statements, std::int64_t record,
                            std::span<const PendingEdit::Change> changes)
{
    if (!IsOn())
        return;
    if (!IsInHand(statements, record)) {
        PutAway();
        inHand.emplace(InHand{.statements = &statements,
                              .record = record,
                              .employer = {},
                              .employee = {},
                              .fields = {},
                              .before = std::exchange(lookedWhole, std::nullopt)});
        inHand->employer = LookedAt(statements.EmployerColumn()).value_or("");
        inHand->employee = LookedAt(statements.EmployeeColumn()).value_or("");
    }
    for (const PendingEdit::Change& change : changes) {
        if (FieldChange* const known = Find(inHand->fields, change.column))
            known->after = TextOf(change);
        else
            inHand->fields.push_back({change.column, LookedAt(change.column), TextOf(change)});
        if (change.column == statements.EmployerColumn())
            inHand->employer = change.text;
        if (change.column == statements.EmployeeColumn())
            inHand->employee = change.text;
    }
}

void ChangeLog::NoteAdded(TableStatements& statements, std::int64_t record,
                          std::span<const PendingEdit::Change> changes)
{
    if (!IsOn())
        return;
    PutAway();
    std::string_view employer, employee;
    FieldsDigest digest;
    std::size_t bytes = 0;
    for (const PendingEdit::Change& change : changes) {
        digest.Put(change.column, change.text);
        bytes += change.text.size();
        if (change.column == statements.EmployerColumn())
            employer = change.text;
        if (change.column == statements.EmployeeColumn())
            employee = change.text;
    }
    Wait(employer, employee, [&](Waiting& row) {
        AppendAdded(row.bytes, statements.Layout(), record, digest.Number());
        row.bytesLeft += bytes;
    });
}

void ChangeLog::NoteDeleted(TableStatements& statements, std::int64_t record)
{
    if (!IsOn())
        return;
    PutAway();
    encoded.clear();
    for (std::size_t column = 0; column < statements.Fields().Count(); ++column) {
        if (!looked.IsNull(column))
            PutField(encoded, column, looked.Text(column));
    }
    const auto key = [&](std::size_t column) {
        return column == TableFields::None ? std::string_view() : looked.Text(column);
    };
    Wait(key(statements.EmployerColumn()), key(statements.EmployeeColumn()),
         [&](Waiting& row) { AppendChange(row.bytes, statements.Layout(), record, ChangeKind::Deleted, encoded); });
}

/// The record in hand is not written any more for now.
void ChangeLog::PutAway()
{
    if (!inHand)
        return;
    const InHand changed = *std::exchange(inHand, std::nullopt);
    const std::string fields = EncodeFields(ChangeKind::Changed, changed.fields);
    if (fields.empty())
        return;
    Wait(changed.employer, changed.employee, [&](Waiting& row) {
        AppendChange(row.bytes, changed.statements->Layout(), changed.record, ChangeKind::Changed, fields);
    });
}

// ---- storing --------------------------------------------------------------------------------------

void ChangeLog::Store()
{
    PutAway();
    StoreWaiting();
}

/// On a server the store hears of a failure of what it has posted only when it commits.
bool ChangeLog::GoOnWithout(const StoreError& failure)
{
    if (!IsOn() || !IsOfHistory(failure) || failure.Statement().find("\"History") == std::string::npos)
        return false;
    connection.GoBackTo(std::string(Place));
    TurnOff();
    return true;
}

void ChangeLog::StoreOrGiveUp()
{
    PutAway();
    if (waiting.empty())
        return;
    try {
        connection.MarkPlace(std::string(Place));
        StoreWaiting();
    } catch (const StoreError&) {
        TurnOff();
    }
    // Half of it is worse than nothing.
    if (!IsOn() && connection.InTransaction())
        connection.GoBackTo(std::string(Place));
}

void ChangeLog::StoreWaiting()
{
    if (waiting.empty() || !IsOn())
        return;
    const std::int64_t before = connection.Changes();
    if (connection.IsShared())
        connection.MarkPlace(std::string(Place));
    TurnOffUnless([this] {
        if (state == HistoryState::None)
            for (const std::string_view table : {OperationTable, ChangeTable})
                connection.Execute(CreateHistoryTableText(table, "IF NOT EXISTS "));
        StoreOperation();
        Prepared& insert = connection.Own(fmt::format(
            "INSERT INTO \"{}\"([Operation],[EmployerName],[EmployeeName],[Records],[Changes]) VALUES(?,?,?,?,?)",
            ChangeTable));
        for (const Waiting& of : waiting) {
            Run run(insert);
            run.Bind(number).Bind(of.employer).Bind(of.employee).Bind(of.records).BindBytes(of.bytes).Post();
        }
        if (connection.IsShared())
            StoreLastChange();
    });
    waiting.clear();
    waitingBytes = 0;
    ownChanges += connection.Changes() - before;
}

/// Others number their changes meanwhile, so it is not known before what number the last one gets.
void ChangeLog::StoreLastChange()
{
    Run run(connection.Own(fmt::format(
        "UPDATE \"{}\" SET [Last]=(SELECT max([Number]) FROM \"{}\" WHERE [Operation]=?1) WHERE [Number]=?1",
        OperationTable, ChangeTable)));
    run.Bind(number).Post();
}

/// Writes the operation, or what the changes that wait add to it. They come behind all that are there.
void ChangeLog::StoreOperation()
{
    const auto count = static_cast<std::int64_t>(waiting.size());
    const auto bytes = static_cast<std::int64_t>(waitingBytes);
    if (number == 0 && note && note->number != 0 && note->file == connection.file) {
        number = note->number;
        numberIsStored = true;
    }
    if (number != 0) {
        Run run(connection.Own(fmt::format("UPDATE \"{}\" SET [Last]=(SELECT coalesce(max([Number]),0) FROM \"{}\")+?,"
                                           "[Bytes]=[Bytes]+? WHERE [Number]=?",
                                           OperationTable, ChangeTable)));
        run.Bind(count).Bind(bytes).Bind(number).Post();
        return;
    }
    number = InsertOperation({.changes = count, .bytes = bytes});
    if (number % OperationsBetweenLooks == 0)
        ThinHistory(connection, MostHistoryBytes, KeptHistoryBytes);
}

std::int64_t ChangeLog::InsertOperation(const Extent& extent)
{
    static const OperationNote nobody;
    const OperationNote& of = note ? *note : nobody;
    const std::int64_t given = connection.NumberForOperation();
    Run run(connection.Own(fmt::format(
        "INSERT INTO \"{}\"([Number],[Words],[Who],[Moment],[First],[Last],[Bytes],[Undoes],[Root],[Backward])"
        " SELECT ?,?,?,?,coalesce(max([Number]),0)+1,coalesce(max([Number]),0)+?,?,?,?,? FROM \"{}\"",
        OperationTable, ChangeTable)));
    if (given == 0)
        run.BindNull();
    else
        run.Bind(given);
    run.Bind(of.words).Bind(of.who).Bind(of.when).Bind(extent.changes);
    run.Bind(extent.bytes + BytesOfOperation).Bind(extent.undoes).Bind(extent.root).Bind(std::int64_t{extent.backward});
    run.Post();
    return given == 0 ? connection.LastAdded() : given;
}

void ChangeLog::StoreUndo(std::int64_t undone, std::int64_t root, bool backward)
{
    number = InsertOperation({.undoes = undone, .root = root, .backward = backward});
}

void ChangeLog::Committed()
{
    if (number != 0)
        state = HistoryState::Ready;
    numberIsStored = number != 0 && note;
    if (numberIsStored) {
        note->file = connection.file;
        note->number = number;
    } else {
        number = 0;
    }
}

void ChangeLog::Lost()
{
    inHand.reset();
    waiting.clear();
    waitingBytes = 0;
    if (!numberIsStored)
        number = 0;
}

} // namespace quillmere
