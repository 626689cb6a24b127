#pragma once

#include "printing/forms/FormPrimitives.h"
#include "printing/forms/FormSheet.h"

#include <span>
#include <string>
#include <string_view>
#include <vector>

/// The lists of which a form's page is made, in millimetres, each in the order of the form, and the drawing of a list.
namespace quillmere {

/// A grey panel of a section.
struct Panel {
    double x1, y1, x2, y2;
};

/// The black square that begins a section, and the section's name for the document's bookmarks.
struct SectionMark {
    std::string_view letter;
    double x, y;
    std::string_view title = {};
};

enum class PrintedKind { Entry, Pound, Number, Number1A, Tag1A, Letter };

/// An empty box of the form. `x2` is the right end of an entry box; `text` the number or letter in its tag.
struct FormBox {
    PrintedKind kind;
    double x, y;
    double x2 = 0;
    std::string_view text = {};
};

struct FormLineRow {
    double x1, y1, x2, y2;
};

/// What a label is to somebody who has the page read out.
enum class Reads {
    Text,
    Title,  ///< of the page
    Nothing ///< its words are told with the boxes
};

/// `fields` names the fields, with blanks between, whose boxes are read after the label, and `columns` what it leaves
/// unsaid of each of them.
struct Label {
    Font font;
    At at;
    double x = 0, y = 0;
    std::string_view text;
    double x2 = 0;
    std::string_view fields = {};
    std::span<const std::string_view> columns = {};
    Reads reads = Reads::Text;
};

/// How a value is drawn: as a text, as a tick if it is set, or with one character to a cell.
enum class ValueKind { Text, Tick, DateCells, NICells };

/// `x2` is where a centred value's cell ends, and the box of one that starts at x. What is longer is cut there, so that
/// a word never prints over a figure; figures are never cut.
struct FormValue {
    std::string_view field;
    At at;
    double x, y;
    double x2 = 0;
    ValueKind kind = ValueKind::Text;
};

/// Panels with a white edge.
void DrawPanels(PageLayer& page, std::span<const Panel> panels, Colour fill);
void DrawSectionMarks(FormSheet& sheet, std::span<const SectionMark> marks);
/// The boxes, each moved by `dx` to the right.
void DrawBoxes(FormSheet& sheet, std::span<const FormBox> boxes, double dx = 0);
void DrawLines(PageLayer& page, std::span<const FormLineRow> lines);
/// Labels in `ColBlack`, Arial. Each names its fields once for each suffix.
void DrawLabels(FormSheet& sheet, std::span<const Label> labels, std::span<const FieldSuffix> suffixes = {});
void DrawLabel(FormSheet& sheet, const Label& label, std::span<const FieldSuffix> suffixes = {});
/// Sets the font of the values: the one chosen for reports, 10 bold, `ColBlack`.
void BeginValues(PageLayer& page);
/// Values in the font in force. `suffix` is put behind each field's name and `dx` added to its x.
void DrawValues(FormSheet& sheet, std::span<const FormValue> values, const FieldReader& read,
                std::string_view suffix = {}, double dx = 0);
/// A tick in the box of an entry.
void DrawTick(PageLayer& page, ElementNumber entry, double x, double y);
/// A text that DrawValues cuts if it is longer than its box.
struct BoxedText {
    std::string field;
    double room; ///< in millimetres
};
/// Lists those among the values.
void AddBoxedTexts(std::span<const FormValue> values, std::string_view suffix, std::vector<BoxedText>& texts);
/// As much of a text, from its beginning, as a room of so many millimetres holds in the font in force.
std::string FittingText(const PageLayer& page, std::string_view text, double room);
/// A text at its place in the font in force.
void DrawText(PageLayer& page, At at, double x, double x2, double y, std::string_view text);
/// The form's identifier at the foot of a page.
void DrawIdentifier(PageLayer& page, double y, std::string_view identifier);

} // namespace quillmere
