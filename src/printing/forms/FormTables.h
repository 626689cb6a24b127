#pragma once

#include "printing/forms/FormPrimitives.h"
#include "printing/forms/FormSheet.h"

#include <array>
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

/// A label that begins at x; one that ends there; one that goes on after the label before it.
constexpr Label LabelAt(Font font, double x, double y, std::string_view text, std::string_view fields = {},
                        std::span<const std::string_view> columns = {})
{
    return {.font = font, .at = At::Left, .x = x, .y = y, .text = text, .fields = fields, .columns = columns};
}
constexpr Label LabelTo(Font font, double x, double y, std::string_view text, std::string_view fields = {},
                        std::span<const std::string_view> columns = {})
{
    return {.font = font, .at = At::Right, .x = x, .y = y, .text = text, .fields = fields, .columns = columns};
}
constexpr Label LabelOn(Font font, std::string_view text, std::string_view fields = {},
                        std::span<const std::string_view> columns = {})
{
    return {.font = font, .at = At::Run, .text = text, .fields = fields, .columns = columns};
}
/// A label that is something else than a text to whoever has the page read out.
constexpr Label ReadAs(Reads reads, Label label)
{
    label.reads = reads;
    return label;
}

template<class Part>
struct RowsIn {
    using Row = Part;
    static constexpr std::size_t Count = 1;
};
template<class OfGroup, std::size_t Size>
struct RowsIn<std::array<OfGroup, Size>> {
    using Row = OfGroup;
    static constexpr std::size_t Count = Size;
};

/// A list that is put down as single rows and groups of rows.
template<class Row, std::size_t Size>
class RowList {
public:
    template<class... Parts>
    explicit constexpr RowList(const Parts&... parts)
    {
        (Add(parts), ...);
    }

    constexpr const Row* begin() const { return rows.data(); }
    constexpr const Row* end() const { return rows.data() + Size; }

private:
    constexpr void Add(const Row& row) { rows[filled++] = row; }
    template<std::size_t Count>
    constexpr void Add(const std::array<Row, Count>& group)
    {
        for (const Row& row : group)
            Add(row);
    }

    std::array<Row, Size> rows{};
    std::size_t filled = 0;
};
template<class First, class... Others>
RowList(const First&, const Others&...)
    -> RowList<typename RowsIn<First>::Row, (RowsIn<First>::Count + ... + RowsIn<Others>::Count)>;

/// The signs between three figures of one line, of which the third is what the second leaves of the first.
constexpr std::array<Label, 2> SignsBetween(double y)
{
    return {LabelAt({8}, 129.5, y, "-"), LabelAt({8}, 157, y, "=")};
}
/// The heads over three such figures, of which the second's has two lines; y is that of the lower one.
constexpr std::array<Label, 4> HeadsOver(double y, std::string_view first, double x3, std::string_view third)
{
    return {LabelAt({7}, 105, y, first), LabelAt({7}, 133, y - 3, "Amount made good or"),
            LabelAt({7}, 133, y, "from which tax deducted"), LabelAt({7}, x3, y, third)};
}

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

/// The boxes of three figures on one line, and the figures: the third is the one that the form numbers.
constexpr std::array<FormBox, 3> ThreeBoxes(double y, PrintedKind third, std::string_view number)
{
    return {FormBox{PrintedKind::Pound, 105, y}, FormBox{PrintedKind::Pound, 133, y},
            FormBox{third, 161, y, 0, number}};
}
constexpr std::array<FormValue, 3> ThreeFigures(double y, std::string_view first, std::string_view second,
                                                std::string_view third)
{
    return {FormValue{first, At::Right, 124, y}, FormValue{second, At::Right, 152, y},
            FormValue{third, At::Right, 188, y}};
}

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
/// The National Insurance number at the top of a page, in the font name in force.
void DrawNumberAtTop(PageLayer& page, std::string_view number);
/// The form's identifier at the foot of a page.
void DrawIdentifier(PageLayer& page, double y, std::string_view identifier);

} // namespace quillmere
