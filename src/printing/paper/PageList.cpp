#include "printing/paper/PageList.h"

#include "frame/Text.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <optional>
#include <string>

namespace quillmere {

namespace {

/// A page number of digits alone; one too large for a number stands for a page that no document has.
std::optional<int> ReadPage(std::string_view text)
{
    const std::string trimmed = Trim(text);
    if (trimmed.empty() || !std::ranges::all_of(trimmed, [](char c) { return c >= '0' && c <= '9'; }))
        return std::nullopt;
    int page = 0;
    const auto read = std::from_chars(trimmed.data(), trimmed.data() + trimmed.size(), page);
    return read.ec == std::errc() ? page : std::numeric_limits<int>::max();
}

struct PageRange {
    int first, last;
};

std::optional<PageRange> ReadRange(std::string_view piece)
{
    const std::size_t dash = piece.find('-');
    const auto first = ReadPage(piece.substr(0, dash));
    const auto last = dash == std::string_view::npos ? first : ReadPage(piece.substr(dash + 1));
    if (!first || !last || *first < 1 || *last < *first)
        return std::nullopt;
    return PageRange{*first, *last};
}

} // namespace

std::vector<int> ReadPageList(std::string_view list, int pageCount)
{
    std::vector<int> pages;
    for (std::size_t start = 0; start <= list.size();) {
        const std::size_t end = std::min(list.find(',', start), list.size());
        const std::string_view piece = list.substr(start, end - start);
        start = end + 1;
        if (Trim(piece).empty())
            continue; // A comma too many harms nobody.
        const auto range = ReadRange(piece);
        if (!range)
            return {};
        for (int page = range->first; page <= std::min(range->last, pageCount); ++page)
            pages.push_back(page);
    }
    return pages;
}

} // namespace quillmere
