#include "clientdb/ListFilter.h"

#include "clientdb/EmployeeFinder.h"
#include "frame/Text.h"

#include <algorithm>
#include <fmt/format.h>
#include <sstream>

namespace quillmere {

ListFilter::ListFilter(Screen& screen, std::string_view list, std::string_view noun)
    : screen(screen), list(list), noun(noun)
{
    screen.AddBox({.spoken = "Show only names with", .movesIn = this->list}, "ListFilter");
    screen.AddBox({.kind = BoxKind::Tick, .text = "A-Z", .spoken = "From A to Z", .letter = 'Z'}, "ListSorted");
    screen.AddBox({.kind = BoxKind::Label}, "ListCount");
    screen.OnType("ListFilter", [this](Box&) { Follow(); });
    screen.OnClick("ListSorted", [this](Box&) { Follow(); });
}

void ListFilter::Fill(std::vector<std::string> newNames)
{
    names = std::move(newNames);
    Follow();
}

void ListFilter::Follow()
{
    const std::string& sought = screen.box("ListFilter").Text();
    Box& shown = screen.box(list);
    const std::string chosen = shown.Text();
    shown.SetEntries(Filtered(names, sought, screen.box("ListSorted").Ticked()));
    const auto& entries = shown.Entries();
    const auto again = std::ranges::find(entries, chosen);
    if (!chosen.empty() && again != entries.end())
        shown.Select(static_cast<int>(again - entries.begin()));
    else if (!Trim(sought).empty())
        shown.Select(entries.empty() ? -1 : 0); // Enter goes on with the first
    screen.box("ListCount").SetText(fmt::format("{} of {} {}", entries.size(), names.size(), noun));
}

std::vector<std::string> Filtered(const std::vector<std::string>& names, std::string_view sought, bool sorted)
{
    std::vector<std::string> words;
    std::istringstream typed(Folded(sought));
    for (std::string word; typed >> word;)
        words.push_back(word);
    std::vector<std::string> left;
    std::ranges::copy_if(names, std::back_inserter(left), [&](const std::string& name) {
        const std::string folded = Folded(name);
        return std::ranges::all_of(words,
                                   [&](const std::string& word) { return folded.find(word) != std::string::npos; });
    });
    if (sorted)
        std::ranges::stable_sort(left, {}, Folded);
    return left;
}

} // namespace quillmere
