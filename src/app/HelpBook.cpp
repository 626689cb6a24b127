#include "app/HelpBook.h"

#include "app/KeysPage.h"
#include "frame/Session.h"

#include <array>

namespace quillmere {

namespace {

constexpr auto Rows = std::to_array<BoxRow>({
    {.name = "HelpSought", .spoken = "Words to look for in the guide", .movesIn = "HelpContents"},
    {.name = "HelpContents", .kind = BoxKind::Table, .spoken = "Sections of the guide", .columns = "Section"},
    {.name = "HelpText", .kind = BoxKind::Surface, .spoken = "Text of the section"},
    {.name = "HelpClose", .kind = BoxKind::Button, .text = "&Close"},
});

} // namespace

HelpBook::HelpBook(Session& session) : Screen(session, "HelpBook", ShowMode::Above, "Help")
{
    AddBoxes(Rows);
    OnType("HelpSought", [this](Box&) { Search({}); });
    OnSelect("HelpContents", [this](Box&) { ShowChosen(); });
    OnClick("HelpClose", [this](Box&) { this->session.screens.Unload(Name()); });
}

bool HelpBook::Load()
{
    sections = ReadGuide();
    sections.push_back(KeysPage(session));
    Search(TitleInUse());
    return true;
}

void HelpBook::Search(std::string_view title)
{
    listed.clear();
    std::vector<std::string> titles;
    int chosen = 0;
    for (const GuideSection& section : sections) {
        if (!HasWords(section, box("HelpSought").Text()))
            continue;
        if (section.title == title)
            chosen = static_cast<int>(listed.size());
        listed.push_back(&section);
        titles.push_back((section.level > 2 ? "    " : "") + section.title);
    }
    Box& contents = box("HelpContents");
    contents.SetEntries(std::move(titles));
    contents.Select(listed.empty() ? -1 : chosen);
    ShowChosen();
}

void HelpBook::ShowChosen()
{
    const int chosen = box("HelpContents").Selected();
    box("HelpText")
        .SetText(chosen < 0 ? "No section has these words." : listed.at(static_cast<std::size_t>(chosen))->markdown);
}

std::string_view HelpBook::TitleInUse() const
{
    std::string_view title = SectionAbout("MDIForm1", {});
    for (const Screen* screen : session.screens.Open()) {
        if (screen == this || !session.screens.IsShown(screen->Name()))
            continue;
        const Box* inUse = screen->InUse();
        if (const auto found = SectionAbout(screen->Name(), inUse == nullptr ? "" : inUse->Name()); !found.empty())
            title = found;
    }
    return title;
}

} // namespace quillmere
