#pragma once

#include "clientdb/CurrentRecord.h"
#include "clientdb/store/Recordset.h"
#include "frame/Amount.h"
#include "frame/Screen.h"
#include "frame/Session.h"

#include <functional>
#include <span>
#include <string>
#include <string_view>

namespace quillmere {

/// The three buttons that close a notepad's table of controls.
std::span<const BoxRow> NotepadButtons();

/// A notepad with a calculation of its own: modal, filled from the open employee's records when it opens, and stored by
/// its Ok alone.
class CalculatorNotepad : public Screen {
public:
    /// Titles of the messages of one notepad.
    struct Titles {
        std::string_view loading; ///< over "Employee not found" at the opening
        std::string_view failed;  ///< over any other failure of the opening; none: the screen's caption
        std::string_view ok;      ///< over a failure of Ok
    };

    CalculatorNotepad(Session& session, std::string_view name, std::string_view caption, const Titles& titles);

protected:
    /// Makes the buttons `Ok`, `Delete` and `Cancel` after the boxes that are there.
    void AddButtons();
    virtual void Ok() = 0;
    virtual void Delete() = 0;

    /// Opens the client database for the load step. False, with a message, if the store fails: `failure` says what, or
    /// if it is empty the store's own words do.
    [[nodiscard]] bool Open(const std::function<void(Database&)>& work, std::string_view failure = {});
    /// Opens the client database and gathers what `work` writes in one batch. False, with `failure` under the title of
    /// Ok, if the store fails; what was written before stays.
    [[nodiscard]] bool StoreAll(const std::function<void(Database&)>& work,
                                std::string_view failure = "Unable to update database");

    /// A cursor on the open employee's record; NoMatch, with "Employee not found" under `title`, if there is none.
    Recordset FindEmployee(Database& database, std::string_view table, std::string_view title);

    /// Puts an amount into a box; zero is blank.
    void SetAmount(std::string_view boxName, Amount amount);
    /// Puts a plain number into a box; 0 is blank.
    void SetNumber(std::string_view boxName, double number);
    void ClearBoxes(std::span<const std::string_view> boxNames);
    /// Puts a result into a page's box if the page is open. `stored` is what its field was written with: where that
    /// is another text, it holds until the page is stored.
    void PutOnPage(std::string_view page, std::string_view boxName, std::string_view text, std::string_view stored);
    const std::string& TextOf(std::string_view boxName) const { return box(boxName).Text(); }

    Titles titles;
};

/// The caption of a notepad: its words, the open employee and, in parentheses, the employer.
std::string NotepadCaption(std::string_view words, const Session& session);

/// A box and the field in which it is stored.
struct BoundBox {
    std::string_view box, field;
};

/// Shows every stored field that is not empty in its box.
void ShowStored(Screen& screen, const Recordset& records, std::span<const BoundBox> rows);

/// Writes the text of every box to its field, each in an edit and update of its own. Throws StoreError.
void StoreBoxes(const Screen& screen, Recordset& records, std::span<const BoundBox> rows);

} // namespace quillmere
