#include "app/Zoom.h"

#include "frame/CloseAll.h"
#include "frame/DeskMemory.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <fmt/format.h>

namespace quillmere {

namespace {

constexpr std::string_view Key = "ZOOM";
constexpr int Usual = 100;
constexpr auto Steps = std::to_array<int>({80, 90, Usual, 110, 125, 150, 175, 200});

/// The step that was kept last; what is no step, in a file that somebody has changed, is the usual one.
int InUse(const Session& session)
{
    const std::string kept = DeskMemory(session.programFolder).Recall(Key);
    int percent = Usual;
    std::from_chars(kept.data(), kept.data() + kept.size(), percent);
    return std::ranges::find(Steps, percent) == Steps.end() ? Usual : percent;
}

void Take(Session& session, int percent)
{
    DeskMemory(session.programFolder).Remember(Key, std::to_string(percent));
    session.screens.Zoom(percent);
    SetStatusNote(session, fmt::format("Zoom {} %", percent));
}

} // namespace

void ZoomIn(Session& session)
{
    const auto* larger = std::ranges::upper_bound(Steps, InUse(session));
    Take(session, larger == Steps.end() ? Steps.back() : *larger);
}

void ZoomOut(Session& session)
{
    const auto* here = std::ranges::lower_bound(Steps, InUse(session));
    Take(session, here == Steps.begin() ? Steps.front() : *(here - 1));
}

void ZoomAsDesktop(Session& session)
{
    Take(session, Usual);
}

void ZoomAsBefore(Session& session)
{
    session.screens.Zoom(InUse(session));
}

} // namespace quillmere
