#include "printing/paper/Document.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <fmt/format.h>
#include <iterator>
#include <limits>
#include <stdexcept>
#include <utility>

namespace quillmere {

namespace {

/// The style's place in the list, where it is put if it is not there yet. A document has a few dozen at most, and
/// neighbours mostly share theirs, so the search runs from the end.
template<typename Style>
std::uint16_t PlaceIn(std::vector<Style>& styles, const Style& style)
{
    const auto found = std::find(styles.rbegin(), styles.rend(), style);
    if (found != styles.rend())
        return static_cast<std::uint16_t>(std::distance(found, styles.rend()) - 1);
    if (styles.size() > std::numeric_limits<std::uint16_t>::max())
        throw std::length_error("a document with too many styles");
    styles.push_back(style);
    return static_cast<std::uint16_t>(styles.size() - 1);
}

/// Millimetres with two decimals; never "-0.00".
std::string Millimetres(double twips)
{
    const double rounded = std::round(twips / UnitsPerMillimetre * 100.0) / 100.0;
    return fmt::format("{:.2f}", rounded == 0.0 ? 0.0 : rounded);
}

std::string ColourText(Colour colour)
{
    if (colour.red == colour.green && colour.green == colour.blue)
        return fmt::format("{}", colour.red);
    return fmt::format("{},{},{}", colour.red, colour.green, colour.blue);
}

std::string Quoted(std::string_view text)
{
    std::string quoted = "\"";
    for (const char character : text) {
        if (character == '"' || character == '\\')
            quoted += '\\';
        if (character == '\n')
            quoted += "\\n";
        else
            quoted += character;
    }
    return quoted + '"';
}

std::string_view AlignmentWord(Alignment alignment)
{
    switch (alignment) {
    case Alignment::Left:
        return "left";
    case Alignment::Right:
        return "right";
    case Alignment::Centre:
        return "centre";
    case Alignment::Decimal:
        return "decimal";
    case Alignment::Run:
        return "run";
    }
    return "";
}

/// Writes each operation as a line.
class ListingDevice {
public:
    explicit ListingDevice(const Document& document) : document(document) {}

    void Line(const ShapeStyle& style, double x1, double y1, double x2, double y2)
    {
        Begin("line", std::array{x1, y1, x2, y2});
        End(style);
    }
    void Rectangle(const ShapeStyle& style, double x1, double y1, double x2, double y2)
    {
        Begin("rectangle", std::array{x1, y1, x2, y2});
        End(style);
    }
    void Circle(const ShapeStyle& style, double x, double y, double radius)
    {
        lines += fmt::format("circle {} {} radius {}", Millimetres(x), Millimetres(y), Millimetres(radius));
        End(style);
    }
    void Polygon(const ShapeStyle& style, std::span<const double> corners)
    {
        Begin("polygon", corners);
        End(style);
    }
    void Text(const TextStyle& style, const Operation& operation, std::string_view text)
    {
        const TextPlace place = PlaceOf(document, operation);
        lines += fmt::format("text {} {} {} ", AlignmentWord(operation.alignment), Millimetres(place.x),
                             Millimetres(place.y));
        if (FamilyOf(style.face) != FamilyOf(Face::SansRegular))
            lines += fmt::format("\"{}\" ", FamilyOf(style.face));
        lines += fmt::format("{}", style.size);
        if (IsBold(style.face))
            lines += " bold";
        if (IsItalic(style.face))
            lines += " italic";
        if (style.colour != Black)
            lines += fmt::format(" colour {}", ColourText(style.colour));
        lines += ' ' + Quoted(text) + '\n';
    }

    std::string Take() { return std::move(lines); }

private:
    void Begin(std::string_view word, std::span<const double> positions)
    {
        lines += word;
        for (const double position : positions)
            lines += ' ' + Millimetres(position);
    }
    void End(const ShapeStyle& style)
    {
        lines += fmt::format(" pen {} width {}", ColourText(style.pen), Millimetres(style.width));
        if (style.filled)
            lines += fmt::format(" fill {}", ColourText(style.brush));
        lines += '\n';
    }

    const Document& document;
    std::string lines;
};

} // namespace

std::span<const Operation> Document::Page(int page) const
{
    const std::size_t index = static_cast<std::size_t>(page) - 1;
    const std::size_t start = pageStarts.at(index);
    const std::size_t end = index + 1 < pageStarts.size() ? pageStarts[index + 1] : operations.size();
    return std::span(operations).subspan(start, end - start);
}

std::vector<Document::Part> Document::Parts(int page) const
{
    const std::span<const Operation> all = Page(page);
    const auto start = static_cast<std::size_t>(all.data() - operations.data());
    std::vector<Part> found;
    auto part = std::ranges::lower_bound(parts, start, {}, &PagePart::first);
    for (; part != parts.end() && part->first < start + all.size(); ++part) {
        const auto next = std::next(part);
        const std::size_t end = next == parts.end() ? start + all.size() : std::min(next->first, start + all.size());
        if (end > part->first)
            found.push_back({all.subspan(part->first - start, end - part->first), part->isFixed});
    }
    return found;
}

void Document::AddPage()
{
    pageStarts.push_back(operations.size());
    elementStarts.push_back(elements.size());
    goingOn = 0;
    BeginPart(false);
}

void Document::BeginPart(bool isFixed)
{
    if (!parts.empty() && parts.back().first == operations.size())
        parts.back().isFixed = isFixed;
    else
        parts.push_back({operations.size(), isFixed});
}

std::span<const Element> Document::Elements(int page) const
{
    const std::size_t index = static_cast<std::size_t>(page) - 1;
    const std::size_t start = elementStarts.at(index);
    const std::size_t end = index + 1 < elementStarts.size() ? elementStarts[index + 1] : elements.size();
    return std::span(elements).subspan(start, end - start);
}

ElementNumber Document::FirstElement(int page) const
{
    return static_cast<ElementNumber>(elementStarts.at(static_cast<std::size_t>(page) - 1) + 1);
}

ElementNumber Document::AddElement(Element element)
{
    if (element.parent != 0 && element.parent <= elementStarts.back())
        throw std::logic_error("an element in one of another page");
    elements.push_back(std::move(element));
    return static_cast<ElementNumber>(elements.size());
}

void Document::Add(Operation operation)
{
    current = OnThisPage(current);
    operation.element = current;
    operations.push_back(operation);
}

ElementNumber Document::OnThisPage(ElementNumber element)
{
    if (element == 0 || element > elementStarts.back())
        return element;
    if (goingOn == 0)
        goingOn = AddElement({.role = Role::Paragraph});
    return goingOn;
}

void Document::AddShape(OperationKind kind, const ShapeStyle& style, double x1, double y1, double x2, double y2)
{
    ShapeStyle kept = style;
    if (!kept.filled || kind == OperationKind::Line) {
        kept.filled = false;
        kept.brush = White;
    }
    Add({.kind = kind, .style = PlaceIn(shapeStyles, kept), .x1 = x1, .y1 = y1, .x2 = x2, .y2 = y2});
}

void Document::AddLine(const ShapeStyle& style, double x1, double y1, double x2, double y2)
{
    AddShape(OperationKind::Line, style, x1, y1, x2, y2);
}

void Document::AddRectangle(const ShapeStyle& style, double x1, double y1, double x2, double y2)
{
    AddShape(OperationKind::Rectangle, style, x1, y1, x2, y2);
}

void Document::AddCircle(const ShapeStyle& style, double x, double y, double radius)
{
    AddShape(OperationKind::Circle, style, x, y, radius, 0);
}

void Document::AddPolygon(const ShapeStyle& style, std::span<const double> points)
{
    AddShape(OperationKind::Polygon, style, 0, 0, 0, 0);
    operations.back().first = static_cast<std::uint32_t>(corners.size());
    operations.back().count = static_cast<std::uint32_t>(points.size());
    corners.insert(corners.end(), points.begin(), points.end());
}

void Document::AddText(const TextStyle& style, Alignment alignment, double left, double top, std::string_view text)
{
    Add({.kind = OperationKind::Text,
         .alignment = alignment,
         .style = PlaceIn(textStyles, style),
         .first = static_cast<std::uint32_t>(texts.size()),
         .count = static_cast<std::uint32_t>(text.size()),
         .x1 = left,
         .y1 = top,
         .x2 = TextWidth(style.face, style.size, text)});
    texts += text;
}

void Document::ShrinkToFit()
{
    operations.shrink_to_fit();
    parts.shrink_to_fit();
    elements.shrink_to_fit();
    texts.shrink_to_fit();
    corners.shrink_to_fit();
    shapeStyles.shrink_to_fit();
    textStyles.shrink_to_fit();
}

Document Document::Excerpt(std::span<const Operation> some) const
{
    Document copy;
    copy.AddPage();
    copy.shapeStyles = shapeStyles;
    copy.textStyles = textStyles;
    for (Operation operation : some) {
        if (operation.kind == OperationKind::Text) {
            const std::string_view text = TextOf(operation);
            operation.first = static_cast<std::uint32_t>(copy.texts.size());
            copy.texts += text;
        }
        if (operation.kind == OperationKind::Polygon) {
            const std::span<const double> points = CornersOf(operation);
            operation.first = static_cast<std::uint32_t>(copy.corners.size());
            copy.corners.insert(copy.corners.end(), points.begin(), points.end());
        }
        copy.operations.push_back(operation);
    }
    copy.ShrinkToFit();
    return copy;
}

TextPlace PlaceOf(const Document& document, const Operation& operation)
{
    const TextStyle& style = document.TextStyleOf(operation);
    const std::string_view text = document.TextOf(operation);
    TextPlace place{.x = operation.x1, .y = operation.y1 + TextHeight(style.face, style.size) - TextDrop};
    switch (operation.alignment) {
    case Alignment::Left:
    case Alignment::Run:
        break;
    case Alignment::Right:
        place.x += operation.x2;
        break;
    case Alignment::Centre:
        place.x += operation.x2 / 2;
        break;
    case Alignment::Decimal:
        place.x += TextWidth(style.face, style.size, text.substr(0, text.find('.')));
        break;
    }
    return place;
}

std::string Listing(const Document& document, int page)
{
    ListingDevice device(document);
    Replay(document, page, device);
    return device.Take();
}

std::string Listing(const Document& document)
{
    std::string lines;
    for (int page = 1; page <= document.PageCount(); ++page)
        lines += fmt::format("page {}\n", page) + Listing(document, page);
    return lines;
}

} // namespace quillmere
