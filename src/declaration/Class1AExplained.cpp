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

using Step = StepRow<WorkedDeclaration>;
constexpr auto Steps = std::to_array<Step>({
    Step::Fact("A", "Benefits liable to Class 1A contributions, from all forms", Act),
    Step::Words("B", "Section1BoxB", "Rate of the contributions, per cent", Act),
    Step::Sum("C", "Section1BoxC", "Contributions payable", "{A} x {B} / 100", Act, IsPlain),
    Step::Words("C", "Section1BoxC", "With adjustments it stays empty: section 4 has the contributions", {},
                IsAdjusted),
    Step::Sum("4A", "Section4BoxA", "Benefits of section 1", "{A}", Act, IsAdjusted),
    Step::Words("4B", "Section4BoxB", "Amounts added", Act, IsAdjusted),
    Step::Words("4C", "Section4BoxC", "Amounts deducted", Act, IsAdjusted),
    Step::Sum("4D", "Section4BoxD", "Benefits on which contributions are due", "{4A} + {4B} - {4C}", Act, HasBenefits),
    Step::Words("4D", "Section4BoxD", "Without benefits in section 1 there is nothing to adjust", Act,
                HasNothingToAdjust),
    Step::Words("4E", "Section4BoxE", "Rate of the contributions, per cent", Act),
    Step::Sum("4F", "Section4BoxF", "Contributions payable", "{4D} x {4E} / 100", Act, IsAdjusted),
    Step::Words("4A", "Section4BoxA", "Section 4 is empty without adjustments", {}, IsPlain),
    Step::Words("4B", "Section4BoxB", "Section 4 is empty without adjustments", {}, IsPlain),
    Step::Words("4C", "Section4BoxC", "Section 4 is empty without adjustments", {}, IsPlain),
    Step::Words("4D", "Section4BoxD", "Section 4 is empty without adjustments", {}, IsPlain),
    Step::Words("4F", "Section4BoxF", "Section 4 is empty without adjustments", {}, IsPlain),
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
