#include "printing/paper/Ink.h"

#include "frame/Text.h"

#include <algorithm>

namespace quillmere {

namespace {

/// Heights of capitals and digits over the base line, and of the parts of letters below it, in ems.
constexpr double Capitals = 0.73, Tails = 0.21;

class InkSeen {
public:
    Ink ink;

    void Line(const ShapeStyle& style, double x1, double y1, double x2, double y2)
    {
        if (style.pen != White)
            Take(x1, y1, x2, y2, style.width / 2);
    }
    void Rectangle(const ShapeStyle& style, double x1, double y1, double x2, double y2)
    {
        if (style.pen != White)
            Take(x1, y1, x2, y2, style.width / 2);
        else if (style.filled && style.brush != White)
            Take(x1, y1, x2, y2, 0);
    }
    void Circle(const ShapeStyle& style, double x, double y, double radius)
    {
        Rectangle(style, x - radius, y - radius, x + radius, y + radius);
    }
    void Polygon(const ShapeStyle& style, std::span<const double> corners)
    {
        for (std::size_t at = 0; at + 1 < corners.size(); at += 2)
            Rectangle(style, corners[at], corners[at + 1], corners[at], corners[at + 1]);
    }
    void Text(const TextStyle& style, const Operation& operation, std::string_view text)
    {
        const std::string_view seen = Trimmed(text);
        if (seen.empty() || style.colour == White)
            return;
        const auto before = static_cast<std::size_t>(seen.data() - text.data());
        const double left = operation.x1 + TextWidth(style.face, style.size, text.substr(0, before));
        const double line = operation.y1 + TextAscent(style.face, style.size);
        const double em = style.size * TwipsPerPoint;
        Take(left, line - Capitals * em, left + TextWidth(style.face, style.size, seen), line + Tails * em, 0);
    }

private:
    void Take(double x1, double y1, double x2, double y2, double around)
    {
        const auto millimetres = [](double twips) { return twips / UnitsPerMillimetre; };
        ink.left = std::min(ink.left, millimetres(std::min(x1, x2) - around));
        ink.top = std::min(ink.top, millimetres(std::min(y1, y2) - around));
        ink.right = std::max(ink.right, millimetres(std::max(x1, x2) + around));
        ink.bottom = std::max(ink.bottom, millimetres(std::max(y1, y2) + around));
    }
};

} // namespace

Ink InkOf(const Document& document)
{
    InkSeen seen;
    for (int page = 1; page <= document.PageCount(); ++page)
        Replay(document, page, seen);
    return seen.ink;
}

} // namespace quillmere
