#pragma once

#include "frame/Screen.h"

#include <string>
#include <string_view>
#include <vector>

namespace quillmere {

/// A line over a list of names that shows only those that what is typed is a part of, and a tick that shows them from A
/// to Z. While both are untouched the list is as it was filled. What is chosen stays chosen while it shows.
class ListFilter {
public:
    /// Makes the boxes of the line on `screen`, after those that are there; `list` is one of them. `noun` is what the
    /// names are of: "employers".
    ListFilter(Screen& screen, std::string_view list, std::string_view noun);

    /// The list has these names, in this order.
    void Fill(std::vector<std::string> newNames);

private:
    void Follow();

    Screen& screen;
    std::string list, noun;
    std::vector<std::string> names;
};

/// The names that each word of `sought` is a part of, accents and case apart; from A to Z if `sorted`.
std::vector<std::string> Filtered(const std::vector<std::string>& names, std::string_view sought, bool sorted);

} // namespace quillmere
