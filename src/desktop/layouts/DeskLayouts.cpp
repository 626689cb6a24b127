#include "desktop/layouts/DialogParts.h"
#include "desktop/layouts/Layouts.h"

namespace quillmere::layouts {

Layout FindEmployee()
{
    Layout layout{.width = 720, .height = 470, .growing = "Found"};
    layout.Text(16, 14, 688, "Any part of a name, an employer, a works number or a National Insurance number:");
    layout.Place("Sought", 16, 36, 688, 26);
    layout.Place("Found", 16, 72, 688, 342);
    layout.Place("Count", 16, 428, 420);
    ButtonRow(layout, 704, 426, {"FindOpen", "FindCancel"});
    return layout;
}

Layout CheckList()
{
    Layout layout{.width = 780, .height = 236, .growing = "Findings"};
    layout.PlaceAt("Scope", 0, 16, 6, 130, 26);
    layout.PlaceAt("Scope", 1, 154, 6, 166, 26);
    layout.PlaceAt("Scope", 2, 328, 6, 124, 26);
    ButtonRow(layout, 764, 5, {"CheckGo", "CheckAgain", "CheckClose"});
    layout.Place("Findings", 16, 40, 748, 164);
    layout.Place("Summary", 16, 209, 400);
    return layout;
}

Layout OverviewList()
{
    Layout layout{.width = 980, .height = 462, .growing = "Lines"};
    layout.Text(16, 15, 40, "Show:");
    layout.Place("Filter", 60, 12, 280, 24);
    layout.Text(364, 15, 64, "Employer:");
    layout.Place("Employer", 430, 11, 330, 26);
    layout.Place("Lines", 16, 48, 948, 322);
    layout.Place("Foot", 16, 376, 948, 40);
    ButtonRow(layout, 964, 422,
              {"OverviewOpen", "OverviewSort", "OverviewAgain", "OverviewReviewed", "OverviewPrint", "OverviewClose"});
    return layout;
}

Layout ExportTable()
{
    Layout layout{.width = 560, .height = 290};
    for (int what = 0; what < 5; ++what)
        layout.PlaceAt("ExportWhat", what, 16, 14 + what * 30, 528, 26);
    layout.Text(16, 178, 80, "Employer:", {.size = 13});
    layout.Place("ExportEmployer", 100, 174, 444, 26);
    layout.Place("ExportWords", 16, 212, 528, 26);
    ButtonRow(layout, 544, 248, {"ExportSave", "ExportClose"});
    return layout;
}

Layout ImportTable()
{
    constexpr int Width = 980;
    Layout layout{.width = Width, .height = 520, .growing = "ImportRows"};
    layout.Place("ImportFile", 16, 12, 470);
    layout.Text(486, 13, 210, "Employer of rows that name none:", {.size = 13});
    layout.Place("ImportEmployer", 700, 10, Width - 716, 26);
    layout.Place("ImportColumns", 16, 44, 660, 150);
    layout.Text(692, 44, 270, "The chosen column goes to:", {.size = 13});
    layout.Place("ImportTarget", 692, 68, Width - 708, 26);
    layout.Place("ImportRows", 16, 206, Width - 32, 222);
    layout.Place("ImportWords", 16, 434, Width - 32, 40);
    layout.Place("ImportCounts", 16, 486, 600);
    ButtonRow(layout, Width - 16, 482, {"ImportGo", "ImportCancel"});
    return layout;
}

Layout SafetyCopies()
{
    Layout layout{.width = 820, .height = 430, .growing = "Copies"};
    layout.Place("InUse", 16, 12, 788);
    layout.Place("Copies", 16, 40, 788, 342);
    ButtonRow(layout, 804, 394, {"CopyPutBack", "CopiesAgain", "CopiesClose"});
    return layout;
}

Layout ShareFolder()
{
    constexpr auto Settings = std::to_array<std::pair<std::string_view, std::string_view>>({
        {"ServerHost", "Server, or folder of its socket:"},
        {"ServerPort", "Port:"},
        {"ServerDatabase", "Database:"},
        {"ServerUser", "User:"},
        {"ServerSchema", "Schema of this folder:"},
    });
    constexpr int Height = 32;
    Layout layout{.width = 640, .height = 356};
    layout.Place("ShareWhere", 16, 12, 608, 40);
    int top = 58;
    for (const auto& [box, caption] : Settings) {
        layout.Text(16, top + 4, 210, caption, {.size = 13});
        layout.Place(box, 230, top, 394, 26);
        top += Height;
    }
    layout.Place("SharePassword", 16, top + 4, 608, 40);
    layout.Place("ShareProgress", 16, top + 52, 608, 20);
    ButtonRow(layout, 624, 318, {"ShareGo", "ShareCancel"}, 120);
    return layout;
}

Layout DamagedDatabase()
{
    Layout layout{.width = 780, .height = 236, .growing = "Faults"};
    layout.Place("DamagedWords", 16, 8, 748);
    layout.Place("Offer", 16, 30, 748);
    layout.Place("Faults", 16, 56, 748, 142);
    ButtonRow(layout, 764, 204, {"DamagedPutBack", "DamagedSalvage", "DamagedCopies", "DamagedClose"}, 120);
    return layout;
}

Layout CalculatorCheck()
{
    Layout layout{.width = 980, .height = 470, .growing = "Examples"};
    layout.Place("Summary", 16, 10, 948);
    layout.Place("Examples", 16, 38, 948, 322);
    layout.Place("Chosen", 16, 366, 948, 60);
    ButtonRow(layout, 964, 432, {"CalculatorCheckPrint", "CalculatorCheckClose"});
    return layout;
}

Layout Explanation()
{
    constexpr int Width = 1180, WordsHeight = 84;
    Layout layout{.width = Width, .height = 540, .growing = "Steps"};
    layout.Place("Heading", 16, 12, Width - 32);
    layout.Looks({.size = 14, .bold = true});
    layout.Place("Steps", 16, 44, Width - 32, 344);
    layout.Place("Words", 16, 396, Width - 32, WordsHeight);
    ButtonRow(layout, Width - 16, 496, {"ExplainCopy", "ExplainPrint", "ExplainClose"});
    return layout;
}

Layout HelpBook()
{
    Layout layout{.width = 980, .height = 510};
    layout.Text(16, 14, 312, "Look for:");
    layout.Place("HelpSought", 16, 36, 312, 26);
    layout.Place("HelpContents", 16, 72, 312, 424);
    layout.Place("HelpText", 344, 14, 620, 442);
    ButtonRow(layout, 964, 468, {"HelpClose"});
    return layout;
}

Layout LastYearSheet()
{
    Layout layout{.width = 760, .height = 540, .growing = "LeftBehind"};
    layout.PlaceAt("LastYearScope", 0, 16, 8, 130, 26);
    layout.PlaceAt("LastYearScope", 1, 154, 8, 180, 26);
    layout.Place("Years", 16, 40, 728, 276);
    layout.Place("LastYearWords", 16, 322, 728);
    layout.Place("LeftBehind", 16, 348, 728, 138);
    ButtonRow(layout, 744, 498, {"LastYearCopy", "LastYearPrint", "LastYearClose"});
    return layout;
}

Layout About()
{
    Layout layout{.width = 720, .height = 420, .growing = "AboutFacts"};
    layout.Place("AboutTitle", 16, 12, 688, 26);
    layout.Looks({.size = 16, .bold = true});
    layout.Place("AboutFacts", 16, 48, 688, 316);
    ButtonRow(layout, 704, 378, {"AboutCopy", "AboutClose"});
    return layout;
}

Layout TypedStrip()
{
    Layout layout{.width = 780, .height = 40};
    layout.Place("StripWords", 16, 11, 440);
    ButtonRow(layout, 764, 6, {"StripShow", "StripBack", "StripForget"});
    return layout;
}

Layout TypedList()
{
    Layout layout{.width = 720, .height = 380, .growing = "TypedLines"};
    layout.Place("TypedLines", 16, 16, 688, 310);
    layout.Place("TypedWords", 16, 343, 380);
    ButtonRow(layout, 704, 338, {"TypedBack", "TypedForget", "TypedClose"});
    return layout;
}

Layout ChangeHistory()
{
    Layout layout{.width = 780, .height = 500, .growing = "Changes"};
    layout.PlaceAt("Scope", 0, 16, 10, 130, 26);
    layout.PlaceAt("Scope", 1, 152, 10, 130, 26);
    layout.PlaceAt("Scope", 2, 288, 10, 110, 26);
    layout.Text(424, 14, 130, "Only of the day:", {.size = 13});
    layout.Place("Day", 548, 10, 110, 26);
    layout.Place("Operations", 16, 46, 748, 190);
    layout.Place("Changes", 16, 246, 748, 200);
    layout.Place("Summary", 16, 462, 500);
    ButtonRow(layout, 764, 458, {"HistoryUndo", "HistoryClose"});
    return layout;
}

} // namespace quillmere::layouts
