#pragma once

#include "printing/paper/Fonts.h"

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace quillmere {

/// Engine units per millimetre, in all conversions of the page layer.
inline constexpr double UnitsPerMillimetre = 56.69;

/// A text's bottom edge lies so many engine units under the line on which it stands, at every scale.
inline constexpr double TextDrop = 28.0;

/// The A4 sheet, portrait, in engine units (twips, a twentieth of a point).
inline constexpr double SheetWidth = 11906.0;
inline constexpr double SheetHeight = 16838.0;

struct Colour {
    std::uint8_t red = 0, green = 0, blue = 0;

    friend bool operator==(Colour, Colour) = default;
};

inline constexpr Colour Black{0, 0, 0};
inline constexpr Colour White{255, 255, 255};

/// A grey with equal red, green and blue; levels outside 0 to 255 are held at the nearer end.
constexpr Colour Grey(int level)
{
    const auto part = static_cast<std::uint8_t>(level < 0 ? 0 : level > 255 ? 255 : level);
    return {part, part, part};
}

enum class OperationKind : std::uint8_t { Line, Rectangle, Circle, Polygon, Text };

/// Which point of a text was given when it was placed. It changes nothing in the drawing; listings tell it.
enum class Alignment : std::uint8_t { Left, Right, Centre, Decimal, Run };

/// How lines and shapes are drawn. Lines are solid, with round ends, so that one of no length shows as a dot.
struct ShapeStyle {
    Colour pen;
    Colour brush;
    bool filled = false;
    double width = 0; ///< of the pen, twips; 0 is the thinnest line of the device

    friend bool operator==(const ShapeStyle&, const ShapeStyle&) = default;
};

struct TextStyle {
    Face face = Face::SansRegular;
    Colour colour;
    double size = 0; ///< points

    friend bool operator==(const TextStyle&, const TextStyle&) = default;
};

/// What a part of a page is to somebody who has it read out.
enum class Role : std::uint8_t {
    Title,   ///< of the page
    Heading, ///< of a section
    Paragraph,
    Entry, ///< of a form: what stands in one of its boxes
    Tick,  ///< a box of a form that is ticked
    Table,
    Row,
    HeadCell,
    Cell,
    Piece, ///< of the element that holds it, read before what is its own
    Sign,  ///< a piece that is read after the others
};

/// An element of a page as it is read out, counted from 1 through the document; 0 is none: lines, boxes and whatever
/// else is there for the eye only.
using ElementNumber = std::uint32_t;

/// One drawing operation of a page, in twips from the sheet's top left corner, y downwards.
struct Operation {
    OperationKind kind = OperationKind::Line;
    Alignment alignment = Alignment::Left; ///< of a text
    std::uint16_t style = 0;               ///< index into the document's shape styles or, for a text, its text styles
    std::uint32_t first = 0;               ///< of a text: its first byte; of a polygon: its first coordinate
    std::uint32_t count = 0;               ///< bytes of the text, coordinates of the polygon
    ElementNumber element = 0;             ///< that it is a part of
    double x1 = 0, y1 = 0;                 ///< start, corner, or centre; of a text its top left corner
    double x2 = 0, y2 = 0; ///< end or opposite corner; of a circle x2 is the radius, of a text the width
};

/// A stretch of a page's operations. A fixed one is the same on every page of its form, whatever the record: its
/// panels, boxes and labels. What is made of it can be kept and shared.
struct PagePart {
    std::size_t first = 0; ///< operation of the document
    bool isFixed = false;
};

/// An element of a page. Those with one parent are read in the order in which they were added; those without any are
/// the page's own.
struct Element {
    Role role = Role::Paragraph;
    ElementNumber parent = 0;
    std::string label;  ///< what the box of an entry is for
    std::string spoken; ///< read in the place of what is drawn; empty: that is read
};

/// A place in the document that a reader can jump to.
struct Bookmark {
    std::string title;
    int page = 1;
    int level = 1; ///< 1 for a page, 2 for a section on it; in a document of chapters 1 for a chapter, and so on
    double y = 0;  ///< twips from the top of the sheet
};

/// A recorded document: pages of flat operations, replayed alike by preview, PDF and printer and read by tests. Texts
/// and styles lie together, so that a two-page form takes some ten kilobytes and has no more than a few allocations.
class Document {
public:
    std::string name; ///< title, shown in the print queue
    std::string subject;
    std::string author; ///< who made it; empty if nobody is named
    std::string language = "en-GB";
    std::vector<Bookmark> bookmarks; ///< in page order

    int PageCount() const { return static_cast<int>(pageStarts.size()); }
    /// The operations of a page, counted from 1; throws std::out_of_range.
    std::span<const Operation> Page(int page) const;

    /// The page's operations part by part; no part is empty.
    struct Part {
        std::span<const Operation> operations;
        bool isFixed = false;
    };
    std::vector<Part> Parts(int page) const;

    /// The elements of a page in the order of reading, and the number of the first one.
    std::span<const Element> Elements(int page) const;
    ElementNumber FirstElement(int page) const;

    const ShapeStyle& ShapeStyleOf(const Operation& operation) const { return shapeStyles[operation.style]; }
    const TextStyle& TextStyleOf(const Operation& operation) const { return textStyles[operation.style]; }
    std::string_view TextOf(const Operation& operation) const
    {
        return std::string_view(texts).substr(operation.first, operation.count);
    }
    /// x and y of each corner in turn.
    std::span<const double> CornersOf(const Operation& operation) const
    {
        return std::span(corners).subspan(operation.first, operation.count);
    }

    void AddPage();
    /// What is added from now on, to the end of the page or the next call, is a part of its own.
    void BeginPart(bool isFixed);
    void AddLine(const ShapeStyle& style, double x1, double y1, double x2, double y2);
    void AddRectangle(const ShapeStyle& style, double x1, double y1, double x2, double y2);
    void AddCircle(const ShapeStyle& style, double x, double y, double radius);
    void AddPolygon(const ShapeStyle& style, std::span<const double> points);
    void AddText(const TextStyle& style, Alignment alignment, double left, double top, std::string_view text);
    /// Adds an element of the last page and gives its number. It is read after all that have been added. One in an
    /// element of another page is a mistake in the program: std::logic_error.
    ElementNumber AddElement(Element element);
    /// An element of the last page, until the next one is added.
    Element& ElementAt(ElementNumber element) { return elements[element - 1]; }
    /// What is drawn from now on, to the next call, belongs to this element. On the pages that come it goes on as a
    /// paragraph of each.
    void BelongsTo(ElementNumber element) { current = element; }
    ElementNumber Current() const { return current; }
    /// Gives back what the growing of the lists took too much.
    void ShrinkToFit();
    /// Some operations of the document as a page of their own, without the elements that they belong to.
    Document Excerpt(std::span<const Operation> some) const;

private:
    void AddShape(OperationKind kind, const ShapeStyle& style, double x1, double y1, double x2, double y2);

    void Add(Operation operation);
    /// The element, or if it is one of an earlier page the paragraph with which it goes on.
    ElementNumber OnThisPage(ElementNumber element);

    std::vector<std::size_t> pageStarts;
    std::vector<std::size_t> elementStarts; ///< of each page
    std::vector<Element> elements;
    ElementNumber current = 0;
    ElementNumber goingOn = 0; ///< what goes on from the page before
    std::vector<PagePart> parts;
    std::vector<Operation> operations;
    std::vector<ShapeStyle> shapeStyles;
    std::vector<TextStyle> textStyles;
    std::string texts;
    std::vector<double> corners;
};

/// Hands one operation with its style to a device that draws, measures or writes: to its Line, Rectangle, Circle,
/// Polygon or Text. Positions are in twips.
template<typename Device>
void Visit(const Document& document, const Operation& operation, Device& device)
{
    switch (operation.kind) {
    case OperationKind::Line:
        return device.Line(document.ShapeStyleOf(operation), operation.x1, operation.y1, operation.x2, operation.y2);
    case OperationKind::Rectangle:
        return device.Rectangle(document.ShapeStyleOf(operation), operation.x1, operation.y1, operation.x2,
                                operation.y2);
    case OperationKind::Circle:
        return device.Circle(document.ShapeStyleOf(operation), operation.x1, operation.y1, operation.x2);
    case OperationKind::Polygon:
        return device.Polygon(document.ShapeStyleOf(operation), document.CornersOf(operation));
    case OperationKind::Text:
        return device.Text(document.TextStyleOf(operation), operation, document.TextOf(operation));
    }
}

template<typename Device>
void Replay(const Document& document, std::span<const Operation> operations, Device& device)
{
    for (const Operation& operation : operations)
        Visit(document, operation, device);
}

/// A page, operation by operation.
template<typename Device>
void Replay(const Document& document, int page, Device& device)
{
    Replay(document, document.Page(page), device);
}

/// The point of a text operation that its alignment names, and the line on which it stands, in twips.
struct TextPlace {
    double x = 0, y = 0;
};
TextPlace PlaceOf(const Document& document, const Operation& operation);

/// A page as text, one drawing operation a line, in millimetres on the sheet with two decimals (offsets and scale are
/// part of the position). For a text the alignment, the place that it names on the line it stands on, family (unless
/// Arial), size, weight, slant and colour (unless black), and the text with `"` and `\` escaped:
///
///     text right 188.00 87.00 10 bold "    250.00"
///     rectangle 2.00 77.00 195.00 89.00 pen 255 width 0.00 fill 225
std::string Listing(const Document& document, int page);

/// All pages, each under a line with its number.
std::string Listing(const Document& document);

} // namespace quillmere
