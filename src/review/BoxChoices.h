#pragma once

#include "frame/Dates.h"
#include "frame/Screen.h"

#include <optional>
#include <span>
#include <string_view>

/// What is at hand in a box: the letters that it takes with their meaning, or the days of its range.
namespace quillmere::review {

/// A text that may be typed into a box.
struct Choice {
    std::string_view text;
    std::string_view meaning;
};

/// The end of a range of days: the date in another box of the screen, and where that holds none, a fixed day.
struct DayBound {
    std::string_view box = {}; ///< "#" in it is the number at the end of the box that is asked about; empty: none
    Day otherwise;
};

/// What a box takes. It has letters or a range, never both.
struct BoxChoices {
    std::string_view screen; ///< names of all the screens that have the box, parted by blanks
    std::string_view box;    ///< without the number of the car, loan and the like
    std::span<const Choice> letters = {};
    std::optional<DayBound> first = {}, last = {};
    bool opensAtFirst = false; ///< an empty box's calendar opens at the first day, else at the last
};

std::span<const BoxChoices> AllBoxChoices();

/// The row of a box; null for one that has nothing at hand.
const BoxChoices* ChoicesOf(std::string_view screen, std::string_view box);

/// The days of a box as its screen stands. A bound whose box holds no date of the range is the fixed one.
DayRange DaysOf(const BoxChoices& choices, const Screen& screen, const Box& box);

} // namespace quillmere::review
