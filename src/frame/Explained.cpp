#include "frame/Explained.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <fmt/format.h>
#include <iterator>
#include <set>
#include <utility>

namespace quillmere {

namespace {

constexpr auto RoundingWords = std::to_array<std::pair<Rounding, std::string_view>>({
    {Rounding::None, ""},
    {Rounding::DownToPounds, "rounded down to whole pounds"},
    {Rounding::UpToPounds, "rounded up to whole pounds"},
    {Rounding::UpToPoundsFromAThousandth, "rounded up to whole pounds, from 0.001 on"},
    {Rounding::ToWhole, "rounded to the nearest whole number"},
});

/// A text of digits with commas between thousands; what follows the point stays as it is.
std::string Grouped(std::string digits)
{
    constexpr std::size_t Thousand = 3;
    const std::size_t first = digits.starts_with('-') ? 1 : 0;
    for (std::size_t at = std::min(digits.find('.'), digits.size()); at > first + Thousand;) {
        at -= Thousand;
        digits.insert(at, ",");
    }
    return digits;
}

} // namespace

std::string_view WordsOf(Rounding rounding)
{
    return std::ranges::find(RoundingWords, rounding, &std::pair<Rounding, std::string_view>::first)->second;
}

std::string ExplainedStep::Letter() const
{
    const bool isLetter = std::ranges::all_of(
        name, [](char sign) { return (sign >= 'A' && sign <= 'Z') || (sign >= '0' && sign <= '9'); });
    return isLetter ? name : std::string();
}

std::string ExplainedStep::SumInWords() const
{
    const std::string_view words = WordsOf(rounding);
    return sum.empty() || words.empty() ? sum : fmt::format("{}, {}", sum, words);
}

const ExplainedStep* Explained::StepOf(std::string_view box) const
{
    const auto found = std::ranges::find(steps, box, &ExplainedStep::box);
    return found == steps.end() || box.empty() ? nullptr : &*found;
}

Explained Explained::ChainTo(std::string_view box) const
{
    const ExplainedStep* last = StepOf(box);
    if (last == nullptr)
        return {};
    std::set<std::string> wanted{last->name};
    Explained chain;
    // A figure is used only below the step that gives it.
    for (auto step = steps.rend() - (last - steps.data()) - 1; step != steps.rend(); ++step) {
        if (!wanted.contains(step->name))
            continue;
        wanted.insert(step->uses.begin(), step->uses.end());
        chain.steps.push_back(*step);
    }
    std::ranges::reverse(chain.steps);
    std::ranges::copy_if(notes, std::back_inserter(chain.notes),
                         [&](const ExplainedNote& note) { return wanted.contains(note.about); });
    return chain;
}

void Explained::Append(const Explained& other)
{
    steps.insert(steps.end(), other.steps.begin(), other.steps.end());
    notes.insert(notes.end(), other.notes.begin(), other.notes.end());
}

std::string WithFigures(std::string_view words, const FigureTexts& figures, std::vector<std::string>* uses)
{
    std::string filled;
    for (std::size_t open = words.find('{'); open != std::string_view::npos; open = words.find('{')) {
        const std::size_t close = words.find('}', open);
        const std::string_view name = words.substr(open + 1, close - open - 1);
        const std::string figure = figures(name);
        if (uses != nullptr)
            uses->emplace_back(name);
        filled.append(words.substr(0, open));
        filled += figure.starts_with('-') ? fmt::format("({})", figure) : figure;
        words.remove_prefix(close + 1);
    }
    return filled.append(words);
}

std::string FigureText(Amount amount)
{
    constexpr std::int64_t Hundredth = Amount::UnitsOfAPound / 100;
    const std::int64_t units = amount.Units();
    const int decimals = units % Amount::UnitsOfAPound == 0 ? 0 : units % Hundredth == 0 ? 2 : 4;
    // Unsigned, so that the smallest amount has a text as well.
    const auto size = units < 0 ? 0 - static_cast<std::uint64_t>(units) : static_cast<std::uint64_t>(units);
    const std::uint64_t pounds = size / Amount::UnitsOfAPound;
    const std::uint64_t rest = size % Amount::UnitsOfAPound;
    const std::string whole = fmt::format("{}{}", units < 0 ? "-" : "", pounds);
    if (decimals == 0)
        return Grouped(whole);
    return Grouped(decimals == 2 ? fmt::format("{}.{:02}", whole, rest / Hundredth)
                                 : fmt::format("{}.{:04}", whole, rest));
}

std::string FigureText(std::int64_t number)
{
    return Grouped(std::to_string(number));
}

std::string DecimalFigureText(double number)
{
    return Grouped(PlainNumber(number));
}

std::string FigureText(DayRange days)
{
    return fmt::format("({} to {})", FormatDate(days.first), FormatDate(days.last));
}

std::string AddedUp(const std::vector<std::string>& figures)
{
    return figures.empty() ? "0" : fmt::format("{}", fmt::join(figures, " + "));
}

Explained ExplainLines(const std::vector<ExplainedStep>& lines, ExplainedStep total)
{
    constexpr std::size_t MostInASum = 20;
    std::vector<std::string> figures;
    for (const ExplainedStep& line : lines) {
        total.uses.push_back(line.name);
        if (!line.result.empty())
            figures.push_back(line.result.starts_with('-') ? fmt::format("({})", line.result) : line.result);
    }
    total.sum = figures.size() <= MostInASum ? AddedUp(figures) : std::string(LinesAddedUp);
    Explained explained{.steps = lines, .notes = {}};
    explained.steps.push_back(std::move(total));
    return explained;
}

} // namespace quillmere
