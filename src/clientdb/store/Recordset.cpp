#include "clientdb/store/Recordset.h"

#include "clientdb/store/Connection.h"
#include "clientdb/store/Schema.h"

#include <algorithm>
#include <fmt/ranges.h>
#include <limits>
#include <numeric>
#include <optional>
#include <unordered_set>
#include <utility>

namespace quillmere {
namespace {

/// A scan reads so many records ahead, and then gives up its lock until they are used up.
constexpr std::size_t MostRecordsAhead = 128;
constexpr std::size_t MostBytesAhead = 262144;
/// A scan that looks at more fields than this reads whole records.
constexpr std::size_t MostFieldsApart = 24;

constexpr std::uint16_t NotRead = std::numeric_limits<std::uint16_t>::max();

/// Texts of records, copied out of the store.
class Cells {
public:
    void Clear()
    {
        cells.clear();
        bytes.clear();
    }
    std::size_t Bytes() const { return bytes.size(); }

    /// Takes `count` columns of the run's row.
    void Take(const Run& run, int first, std::size_t count)
    {
        cells.reserve(cells.size() + count);
        for (int column = first; column < first + static_cast<int>(count); ++column) {
            const std::optional<std::string_view> text = run.TextOrNull(column);
            cells.push_back({bytes.size(), text ? static_cast<int>(text->size()) : Null});
            bytes.append(text.value_or(std::string_view()));
        }
    }

    bool IsNull(std::size_t cell) const { return cells[cell].size == Null; }
    std::string_view Text(std::size_t cell) const
    {
        const Cell& at = cells[cell];
        return at.size == Null ? std::string_view()
                               : std::string_view(bytes.data() + at.offset, static_cast<std::size_t>(at.size));
    }

private:
    static constexpr int Null = -1;
    struct Cell {
        std::size_t offset;
        int size;
    };
    std::vector<Cell> cells;
    std::string bytes;
};

/// A record read ahead, and where it stands in the list of a listed scan.
struct RecordAhead {
    std::int64_t rowid;
    std::size_t listed;
};

/// A field to be written.
struct Change {
    std::uint16_t column;
    bool isNull;
    std::string text;
};

std::shared_ptr<Database::Connection> OpenFile(const std::filesystem::path& path, OpenMode mode)
{
    std::error_code error;
    const auto kind = std::filesystem::status(path, error).type();
    if (kind == std::filesystem::file_type::not_found)
        throw StoreError(SQLITE_CANTOPEN, "There is no file " + PathText(path), "");
    if (kind != std::filesystem::file_type::regular)
        throw StoreError(SQLITE_CANTOPEN, PathText(path) + " is not a file", "");
    // A file to be read is opened like one to be written, so that what a crash left in its journal can be put right.
    auto connection = std::make_shared<Database::Connection>(path, SQLITE_OPEN_READWRITE);
    if (mode == OpenMode::ReadOnly)
        connection->Pragma("PRAGMA query_only=ON");
    connection->Pragma("PRAGMA cell_size_check=ON");
    return connection;
}

} // namespace

// ---- database -----------------------------------------------------------------------------------

Database::Database(std::shared_ptr<Connection> opened) : connection(std::move(opened))
{
}

Database::Database(Database&&) noexcept = default;
Database& Database::operator=(Database&&) noexcept = default;
Database::~Database() = default;

Database Database::OpenDatabase(const std::filesystem::path& path, OpenMode mode)
{
    auto connection = OpenFile(path, mode);
    try {
        if (connection->Pragma("PRAGMA application_id") != ApplicationId)
            throw StoreError(SQLITE_NOTADB, "it is not a client database", "");
        if (connection->Pragma("PRAGMA user_version") != LayoutVersion)
            throw StoreError(SQLITE_NOTADB, "its tables are those of another version", "");
        // The store itself reads a page that was cut off as if zeros followed.
        std::error_code error;
        const std::uintmax_t size = std::filesystem::file_size(path, error);
        if (error)
            throw StoreError(SQLITE_CANTOPEN, error.message(), "");
        if (size % static_cast<std::uintmax_t>(connection->Pragma("PRAGMA page_size")) != 0)
            throw StoreError(SQLITE_CORRUPT, "its end is missing", "");
        RequireClientTables(*connection);
        if (mode == OpenMode::ReadWrite) {
            connection->Pragma("PRAGMA journal_mode=DELETE");
            connection->Pragma("PRAGMA synchronous=EXTRA");
        }
    } catch (const StoreError& failure) {
        throw StoreError(failure.Number(), PathText(path) + " cannot be opened: " + failure.what(),
                         failure.Statement());
    }
    return Database(std::move(connection));
}

Database Database::OpenReferenceDatabase(const std::filesystem::path& path, OpenMode mode)
{
    auto connection = OpenFile(path, mode);
    connection->reference = true;
    try {
        connection->Pragma("PRAGMA schema_version");
    } catch (const StoreError& failure) {
        throw StoreError(failure.Number(), PathText(path) + " cannot be opened: " + failure.what(),
                         failure.Statement());
    }
    return Database(std::move(connection));
}

void Database::Close()
{
    connection->Close();
}

// ---- cursor -------------------------------------------------------------------------------------

struct Recordset::State {
    State(std::shared_ptr<Database::Connection> of, const TableLayout& layout)
        : connection(std::move(of)),
          statements(connection->Statements(layout)),
          fields(statements.Fields()),
          placeInRow(fields.Count(), NotRead),
          columnAfter(fields.Count())
    {
    }

    enum class Place { BeforeFirst, OnRecord, OnDeleted, Nowhere, AtEnd };
    enum class Writing { Nothing, Record, NewRecord };

    std::size_t Column(std::string_view name);
    void RequireRecord() const;
    bool Exists();

    void StartScan();
    void Forget();
    void StandOn(std::int64_t record);
    void SeekKey(std::string_view part1, std::optional<std::string_view> part2);
    void Next();
    bool ReadAhead();
    bool ReadAheadOfList();
    void ListRecords();
    [[noreturn]] void FailOutOfOrder();
    void DropAhead(std::size_t from);
    void LearnColumn(std::size_t column);
    void ReadWhole();
    std::pair<const Cells*, std::size_t> CellOf(std::size_t column);
    const Change* Changed(std::size_t column) const;

    void Set(std::string_view name, std::string_view text, bool isNull);
    bool Write(bool mayRefuse);
    void WriteNow();

    std::shared_ptr<Database::Connection> connection;
    TableStatements& statements;
    const TableFields& fields;
    const TableIndex* index = nullptr;
    std::optional<std::string> employer;

    Place place = Place::BeforeFirst;
    std::int64_t rowid = 0;

    // The records of a scan in another order than that of adding, and how many of them have been read.
    bool listed = false;
    std::vector<std::int64_t> list;
    std::size_t listRead = 0;

    // Records read ahead, with the fields that this cursor has been asked for so far.
    std::vector<std::uint16_t> columns;
    bool allColumns = false;
    std::vector<std::uint16_t> placeInRow; ///< of each field, or NotRead
    std::vector<RecordAhead> aheadRows;
    Cells ahead;
    std::size_t aheadAt = 0;
    std::size_t rowWidth = 0;
    std::size_t aheadGoal = 1;
    sqlite3_int64 changesSeen = 0;
    bool rowIsAhead = false; ///< the current record is read from row `aheadAt` of those
    bool scanned = false;    ///< the current record was reached by MoveFirst, MoveNext or Seek
    bool sought = false;     ///< there has been a Seek: the next brings only the fields that were asked for so far

    // The current record whole.
    Cells whole;
    bool wholeRead = false;

    std::vector<std::uint16_t> columnAfter; ///< which field was last asked for after each
    std::size_t lastColumn = 0;

    Writing writing = Writing::Nothing;
    std::vector<Change> changes;
};

std::size_t Recordset::State::Column(std::string_view name)
{
    // Fields are mostly asked for in the same order for each record.
    std::size_t column = columnAfter[lastColumn];
    if (fields.All()[column].name != name) {
        column = fields.Find(name);
        if (column == TableFields::None)
            throw UnknownName(fmt::format("There is no field {} in table {}", name, statements.Layout().name));
        columnAfter[lastColumn] = static_cast<std::uint16_t>(column);
    }
    lastColumn = column;
    return column;
}

void Recordset::State::RequireRecord() const
{
    if (place == Place::OnDeleted)
        throw StoreError(SQLITE_NOTFOUND, "The record has been deleted.", "");
    if (place != Place::OnRecord)
        throw StoreError(SQLITE_NOTFOUND, "There is no current record.", "");
}

bool Recordset::State::Exists()
{
    connection->RequireOpen();
    return Run(*connection, statements.Exists()).Bind(rowid).Step();
}

/// Drops what was read of the current record, and what was to be written.
void Recordset::State::Forget()
{
    wholeRead = false;
    rowIsAhead = false;
    writing = Writing::Nothing;
    changes.clear();
}

/// Takes up a position that no scan has led to.
void Recordset::State::StandOn(std::int64_t record)
{
    rowid = record;
    place = Place::OnRecord;
    wholeRead = false;
    rowIsAhead = false;
    scanned = false;
    listed = false;
    aheadRows.clear();
    aheadAt = 0;
    aheadGoal = 1;
}

void Recordset::State::StartScan()
{
    Forget();
    StandOn(std::numeric_limits<std::int64_t>::min());
    place = Place::BeforeFirst;
}

void Recordset::State::SeekKey(std::string_view part1, std::optional<std::string_view> part2)
{
    if (index == nullptr || index->part2.empty() == part2.has_value())
        throw std::logic_error("Seek in table " + std::string(statements.Layout().name) +
                               " without an index of that key");
    connection->RequireOpen();
    Forget();
    place = Place::Nowhere;
    // Who seeks once will mostly ask for much; who goes on seeking asks for the same fields each time.
    const bool all = !sought || allColumns;
    Run run(*connection, all ? statements.Seek(*index, {}, true) : statements.Seek(*index, columns, false));
    run.Bind(part1);
    if (part2)
        run.Bind(*part2);
    if (!run.Step())
        return;
    StandOn(run.Number(0));
    sought = true;
    scanned = true;
    if (all) {
        whole.Clear();
        whole.Take(run, 1, fields.Count());
        wholeRead = true;
    } else {
        rowWidth = columns.size();
        ahead.Clear();
        ahead.Take(run, 1, rowWidth);
        aheadRows.push_back({rowid, 0});
        rowIsAhead = true;
    }
}

/// A scan that does not go forward would never end.
void Recordset::State::FailOutOfOrder()
{
    aheadRows.clear();
    place = Place::AtEnd;
    throw StoreError(SQLITE_CORRUPT,
                     fmt::format("The records of table {} are out of their order.", statements.Layout().name), "");
}

/// Takes up the rowids of a scan in the order of an index, or of one employer.
void Recordset::State::ListRecords()
{
    list.clear();
    listRead = 0;
    Run run(*connection, statements.Order(index, employer.has_value()));
    if (employer)
        run.Bind(*employer);
    std::unordered_set<std::int64_t> met;
    while (run.Step()) {
        const std::int64_t listedNow = run.Number(0);
        if (!met.insert(listedNow).second)
            FailOutOfOrder();
        list.push_back(listedNow);
    }
    if (index == nullptr)
        std::sort(list.begin(), list.end());
    listed = true;
    if (place == Place::BeforeFirst)
        return;
    const auto current = std::find(list.begin(), list.end(), rowid);
    listRead = static_cast<std::size_t>(current - list.begin()) + (current == list.end() ? 0 : 1);
}

/// Reads the next records of a listed scan. Those that are gone are passed over.
bool Recordset::State::ReadAheadOfList()
{
    if (!listed)
        ListRecords();
    while (aheadRows.empty() && listRead < list.size()) {
        if (aheadGoal == 1) {
            Run run(*connection, statements.Read(columns, allColumns));
            if (run.Bind(list[listRead]).Step()) {
                aheadRows.push_back({list[listRead], listRead});
                ahead.Take(run, 0, rowWidth);
            }
            ++listRead;
            continue;
        }
        const std::size_t end = std::min(list.size(), listRead + aheadGoal);
        const std::string rowids = fmt::format("[{}]", fmt::join(list.begin() + static_cast<std::ptrdiff_t>(listRead),
                                                                 list.begin() + static_cast<std::ptrdiff_t>(end), ","));
        Run run(*connection, statements.ReadList(columns, allColumns));
        run.Bind(rowids);
        for (; ahead.Bytes() < MostBytesAhead && run.Step(); ++listRead) {
            const std::int64_t read = run.Number(0);
            while (listRead < end && list[listRead] != read)
                ++listRead;
            if (listRead == end)
                FailOutOfOrder();
            aheadRows.push_back({read, listRead});
            ahead.Take(run, 1, rowWidth);
        }
        if (ahead.Bytes() < MostBytesAhead)
            listRead = end;
    }
    return !aheadRows.empty();
}

bool Recordset::State::ReadAhead()
{
    connection->RequireOpen();
    aheadRows.clear();
    ahead.Clear();
    aheadAt = 0;
    rowWidth = allColumns ? fields.Count() : columns.size();
    changesSeen = sqlite3_total_changes64(connection->handle);
    if (index != nullptr || employer)
        return ReadAheadOfList();
    Run run(*connection, statements.ReadAfter(columns, allColumns));
    run.Bind(rowid);
    while (aheadRows.size() < aheadGoal && ahead.Bytes() < MostBytesAhead && run.Step()) {
        const std::int64_t read = run.Number(0);
        if (read <= (aheadRows.empty() ? rowid : aheadRows.back().rowid))
            FailOutOfOrder();
        aheadRows.push_back({read, 0});
        ahead.Take(run, 1, rowWidth);
    }
    return !aheadRows.empty();
}

void Recordset::State::Next()
{
    if (place == Place::AtEnd)
        return;
    if (place == Place::Nowhere)
        RequireRecord();
    Forget();
    if (aheadAt < aheadRows.size())
        ++aheadAt;
    // Records read ahead of a write through this database are read again.
    if (aheadAt < aheadRows.size() && changesSeen != sqlite3_total_changes64(connection->handle)) {
        DropAhead(aheadAt);
        aheadGoal = 1;
    }
    if (aheadAt >= aheadRows.size()) {
        if (!ReadAhead()) {
            place = Place::AtEnd;
            return;
        }
        aheadGoal = std::min(MostRecordsAhead, aheadGoal * 8);
    }
    rowid = aheadRows[aheadAt].rowid;
    place = Place::OnRecord;
    rowIsAhead = true;
    scanned = true;
}

/// Drops the records read ahead, the list to be taken up again with row `from`.
void Recordset::State::DropAhead(std::size_t from)
{
    if (from < aheadRows.size())
        listRead = aheadRows[from].listed;
    aheadRows.clear();
    aheadAt = 0;
}

/// Has the scan bring the field along from the next record on.
void Recordset::State::LearnColumn(std::size_t column)
{
    if (columns.size() == MostFieldsApart) {
        allColumns = true;
        columns.clear();
        std::iota(placeInRow.begin(), placeInRow.end(), std::uint16_t{0});
    } else {
        placeInRow[column] = static_cast<std::uint16_t>(columns.size());
        columns.push_back(static_cast<std::uint16_t>(column));
    }
    DropAhead(aheadAt + 1);
    rowIsAhead = false;
}

void Recordset::State::ReadWhole()
{
    connection->RequireOpen();
    Run run(*connection, statements.Read({}, true));
    run.Bind(rowid);
    if (!run.Step()) {
        place = Place::OnDeleted;
        RequireRecord();
    }
    whole.Clear();
    whole.Take(run, 0, fields.Count());
    wholeRead = true;
}

/// Where the field of the current record is to be read.
std::pair<const Cells*, std::size_t> Recordset::State::CellOf(std::size_t column)
{
    if (scanned && placeInRow[column] == NotRead)
        LearnColumn(column);
    if (wholeRead)
        return {&whole, column};
    RequireRecord();
    if (rowIsAhead)
        return {&ahead, aheadAt * rowWidth + placeInRow[column]};
    ReadWhole();
    return {&whole, column};
}

const Change* Recordset::State::Changed(std::size_t column) const
{
    const auto found =
        std::find_if(changes.begin(), changes.end(), [&](const Change& change) { return change.column == column; });
    return found == changes.end() ? nullptr : &*found;
}

void Recordset::State::Set(std::string_view name, std::string_view text, bool isNull)
{
    if (writing == Writing::Nothing)
        throw std::logic_error("A field is set without Edit or AddNew");
    const auto column = static_cast<std::uint16_t>(Column(name));
    const auto at = std::ranges::lower_bound(changes, column, {}, &Change::column);
    if (at != changes.end() && at->column == column)
        *at = {column, isNull, std::string(text)};
    else
        changes.insert(at, {column, isNull, std::string(text)});
}

void Recordset::State::WriteNow()
{
    std::vector<std::uint16_t> written;
    written.reserve(changes.size());
    for (const Change& change : changes)
        written.push_back(change.column);
    connection->BeforeWrite();
    const bool aheadIsRight = changesSeen == sqlite3_total_changes64(connection->handle);
    Run run(*connection, writing == Writing::NewRecord ? statements.Insert(written) : statements.Update(written));
    for (const Change& change : changes)
        if (change.isNull)
            run.BindNull();
        else
            run.Bind(change.text);
    if (writing == Writing::NewRecord) {
        run.Change();
        StandOn(sqlite3_last_insert_rowid(connection->handle));
    } else if (run.Bind(rowid).Change() == 0) {
        place = Place::OnDeleted;
        RequireRecord();
    }
    if (aheadIsRight)
        changesSeen = sqlite3_total_changes64(connection->handle);
}

/// False if the store refused the key, where that is allowed.
bool Recordset::State::Write(bool mayRefuse)
{
    if (writing == Writing::Nothing)
        throw std::logic_error("Update without Edit or AddNew");
    try {
        if (writing == Writing::NewRecord || !changes.empty())
            WriteNow();
    } catch (const StoreError& failure) {
        Forget();
        if (mayRefuse && (failure.Number() & 0xff) == SQLITE_CONSTRAINT)
            return false;
        connection->AfterFailedWrite(failure);
        throw;
    }
    Forget();
    return true;
}

// ---- the cursor's operations --------------------------------------------------------------------

Recordset Database::OpenRecordset(std::string_view table)
{
    connection->RequireOpen();
    const TableLayout& layout = connection->reference ? FindReferenceTable(table) : FindTable(table);
    if (connection->reference)
        RequireReferenceTable(*connection, layout);
    return Recordset(std::make_unique<Recordset::State>(connection, layout));
}

std::vector<std::string> Database::EmployersInOrder(std::string_view table)
{
    connection->RequireOpen();
    std::vector<std::string> names;
    Run run(*connection, connection->Statements(FindTable(table)).Employers());
    while (run.Step())
        names.emplace_back(run.Text(0));
    return names;
}

Recordset::Recordset(std::unique_ptr<State> opened) : state(std::move(opened))
{
    state->StartScan();
}

Recordset::Recordset(Recordset&&) noexcept = default;
Recordset& Recordset::operator=(Recordset&&) noexcept = default;
Recordset::~Recordset() = default;

void Recordset::Index(std::string_view name)
{
    const std::span<const TableIndex> indexes = state->statements.Layout().indexes;
    const auto found =
        std::find_if(indexes.begin(), indexes.end(), [&](const TableIndex& index) { return index.name == name; });
    if (found == indexes.end())
        throw UnknownName("There is no index " + std::string(name) + " on table " +
                          std::string(state->statements.Layout().name));
    state->index = &*found;
    state->employer.reset();
    state->StartScan();
}

void Recordset::Seek(std::string_view part1)
{
    state->SeekKey(part1, std::nullopt);
}

void Recordset::Seek(std::string_view part1, std::string_view part2)
{
    state->SeekKey(part1, part2);
}

bool Recordset::NoMatch() const
{
    return state->place == State::Place::Nowhere;
}

void Recordset::MoveFirst()
{
    state->StartScan();
    state->Next();
}

void Recordset::MoveNext()
{
    state->Next();
}

bool Recordset::AtEnd() const
{
    return state->place == State::Place::AtEnd;
}

void Recordset::MoveFirstOf(std::string_view employer)
{
    if (state->fields.Find("EmployerName") == TableFields::None)
        throw std::logic_error("The records of table " + std::string(state->statements.Layout().name) +
                               " have no employer");
    state->employer.emplace(employer);
    MoveFirst();
}

std::string_view Recordset::Field(std::string_view name) const
{
    const std::size_t column = state->Column(name);
    if (state->writing != State::Writing::Nothing) {
        if (const Change* const change = state->Changed(column))
            return change->text;
        if (state->writing == State::Writing::NewRecord)
            return {};
    }
    const auto [cells, cell] = state->CellOf(column);
    return cells->Text(cell);
}

bool Recordset::IsNull(std::string_view name) const
{
    const std::size_t column = state->Column(name);
    if (state->writing != State::Writing::Nothing) {
        if (const Change* const change = state->Changed(column))
            return change->isNull;
        if (state->writing == State::Writing::NewRecord)
            return true;
    }
    const auto [cells, cell] = state->CellOf(column);
    return cells->IsNull(cell);
}

void Recordset::Edit()
{
    state->RequireRecord();
    if (!state->Exists()) {
        state->place = State::Place::OnDeleted;
        state->wholeRead = false;
        state->RequireRecord();
    }
    state->changes.clear();
    state->writing = State::Writing::Record;
}

void Recordset::AddNew()
{
    state->connection->RequireOpen();
    state->changes.clear();
    state->writing = State::Writing::NewRecord;
}

void Recordset::SetField(std::string_view name, std::string_view text)
{
    state->Set(name, text, false);
}

void Recordset::SetNull(std::string_view name)
{
    state->Set(name, {}, true);
}

void Recordset::Update()
{
    state->Write(false);
}

bool Recordset::TryUpdate()
{
    return state->Write(true);
}

void Recordset::Delete()
{
    state->RequireRecord();
    try {
        state->connection->BeforeWrite();
        const bool aheadIsRight = state->changesSeen == sqlite3_total_changes64(state->connection->handle);
        const int deleted = Run(*state->connection, state->statements.Delete()).Bind(state->rowid).Change();
        if (aheadIsRight)
            state->changesSeen = sqlite3_total_changes64(state->connection->handle);
        state->place = State::Place::OnDeleted;
        state->Forget();
        if (deleted == 0)
            state->RequireRecord();
    } catch (const StoreError& failure) {
        state->connection->AfterFailedWrite(failure);
        throw;
    }
}

// ---- batch --------------------------------------------------------------------------------------

WriteBatch::WriteBatch(Database& database) : connection(database.connection)
{
    connection->RequireOpen();
    ++connection->batches;
}

void WriteBatch::Commit()
{
    if (connection->batches == 1)
        connection->Commit();
}

WriteBatch::~WriteBatch()
{
    if (--connection->batches > 0)
        return;
    try {
        connection->Commit();
    } catch (const StoreError&) {
        // Whoever must know calls Commit; here another failure is already on its way.
    }
}

ReadBatch::ReadBatch(Database& database) : connection(database.connection), begun(false)
{
    connection->RequireOpen();
    if (connection->InTransaction())
        return;
    connection->Execute("BEGIN");
    begun = true;
}

ReadBatch::~ReadBatch()
{
    if (begun && connection->handle != nullptr && connection->InTransaction())
        sqlite3_exec(connection->handle, "END", nullptr, nullptr, nullptr);
}

} // namespace quillmere
