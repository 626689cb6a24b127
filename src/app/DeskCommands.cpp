#include "app/DeskCommands.h"

#include "app/SampleFolder.h"
#include "app/Zoom.h"
#include "clientdb/RecentEmployees.h"
#include "clientdb/ShareFolder.h"
#include "frame/TextParameter.h"
#include "review/Explanation.h"
#include "review/ReviewMark.h"
#include "review/TypedBack.h"
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

template<TextParameter Screen>
void Opens(Session& session)
{
    session.screens.Show(Screen.text);
}
template<TextParameter Screen>
void GoesTo(Session& session)
{
    Reach(session.screens, Screen.text);
}
template<int Step>
void OpensNeighbour(Session& session)
{
    OpenNeighbour(session, Step);
}

constexpr DeskCommand Command(std::string_view menu, std::string_view name, std::string_view text, char letter,
                              std::string_view key, void (*run)(Session&))
{
    return {.menu = menu, .name = name, .text = text, .letter = letter, .key = key, .run = run};
}

constexpr auto Commands = std::to_array<DeskCommand>({
    Command("File", "mnuFind", "Find Employee...", 'F', "Ctrl+F", Opens<"FindEmployee">).Parted(),
    Command("File", "mnuLastBatch", "Last Batch...", 'L', {}, Opens<"LastBatch">),
    Command("File", "mnuImport", "Import...", 'I', {}, Opens<"ImportTable">).Parted(),
    Command("File", "mnuExport", "Export...", 'E', {}, Opens<"ExportTable">),
    Command("Edit", "mnuUndo", "Undo", 'U', "Ctrl+Z", review::UndoLast).Saying(review::UndoWords),
    Command("Edit", "mnuTyped", "Typed and Not Stored...", 'T', "Ctrl+T", review::ShowTyped).OfEmployee(),
    Command("Folder", "mnuSafetyCopies", "Safety Copies...", 'S', {}, Opens<"SafetyCopies">),
    Command("Folder", "mnuShare", "Share This Folder...", 'F', {}, Opens<"ShareFolder">).Saying(ShareWords),
    Command("View", "mnuOverview", "Overview...", 'O', "Ctrl+E", Opens<"OverviewList">).Parted(),
    Command("View", "mnuCheck", "Check...", 'C', "F9", Opens<"CheckList">),
    Command("View", "mnuExplain", "Explain...", 'X', "F2", review::ExplainBoxInUse).OfEmployee(),
    Command("View", "mnuHistory", "History...", 'H', "Ctrl+H", Opens<"ChangeHistory">),
    Command("View", "mnuLastYear", "Compare With Last Year...", 'L', {}, Opens<"LastYearSheet">).OfEmployee(),
    Command("View", "mnuReviewed", "Reviewed", 'V', "Ctrl+R", review::ToggleReviewedOfOpen).OfEmployee(),
    Command("View", "mnuZoomIn", "Zoom In", 'Z', "Ctrl++", ZoomIn).AlsoBy("Ctrl+=").Parted(),
    Command("View", "mnuZoomOut", "Zoom Out", 'U', "Ctrl+-", ZoomOut),
    Command("View", "mnuZoomUsual", "Usual Size", 'S', "Ctrl+0", ZoomAsDesktop),
    Command("Go", "mnuPage1", "Page 1", '1', "Ctrl+PgUp", GoesTo<"Form3">).OfEmployee(),
    Command("Go", "mnuPage2", "Page 2", '2', "Ctrl+PgDown", GoesTo<"Side2Form1">).OfEmployee(),
    Command("Go", "mnuCars3And4", "Cars 3 + 4", '3', "Ctrl+3", GoesTo<"Form3_4">).OfEmployee(),
    Command("Go", "mnuCars5And6", "Cars 5 + 6", '5', "Ctrl+5", GoesTo<"Form5_6">).OfEmployee(),
    Command("Go", "mnuDeclaration", "P11D(b)", 'B', "Ctrl+B", GoesTo<"P11DDeclaration">).OfEmployee(),
    Command("Go", "mnuPreviousEmployee", "Previous Employee", 'P', "Ctrl+Up", OpensNeighbour<-1>).Parted().OfEmployee(),
    Command("Go", "mnuNextEmployee", "Next Employee", 'N', "Ctrl+Down", OpensNeighbour<1>).OfEmployee(),
    Command("Go", "mnuLastEmployee", "Last Employee Open", 'L', "Alt+Left", OpenLastEmployee),
    Command("Go", "mnuCloseFile", "Close File", 'C', "Ctrl+W", CloseFile).Parted().OfEmployee(),
    Command("Help", "mnuHelp", "Guide...", 'G', "F1", Opens<"HelpBook">),
    Command("Help", "mnuCalculatorCheck", "Check the Calculators...", 'C', {}, Opens<"CalculatorCheck">).Parted(),
    Command("Help", "mnuSample", "Add Sample Clients", 'S', {}, AddOrTakeSampleClients).Saying(SampleWords),
    Command("Help", "mnuAbout", "About...", 'A', {}, Opens<"About">).Parted(),
});

} // namespace

std::span<const DeskCommand> DeskCommands()
{
    return Commands;
}

} // namespace quillmere
