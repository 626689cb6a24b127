#pragma once

#include "clientdb/CurrentRecord.h"
#include "clientdb/Overwritten.h"
#include "clientdb/TypedEntries.h"
#include "clientdb/store/Recordset.h"
#include "frame/Amount.h"
#include "frame/Screen.h"
#include "frame/Session.h"

#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace quillmere {

/// A dialog that stores by its Ok alone: modal, filled from its own record when it opens. Ok writes that record field
/// by field, then what comes of it to the records that are open, and hands the same to them to show.
///
/// Somebody else may have the same record open. What he has stored meanwhile Ok takes over first, thing by thing, where
/// the user has changed nothing: so two users' lines stand together, and the figures are those of both. Where both have
/// changed one thing, the later Ok has it, and says what it has replaced: in a message, and on in the status bar.
class Notepad : public Screen {
public:
    /// What the messages of one notepad say.
    struct Words {
        std::string_view loading = {};     ///< title of "Employee not found" at the opening
        std::string_view loadingPage = {}; ///< the same of the employee's own record; none: it is not looked for
        std::string_view failed = {};      ///< title of any other failure of the opening; none: the caption
        std::string_view failure = {};     ///< its text; none: the store's own words
        std::string_view ok = {};          ///< title of a failure of Ok; none: the caption
        std::string_view okFailure = "Unable to update database"; ///< its text; none: the store's own words
        Icon okIcon = Icon::Critical;
        std::string_view okMissing = {};     ///< title of "Employee not found" at Ok; none: a failure like any other
        std::string_view okMissingPage = {}; ///< the same of the employee's own record
        bool missingEnds = false;            ///< nothing more is said at Ok where the record is missing
    };

    Notepad(Session& session, std::string_view name, std::string_view caption, std::string_view table,
            const Words& words);

    bool Load() override;
    void Unload() override;
    std::string Subject() const override { return SubjectOf(table, session); }

    /// The table of its record, and the fields of it that the notepad keeps, in the order of writing.
    const std::string& Table() const { return table; }
    std::vector<std::string> Fields() const;
    /// The box in which a field shows, and the number of the tab; no box for one that is only carried.
    struct Shown {
        const Box* box = nullptr;
        int tab = 1;
    };
    Shown WhereShown(std::string_view field) const;
    /// Lets the boxes show the tab of that number, as a click on it does.
    void ShowTab(int tab);
    /// A field of a record of the employee or employer, and a text for it.
    struct Written {
        std::string table, field, text;
    };
    /// What Ok would write, to its own record and to those to which it hands its results; nothing where it refuses,
    /// which has been told.
    [[nodiscard]] std::optional<std::vector<Written>> WhatOkWrites(const Recordset& own);
    /// What the user has changed and Ok has not stored.
    std::vector<TypedEntries::Line> Typed() const;

protected:
    // How a notepad is put together.

    /// Makes the buttons, after the boxes that are there, and binds them.
    void AddButtons(std::string_view ok = "Ok", std::string_view remove = "Delete", std::string_view cancel = "Cancel");
    /// Binds buttons that are there; without a name there is no such button.
    void BindButtons(std::string_view ok, std::string_view remove, std::string_view cancel);
    /// Keeps a field of the record, after those that are kept: this is the order of writing. Without a box the field is
    /// carried; with an empty name it is kept while the notepad is open, and not stored. Fields of one `thing`, a line
    /// or a van, say, belong together; a field of none stands for itself. A notepad that shows one of several like
    /// things at a time in the same boxes has a `tab` for each.
    void Keep(std::string_view field, Box* box, int thing = 0, int tab = 1);
    /// The boxes that name a field: in their own order, or in that of the fields where it is given.
    std::vector<Box*> FieldBoxes(std::span<const std::string_view> writingOrder = {}) const;
    /// Keeps the field that each of them names. In an array that is the stem, and each number a thing.
    void KeepBoxes(std::span<const std::string_view> writingOrder = {});

    // The opening.

    /// Finds the record and shows it, and looks for the employee's own.
    virtual void Open(Database& database);
    /// The cursor on the notepad's record; NoMatch if there is none.
    virtual Recordset OpenOwn(Database& database) const;
    /// Shows what comes from the employee's own record.
    virtual void ShowPage(const Recordset& /*page*/) {}
    /// The same as OpenOwn, or a cursor on the employee's record in a table. "Employee not found" under `title`, if
    /// there is one, where there is no record.
    Recordset FindOwn(Database& database, std::string_view title) const;
    Recordset FindEmployee(Database& database, std::string_view table, std::string_view title) const;

    // What is kept.

    /// A field that is kept.
    struct Entry {
        std::string field;
        Box* box;
        int thing, tab;
        std::string text;   ///< what it reads, where no box shows it
        std::string stored; ///< what the record held when it was looked at last
        std::string opened; ///< what it read before the user changed anything
    };
    const std::vector<Entry>& Entries() const { return entries; }
    /// What a field reads now.
    virtual std::string Reads(const Entry& entry) const;
    std::string Reads(std::string_view field) const { return Reads(EntryOf(field)); }
    const Entry& EntryOf(std::string_view field) const;
    /// Lets a field read what the record holds.
    virtual void ShowStored(Entry& entry) { Show(entry, entry.stored); }
    void Show(Entry& entry, std::string_view text);

    /// Number of the tab that shows, from 1.
    int Tab() const { return shownTab; }
    void TurnTo(int tab);
    /// The boxes show another tab.
    virtual void TabShown() {}

    // The work.

    virtual void Recalculate() {}
    /// Runs Recalculate, or another work. What it does to a box that the user has not changed is no change of his.
    void WorkOut();
    void WorkOut(const std::function<void()>& work);

    // The buttons.

    /// Works out what is to be stored. False if it must not be, which has been told.
    [[nodiscard]] virtual bool MayStore();
    /// Writes what is kept to the record, each field in an edit and update of its own.
    virtual void Write(Recordset& own) const;
    /// A field of another record of the employee or employer that Ok works out.
    struct Result {
        std::string field;
        std::optional<std::string> stored; ///< what is written to it; nothing: the open record writes it
        std::optional<std::string> shown;  ///< what the box bound to it shows; nothing: it stays as it is
        std::string_view table = "P11D";
    };
    /// What comes of the record, in the order of writing; `own` has been written.
    virtual std::vector<Result> Results(const Recordset& /*own*/) const { return {}; }
    /// All is stored: hands the results to the open records. False, which has been told, if the notepad stays.
    [[nodiscard]] virtual bool HandOver(const std::vector<Result>& results);
    /// Empties the boxes of what is kept. Nothing is stored before Ok.
    virtual void Delete();

    const std::string& TextOf(std::string_view boxName, int index = Box::NoIndex) const
    {
        return box(boxName, index).Text();
    }
    /// Puts an amount into a box; zero is blank.
    void SetAmount(std::string_view boxName, Amount amount);
    /// Puts a plain number into a box; 0 is blank.
    void SetNumber(std::string_view boxName, double number);
    void ClearBoxes(std::span<const std::string_view> boxNames);

private:
    void Ok();
    [[nodiscard]] bool Store(std::vector<Result>& results);
    void StoreResults(const std::vector<Result>& results, Database& database) const;
    void Lose(Database& database) const;
    void TakeOver(const Recordset& own);
    /// What another desk has stored since the opening and Write goes over.
    std::vector<Overwritten> Replaced(const Recordset& own) const;
    bool IsInBox(const Entry& entry) const { return entry.box != nullptr && entry.tab == shownTab; }

    std::string table;
    Words words;
    std::vector<Entry> entries;
    int shownTab = 1;
    bool wasThere = false; ///< its record, when it was opened
    bool isStored = false; ///< Ok has stored what it holds
};

/// The caption of a notepad: its words, the open employee and, in parentheses, the employer.
std::string NotepadCaption(std::string_view words, const Session& session);

} // namespace quillmere
