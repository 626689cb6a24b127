#include "clientdb/store/History.h"

#include "clientdb/store/AddedRecords.h"
#include "clientdb/store/ChangeLog.h"
#include "clientdb/store/HistoryTables.h"

#include <algorithm>
#include <fmt/format.h>
#include <iterator>
#include <map>
#include <set>

namespace quillmere {
namespace {

/// So many operations are looked through for the last one that can be undone.
constexpr std::size_t MostLookedThrough = 300;
/// More than there can ever be.
constexpr std::size_t EveryOperation = INT64_MAX;

/// A change, with the key that the record has afterwards.
struct KeyedChange : RecordChange {
    std::string employer, employee;
};

constexpr std::string_view ChangeColumns = "[Operation],[EmployerName],[EmployeeName],[Records],[Changes],[Number]";
constexpr int ChangeBytes = 4, ChangeNumber = 5;

std::vector<KeyedChange> KeyedChangesIn(const Run& run)
{
    std::vector<KeyedChange> keyed;
    for (RecordChange& change : DecodeChanges(run.Bytes(ChangeBytes)))
        keyed.push_back({std::move(change), std::string(run.Text(1)), std::string(run.Text(2))});
    return keyed;
}

/// Reads the changes of an operation, which is given with its first and last.
Prepared& SelectChanges(Database::Connection& connection, std::string_view order)
{
    return connection.Own(fmt::format("SELECT {} FROM [{}] WHERE [Number] BETWEEN ? AND ? AND [Operation]=? ORDER BY "
                                      "[Number] {}",
                                      ChangeColumns, ChangeTable, order));
}

/// Those whose fields are left to the tables.
std::vector<RecordChange*> WithDigest(std::span<KeyedChange> changes)
{
    std::vector<RecordChange*> with;
    for (KeyedChange& change : changes)
        if (change.digest)
            with.push_back(&change);
    return with;
}

/// A change read the other way round.
void TurnRound(KeyedChange& row)
{
    if (row.kind != ChangeKind::Changed)
        row.kind = row.kind == ChangeKind::Added ? ChangeKind::Deleted : ChangeKind::Added;
    for (FieldChange& field : row.fields)
        std::swap(field.before, field.after);
}

/// What a key's part was before the change.
std::string KeyBefore(const KeyedChange& row, std::size_t column, const std::string& after)
{
    const auto changed = std::ranges::find(row.fields, column, &FieldChange::column);
    return row.kind == ChangeKind::Changed && changed != row.fields.end() ? changed->before.value_or("") : after;
}

std::size_t EmployerColumn(const RecordChange& change)
{
    return FieldsOf(*change.table).Find("EmployerName");
}

std::size_t EmployeeColumn(const RecordChange& change)
{
    return FieldsOf(*change.table).Find("EmployeeName");
}

std::string TextOf(const std::optional<std::string>& text)
{
    return text.value_or(std::string());
}

} // namespace

struct History::Row {
    std::int64_t number, first, last, undoes, root;
    bool backward;
    PastOperation shown;
};

History::History(Database& database) : connection(database.connection)
{
    connection->RequireOpen();
}

bool History::IsReadable() const
{
    return connection->LookAtHistory() != HistoryState::Foreign;
}

// ---- reading --------------------------------------------------------------------------------------

/// The newest operations, the last one first, with nothing said yet of their records.
std::vector<History::Row> History::Rows(std::size_t most) const
{
    std::vector<Row> rows;
    if (connection->LookAtHistory() != HistoryState::Ready)
        return rows;
    std::set<std::int64_t> undone;
    Run run(connection->Own(fmt::format("SELECT [Number],[Words],[Who],[Moment],[First],[Last],[Undoes],"
                                        "[Root],[Backward] FROM [{}] ORDER BY [Number] DESC LIMIT ?",
                                        OperationTable)));
    run.Bind(static_cast<std::int64_t>(std::min(most, EveryOperation)));
    while (rows.size() < most && run.Step()) {
        Row& row = rows.emplace_back(Row{.number = run.Number(0),
                                         .first = run.Number(4),
                                         .last = run.Number(5),
                                         .undoes = run.Number(6),
                                         .root = run.Number(7),
                                         .backward = run.Number(8) != 0,
                                         .shown = {}});
        row.shown = {.number = row.number,
                     .words = std::string(run.Text(1)),
                     .who = std::string(run.Text(2)),
                     .when = std::string(run.Text(3)),
                     .isUndo = row.undoes != 0,
                     .isUndone = undone.contains(row.number),
                     .employer = {},
                     .employee = {}};
        // Whoever undoes comes later, and has been met before.
        if (row.undoes != 0 && !row.shown.isUndone)
            undone.insert(row.undoes);
    }
    return rows;
}

std::optional<History::Row> History::Find(std::int64_t number) const
{
    for (Row& row : Rows(EveryOperation))
        if (row.number == number)
            return std::move(row);
    return std::nullopt;
}

std::vector<PastOperation> History::Operations(const Wanted& wanted, std::size_t most) const
{
    std::vector<Row> rows = Rows(EveryOperation);
    // Whose records an operation with changes of its own wrote, and whether it is asked for.
    struct Extent {
        std::string employer, employee;
        std::size_t records = 0;
        bool isWanted = false;
    };
    std::map<std::int64_t, Extent> extents;
    if (!rows.empty()) {
        std::set<std::pair<std::string, std::string>> names{{wanted.employer, wanted.employee}};
        Run run(connection->Own(fmt::format("SELECT {} FROM [{}] ORDER BY [Number] DESC", ChangeColumns, ChangeTable)));
        while (run.Step()) {
            const std::string_view employer = run.Text(1), employee = run.Text(2);
            Extent& extent = extents[run.Number(0)];
            if (extent.records == 0) {
                extent.employer = employer;
                extent.employee = employee;
            }
            extent.records += static_cast<std::size_t>(run.Number(3));
            if (extent.employer != employer)
                extent.employer.clear();
            if (extent.employee != employee)
                extent.employee.clear();
            const bool isHis = std::ranges::any_of(names, [&](const auto& name) {
                return (name.first.empty() || name.first == employer) &&
                       (name.second.empty() || name.second == employee);
            });
            extent.isWanted = extent.isWanted || isHis;
            if (!isHis || wanted.employer.empty())
                continue;
            for (const KeyedChange& change : KeyedChangesIn(run))
                names.emplace(KeyBefore(change, EmployerColumn(change), change.employer),
                              wanted.employee.empty() ? std::string()
                                                      : KeyBefore(change, EmployeeColumn(change), change.employee));
        }
    }
    std::vector<PastOperation> operations;
    for (Row& row : rows) {
        const auto extent = extents.find(row.undoes != 0 ? row.root : row.number);
        if (extent == extents.end() || !extent->second.isWanted || !row.shown.when.starts_with(wanted.day))
            continue;
        if (operations.size() == most)
            break;
        row.shown.employer = extent->second.employer;
        row.shown.employee = extent->second.employee;
        row.shown.records = extent->second.records;
        operations.push_back(std::move(row.shown));
    }
    return operations;
}

std::vector<PastChange> History::Changes(std::int64_t operation, std::size_t most) const
{
    std::vector<PastChange> changes;
    const std::optional<Row> row = Find(operation);
    const std::optional<Row> root = row && row->undoes != 0 ? Find(row->root) : row;
    if (!root)
        return changes;
    std::vector<KeyedChange> found;
    {
        Run run(SelectChanges(*connection, "ASC"));
        run.Bind(root->first).Bind(root->last).Bind(root->number);
        while (found.size() < most && run.Step())
            std::ranges::move(KeyedChangesIn(run), std::back_inserter(found));
    }
    FindFieldsAdded(*connection, WithDigest(found), root->first);
    for (KeyedChange& read : found) {
        if (row->backward)
            TurnRound(read);
        PastChange& change = changes.emplace_back(PastChange{.table = read.table->name,
                                                             .kind = read.kind,
                                                             .employer = std::move(read.employer),
                                                             .employee = std::move(read.employee),
                                                             .fields = {}});
        const auto fields = FieldsOf(*read.table).All();
        for (const FieldChange& field : read.fields)
            if (TextOf(field.before) != TextOf(field.after))
                change.fields.push_back({fields[field.column].name, TextOf(field.before), TextOf(field.after)});
    }
    return changes;
}

std::optional<PastOperation> History::LastBy(std::string_view who) const
{
    for (Row& row : Rows(MostLookedThrough))
        if (!row.shown.isUndo && !row.shown.isUndone && row.shown.who == who)
            return std::move(row.shown);
    return std::nullopt;
}

std::optional<PastOperation> History::LastBy(std::string_view who, std::string_view employer,
                                             std::string_view employee) const
{
    for (Row& row : Rows(MostLookedThrough))
        if (!row.shown.isUndo && !row.shown.isUndone && row.shown.who == who && ChangesOnly(row, employer, employee))
            return std::move(row.shown);
    return std::nullopt;
}

/// True if an operation has changed records, and only these: none was added or deleted.
bool History::ChangesOnly(const Row& operation, std::string_view employer, std::string_view employee) const
{
    Run run(SelectChanges(*connection, "ASC"));
    run.Bind(operation.first).Bind(operation.last).Bind(operation.number);
    bool any = false;
    for (; run.Step(); any = true)
        if (run.Text(1) != employer || run.Text(2) != employee ||
            std::ranges::any_of(
                DecodeChanges(run.Bytes(ChangeBytes)), [](ChangeKind kind) { return kind != ChangeKind::Changed; },
                &RecordChange::kind))
            return false;
    return any;
}

// ---- going back -----------------------------------------------------------------------------------

namespace {

/// Writes one change after the other as it is read, if the record is as it was before, and notes what is not.
class Replayer {
public:
    explicit Replayer(Database::Connection& connection) : connection(connection) {}

    /// A record that is taken out gives the change its fields, if the history has left them to it.
    void Apply(KeyedChange& row)
    {
        TableStatements& statements = connection.Statements(*row.table);
        if (row.kind == ChangeKind::Added)
            return row.digest ? Refuse(row, UndoConflict::What::ThereAlready) : Add(statements, row);
        const std::optional<std::int64_t> record = Find(statements, row);
        if (!record)
            return Refuse(row, UndoConflict::What::Gone);
        if (row.digest && !TakeFields(statements, row)) {
            changedSince.emplace_back(row, found);
            return;
        }
        if (!IsAsBefore(statements, row))
            return;
        if (row.kind == ChangeKind::Deleted)
            Run(statements.Delete()).Bind(*record).Change();
        else
            Change(statements, row, *record);
    }

    /// Lists what has been changed in records whose fields are left to the tables; the changes are among those that the
    /// history holds from number `first` on.
    void ListChangedSince(std::int64_t first)
    {
        std::vector<RecordChange*> added;
        for (auto& [row, then] : changedSince)
            added.push_back(&row);
        FindFieldsAdded(connection, added, first);
        for (auto& [row, then] : changedSince) {
            found = std::move(then);
            if (row.digest || IsAsBefore(connection.Statements(*row.table), row))
                Refuse(row, UndoConflict::What::Changed);
        }
        changedSince.clear();
    }

    std::vector<UndoConflict> conflicts;

private:
    void Refuse(const KeyedChange& row, UndoConflict::What what)
    {
        conflicts.push_back({.what = what,
                             .table = row.table->name,
                             .employer = row.employer,
                             .employee = row.employee,
                             .field = {},
                             .left = {},
                             .found = {}});
    }

    /// Reads the record with the key that it had before the change; a record without a whole key by its number.
    std::optional<std::int64_t> Find(TableStatements& statements, const KeyedChange& row)
    {
        found.Clear();
        const std::string employer = KeyBefore(row, statements.EmployerColumn(), row.employer);
        const std::string employee = KeyBefore(row, statements.EmployeeColumn(), row.employee);
        const TableIndex* const index = row.table->indexes.empty() ? nullptr : &row.table->indexes.front();
        const bool hasKey = index != nullptr && !employer.empty() && (index->part2.empty() || !employee.empty());
        Run run(hasKey ? statements.Seek(*index, {}, true) : statements.ReadNumbered());
        if (!hasKey)
            run.Bind(row.record);
        else if (index->part2.empty())
            run.Bind(employer);
        else
            run.Bind(employer).Bind(employee);
        if (!run.Step())
            return std::nullopt;
        run.Take(found, 1, statements.Fields().Count());
        return run.Number(0);
    }

    /// Gives the deletion of a new record the fields that it takes away; false if they are not those of the addition.
    bool TakeFields(const TableStatements& statements, KeyedChange& row) const
    {
        FieldsDigest digest;
        for (std::size_t column = 0; column < statements.Fields().Count(); ++column)
            digest.Put(column, found.Text(column));
        if (digest.Number() != row.digest)
            return false;
        for (std::size_t column = 0; column < statements.Fields().Count(); ++column)
            if (!found.IsNull(column))
                row.fields.push_back({static_cast<std::uint16_t>(column), std::string(found.Text(column)), {}});
        row.digest.reset();
        return true;
    }

    bool IsAsBefore(const TableStatements& statements, const KeyedChange& row)
    {
        const std::size_t before = conflicts.size();
        const auto require = [&](std::size_t column, const std::string& left) {
            if (found.Text(column) == left)
                return;
            conflicts.push_back({.what = UndoConflict::What::Changed,
                                 .table = row.table->name,
                                 .employer = row.employer,
                                 .employee = row.employee,
                                 .field = statements.Fields().All()[column].name,
                                 .left = left,
                                 .found = std::string(found.Text(column))});
        };
        if (row.kind == ChangeKind::Changed) {
            for (const FieldChange& field : row.fields)
                require(field.column, TextOf(field.before));
        } else {
            std::vector<std::string> left(statements.Fields().Count());
            for (const FieldChange& field : row.fields)
                left[field.column] = TextOf(field.before);
            for (std::size_t column = 0; column < left.size(); ++column)
                require(column, left[column]);
        }
        return conflicts.size() == before;
    }

    void Change(TableStatements& statements, const KeyedChange& row, std::int64_t record)
    {
        std::vector<std::uint16_t> columns;
        for (const FieldChange& field : row.fields)
            columns.push_back(field.column);
        Run run(statements.Update(columns));
        for (const FieldChange& field : row.fields)
            if (field.after)
                run.Bind(*field.after);
            else
                run.BindNull();
        run.Bind(record);
        if (!Passes(run))
            Refuse(row, UndoConflict::What::ThereAlready);
    }

    /// Adds the record in its old place; where somebody else has that, behind all others.
    void Add(TableStatements& statements, const KeyedChange& row)
    {
        std::vector<const std::string*> texts(statements.Fields().Count());
        for (const FieldChange& field : row.fields)
            if (field.after)
                texts[field.column] = &*field.after;
        for (const bool inPlace : {true, false}) {
            Run run(statements.InsertWhole(inPlace));
            if (inPlace)
                run.Bind(row.record);
            for (const std::string* text : texts)
                if (text == nullptr)
                    run.BindNull();
                else
                    run.Bind(*text);
            if (Passes(run))
                return;
        }
        Refuse(row, UndoConflict::What::ThereAlready);
    }

    /// False if another record has the key, or the place.
    static bool Passes(Run& run)
    {
        try {
            run.Change();
            return true;
        } catch (const StoreError& failure) {
            if ((failure.Number() & 0xff) != SQLITE_CONSTRAINT)
                throw;
            return false;
        }
    }

    Database::Connection& connection;
    Cells found;
    std::vector<std::pair<KeyedChange, Cells>> changedSince; ///< and what was found
};

/// The changes of a row as they stand after an undo has taken new records out of the tables, with their fields.
void StoreFields(Database::Connection& connection, const Run& row, std::span<const KeyedChange> changes)
{
    std::string bytes;
    for (const KeyedChange& change : changes)
        AppendChange(bytes, change);
    const auto more =
        static_cast<std::int64_t>(bytes.size()) - static_cast<std::int64_t>(row.Bytes(ChangeBytes).size());
    Run(connection.Own(fmt::format("UPDATE [{}] SET [Changes]=? WHERE [Number]=?", ChangeTable)))
        .BindBytes(bytes)
        .Bind(row.Number(ChangeNumber))
        .Change();
    Run(connection.Own(fmt::format("UPDATE [{}] SET [Bytes]=[Bytes]+? WHERE [Number]=?", OperationTable)))
        .Bind(more)
        .Bind(row.Number(0))
        .Change();
}

/// Writes the changes of a row, forward or backward.
void Replay(Database::Connection& connection, const Run& row, bool backward, Replayer& replayer)
{
    std::vector<KeyedChange> changes = KeyedChangesIn(row);
    if (!backward) {
        for (KeyedChange& change : changes)
            replayer.Apply(change);
        return;
    }
    const bool isLeft = !WithDigest(changes).empty();
    for (auto change = changes.rbegin(); change != changes.rend(); ++change) {
        TurnRound(*change);
        replayer.Apply(*change);
        TurnRound(*change);
    }
    if (isLeft && replayer.conflicts.empty())
        StoreFields(connection, row, changes);
}

} // namespace

std::vector<UndoConflict> History::Undo(std::int64_t operation)
{
    connection->BeforeWrite();
    try {
        const std::optional<Row> row = Find(operation);
        const std::optional<Row> root = row && row->undoes != 0 ? Find(row->root) : row;
        if (!root)
            throw StoreError(SQLITE_NOTFOUND, "The history does not hold this operation any more.", "");
        const bool backward = !row->backward;
        Replayer replayer(*connection);
        {
            Run run(SelectChanges(*connection, backward ? "DESC" : "ASC"));
            run.Bind(root->first).Bind(root->last).Bind(root->number);
            while (run.Step())
                Replay(*connection, run, backward, replayer);
        }
        replayer.ListChangedSince(root->first);
        if (!replayer.conflicts.empty()) {
            connection->RollBack();
            return std::move(replayer.conflicts);
        }
        connection->log->StoreUndo(operation, root->number, backward);
        connection->AfterWrite();
        return {};
    } catch (...) {
        connection->RollBack();
        throw;
    }
}

} // namespace quillmere
