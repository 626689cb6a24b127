#pragma once

#include "clientdb/TypedEntries.h"
#include "frame/Session.h"

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace quillmere {

class Recordset;

/// The data link of a screen: its boxes bound to the fields of one record. A box shows its field when the link arrives
/// at a record; a box whose text has changed is written when the link moves or the screen closes. There is no other
/// saving. Every operation opens the client database and closes it again; what the store refuses comes out as
/// StoreError, with the changed boxes still waiting to be written.
class DataLink {
public:
    /// Binds every box of the screen that names a field.
    DataLink(Session& session, Screen& screen, std::string_view table);

    /// Writes what has changed, then moves to the record of the key and shows it. On no match the boxes stay as they
    /// are and the link holds no record; so it is, too, if the record that it stood on and is to go to again is gone.
    [[nodiscard]] bool Seek(std::string_view index, std::string_view part1, std::string_view part2 = {});
    /// Writes the changed boxes of the record that the link stands on. Throws RecordGone, and holds no record any more,
    /// if somebody has deleted it meanwhile.
    void Store();
    /// Writes what has changed and takes the link off its record.
    void Release();
    /// Takes the link off its record with nothing written, here or for the next start. Throws FileError.
    void DropChanges();
    /// Takes the link off its record and keeps the changed boxes beside the database, until a link arrives there again.
    /// Throws FileError.
    void KeepChanges();
    /// True while boxes hold what an earlier run kept and the store has not taken since.
    bool HasBroughtBack() const { return hasBroughtBack; }
    /// Another screen has written the box's field: what it holds now. The box is written, too, if it reads otherwise.
    void NoteStored(const Box& box, std::string_view text) { shown[&box] = text; }
    bool HasRecord() const { return hasRecord; }

private:
    /// Where a link stands: a record of the folder that was selected when it went there.
    struct Key {
        std::filesystem::path database;
        std::string index, part1, part2;

        friend bool operator==(const Key&, const Key&) = default;
    };

    void Show(Recordset& records);
    void BringBack();
    void ForgetKept();
    std::vector<Box*> Changed() const;
    TypedEntries::Record Record() const;
    static bool Position(Recordset& records, const Key& to);

    Session& session;
    std::string table;
    std::vector<Box*> bound;
    std::unordered_map<const Box*, std::string> shown; ///< what each box held when the link arrived
    Key key;
    bool hasRecord = false;
    bool hasBroughtBack = false;
};

} // namespace quillmere
