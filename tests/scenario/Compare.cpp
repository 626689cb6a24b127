#include "Compare.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

namespace quillmere::scenario {

namespace {

/// Texts no further apart in height stand in one line.
constexpr double LineTolerance = 0.6;

std::string_view Trimmed(std::string_view text)
{
    const auto first = text.find_first_not_of(' ');
    return first == std::string_view::npos ? std::string_view()
                                           : text.substr(first, text.find_last_not_of(' ') - first + 1);
}

/// The texts of one line joined with what stands between them; texts of blanks alone are passed over.
std::string Joined(const std::vector<const DrawnText*>& line, std::string_view between)
{
    std::string joined;
    for (const DrawnText* drawn : line) {
        const std::string_view text = Trimmed(drawn->text);
        if (text.empty())
            continue;
        joined.append(joined.empty() ? "" : between).append(text);
    }
    return joined;
}

} // namespace

std::string WithPlaces(std::string_view text, const Places& places)
{
    const std::array<std::pair<std::string_view, const std::string*>, 5> names{
        {{"{program}", &places.program},
         {"{root}", &places.root},
         {"{client}", &places.client},
         {"{server}", &places.server},
         {"{may-not-write}", &places.mayNotWrite}}};
    std::string result;
    while (!text.empty()) {
        const auto* const found =
            std::ranges::find_if(names, [&](const auto& name) { return text.starts_with(name.first); });
        if (found == names.end()) {
            result += text.front();
            text.remove_prefix(1);
        } else {
            result += *found->second;
            text.remove_prefix(found->first.size());
        }
    }
    return result;
}

std::string WithSlashes(std::string_view text, char separator)
{
    std::string result(text);
    if (separator != '/')
        std::ranges::replace(result, separator, '/');
    return result;
}

std::string Shown(std::string_view text)
{
    std::string shown = "\"";
    for (const char character : text) {
        switch (character) {
        case '"':
        case '\\':
            (shown += '\\') += character;
            break;
        case '\n':
            shown += "\\n";
            break;
        case '\t':
            shown += "\\t";
            break;
        default:
            shown += character;
        }
    }
    return shown + '"';
}

std::string ShownList(const std::vector<std::string>& entries)
{
    std::string shown;
    for (const std::string& entry : entries)
        shown.append(shown.empty() ? "" : " ").append(Shown(entry));
    return shown.empty() ? "nothing" : shown;
}

bool StandInOrder(const std::vector<std::string>& lines, const std::vector<std::string>& wanted, std::string& missing)
{
    auto at = lines.begin();
    for (const std::string& line : wanted) {
        at = std::find(at, lines.end(), line);
        if (at == lines.end()) {
            missing = line;
            return false;
        }
        ++at;
    }
    return true;
}

bool PageHolds(const std::vector<DrawnText>& drawn, std::string_view text)
{
    if (std::ranges::any_of(drawn, [&](const DrawnText& one) { return one.text.find(text) != std::string::npos; }))
        return true;
    std::vector<const DrawnText*> sorted;
    for (const DrawnText& one : drawn)
        sorted.push_back(&one);
    std::ranges::stable_sort(sorted, {}, [](const DrawnText* one) { return one->y; });
    while (!sorted.empty()) {
        const double y = sorted.front()->y;
        const auto end = std::ranges::find_if(sorted, [&](const DrawnText* one) { return one->y - y > LineTolerance; });
        std::vector<const DrawnText*> line(sorted.begin(), end);
        std::ranges::stable_sort(line, {}, [](const DrawnText* one) { return one->x; });
        if (Joined(line, " ").find(text) != std::string::npos || Joined(line, "").find(text) != std::string::npos)
            return true;
        sorted.erase(sorted.begin(), end);
    }
    return false;
}

} // namespace quillmere::scenario
