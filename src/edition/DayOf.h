#pragma once

#include <chrono>
#include <stdexcept>
#include <string_view>

namespace quillmere::edition {

/// The day of a text dd/mm/yyyy. Any other text does not compile.
consteval std::chrono::sys_days DayOf(std::string_view text)
{
    constexpr std::string_view form = "dd/mm/yyyy";
    if (text.size() != form.size())
        throw std::logic_error("a date of the edition has another form");
    const auto number = [text](std::size_t from, std::size_t count) {
        int value = 0;
        for (const char digit : text.substr(from, count)) {
            if (digit < '0' || digit > '9')
                throw std::logic_error("a date of the edition has a sign that is no digit");
            value = value * 10 + (digit - '0');
        }
        return value;
    };
    const std::chrono::year_month_day date{std::chrono::year{number(6, 4)},
                                           std::chrono::month{static_cast<unsigned>(number(3, 2))},
                                           std::chrono::day{static_cast<unsigned>(number(0, 2))}};
    if (text[2] != '/' || text[5] != '/' || !date.ok())
        throw std::logic_error("a date of the edition is none");
    return date;
}

} // namespace quillmere::edition
