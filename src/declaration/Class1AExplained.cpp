#include "declaration/Class1AExplained.h"

#include <array>
#include <fmt/format.h>
#include <vector>

namespace quillmere {

namespace {

constexpr std::string_view Act = "SSCBA 1992 s.10";

/// A declaration and what the rules make of it.
struct WorkedDeclaration {
    DeclarationFacts facts;
    Section1 section1;
    Section4 section4;
};

bool IsPlain(const WorkedDeclaration& declaration)
{
    return !declaration.facts.adjusted;
}
bool IsAdjusted(const WorkedDeclaration& declaration)
{
    return declaration.facts.adjusted;
}
bool HasBenefits(const WorkedDeclaration& declaration)
{
    return IsAdjusted(declaration) && !declaration.facts.benefits.IsZero();
}
bool HasNothingToAdjust(const WorkedDeclaration& declaration)
{
    return IsAdjusted(declaration) && !HasBenefits(declaration);
}

std::string RateText(const WorkedDeclaration& /*declaration*/)
{
    return PlainNumber(edition::Class1ARate);
}

/// A figure of section 4, which is empty without adjustments.
template<Amount Section4::*Box>
std::string OfSection4(const WorkedDeclaration& declaration)
{
    return declaration.facts.adjusted ? FigureText(declaration.section4.*Box) : std::string();
}

constexpr auto Figures = std::to_array<FigureRow<WorkedDeclaration>>({
    {"A", [](const WorkedDeclaration& declaration) { return FigureText(declaration.section1.A); }},
    {"B", RateText},
    {"C",
     [](const WorkedDeclaration& declaration) {
         return declaration.facts.adjusted ? std::string() : FigureText(declaration.section1.C);
     }},
    {"4A", OfSection4<&Section4::A>},
    {"4B", OfSection4<&Section4::B>},
    {"4C", OfSection4<&Section4::C>},
    {"4D", OfSection4<&Section4::D>},
    {"4E", RateText},
    {"4F", OfSection4<&Section4::F>},
});

constexpr auto Steps = std::to_array<StepRow<WorkedDeclaration>>({
    {.name = "A", .says = "Benefits liable to Class 1A contributions, from all forms", .source = Act},
    {.name = "B", .box = "Section1BoxB", .says = "Rate of the contributions, per cent", .source = Act},
    {.name = "C",
     .box = "Section1BoxC",
     .says = "Contributions payable",
     .sum = "{A} x {B} / 100",
     .source = Act,
     .when = IsPlain},
    {.name = "C",
     .box = "Section1BoxC",
     .says = "With adjustments it stays empty: section 4 has the contributions",
     .when = IsAdjusted},
    {.name = "4A",
     .box = "Section4BoxA",
     .says = "Benefits of section 1",
     .sum = "{A}",
     .source = Act,
     .when = IsAdjusted},
    {.name = "4B", .box = "Section4BoxB", .says = "Amounts added", .source = Act, .when = IsAdjusted},
    {.name = "4C", .box = "Section4BoxC", .says = "Amounts deducted", .source = Act, .when = IsAdjusted},
    {.name = "4D",
     .box = "Section4BoxD",
     .says = "Benefits on which contributions are due",
     .sum = "{4A} + {4B} - {4C}",
     .source = Act,
     .when = HasBenefits},
    {.name = "4D",
     .box = "Section4BoxD",
     .says = "Without benefits in section 1 there is nothing to adjust",
     .source = Act,
     .when = HasNothingToAdjust},
    {.name = "4E", .box = "Section4BoxE", .says = "Rate of the contributions, per cent", .source = Act},
    {.name = "4F",
     .box = "Section4BoxF",
     .says = "Contributions payable",
     .sum = "{4D} x {4E} / 100",
     .source = Act,
     .when = IsAdjusted},
    {.name = "4A", .box = "Section4BoxA", .says = "Section 4 is empty without adjustments", .when = IsPlain},
    {.name = "4B", .box = "Section4BoxB", .says = "Section 4 is empty without adjustments", .when = IsPlain},
    {.name = "4C", .box = "Section4BoxC", .says = "Section 4 is empty without adjustments", .when = IsPlain},
    {.name = "4D", .box = "Section4BoxD", .says = "Section 4 is empty without adjustments", .when = IsPlain},
    {.name = "4F", .box = "Section4BoxF", .says = "Section 4 is empty without adjustments", .when = IsPlain},
});

} // namespace

Explained ExplainLiableBenefits(std::span<const LiableBenefit> benefits, const WordsOfField& words)
{
    std::vector<ExplainedStep> lines;
    Amount total;
    for (const LiableBenefit& benefit : benefits) {
        total += benefit.amount;
        lines.push_back({.name = fmt::format("line {}", lines.size() + 1),
                         .says = fmt::format("{}: {}", benefit.employee, words(benefit.field)),
                         .result = FigureText(benefit.amount)});
    }
    return ExplainLines(lines, {.name = "A",
                                .box = "Section1BoxA",
                                .says = "Total benefits liable to Class 1A contributions from forms P11D",
                                .result = FigureText(total),
                                .source = std::string(Act)});
}

Explained ExplainContributions(const DeclarationFacts& declaration)
{
    return FillIn<WorkedDeclaration>(
        {.facts = declaration,
         .section1 = ComputeSection1(declaration.benefits),
         .section4 = ComputeSection4(declaration.benefits, declaration.added, declaration.deducted)},
        Figures, Steps);
}

} // namespace quillmere
