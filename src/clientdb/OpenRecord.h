#pragma once

#include "clientdb/Overwritten.h"
#include "clientdb/TypedEntries.h"
#include "frame/Session.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quillmere {

class Database;
class FurtherCarsAlong;
class Recordset;

/// A record that is open, the employee's or the employer's: it shows in the boxes of one screen at a time that name its
/// fields. A box whose text has changed is written when the record is shown again or elsewhere, or the screen closes;
/// there is no other saving. Every operation opens the client database and closes it again. What the store refuses is
/// told in its own words under the screen's caption, with the changed boxes still waiting to be written.
class OpenRecord {
public:
    struct Source {
        std::string_view table;
        std::string_view index; ///< "IndKey" seeks employer and employee, "PrimaryKey" the employer
    };

    OpenRecord(Session& session, const Source& source) : session(session), source(source) {}

    std::string_view Table() const { return source.table; }
    bool IsOn(const Screen& candidate) const { return screen == &candidate; }
    /// False if the record has not been found, or somebody has deleted it meanwhile: what is typed is stored nowhere,
    /// and the status bar says so.
    bool IsThere() const { return isThere; }

    enum class Sought {
        Found,
        NotFound,
        Failed, ///< the store could not write or read: the record shows where it did
    };

    /// Writes what has changed, then shows the record of the current employee or employer on the screen. If there is
    /// none "Employee not found" is told under `errorTitle`, and the boxes stay as they are.
    [[nodiscard]] Sought StoreAndShow(Screen& on, std::string_view errorTitle, const FurtherCarsAlong* along = nullptr);
    /// The same on the screen that it shows on, if there is one.
    void StoreAndShowAgain(std::string_view errorTitle);
    /// Writes what has changed before the record is read elsewhere. False if the store fails; of a record that is gone
    /// whoever looks for it next will tell.
    [[nodiscard]] bool Store();
    /// The same before the screen closes: false if it has to stay, because the store has not taken what is typed. A
    /// record that is gone is told of and is no bar.
    [[nodiscard]] bool MayClose();
    /// At the end of the program at the system's wish: writes what has changed, or keeps what the user has typed of it
    /// for the next opening of the record where the store does not take it.
    void StoreOrKeep();
    /// Gives up what has changed: nothing of it is written.
    void DropChanges() { isThere = false; }
    /// What the user has typed and the store has not taken yet.
    std::vector<TypedEntries::Line> Typed() const;
    /// The screen closes: if the record shows there it is written, where the store takes it, and shows nowhere.
    void Close(const Screen& closing);
    /// The screen is gone: the record does not show there any more.
    void Leave(const Screen& gone);

    /// A notepad has worked a field out: the box that is bound to it shows the text. If the notepad has written the
    /// field, the box holds what it has written; else the box waits to be written.
    void HandOver(std::string_view field, std::string_view text, const std::optional<std::string>& stored);
    /// What the box that is bound to the field reads; nothing if there is none.
    std::optional<std::string> Reads(std::string_view field) const;

private:
    /// Where it was sought: in the folder that was selected then.
    struct Key {
        std::filesystem::path database;
        TypedEntries::Record record;

        friend bool operator==(const Key&, const Key&) = default;
    };
    /// A box, what it read when its field was read or written last, and what the record held then.
    struct BoundBox {
        Box* box;
        std::string held;
        std::string stored;
    };

    Key Current() const;
    void Seek(Screen& on, const FurtherCarsAlong* along);
    bool Position(Recordset& records, const Key& to) const;
    void Write();
    void WriteChanged(const std::vector<BoundBox*>& changed);
    std::vector<BoundBox*> Changed();
    static std::vector<Overwritten> WrittenOver(const Recordset& records, const std::vector<BoundBox*>& changed);
    void ShowNote() const;
    /// The record is gone while it was open: what is typed of it is kept for whoever opens it when it is back, or under
    /// its new name.
    void Lose(Database& database);
    /// Does the work; false if it fails, with the words of the failure under the screen's caption.
    [[nodiscard]] bool Telling(const Screen* under, const std::function<void()>& work) const;

    Session& session;
    Source source;
    Screen* screen = nullptr; ///< that it shows on
    std::vector<BoundBox> bound;
    Key key;
    bool isThere = false;  ///< only on a screen
    std::string goneWords; ///< what is said of one that is gone
};

/// The record of the open employee, form P11D, and that of the employer, form P11D(b): made by whoever first asks.
const std::vector<std::shared_ptr<OpenRecord>>& OpenRecords(Session& session);
inline OpenRecord& EmployeeRecord(Session& session)
{
    return *OpenRecords(session).front();
}
inline OpenRecord& EmployerRecord(Session& session)
{
    return *OpenRecords(session).back();
}

} // namespace quillmere
