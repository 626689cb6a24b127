#include "screens/Ways.h"

#include <algorithm>
#include <array>

namespace quillmere {

namespace {

constexpr auto Ways = std::to_array<Way>({
    {"Form3", "Side2Form1", "Page1"},
    {"Side2Form1", "Form3", "Page2"},
    {"Form3_4", "Form3", "Label65"},
    {"Form5_6", "Form3", "Label66"},
    {"P11DDeclaration", "Form3", "lblP11DB"},
    {"ANotepad", "Form3", "Image1"},
    {"BNotepad", "Form3", "Image2"},
    {"CNotepad", "Form3", "Image3"},
    {"DNotepad", "Form3", "Image4"},
    {"ENotepad", "Form3", "Image5"},
    {"GNotepad", "Side2Form1", "Image1"},
    {"INotepad", "Side2Form1", "Image2"},
    {"KNotepad", "Side2Form1", "Image3"},
    {"LNotepad", "Side2Form1", "Image4"},
    {"ONotepad1", "Side2Form1", "Image5"},
    {"ONotepad2", "Side2Form1", "Image6"},
    {"ONotepad3", "Side2Form1", "Image7"},
    {"ONotepad4", "Side2Form1", "Image8"},
    {"ONotepad5", "Side2Form1", "Image9"},
    {"ONotepad6", "Side2Form1", "Image10"},
    {"JNotepad", "Side2Form1", "Image11"},
    {"HNotepad", "Side2Form1", "Image12"},
    {"NNotepad1", "Side2Form1", "Image13"},
    {"NNotepad2", "Side2Form1", "Image14"},
    {"NNotepad3", "Side2Form1", "Image15"},
    {"D2Notepad", "DNotepad", "Image1"},
    {"P11DBNotepad1", "P11DDeclaration", "Image1"},
    {"P11DBNotepad2", "P11DDeclaration", "Image2"},
});

} // namespace

std::span<const Way> AllWays()
{
    return Ways;
}

Screen* Reach(Screens& screens, std::string_view screen)
{
    if (screens.IsShown(screen))
        return screens.Find(screen);
    const auto* const way = std::ranges::find(Ways, screen, &Way::to);
    if (way == Ways.end())
        return nullptr;
    // What is reached from page 1 is reached from page 2 by way of it.
    if (!screens.IsShown(way->from) && (screen == "Form3" || Reach(screens, way->from) == nullptr))
        return nullptr;
    Screen* from = screens.Find(way->from);
    from->Click(from->box(way->by));
    return screens.IsShown(screen) ? screens.Find(screen) : nullptr;
}

std::vector<std::string_view> ReachedScreens()
{
    std::vector<std::string_view> names;
    names.reserve(std::size(Ways));
    for (const Way& way : Ways)
        names.push_back(way.to);
    return names;
}

} // namespace quillmere
