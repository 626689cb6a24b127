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
    ButtonRow(layout, 704, 426, std::to_array<std::string_view>({"FindOpen", "FindCancel"}));
    return layout;
}

Layout CheckList()
{
    Layout layout{.width = 940, .height = 230, .growing = "Findings"};
    layout.PlaceAt("Scope", 0, 16, 6, 140, 26);
    layout.PlaceAt("Scope", 1, 164, 6, 180, 26);
    layout.Place("Summary", 352, 8, 240);
    ButtonRow(layout, 924, 5, std::to_array<std::string_view>({"CheckGo", "CheckAgain", "CheckClose"}));
    layout.Place("Findings", 16, 40, 908, 182);
    return layout;
}

Layout CalculatorCheck()
{
    Layout layout{.width = 980, .height = 470, .growing = "Examples"};
    layout.Place("Summary", 16, 10, 948);
    layout.Place("Examples", 16, 38, 948, 322);
    layout.Place("Chosen", 16, 366, 948, 60);
    ButtonRow(layout, 964, 432, std::to_array<std::string_view>({"CalculatorCheckClose"}));
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
    ButtonRow(layout, Width - 16, 496,
              std::to_array<std::string_view>({"ExplainCopy", "ExplainPrint", "ExplainClose"}));
    return layout;
}

Layout HelpBook()
{
    Layout layout{.width = 920, .height = 510};
    layout.Text(16, 14, 240, "Look for:");
    layout.Place("HelpSought", 16, 36, 240, 26);
    layout.Place("HelpContents", 16, 72, 240, 424);
    layout.Place("HelpText", 272, 14, 632, 442);
    ButtonRow(layout, 904, 468, std::to_array<std::string_view>({"HelpClose"}));
    return layout;
}

} // namespace quillmere::layouts
