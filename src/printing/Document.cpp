#include "printing/Document.h"

#include <algorithm>
#include <cmath>
#include <fmt/format.h>
#include <iterator>
#include <limits>
#include <stdexcept>

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

std::string TextLine(const Document& document, const Operation& operation)
{
    const TextStyle& style = document.TextStyleOf(operation);
    const TextPlace place = PlaceOf(document, operation);
    std::string line =
        fmt::format("text {} {} {} ", AlignmentWord(operation.alignment), Millimetres(place.x), Millimetres(place.y));
    if (FamilyOf(style.face) != FamilyOf(Face::SansRegular))
        line += fmt::format("\"{}\" ", FamilyOf(style.face));
    line += fmt::format("{}", style.size);
    if (IsBold(style.face))
        line += " bold";
    if (IsItalic(style.face))
        line += " italic";
    if (style.colour != Black)
        line += fmt::format(" colour {}", ColourText(style.colour));
    return line + ' ' + Quoted(document.TextOf(operation));
}

std::string ShapeLine(const Document& document, const Operation& operation)
{
    const ShapeStyle& style = document.ShapeStyleOf(operation);
    std::string line;
    switch (operation.kind) {
    case OperationKind::Line:
        line = "line";
        break;
    case OperationKind::Rectangle:
        line = "rectangle";
        break;
    case OperationKind::Circle:
        line = fmt::format("circle {} {} radius {}", Millimetres(operation.x1), Millimetres(operation.y1),
                           Millimetres(operation.x2));
        break;
    default:
        line = "polygon";
        break;
    }
    if (operation.kind == OperationKind::Polygon) {
        for (const double corner : document.CornersOf(operation))
            line += ' ' + Millimetres(corner);
    } else if (operation.kind != OperationKind::Circle) {
        for (const double position : {operation.x1, operation.y1, operation.x2, operation.y2})
            line += ' ' + Millimetres(position);
    }
    line += fmt::format(" pen {} width {}", ColourText(style.pen), Millimetres(style.width));
    if (style.filled)
        line += fmt::format(" fill {}", ColourText(style.brush));
    return line;
}

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
    BeginPart(false);
}

void Document::BeginPart(bool isFixed)
{
    if (!parts.empty() && parts.back().first == operations.size())
        parts.back().isFixed = isFixed;
    else
        parts.push_back({operations.size(), isFixed});
}

void Document::AddShape(OperationKind kind, const ShapeStyle& style, double x1, double y1, double x2, double y2)
{
    ShapeStyle kept = style;
    if (!kept.filled || kind == OperationKind::Line) {
        kept.filled = false;
        kept.brush = White;
    }
    operations.push_back({.kind = kind, .style = PlaceIn(shapeStyles, kept), .x1 = x1, .y1 = y1, .x2 = x2, .y2 = y2});
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
    operations.push_back({.kind = OperationKind::Text,
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
    texts.shrink_to_fit();
    corners.shrink_to_fit();
    shapeStyles.shrink_to_fit();
    textStyles.shrink_to_fit();
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
    std::string lines;
    for (const Operation& operation : document.Page(page)) {
        lines += operation.kind == OperationKind::Text ? TextLine(document, operation) : ShapeLine(document, operation);
        lines += '\n';
    }
    return lines;
}

std::string Listing(const Document& document)
{
    std::string lines;
    for (int page = 1; page <= document.PageCount(); ++page)
        lines += fmt::format("page {}\n", page) + Listing(document, page);
    return lines;
}

} // namespace quillmere
