#pragma once

#include "clientdb/store/TableStatements.h"

#include <sqlite3.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

/// What stands behind Database and Recordset: a connection to a file or to a server, with its prepared statements. The
/// store writes its statements in the words of the file's engine, and the numbers of failures are the file's; what an
/// engine has otherwise, it puts into its own words itself.
namespace quillmere {

class ChangeLog;
class PendingEdit;
enum class HistoryState;

/// The parts of a key that is sought.
struct Key {
    std::string_view part1;
    std::optional<std::string_view> part2;

    void BindTo(Run& run) const;
};

/// A record of which nobody else changes anything before the transaction ends.
struct HeldRecord {
    const TableLayout* layout;
    std::int64_t number;
    Cells texts;          ///< of all fields
    bool isFirst = false; ///< in the order of adding
};

struct Database::Connection {
    explicit Connection(std::filesystem::path path);
    virtual ~Connection();
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    // What an engine does in its own way.
    virtual void Close() = 0;
    virtual bool IsOpen() const = 0;
    virtual std::unique_ptr<Prepared> Prepare(const std::string& text) = 0;
    virtual bool InTransaction() const = 0;
    /// Begins a transaction in which nothing is written: what is read is of one state.
    virtual void BeginReading() = 0;
    virtual void EndReading() noexcept = 0;
    /// Begins one that writes.
    virtual void BeginWriting() = 0;
    virtual void EndTransaction() = 0;
    virtual void GiveUpTransaction() noexcept = 0;
    virtual void MarkPlace(const std::string& name) = 0;
    virtual void GoBackTo(const std::string& name) noexcept = 0;
    /// How many records have been written through the connection, and the number of the one that was added last.
    virtual std::int64_t Changes() const = 0;
    virtual std::int64_t LastAdded() const = 0;
    /// How the engine reads the records of a list, each once, in its order; `{0}` is the table, `{1}` its columns.
    virtual std::string_view ReadListWords() const = 0;
    /// A list of rowids as the parameter of that statement.
    virtual std::string RowidList(std::span<const std::int64_t> rowids) const = 0;
    /// What the statement that adds a record ends with, so that its number is known.
    virtual std::string_view AddedWords() const = 0;
    /// True if the numbers of the history's changes are others' too, and what is posted fails late.
    virtual bool IsShared() const { return false; }
    /// The number for an operation of the history; 0: it gets the next one as it is written.
    virtual std::int64_t NumberForOperation() { return 0; }
    /// How many bytes the operations of the history take.
    virtual std::int64_t HistoryBytes();
    /// True in a transaction in which records that are read by their key or number are locked, and what the statement
    /// that does it ends with. Such a record is read whole.
    virtual bool HoldsRecords() const { return false; }
    virtual std::string_view HoldWords() const { return {}; }
    /// A record that the transaction has locked and read: it is there, and a write to it can be posted. Nothing for one
    /// that it has not.
    virtual const HeldRecord* Held(const TableLayout&, std::int64_t) { return nullptr; }
    virtual const HeldRecord* Held(const TableStatements&, const TableIndex&, const Key&) { return nullptr; }
    virtual const HeldRecord* HeldFirst(const TableLayout&) { return nullptr; }
    virtual void NoteHeld(const TableLayout&, std::int64_t, const Cells&, bool /*isFirst*/) {}
    /// A cursor has written the record, or deleted it.
    virtual void NoteWritten(const TableLayout&, std::int64_t, const PendingEdit&) {}
    virtual void NoteDeleted(const TableLayout&, std::int64_t) {}
    /// Called before a record is sought, or the first one. Where records are locked, that of a batch belongs to its
    /// transaction.
    virtual void BeforeSeek() {}
    /// Says that a record will be sought: it is asked for along with what is sought next. Foreseen() is the statement
    /// that has the answer, with all fields, until the next one is asked for; nullptr where it has not been asked for.
    virtual void Foresee(TableStatements&, const TableIndex&, const Key&) {}
    virtual Prepared* Foreseen(const TableStatements&, const TableIndex&, const Key&) { return nullptr; }
    /// Says that records will be added to these tables: their numbers are asked for along with what is asked next.
    virtual void ForeseeAdding(std::span<const TableLayout* const>) {}
    /// The number that the next record of the table will have; 0: it gets one as it is added.
    virtual std::int64_t NumberForRecord(const TableLayout&) { return 0; }
    virtual HistoryState LookAtHistory() = 0;
    /// What made a table that stands beside those of the layouts; empty for none.
    virtual std::string TableWords(std::string_view table) = 0;
    /// Records that were added with numbers of their own: the next one gets a number behind theirs.
    virtual void CountOn(std::string_view /*table*/, std::string_view /*number*/) {}
    /// Says which employee is open at this desk, none for an empty name, and gives the other desks that have him open.
    virtual std::vector<std::string> OthersAt(std::string_view /*desk*/, std::string_view /*employer*/,
                                              std::string_view /*employee*/)
    {
        return {};
    }

    /// Throws StoreError unless the connection is open.
    void RequireOpen() const;
    TableStatements& Statements(const TableLayout& layout);
    /// The record as it stands, locked; nothing if it is gone. In a transaction that locks what it reads.
    const HeldRecord* Hold(TableStatements& statements, std::int64_t record);
    /// The same of the first record in the order of adding.
    const HeldRecord* HoldFirst(TableStatements& statements);
    /// A statement of the connection itself, prepared once.
    Prepared& Own(const std::string& text);
    /// Runs a statement of the connection itself, prepared once.
    void Execute(const std::string& text);
    /// The number that such a statement gives, 0 for none.
    std::int64_t Number(const std::string& text);
    /// How many records have been written through the connection, without those of the history.
    std::int64_t Writes() const;
    /// Called before each write: begins a transaction, which is the batch's or that of the single write and of what
    /// the history says of it. Throws BatchLost if it cannot begin that of a batch.
    void BeforeWrite();
    /// Called when a write is done: ends the transaction of a single one.
    void AfterWrite();
    /// Called when a write failed: commits what a batch has written before. Throws BatchLost, with the failure of the
    /// write, if that is gone.
    void AfterFailedWrite(const StoreError& failure);
    /// Gives up the single write that has failed; a batch goes on.
    void DropSingleWrite();
    /// Gives up everything that the transaction has written.
    void RollBack();
    /// Commits the transaction of the batch, if one was begun. Rolls it back and throws BatchLost if the store cannot.
    void Commit();

    std::filesystem::path file;
    bool reference = false;
    int batches = 0;
    bool waitsForNoAnswer = false; ///< the batch does not: what is refused takes all of it back
    bool isUntold = false;         ///< which it has done
    bool isSingleWrite = false;    ///< the transaction is that of one write
    std::unique_ptr<ChangeLog> log;

protected:
    void ForgetStatements();

private:
    void CommitWithHistory();

    std::vector<std::unique_ptr<TableStatements>> tables;
    std::unordered_map<std::string, std::unique_ptr<Prepared>> own;
};

/// A path as UTF-8.
std::string PathText(const std::filesystem::path& path);

/// Fails as the hook of the tests wants the statement to.
void FailIfAsked(std::string_view statement);

} // namespace quillmere
