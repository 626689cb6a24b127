#pragma once

#include "frame/Dates.h"
#include "frame/Explained.h"

#include <array>
#include <cctype>
#include <cmath>
#include <cstdlib>
#include <stdexcept>
#include <string>
#include <string_view>

namespace quillmere::test {

/// Works a sum of an explanation out from its own words, as somebody with a pocket calculator does: numbers with
/// commas, + - x /, parentheses, "the larger of a and b", "a in whole steps of b", two dates as the days from one to
/// the other, both counted, and behind commas "at least" and "at most".
class SumOfWords {
public:
    static long double Of(std::string_view words)
    {
        SumOfWords sum(words);
        const long double value = sum.Whole();
        if (!sum.rest.empty())
            throw std::invalid_argument("cannot read on at '" + std::string(sum.rest) + "'");
        return value;
    }

private:
    explicit SumOfWords(std::string_view words) : rest(words) { Skip(); }

    void Skip()
    {
        while (rest.starts_with(' '))
            rest.remove_prefix(1);
    }
    bool Take(std::string_view word)
    {
        if (!rest.starts_with(word))
            return false;
        rest.remove_prefix(word.size());
        Skip();
        return true;
    }
    long double Whole()
    {
        long double value = Sum();
        for (bool more = true; more;) {
            more = false;
            if (Take(", at least")) {
                value = std::max(value, Factor());
                more = true;
            }
            if (Take(", at most")) {
                value = std::min(value, Factor());
                more = true;
            }
        }
        return value;
    }
    long double Sum()
    {
        long double value = Product();
        while (true) {
            if (Take("+ "))
                value += Product();
            else if (Take("- "))
                value -= Product();
            else
                return value;
        }
    }
    long double Product()
    {
        long double value = Factor();
        while (true) {
            if (Take("x "))
                value *= Factor();
            else if (Take("/ "))
                value /= Factor();
            else if (Take("in whole steps of")) {
                const long double step = Factor();
                value = std::floor(value / step) * step;
            } else
                return value;
        }
    }
    long double Factor()
    {
        if (Take("the larger of")) {
            const long double one = Sum();
            if (!Take("and"))
                throw std::invalid_argument("larger of one only");
            return std::max(one, Sum());
        }
        if (Take("(")) {
            const long double value = IsDate() ? Days() : Sum();
            if (!Take(")"))
                throw std::invalid_argument("not closed");
            return value;
        }
        return Number();
    }
    bool IsDate() const { return rest.size() >= 10 && rest[2] == '/' && rest[5] == '/'; }
    Day OneDay()
    {
        const auto day = ReadDate(rest.substr(0, 10));
        if (!day)
            throw std::invalid_argument("no date");
        rest.remove_prefix(10);
        Skip();
        return *day;
    }
    long double Days()
    {
        const Day first = OneDay();
        if (!Take("to"))
            throw std::invalid_argument("half a period");
        return DaysBetween(first, OneDay()) + 1;
    }
    long double Number()
    {
        std::string digits;
        while (!rest.empty() && (std::isdigit(static_cast<unsigned char>(rest.front())) != 0 || rest.front() == '.' ||
                                 (rest.front() == '-' && digits.empty()) || IsThousandsComma())) {
            if (rest.front() != ',')
                digits += rest.front();
            rest.remove_prefix(1);
        }
        if (digits.empty())
            throw std::invalid_argument("no number at '" + std::string(rest) + "'");
        Skip();
        return std::strtold(digits.c_str(), nullptr);
    }
    bool IsThousandsComma() const
    {
        return rest.size() > 1 && rest.front() == ',' && std::isdigit(static_cast<unsigned char>(rest[1])) != 0;
    }

    std::string_view rest;
};

/// Whether a figure is what a sum comes to in the way that the words of its rounding say. Sums that lie within a
/// millionth of where the rounding turns may go either way.
inline bool ComesTo(long double sum, Rounding rounding, std::string_view result)
{
    constexpr long double Hair = 1e-6L;
    // "Nil" and a blank box are nought.
    const bool isNought = result.empty() || result == "Nil";
    const long double figure = isNought ? 0 : SumOfWords::Of(result);
    const auto either = [figure](auto rounded) { return rounded(-Hair) == figure || rounded(Hair) == figure; };
    switch (rounding) {
    case Rounding::None:
        return std::abs(sum - figure) <= 0.0001L + Hair;
    case Rounding::DownToPounds:
        return either([sum](long double hair) { return std::floor(sum + 0.001L + hair); });
    case Rounding::UpToPounds:
        return either([sum](long double hair) { return std::ceil(std::round((sum + hair) * 10000) / 10000); });
    case Rounding::UpToPoundsFromAThousandth:
        return either([sum](long double hair) { return std::floor(sum + 0.999L + hair); });
    case Rounding::ToWhole:
        return std::abs(sum - figure) <= 0.5L;
    }
    return false;
}

/// What is wrong with an explanation; empty if every sum gives its figure, every figure that a sum uses stands in a
/// step above it or is no step's, and every note names the authority's figure and its source.
inline std::string FaultOf(const Explained& explained)
{
    const auto sums = [](std::string_view what, std::string_view sum, Rounding rounding, std::string_view result) {
        if (sum.empty())
            return std::string();
        try {
            return ComesTo(SumOfWords::Of(sum), rounding, result)
                       ? std::string()
                       : std::string(what) + ": " + std::string(sum) + " is not " + std::string(result);
        } catch (const std::invalid_argument& unreadable) {
            return std::string(what) + ": " + std::string(sum) + ": " + unreadable.what();
        }
    };
    long double lines = 0; // since the last sum
    for (const ExplainedStep& step : explained.steps) {
        if (step.says.empty())
            return step.name + " says nothing";
        if (step.sum == LinesAddedUp && !ComesTo(lines, step.rounding, step.result))
            return step.name + ": the lines do not add up to " + step.result;
        const bool isNumber = step.result.find_first_not_of("0123456789,.-") == std::string::npos;
        lines = step.sum.empty() && isNumber && !step.result.empty() ? lines + SumOfWords::Of(step.result) : 0;
        if (step.sum == LinesAddedUp)
            continue;
        if (const std::string fault = sums(step.name, step.sum, step.rounding, step.result); !fault.empty())
            return fault;
    }
    for (const ExplainedNote& note : explained.notes) {
        if (note.says.empty() || note.result.empty() || note.source.empty())
            return "note about " + note.about + " lacks words, figure or source";
        if (const std::string fault = sums("note about " + note.about, note.sum, note.rounding, note.result);
            !fault.empty())
            return fault;
    }
    return {};
}

} // namespace quillmere::test
