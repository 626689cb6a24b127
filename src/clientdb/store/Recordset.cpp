#include "clientdb/store/Recordset.h"

#include "clientdb/store/ChangeLog.h"
#include "clientdb/store/FileEngine.h"
#include "clientdb/store/PendingEdit.h"
#include "clientdb/store/ReadAhead.h"
#include "clientdb/store/Schema.h"
#include "clientdb/store/ServerEngine.h"

#include <algorithm>
#include <fmt/format.h>
#include <utility>

namespace quillmere {

// ---- database -----------------------------------------------------------------------------------

Database::Database(std::shared_ptr<Connection> opened) : connection(std::move(opened))
{
}

Database::Database(Database&&) noexcept = default;
Database& Database::operator=(Database&&) noexcept = default;
Database::~Database() = default;

Database Database::OpenDatabase(const std::filesystem::path& path, OpenMode mode, std::shared_ptr<OperationNote> note)
{
    if (const std::optional<ServerService> service = ReadService(path))
        return Database(OpenServer(*service, mode, std::move(note)));
    return Database(OpenClientFile(path, mode, std::move(note)));
}

Database Database::OpenReferenceDatabase(const std::filesystem::path& path, OpenMode mode)
{
    return Database(OpenReferenceFile(path, mode));
}

std::vector<std::string> Database::OthersAt(std::string_view desk, std::string_view employer, std::string_view employee)
{
    return connection->OthersAt(desk, employer, employee);
}

void Database::Close()
{
    connection->Close();
}

// ---- cursor -------------------------------------------------------------------------------------

using Place = Position::Place;

struct Recordset::State {
    State(std::shared_ptr<Database::Connection> of, const TableLayout& layout)
        : connection(std::move(of)),
          statements(connection->Statements(layout)),
          fields(statements.Fields()),
          position(statements),
          ahead(*connection, statements),
          columnAfter(fields.Count())
    {
        StartScan();
    }

    std::size_t Column(std::string_view name);
    bool Exists();
    void Forget();
    void StartScan();
    void SeekKey(std::string_view part1, std::optional<std::string_view> part2);
    void Next();
    void Set(std::string_view name, std::string_view text, bool isNull) { edit.Set(Column(name), text, isNull); }
    bool Write(bool mayRefuse);
    void WriteNow(bool mayRefuse);
    void Delete();

    std::shared_ptr<Database::Connection> connection;
    TableStatements& statements;
    const TableFields& fields;
    Position position;
    ReadAhead ahead;
    PendingEdit edit;

    std::vector<std::uint16_t> columnAfter; ///< which field was last asked for after each
    std::size_t lastColumn = 0;
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

bool Recordset::State::Exists()
{
    connection->RequireOpen();
    if (connection->HoldsRecords())
        return connection->Hold(statements, position.Rowid()) != nullptr;
    return Run(statements.Exists()).Bind(position.Rowid()).Step();
}

/// Drops what was read of the current record, and what was to be written.
void Recordset::State::Forget()
{
    ahead.ForgetRecord();
    edit.Drop();
}

void Recordset::State::StartScan()
{
    ahead.Drop();
    edit.Drop();
    position.StandBeforeFirst();
}

void Recordset::State::SeekKey(std::string_view part1, std::optional<std::string_view> part2)
{
    const TableIndex* const index = position.Order();
    if (index == nullptr || index->part2.empty() == part2.has_value())
        throw std::logic_error("Seek in table " + std::string(statements.Layout().name) +
                               " without an index of that key");
    connection->RequireOpen();
    Forget();
    position.Leave(Place::Nowhere);
    ahead.Seek(position, {part1, part2});
}

void Recordset::State::Next()
{
    if (position.At() == Place::AtEnd)
        return;
    if (position.At() == Place::Nowhere)
        position.RequireRecord();
    edit.Drop();
    if (!ahead.Next(position))
        position.Leave(Place::AtEnd);
}

void Recordset::State::WriteNow(bool mayRefuse)
{
    connection->BeforeWrite();
    const bool isFresh = ahead.IsFresh();
    const bool isNew = edit.IsNewRecord();
    if (!isNew)
        connection->log->LookAt(statements, position.Rowid(), edit.Changes());
    const bool isHeld = !isNew && connection->Held(statements.Layout(), position.Rowid()) != nullptr;
    const std::int64_t foreseen = isNew ? connection->NumberForRecord(statements.Layout()) : 0;
    const bool isToldLater = connection->waitsForNoAnswer && !mayRefuse;
    const int written = edit.Write(statements, isNew ? foreseen : position.Rowid(), isHeld, isToldLater);
    if (!isNew && written == 0) {
        position.Leave(Place::OnDeleted);
        position.RequireRecord();
    }
    const std::int64_t record = !isNew ? position.Rowid() : foreseen != 0 ? foreseen : connection->LastAdded();
    if (isNew)
        connection->log->NoteAdded(statements, record, edit.Changes());
    else
        connection->log->NoteChanged(statements, record, edit.Changes());
    connection->NoteWritten(statements.Layout(), record, edit);
    connection->AfterWrite();
    if (isNew) {
        ahead.Drop();
        position.StandOn(record);
    }
    if (isFresh)
        ahead.StayFresh();
}

/// False if the store refused the key, where that is allowed.
bool Recordset::State::Write(bool mayRefuse)
{
    if (!edit.IsOpen())
        throw std::logic_error("Update without Edit or AddNew");
    try {
        if (!edit.IsEmpty())
            WriteNow(mayRefuse);
    } catch (const StoreError& failure) {
        Forget();
        if (mayRefuse && (failure.Number() & 0xff) == SQLITE_CONSTRAINT) {
            connection->DropSingleWrite();
            return false;
        }
        connection->AfterFailedWrite(failure);
        throw;
    }
    Forget();
    return true;
}

void Recordset::State::Delete()
{
    position.RequireRecord();
    try {
        connection->BeforeWrite();
        const bool isFresh = ahead.IsFresh();
        connection->log->LookAtWhole(statements, position.Rowid());
        const bool isHeld = connection->Held(statements.Layout(), position.Rowid()) != nullptr;
        Run run(statements.Delete());
        const int deleted = run.Bind(position.Rowid()).ChangeOne(isHeld);
        connection->NoteDeleted(statements.Layout(), position.Rowid());
        if (deleted == 0) {
            position.Leave(Place::OnDeleted);
            Forget();
            position.RequireRecord();
        }
        connection->log->NoteDeleted(statements, position.Rowid());
        connection->AfterWrite();
        if (isFresh)
            ahead.StayFresh();
        position.Leave(Place::OnDeleted);
        Forget();
    } catch (const StoreError& failure) {
        connection->AfterFailedWrite(failure);
        throw;
    }
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

void Database::WillSeek(std::string_view table, std::string_view part1, std::optional<std::string_view> part2)
{
    if (!connection->IsShared())
        return;
    connection->RequireOpen();
    const TableLayout& layout = FindTable(table);
    for (const TableIndex& index : layout.indexes)
        if (index.part2.empty() != part2.has_value())
            return connection->Foresee(connection->Statements(layout), index, {part1, part2});
}

void Database::WillAdd(std::span<const TableLayout* const> tables)
{
    if (connection->waitsForNoAnswer)
        connection->ForeseeAdding(tables);
}

std::vector<std::string> Database::EmployersInOrder(std::string_view table)
{
    connection->RequireOpen();
    std::vector<std::string> names;
    Run run(connection->Statements(FindTable(table)).Employers());
    while (run.Step())
        names.emplace_back(run.Text(0));
    return names;
}

Recordset::Recordset(std::unique_ptr<State> opened) : state(std::move(opened))
{
}

Recordset::Recordset(Recordset&&) noexcept = default;
Recordset& Recordset::operator=(Recordset&&) noexcept = default;
Recordset::~Recordset() = default;

void Recordset::Fetch(std::initializer_list<std::string_view> names)
{
    for (const std::string_view name : names)
        Prepare(name);
}

FieldPlace Recordset::Prepare(std::string_view name)
{
    const std::size_t column = state->Column(name);
    state->ahead.Fetch(state->position, column);
    return FieldPlace{column};
}

void Recordset::Index(std::string_view name)
{
    const std::span<const TableIndex> indexes = state->statements.Layout().indexes;
    const auto found =
        std::find_if(indexes.begin(), indexes.end(), [&](const TableIndex& index) { return index.name == name; });
    if (found == indexes.end())
        throw UnknownName("There is no index " + std::string(name) + " on table " +
                          std::string(state->statements.Layout().name));
    state->position.SetOrder(*found);
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
    return state->position.At() == Place::Nowhere;
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
    return state->position.At() == Place::AtEnd;
}

void Recordset::MoveFirstOf(std::string_view employer)
{
    if (state->fields.Find("EmployerName") == TableFields::None)
        throw std::logic_error("The records of table " + std::string(state->statements.Layout().name) +
                               " have no employer");
    state->position.SetEmployer(employer);
    MoveFirst();
}

std::string_view Recordset::Field(std::string_view name) const
{
    return Field(FieldPlace{state->Column(name)});
}

std::string_view Recordset::Field(FieldPlace place) const
{
    const auto column = static_cast<std::size_t>(place);
    if (state->edit.IsOpen()) {
        if (const PendingEdit::Change* const change = state->edit.Find(column))
            return change->text;
        if (state->edit.IsNewRecord())
            return {};
    }
    return state->ahead.Text(state->position, column);
}

bool Recordset::IsNull(std::string_view name) const
{
    const std::size_t column = state->Column(name);
    if (const PendingEdit::Change* const change = state->edit.Find(column))
        return change->isNull;
    return state->edit.IsNewRecord() || state->ahead.IsNull(state->position, column);
}

void Recordset::Edit()
{
    state->position.RequireRecord();
    if (!state->Exists()) {
        state->position.Leave(Place::OnDeleted);
        state->ahead.ForgetRecord();
        state->position.RequireRecord();
    }
    state->edit.BeginRecord();
}

void Recordset::AddNew()
{
    state->connection->RequireOpen();
    state->edit.BeginNewRecord();
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
    state->Delete();
}

// ---- batch --------------------------------------------------------------------------------------

WriteBatch::WriteBatch(Database& database) : connection(database.connection)
{
    connection->RequireOpen();
    ++connection->batches;
}

void WriteBatch::Begin()
{
    connection->BeforeWrite();
}

void WriteBatch::WaitForNoAnswer()
{
    connection->waitsForNoAnswer = connection->IsShared() && connection->batches == 1 && !connection->InTransaction();
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
    connection->waitsForNoAnswer = connection->isUntold = false;
}

void WriteAtOnce(Database& database, const std::function<void()>& writes)
{
    try {
        WriteBatch batch(database);
        batch.WaitForNoAnswer();
        writes();
        return batch.Commit();
    } catch (const BatchLost& lost) {
        if (!lost.IsUntold())
            throw;
    }
    WriteBatch batch(database);
    writes();
    batch.Commit();
}

ReadBatch::ReadBatch(Database& database) : connection(database.connection), begun(false)
{
    connection->RequireOpen();
    if (connection->InTransaction())
        return;
    connection->BeginReading();
    begun = true;
}

ReadBatch::~ReadBatch()
{
    if (begun && connection->IsOpen() && connection->InTransaction())
        connection->EndReading();
}

} // namespace quillmere
