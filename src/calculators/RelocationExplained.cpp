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
    {"exemption", [](const Move&) { return FigureText(std::int64_t{edition::RelocationExemption}); }},
});

constexpr auto Steps = std::to_array<StepRow<Move>>({
    {.name = "A", .says = "Expenses payments", .source = "ITEPA 2003 s.272"},
    {.name = "employer", .says = "Cost of qualifying benefits to the employer", .source = "ITEPA 2003 s.272"},
    {.name = "employee", .says = "Less anything that the employee paid towards it"},
    {.name = "B", .box = "BBox", .says = "Qualifying benefits", .sum = "{employer} - {employee}"},
    {.name = "C", .says = "Qualifying living accommodation", .source = "ITEPA 2003 s.287(5)"},
    {.name = "D", .box = "DBox", .says = "Expenses and benefits", .sum = "{A} + {B} + {C}"},
    {.name = "last year",
     .says = "Qualifying expenses and benefits of the same move last year",
     .source = "ITEPA 2003 s.287(1)"},
    {.name = "E",
     .box = "EBox",
     .says = "Exempt amount that is left of {exemption}",
     .sum = "{exemption} - {last year}, at least 0",
     .source = "ITEPA 2003 s.287",
     .when = IsWorkedOut},
    {.name = "E",
     .box = "EBox",
     .says = "Nothing is entered, and nothing worked out",
     .when = [](const Move& move) { return !move.computed; }},
    {.name = "F",
     .box = "FBox",
     .says = "Expenses and benefits above the exempt amount",
     .sum = "{D} - {exempt}, at least 0",
     .source = "ITEPA 2003 s.271, s.287",
     .when = IsWorkedOut},
    {.name = "F",
     .box = "FBox",
     .says = "Nothing is entered, and nothing worked out",
     .when = [](const Move& move) { return !move.computed; }},
});

} // namespace

Explained ExplainRelocation(const RelocationFacts& boxes)
{
    return FillIn<Move>(RelocationBenefit(boxes), Figures, Steps);
}

} // namespace quillmere
