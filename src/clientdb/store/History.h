#pragma once

#include "clientdb/store/Recordset.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quillmere {

/// An operation of the change history.
struct PastOperation {
    std::int64_t number = 0;
    std::string words, who;
    std::string when;               ///< yyyy-mm-dd hh:mm:ss
    bool isUndo = false;            ///< it undoes another one, or an undo of it
    bool isUndone = false;          ///< and that undo has not been undone in turn
    std::string employer, employee; ///< whose records it wrote; of several employees' none
    std::size_t records = 0;        ///< how many it wrote
};

/// What has happened to a record; the numbers are those of the history's tables.
enum class ChangeKind { Changed = 0, Added = 1, Deleted = 2 };

/// What an operation did to one record.
struct PastChange {
    struct FieldTexts {
        std::string_view field;
        std::string before, after;
    };
    std::string_view table;
    ChangeKind kind = ChangeKind::Changed;
    std::string employer, employee; ///< afterwards; of a deleted record before
    std::vector<FieldTexts> fields; ///< those that read otherwise afterwards
};

/// Something that stands in the way of an undo: the record is not as the operation left it.
struct UndoConflict {
    enum class What { Changed, Gone, ThereAlready };
    What what = What::Changed;
    std::string_view table;
    std::string employer, employee;
    std::string_view field;  ///< that has been changed since; empty where nobody noted what has
    std::string left, found; ///< what the operation left in it, and what it holds now
};

/// The change history of a client database, for reading it and for going back. Each of its operations throws StoreError
/// when the store fails.
class History {
public:
    explicit History(Database& database);

    /// False if something else stands in the place of its tables: nothing has been noted, and nothing can be undone.
    bool IsReadable() const;

    /// Which operations are asked for; what is empty does not matter.
    struct Wanted {
        std::string employer, employee;
        std::string day; ///< yyyy-mm-dd
    };
    /// The newest of these operations, the last one first. An employer or employee who was renamed is followed back to
    /// the names before.
    std::vector<PastOperation> Operations(const Wanted& wanted, std::size_t most) const;
    /// The changes of an operation in their order; at most so many.
    std::vector<PastChange> Changes(std::int64_t operation, std::size_t most) const;

    /// The last operation of a desk that has not been undone and is no undo itself; of an employee's the last that has
    /// changed no record but his. Nothing if there is none among the newest few hundred.
    std::optional<PastOperation> LastBy(std::string_view who) const;
    std::optional<PastOperation> LastBy(std::string_view who, std::string_view employer,
                                        std::string_view employee) const;

    /// Puts every record that an operation has written back as it was before; of an undo, as the undone operation had
    /// left it. All of it or nothing: with anything changed since, nothing is, and what has been is returned. The undo
    /// is an operation of the history itself, that for which the database was opened.
    [[nodiscard]] std::vector<UndoConflict> Undo(std::int64_t operation);

private:
    struct Row;
    std::vector<Row> Rows(std::size_t most) const;
    std::optional<Row> Find(std::int64_t number) const;
    bool ChangesOnly(const Row& operation, std::string_view employer, std::string_view employee) const;

    std::shared_ptr<Database::Connection> connection;
};

} // namespace quillmere
