#pragma once

#include "frame/Amount.h"
#include "frame/Dates.h"

#include <cstdint>
#include <functional>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

/// How a figure came about, for the person who is asked. Beside each rule stand a table of its figures, one of its
/// steps and one of its differences from the authority's own rule; `FillIn` puts somebody's own figures into the words.
/// Nothing is worked out here: a step's result is the rule's.
namespace quillmere {

/// What is done to a sum before it is the figure.
enum class Rounding {
    None, ///< four decimals, as every amount is held
    DownToPounds,
    UpToPounds,
    UpToPoundsFromAThousandth, ///< less than a thousandth is let go
    ToWhole,
};

/// "rounded down to whole pounds"; empty for none.
std::string_view WordsOf(Rounding rounding);

/// One step with its figures put in.
struct ExplainedStep {
    std::string name; ///< of the figure that it gives; one of capitals and digits is its letter on the working paper
    std::string box;  ///< box, or stem of the box, that shows the figure; empty if none does
    std::string says;
    std::string sum; ///< "19,500 x 22 / 100"; empty for what was entered or looked up
    Rounding rounding = Rounding::None;
    std::string result;
    std::string source;            ///< section of the Act
    std::vector<std::string> uses; ///< names of the figures that its words mention

    std::string Letter() const;
    /// The sum with the words of its rounding.
    std::string SumInWords() const;
};

/// Where the figure of a step is not the one that the authority's rule gives.
struct ExplainedNote {
    std::string about; ///< name of the step's figure
    std::string says;
    std::string sum; ///< of the authority's figure; empty where it is looked up
    Rounding rounding = Rounding::None;
    std::string result; ///< the authority's figure
    std::string source;
};

/// A working from the first fact to the result.
struct Explained {
    std::vector<ExplainedStep> steps;
    std::vector<ExplainedNote> notes;

    /// The step whose figure a box shows; nothing if there is none.
    const ExplainedStep* StepOf(std::string_view box) const;
    /// The steps that lead to a box, in their order, with their notes; nothing if the box shows no figure of these.
    Explained ChainTo(std::string_view box) const;
    /// Takes the steps and notes of another working behind its own.
    void Append(const Explained& other);
};

// Tables of a rule. `Worked` is what they go by: the facts and the working that the rule has made of them.

/// A figure by its name, and its text in a sum.
template<class Worked>
struct FigureRow {
    std::string_view name;
    std::string (*text)(const Worked&);
};

/// A step. In its words a name in braces is the text of that figure.
template<class Worked>
struct StepRow {
    std::string_view name; ///< of the figure that is its result
    std::string_view box = {};
    std::string_view says;
    std::string_view sum = {};
    Rounding rounding = Rounding::None;
    std::string_view source = {};
    using When = bool (*)(const Worked&);
    When when = nullptr; ///< of several rows for one figure only one holds; none: always

    /// What was entered: its own box shows it as it is.
    static constexpr StepRow Fact(std::string_view name, std::string_view says, std::string_view source = {},
                                  When when = nullptr)
    {
        return {.name = name, .says = says, .source = source, .when = when};
    }
    /// What was looked up or counted, or why there is no figure.
    static constexpr StepRow Words(std::string_view name, std::string_view box, std::string_view says,
                                   std::string_view source = {}, When when = nullptr)
    {
        return {.name = name, .box = box, .says = says, .source = source, .when = when};
    }
    static constexpr StepRow Sum(std::string_view name, std::string_view box, std::string_view says,
                                 std::string_view sum, std::string_view source = {}, When when = nullptr)
    {
        return {.name = name, .box = box, .says = says, .sum = sum, .source = source, .when = when};
    }
    constexpr StepRow Rounded(Rounding to) const
    {
        StepRow rounded = *this;
        rounded.rounding = to;
        return rounded;
    }
};

/// A difference from the authority's rule.
template<class Worked>
struct NoteRow {
    std::string_view about;
    std::string_view says;
    std::string_view sum = {};
    Rounding rounding = Rounding::None;
    std::string_view result; ///< name of the figure that the authority has
    std::string_view source;
    bool (*when)(const Worked&);
};

/// The text of a figure by its name.
using FigureTexts = std::function<std::string(std::string_view name)>;

/// Puts the figures into the words; the names that were met go to `uses`, if it is given. A negative figure in a sum
/// stands in parentheses.
std::string WithFigures(std::string_view words, const FigureTexts& figures, std::vector<std::string>* uses = nullptr);

/// Fills the tables of a rule with the figures of one working. A name that the figures lack is a mistake in the
/// program: std::logic_error.
template<class Worked>
Explained FillIn(const Worked& worked, std::span<const FigureRow<Worked>> figures,
                 std::span<const StepRow<Worked>> steps, std::span<const NoteRow<Worked>> notes = {})
{
    const FigureTexts text = [&](std::string_view name) {
        for (const FigureRow<Worked>& figure : figures)
            if (figure.name == name)
                return figure.text(worked);
        throw std::logic_error("no figure " + std::string(name));
    };
    Explained filled;
    for (const StepRow<Worked>& row : steps) {
        if (row.when != nullptr && !row.when(worked))
            continue;
        ExplainedStep step{.name = std::string(row.name),
                           .box = std::string(row.box),
                           .rounding = row.rounding,
                           .result = text(row.name),
                           .source = std::string(row.source)};
        step.says = WithFigures(row.says, text, &step.uses);
        step.sum = WithFigures(row.sum, text, &step.uses);
        filled.steps.push_back(std::move(step));
    }
    for (const NoteRow<Worked>& row : notes)
        if (row.when(worked))
            filled.notes.push_back({.about = std::string(row.about),
                                    .says = WithFigures(row.says, text),
                                    .sum = WithFigures(row.sum, text),
                                    .rounding = row.rounding,
                                    .result = text(row.result),
                                    .source = std::string(row.source)});
    return filled;
}

/// An amount as it stands in a sum: "4,290", "12.50", and four decimals where it has them.
std::string FigureText(Amount amount);
/// A whole number: "18,000".
std::string FigureText(std::int64_t number);
inline std::string FigureText(int number)
{
    return FigureText(std::int64_t{number});
}
/// A number with decimals as it was typed: "12,345.5".
std::string DecimalFigureText(double number);
/// Days both of which count, as a count of days: "(first day to last day)".
std::string FigureText(DayRange days);
/// Texts of figures added up: "3 + 4"; "0" for none.
std::string AddedUp(const std::vector<std::string>& figures);

/// In place of so many figures that nobody would read them as one sum.
inline constexpr std::string_view LinesAddedUp = "the lines above added up";
/// A step for each of the lines, then their total.
Explained ExplainLines(const std::vector<ExplainedStep>& lines, ExplainedStep total);

} // namespace quillmere
