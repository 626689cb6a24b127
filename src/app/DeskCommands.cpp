#include "app/DeskCommands.h"

#include "review/Explanation.h"

#include <array>

namespace quillmere {

namespace {

constexpr auto Commands = std::to_array<DeskCommand>({
    {.menu = "File",
     .name = "mnuFind",
     .text = "Find Employee...",
     .letter = 'F',
     .key = "Ctrl+F",
     .run = [](Session& session) { session.screens.Show("FindEmployee"); },
     .separatorBefore = true},
    {.menu = "View",
     .name = "mnuOverview",
     .text = "Overview...",
     .letter = 'O',
     .key = "Ctrl+E",
     .run = [](Session& session) { session.screens.Show("OverviewList"); },
     .separatorBefore = true},
    {.menu = "View",
     .name = "mnuCheck",
     .text = "Check...",
     .letter = 'C',
     .key = "F9",
     .run = [](Session& session) { session.screens.Show("CheckList"); }},
    {.menu = "View",
     .name = "mnuExplain",
     .text = "Explain...",
     .letter = 'X',
     .key = "F2",
     .run = [](Session& session) { review::ExplainBoxInUse(session); },
     .ofEmployee = true},
    {.menu = "Help",
     .name = "mnuHelp",
     .text = "Guide...",
     .letter = 'G',
     .key = "F1",
     .run = [](Session& session) { session.screens.Show("HelpBook"); }},
    {.menu = "Help",
     .name = "mnuCalculatorCheck",
     .text = "Check the Calculators...",
     .letter = 'C',
     .run = [](Session& session) { session.screens.Show("CalculatorCheck"); },
     .separatorBefore = true},
});

} // namespace

std::span<const DeskCommand> DeskCommands()
{
    return Commands;
}

} // namespace quillmere
