#include "app/DeskCommands.h"

#include "clientdb/RecentEmployees.h"
#include "review/Explanation.h"
#include "review/ReviewMark.h"
#include "review/Undo.h"
#include "screens/Ways.h"

#include <array>

namespace quillmere {

namespace {

void CloseFile(Session& session)
{
    constexpr int OnToolbar = 4;
    Screen* main = session.screens.Find("MDIForm1");
    main->Click(main->box("cmdFile", OnToolbar));
}

constexpr auto Commands = std::to_array<DeskCommand>({
    {.menu = "File",
     .name = "mnuFind",
     .text = "Find Employee...",
     .letter = 'F',
     .key = "Ctrl+F",
     .run = [](Session& session) { session.screens.Show("FindEmployee"); },
     .separatorBefore = true},
    {.menu = "Edit",
     .name = "mnuUndo",
     .text = "Undo",
     .letter = 'U',
     .key = "Ctrl+Z",
     .run = review::UndoLast,
     .words = review::UndoWords},
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
    {.menu = "View",
     .name = "mnuHistory",
     .text = "History...",
     .letter = 'H',
     .key = "Ctrl+H",
     .run = [](Session& session) { session.screens.Show("ChangeHistory"); }},
    {.menu = "View",
     .name = "mnuReviewed",
     .text = "Reviewed",
     .letter = 'V',
     .key = "Ctrl+R",
     .run = review::ToggleReviewedOfOpen,
     .ofEmployee = true},
    {.menu = "Go",
     .name = "mnuPage1",
     .text = "Page 1",
     .letter = '1',
     .key = "Ctrl+PgUp",
     .run = [](Session& session) { Reach(session.screens, "Form3"); },
     .ofEmployee = true},
    {.menu = "Go",
     .name = "mnuPage2",
     .text = "Page 2",
     .letter = '2',
     .key = "Ctrl+PgDown",
     .run = [](Session& session) { Reach(session.screens, "Side2Form1"); },
     .ofEmployee = true},
    {.menu = "Go",
     .name = "mnuCars3And4",
     .text = "Cars 3 + 4",
     .letter = '3',
     .key = "Ctrl+3",
     .run = [](Session& session) { Reach(session.screens, "Form3_4"); },
     .ofEmployee = true},
    {.menu = "Go",
     .name = "mnuCars5And6",
     .text = "Cars 5 + 6",
     .letter = '5',
     .key = "Ctrl+5",
     .run = [](Session& session) { Reach(session.screens, "Form5_6"); },
     .ofEmployee = true},
    {.menu = "Go",
     .name = "mnuDeclaration",
     .text = "P11D(b)",
     .letter = 'B',
     .key = "Ctrl+B",
     .run = [](Session& session) { Reach(session.screens, "P11DDeclaration"); },
     .ofEmployee = true},
    {.menu = "Go",
     .name = "mnuPreviousEmployee",
     .text = "Previous Employee",
     .letter = 'P',
     .key = "Ctrl+Up",
     .run = [](Session& session) { OpenNeighbour(session, -1); },
     .separatorBefore = true,
     .ofEmployee = true},
    {.menu = "Go",
     .name = "mnuNextEmployee",
     .text = "Next Employee",
     .letter = 'N',
     .key = "Ctrl+Down",
     .run = [](Session& session) { OpenNeighbour(session, 1); },
     .ofEmployee = true},
    {.menu = "Go",
     .name = "mnuLastEmployee",
     .text = "Last Employee Open",
     .letter = 'L',
     .key = "Alt+Left",
     .run = [](Session& session) { OpenLastEmployee(session); }},
    {.menu = "Go",
     .name = "mnuCloseFile",
     .text = "Close File",
     .letter = 'C',
     .key = "Ctrl+W",
     .run = CloseFile,
     .separatorBefore = true,
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
    {.menu = "Help",
     .name = "mnuAbout",
     .text = "About...",
     .letter = 'A',
     .run = [](Session& session) { session.screens.Show("About"); },
     .separatorBefore = true},
});

} // namespace

std::span<const DeskCommand> DeskCommands()
{
    return Commands;
}

} // namespace quillmere
