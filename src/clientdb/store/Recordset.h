#pragma once

#include "clientdb/store/StoreErrors.h"

#include <cstddef>
#include <filesystem>
#include <functional>
#include <initializer_list>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace quillmere {

class Recordset;
struct OperationNote;
struct TableLayout;

/// The place of a field among those of its table.
enum class FieldPlace : std::size_t {};

enum class OpenMode { ReadWrite, ReadOnly };

/// An open database file: shared, with no exclusive lock. It never makes a file. Closed by its end.
class Database {
public:
    /// Throws StoreError if the file is missing, no database of this program, or locked past the time-out. What is
    /// written goes into its change history, with the words of `note`; without one each transaction is an operation of
    /// nobody.
    static Database OpenDatabase(const std::filesystem::path& path, OpenMode mode = OpenMode::ReadWrite,
                                 std::shared_ptr<OperationNote> note = nullptr);
    /// Opens the reference database of car models, whose tables are its own. Throws StoreError if the file is missing
    /// or no database.
    static Database OpenReferenceDatabase(const std::filesystem::path& path, OpenMode mode = OpenMode::ReadOnly);
    Database(Database&&) noexcept;
    Database& operator=(Database&&) noexcept;
    ~Database();

    /// A cursor in table mode over the named table (names regardless of case), standing before its first record.
    Recordset OpenRecordset(std::string_view table);

    /// Says that a record will be sought by its key, one part or two. Where each question is a journey to a server, all
    /// that is said so is asked in one, with what is sought next; a file answers each as it comes.
    void WillSeek(std::string_view table, std::string_view part1, std::optional<std::string_view> part2 = std::nullopt);

    /// Says that a record will be added to each of these tables: a batch that waits for no answer then need not wait
    /// for their numbers either.
    void WillAdd(std::span<const TableLayout* const> tables);

    /// The different employers of a table, in the order in which a scan of it in the order of adding meets them.
    /// Records with no employer are passed over.
    std::vector<std::string> EmployersInOrder(std::string_view table);

    /// Says to the other desks of a shared folder which employee is open at this one, none for an empty name, and gives
    /// those of them that have him open, too. Of a file nobody knows.
    std::vector<std::string> OthersAt(std::string_view desk, std::string_view employer, std::string_view employee);

    /// Closes the file. Its cursors can do nothing any more but end.
    void Close();

    struct Connection;

private:
    friend class FormMarks;
    friend class Recordset;
    friend class WriteBatch;
    friend class ReadBatch;
    friend class History;
    explicit Database(std::shared_ptr<Connection> connection);
    std::shared_ptr<Connection> connection;
};

/// A cursor over one table with a current record. Field names are those of the table layouts; a null field reads as an
/// empty text. Every operation throws StoreError when the store fails and UnknownName for a name of no layout.
class Recordset {
public:
    Recordset(Recordset&&) noexcept;
    Recordset& operator=(Recordset&&) noexcept;
    ~Recordset();

    /// Has Seek and the moves read these fields and no others until one is asked for: who looks at few fields of a
    /// record does not depend on the rest of it.
    void Fetch(std::initializer_list<std::string_view> names);
    /// As Fetch; gives the place by which the field is read of one record after the other without a look for its name.
    FieldPlace Prepare(std::string_view name);

    /// Names the index, "IndKey" or "PrimaryKey", for Seek and for the order of MoveFirst and MoveNext, and puts the
    /// cursor before the first of all records. Without an index the order is that of adding; with one, that of the key
    /// by code point, as it was when the cursor took it up: records added since are not met.
    void Index(std::string_view name);
    /// Positions on the record whose key equals the parts. Throws std::logic_error if the index named has another
    /// number of parts, or none is named.
    void Seek(std::string_view part1);
    void Seek(std::string_view part1, std::string_view part2);
    bool NoMatch() const;

    void MoveFirst();
    /// From before the first record this is MoveFirst.
    void MoveNext();
    /// True once there is no record to move on to.
    bool AtEnd() const;
    /// As MoveFirst, but MoveFirst and MoveNext then go through the records of one employer only, in the same order.
    void MoveFirstOf(std::string_view employer);

    /// The field's text, empty for null. The view holds until the cursor moves or writes. Between Edit or AddNew and
    /// Update, what was set is read. Throws StoreError if there is no current record.
    std::string_view Field(std::string_view name) const;
    std::string_view Field(FieldPlace place) const;
    bool IsNull(std::string_view name) const;

    /// Opens the current record for writing; a record that is gone is a StoreError.
    void Edit();
    /// Opens a new record, all fields null.
    void AddNew();
    void SetField(std::string_view name, std::string_view text);
    void SetNull(std::string_view name);
    /// Writes what was set since Edit or AddNew, and nothing else of the record. After AddNew the cursor stands on the
    /// new record. Throws StoreError if the record is gone, or if another record has the key.
    void Update();
    /// As Update, but false, with the record left as it was, if another record has the key.
    [[nodiscard]] bool TryUpdate();
    /// Deletes the current record; MoveNext then goes on to the one after it.
    void Delete();

    struct State;

private:
    friend class Database;
    explicit Recordset(std::unique_ptr<State> state);
    std::unique_ptr<State> state;
};

/// Gathers the single writes of one operation into one transaction of the store, so that they cost one sync. It is
/// committed when the batch ends, and also when a write fails: what was written before a failure stays. The store is
/// locked to others from the first write to the commit, so all writes of the operation go through the one database.
/// Batches may be nested; the outermost commits.
class WriteBatch {
public:
    explicit WriteBatch(Database& database);
    /// Locks the store now, so that what is read from here on is what is written over. Throws BatchLost if it cannot.
    void Begin();
    /// Where each answer is a journey to a server, waits for none of the writes from here on: what is refused is told
    /// later, at the latest by the commit, and takes the whole batch along (BatchLost::IsUntold). Nothing happens in a
    /// file, or within a greater batch.
    void WaitForNoAnswer();
    /// Commits now; throws BatchLost if the store cannot, and then nothing of the batch since the last commit is
    /// stored. A write of the batch throws it likewise.
    void Commit();
    /// Commits what Commit has not, passing over a failure.
    ~WriteBatch();
    WriteBatch(const WriteBatch&) = delete;
    WriteBatch& operator=(const WriteBatch&) = delete;

private:
    std::shared_ptr<Database::Connection> connection;
};

/// Does the writes as a batch that waits for no answer. If one is refused, nothing is stored, and they are done once
/// more one after the other: so it is told which it was, and what was written before it stays. Throws StoreError.
void WriteAtOnce(Database& database, const std::function<void()>& writes);

/// Gathers the reads of one operation under one lock: they see one state of the database, and nobody writes to it until
/// the batch ends.
class ReadBatch {
public:
    /// Throws StoreError.
    explicit ReadBatch(Database& database);
    ~ReadBatch();
    ReadBatch(const ReadBatch&) = delete;
    ReadBatch& operator=(const ReadBatch&) = delete;

private:
    std::shared_ptr<Database::Connection> connection;
    bool begun;
};

} // namespace quillmere
