#include "printing/jobs/PrinterEdge.h"

#include "printing/paper/Document.h"

#include <algorithm>
#include <cmath>
#include <fmt/format.h>
#include <optional>

namespace quillmere {

namespace {

constexpr double Width = SheetWidth / UnitsPerMillimetre, Height = SheetHeight / UnitsPerMillimetre;
/// What nobody sees missing, mm.
constexpr double Unseen = 0.05;
/// What is moved comes so far inside, for printers tell their edges in whole points and less exactly, mm.
constexpr double Spare = 0.05;

/// By how much what lies between two places is moved to lie in a room; nothing if the room is too small for it.
std::optional<double> Moved(double from, double to, double roomFrom, double roomTo)
{
    if (from >= roomFrom - Unseen && to <= roomTo + Unseen)
        return 0.0;
    if (to - from > roomTo - roomFrom)
        return std::nullopt;
    const auto tenths = [](double length) { return std::ceil((length + Spare) * 10 - 1e-6) / 10; };
    return from < roomFrom ? std::min(tenths(roomFrom - from), roomTo - to)
                           : -std::min(tenths(to - roomTo), from - roomFrom);
}

} // namespace

EdgeFit FitOf(const Ink& ink, const SheetEdge& edge)
{
    if (ink.IsNone())
        return {};
    const auto across = Moved(ink.left, ink.right, edge.left, Width - edge.right);
    const auto down = Moved(ink.top, ink.bottom, edge.top, Height - edge.bottom);
    if (!across || !down)
        return {.isInside = false};
    const bool isInside = *across == 0 && *down == 0;
    return {.isInside = isInside, .canMove = !isInside, .across = *across, .down = *down};
}

std::string WordsOf(const EdgeFit& fit, std::string_view printer)
{
    if (fit.isInside)
        return {};
    return fmt::format("Outside what {} prints{}", printer,
                       fit.canMove ? "" : ": larger than that; Scale in Report Settings makes it smaller");
}

} // namespace quillmere
