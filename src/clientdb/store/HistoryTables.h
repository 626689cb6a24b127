#pragma once

#include "clientdb/store/Connection.h"

/// The two tables of the change history. They stand beside those of the layouts, and are made when the first change is
/// written.
namespace quillmere {

/// An operation: its words, who, when; the first and last of its changes, which others' changes may stand between; how
/// many bytes they take. An operation that undoes another has no changes of its own: they are those of its root, read
/// backward, or forward again where an undo was undone.
inline constexpr std::string_view OperationTable = "HistoryOperation";
/// What was done to the records of one employee or employer in a row: the key that they have afterwards, deleted ones
/// had before; how many; the changes as bytes.
inline constexpr std::string_view ChangeTable = "HistoryChange";

/// What makes a table of the history; the condition is not kept in the schema.
std::string CreateHistoryTableText(std::string_view table, std::string_view condition = {});

enum class HistoryState {
    None,    ///< nothing has been written yet
    Ready,   ///< both tables are there as this program makes them
    Foreign, ///< something else is there
};
/// Finds the state out from the entries of a schema.
class HistoryLook {
public:
    void Meet(std::string_view name, std::string_view table, std::string_view statement);
    HistoryState Found() const;

private:
    std::size_t met = 0;
    bool foreign = false;
};

/// A history of more bytes than these lets its oldest operations go, and so much is left of it then.
inline constexpr std::int64_t MostHistoryBytes = 32 * 1024 * 1024;
inline constexpr std::int64_t KeptHistoryBytes = MostHistoryBytes / 4 * 3;

/// So often it is looked whether it has grown too large: at each operation whose number is so divided.
inline constexpr std::int64_t OperationsBetweenLooks = 64;
/// What asks how many bytes the operations take.
std::string HistoryBytesText();

/// If the operations take up more than `most` bytes, lets the oldest go until the others take up no more than `kept`.
/// The newest stays whatever it takes.
void ThinHistory(Database::Connection& connection, std::int64_t most, std::int64_t kept);

} // namespace quillmere
