#pragma once

#include "clientdb/store/Cells.h"
#include "clientdb/store/ChangeBytes.h"
#include "clientdb/store/HistoryTables.h"
#include "clientdb/store/OperationNote.h"
#include "clientdb/store/PendingEdit.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace quillmere {

/// The change history of a connection: each write of a record is noted here, whoever writes, and stored in the
/// transaction of the write. Writes of one record in a row make one change.
///
/// A record is looked at before it is written, and the write noted once it has been done. Nothing is looked at or noted
/// while the history is off, which it is where its tables are not as this program makes them, or damaged: what the user
/// enters must not suffer from it. Any other failure is one of the write that it belongs to.
class ChangeLog {
public:
    explicit ChangeLog(Database::Connection& connection) : connection(connection) {}

    /// The history as it was found, and whose writes these are; nothing: nobody says, and each transaction is an
    /// operation.
    void Begin(HistoryState found, std::shared_ptr<OperationNote> newNote);

    void LookAt(TableStatements& statements, std::int64_t record, std::span<const PendingEdit::Change> changes);
    void LookAtWhole(TableStatements& statements, std::int64_t record);
    void NoteChanged(TableStatements& statements, std::int64_t record, std::span<const PendingEdit::Change> changes);
    void NoteAdded(TableStatements& statements, std::int64_t record, std::span<const PendingEdit::Change> changes);
    void NoteDeleted(TableStatements& statements, std::int64_t record);

    /// Stores that an operation has been undone, whose changes are the root's, read backward or forward.
    void StoreUndo(std::int64_t undone, std::int64_t root, bool backward);

    /// Stores what has been noted: before the transaction is committed. Throws StoreError.
    void Store();
    /// Turns the history off if the failure of the commit is its own: what else was written can be committed without.
    bool GoOnWithout(const StoreError& failure);
    /// The same after a write that failed: what was written before it is to stay, and does so without being noted where
    /// that fails too.
    void StoreOrGiveUp();
    /// The transaction has been committed, or is gone with all that it held.
    void Committed();
    void Lost();

    /// How many of the connection's changes are the history's own.
    std::int64_t OwnChanges() const { return ownChanges; }

private:
    /// A record that is being changed field by field.
    struct InHand {
        TableStatements* statements;
        std::int64_t record;
        std::string employer, employee;
        std::vector<FieldChange> fields;
        std::optional<Cells> before; ///< of all fields, as they were when the first few had been changed
    };
    /// Changes to the records of one employee or employer that wait to be stored.
    struct Waiting {
        std::string employer, employee;
        std::int64_t records = 0;
        std::string bytes = {};
        std::size_t bytesLeft = 0; ///< in the tables alone, from which an undo puts them here
    };

    /// What belongs to an operation.
    struct Extent {
        std::int64_t changes = 0, bytes = 0; ///< its own rows of changes
        std::int64_t undoes = 0, root = 0;   ///< of an undo, the one that it undoes and the one that has them
        bool backward = false;
    };

    bool IsOn();
    void TurnOff();
    template<class Work>
    void TurnOffUnless(Work work);
    bool IsInHand(const TableStatements& statements, std::int64_t record) const
    {
        return inHand && inHand->statements == &statements && inHand->record == record;
    }
    std::optional<std::string> LookedAt(std::size_t column) const;
    void PutAway();
    template<class Put>
    void Wait(std::string_view employer, std::string_view employee, Put put);
    void StoreWaiting();
    void StoreOperation();
    void StoreLastChange();
    std::int64_t InsertOperation(const Extent& extent);

    Database::Connection& connection;
    std::shared_ptr<OperationNote> note;
    std::int64_t number = 0;     ///< of the operation in the file; 0: it is not there
    bool numberIsStored = false; ///< it stays when the transaction is lost
    HistoryState state = HistoryState::Foreign;

    std::vector<std::uint16_t> lookedAt; ///< fields of the record that is about to be written
    Cells looked;                        ///< what they hold; of a record to be deleted, all of it
    std::optional<Cells> lookedWhole;    ///< the record that is about to be written, where it has been read whole
    std::optional<InHand> inHand;
    std::vector<Waiting> waiting;
    std::size_t waitingBytes = 0;
    std::string encoded; ///< the fields of the change in work
    std::int64_t ownChanges = 0;
};

} // namespace quillmere
