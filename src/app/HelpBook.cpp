#include "app/HelpBook.h"

#include "app/GuideHtml.h"
#include "frame/Session.h"

#include <algorithm>
#include <array>
#include <fmt/format.h>

namespace quillmere {

namespace {

constexpr auto Rows = std::to_array<BoxRow>({
    {.name = "HelpSought", .spoken = "Words to look for in the guide", .movesIn = "HelpContents"},
    TableBoxRow("HelpContents", "Chapters and sections of the guide", "Section"),
    {.name = "HelpText", .kind = BoxKind::Surface, .spoken = "Text of the section"},
    {.name = "HelpClose", .kind = BoxKind::Button, .text = "&Close"},
});

} // namespace

HelpBook::HelpBook(Session& session) : Screen(session, "HelpBook", ShowMode::Above, "Help")
{
    AddBoxes(Rows);
    OnType("HelpSought", [this](Box&) { Search({}); });
    OnSelect("HelpContents", [this](Box&) { ShowChosen(); });
    OnChoose("HelpText", [this](Box& text) { Follow(text.Selected()); });
    OnClick("HelpClose", [this](Box&) { this->session.screens.Unload(Name()); });
}

bool HelpBook::Load()
{
    sections = ReadGuide();
    // What a link of the text chooses.
    std::vector<std::string> titles;
    for (const GuideSection& section : sections)
        titles.push_back(section.title);
    box("HelpText").SetEntries(std::move(titles));
    Search(SectionInUse());
    return true;
}

void HelpBook::Search(const GuideSection* wanted)
{
    listed.clear();
    std::vector<std::string> titles;
    int chosen = 0;
    for (const GuideSection& section : sections) {
        if (!HasWords(section, box("HelpSought").Text()))
            continue;
        if (&section == wanted)
            chosen = static_cast<int>(listed.size());
        listed.push_back(&section);
        titles.push_back(std::string(static_cast<std::size_t>(section.level - 1) * 4, ' ') + section.title);
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
        .SetText(chosen < 0 ? "<p>No section has these words.</p>"
                            : HtmlOfSection(*listed.at(static_cast<std::size_t>(chosen))));
}

std::string HelpBook::HtmlOfSection(const GuideSection& section) const
{
    const auto link = [&](std::string_view target) {
        const GuideSection* found = SectionAt(sections, section.file, target);
        return found == nullptr ? std::string() : fmt::to_string(found - sections.data());
    };
    const auto picture = [&](std::string_view name) {
        return UrlOf((session.resourceFolder / "guide" / name).string());
    };
    return HtmlOf(section.markdown, {.link = link, .picture = picture});
}

void HelpBook::Follow(int link)
{
    if (link < 0 || link >= static_cast<int>(sections.size()))
        return;
    box("HelpSought").SetText("");
    Search(&sections[static_cast<std::size_t>(link)]);
}

const GuideSection* HelpBook::SectionInUse() const
{
    std::string_view title = SectionAbout("MDIForm1", {});
    for (const Screen* screen : session.screens.Open()) {
        if (screen == this || !session.screens.IsShown(screen->Name()))
            continue;
        const Box* inUse = screen->InUse();
        if (const auto found = SectionAbout(screen->Name(), inUse == nullptr ? "" : inUse->Name()); !found.empty())
            title = found;
    }
    const auto found = std::ranges::find(sections, title, &GuideSection::title);
    return found == sections.end() ? nullptr : &*found;
}

} // namespace quillmere
