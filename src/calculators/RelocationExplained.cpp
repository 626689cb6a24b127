#include "calculators/RelocationExplained.h"

#include <array>

namespace quillmere {

namespace {

using Move = RelocationWorking;

bool IsWorkedOut(const Move& move)
{
    return move.computed;
}

/// A result: "Nil" as its box reads it.
std::string TextOrNil(bool nil, Amount amount)
{
    return nil ? "Nil" : FigureText(amount);
}

constexpr auto Figures = std::to_array<FigureRow<Move>>({
    {"A", [](const Move& move) { return FigureText(move.A); }},
    {"employer", [](const Move& move) { return FigureText(move.employerCost); }},
    {"employee", [](const Move& move) { return FigureText(move.employeeCost); }},
    {"B", [](const Move& move) { return FigureText(move.B); }},
    {"C", [](const Move& move) { return FigureText(move.C); }},
    {"D", [](const Move& move) { return FigureText(move.D); }},
    {"last year", [](const Move& move) { return FigureText(move.qualExp); }},
    {"E", [](const Move& move) { return TextOrNil(move.exemptNil, move.E); }},
    {"exempt", [](const Move& move) { return FigureText(move.E); }},
    {"F", [](const Move& move) { return TextOrNil(move.resultNil, move.F); }},
    {"exemption", [](const Move&) { return FigureText(edition::RelocationExemption); }},
});

using Step = StepRow<Move>;
constexpr auto Steps = std::to_array<Step>({
    Step::Fact("A", "Expenses payments", "ITEPA 2003 s.272"),
    Step::Fact("employer", "Cost of qualifying benefits to the employer", "ITEPA 2003 s.272"),
    Step::Fact("employee", "Less anything that the employee paid towards it"),
    Step::Sum("B", "BBox", "Qualifying benefits", "{employer} - {employee}"),
    Step::Fact("C", "Qualifying living accommodation", "ITEPA 2003 s.287(5)"),
    Step::Sum("D", "DBox", "Expenses and benefits", "{A} + {B} + {C}"),
    Step::Fact("last year", "Qualifying expenses and benefits of the same move last year", "ITEPA 2003 s.287(1)"),
    Step::Sum("E", "EBox", "Exempt amount that is left of {exemption}", "{exemption} - {last year}, at least 0",
              "ITEPA 2003 s.287", IsWorkedOut),
    Step::Words("E", "EBox", "Nothing is entered, and nothing worked out", {},
                [](const Move& move) { return !move.computed; }),
    Step::Sum("F", "FBox", "Expenses and benefits above the exempt amount", "{D} - {exempt}, at least 0",
              "ITEPA 2003 s.271, s.287", IsWorkedOut),
    Step::Words("F", "FBox", "Nothing is entered, and nothing worked out", {},
                [](const Move& move) { return !move.computed; }),
});

} // namespace

Explained ExplainRelocation(const RelocationFacts& boxes)
{
    return FillIn<Move>(RelocationBenefit(boxes), Figures, Steps);
}

} // namespace quillmere
