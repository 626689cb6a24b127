#pragma once

#include "clientdb/CurrentRecord.h"
#include "clientdb/DataLink.h"
#include "frame/Screen.h"

#include <functional>
#include <optional>
#include <string_view>

namespace quillmere {

/// A screen whose boxes are bound to one record of the current employee or employer.
class BoundScreen : public Screen {
public:
    struct Source {
        std::string_view table;
        std::string_view index; ///< "IndKey" seeks employer and employee, "PrimaryKey" the employer
    };

    BoundScreen(Session& session, std::string_view name, ShowMode mode, std::string_view caption, const Source& source);

    std::string Subject() const override { return SubjectOf(source.table, session); }

    enum class Sought {
        Found,
        NotFound,
        Failed, ///< the store could not write or read
    };

    /// Stores what has changed and moves to the current record. Says "Employee not found" under `errorTitle` if there
    /// is none, and the store's own words under the screen's caption if the store fails.
    [[nodiscard]] Sought SeekRecord(std::string_view errorTitle);
    /// The same; true if the record was found.
    [[nodiscard]] bool SeekCurrent(std::string_view errorTitle) { return SeekRecord(errorTitle) == Sought::Found; }
    /// Stores what has changed before the same record is shown elsewhere. False if the store fails, with its words; of
    /// a record that is gone whoever seeks it next will tell.
    [[nodiscard]] bool StoreRecord();
    /// Stores what has changed and takes the link off its record. False if the store fails, with its words.
    [[nodiscard]] bool ReleaseRecord();
    /// Stores what has changed before the screen is closed: false if it has to stay, because the store has not taken
    /// what is typed. A record that is gone is told of and is no bar. One that stays goes on with its record.
    [[nodiscard]] bool MayClose() override;
    /// At the end of the program at the system's wish: stores what has changed, or keeps it for the next opening of the
    /// record where the store does not take it, and says nothing.
    void StoreOrKeep();
    /// Gives up what has changed: nothing of it is stored when the screen closes.
    void DropChanges();
    bool HasRecord() const { return link->HasRecord(); }
    /// The table of the record that it shows.
    std::string_view Table() const { return source.table; }
    /// A notepad has worked a field of the record out: every box that is bound to it shows the text. If the notepad has
    /// written the field, the box holds what it has written; else the box waits to be stored.
    void TakeResult(std::string_view field, std::string_view text, const std::optional<std::string>& stored);
    /// All results of a notepad have been taken.
    virtual void ResultsTaken() {}

protected:
    /// Its boxes are stored when it closes, so the one in use is left first.
    void CloseRequested() override;
    /// Binds the boxes that name a field; called when all boxes are made.
    void Bind() { link.emplace(session, *this, source.table); }
    const DataLink& Link() const { return *link; }

private:
    void TellOfBroughtBack() const;
    /// Does the work; false if it fails, with the words of the failure.
    [[nodiscard]] bool Telling(const std::function<void()>& work);

    Source source;
    std::optional<DataLink> link;
};

} // namespace quillmere
