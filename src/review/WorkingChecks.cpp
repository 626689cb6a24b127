#include "calculators/AccommodationBenefit.h"
#include "calculators/LoanBenefit.h"
#include "calculators/MileageBenefit.h"
#include "calculators/RelocationBenefit.h"
#include "calculators/VanBenefit.h"
#include "review/CheckParts.h"

#include <algorithm>
#include <array>
#include <fmt/format.h>
#include <optional>
#include <span>
#include <vector>

/// Figures of calculators that stand on the form, held against those that the calculators have handed over.
namespace quillmere::review {

namespace {

bool Any(std::span<const std::string_view> texts)
{
    return std::ranges::any_of(texts, Filled);
}

std::array<std::string, 3> Three(const std::array<std::string_view, 3>& texts)
{
    return {std::string(texts[0]), std::string(texts[1]), std::string(texts[2])};
}

std::optional<VanTotals> Vans(const CalculatorFacts& facts)
{
    if (!Any(facts.vans) && !Any(facts.vanFuel))
        return std::nullopt;
    return TotalOfVans(Three(facts.vans), Three(facts.vanFuel));
}

std::optional<std::string> OfVans(const CalculatorFacts& facts)
{
    const auto totals = Vans(facts);
    return totals ? std::optional(totals->van) : std::nullopt;
}

std::optional<std::string> OfVanFuel(const CalculatorFacts& facts)
{
    const auto totals = Vans(facts);
    return totals ? std::optional(totals->fuel) : std::nullopt;
}

std::optional<std::string> OfMileage(const CalculatorFacts& facts)
{
    return Any(facts.mileage) ? std::optional(TotalOfMileage(Three(facts.mileage)).box) : std::nullopt;
}

std::optional<std::string> OfAccommodation(const CalculatorFacts& facts)
{
    if (!Filled(facts.basicCharge) && !Filled(facts.additionalCharge))
        return std::nullopt;
    return AccommodationTotalText(facts.basicCharge, facts.additionalCharge);
}

/// What the loans hand over to a line of the form.
std::optional<std::string> OfLoans(const CalculatorFacts& facts, std::string_view line)
{
    if (!Any(facts.loans))
        return std::nullopt;
    std::array<LoanTexts, 5> loans;
    for (std::size_t i = 0; i < loans.size(); ++i)
        loans[i].cashEquivalent = facts.loans[i];
    const std::vector<PageField> fields = LoanPageFields(loans);
    return std::ranges::find(fields, line, &PageField::field)->text;
}

std::optional<std::string> OfRelocation(const CalculatorFacts& facts)
{
    const RelocationWorking working = RelocationBenefit({.ABox = std::string(facts.expenses),
                                                         .EmployerCost = std::string(facts.employerCost),
                                                         .EmployeeCost = std::string(facts.employeeCost),
                                                         .CBox = std::string(facts.livingAccommodation),
                                                         .QualExp = std::string(facts.lastYear)});
    return working.computed ? std::optional(working.FText()) : std::nullopt;
}

/// A box of the form that a calculator fills.
struct CalculatedRow {
    std::string_view section, screen, box, calculator;
    std::string_view (*shown)(const FormFacts&);
    std::optional<std::string> (*workedOut)(const CalculatorFacts&); ///< nothing where there is none
};
constexpr auto Calculated = std::to_array<CalculatedRow>({
    {"D", Page1, "DCashEqu", "DNotepad", [](const FormFacts& form) { return form.accommodation; }, OfAccommodation},
    {"E", Page1, "ETaxAmount", "ENotepad", [](const FormFacts& form) { return form.mileageTax; }, OfMileage},
    {"G", Page2, "GVan", "GNotepad", [](const FormFacts& form) { return form.van; }, OfVans},
    {"G", Page2, "GVanFuel", "GNotepad", [](const FormFacts& form) { return form.vanFuel; }, OfVanFuel},
    {"H", Page2, "HLoanCashEqu1", "HNotepad", [](const FormFacts& form) { return form.loans[0].cash; },
     [](const CalculatorFacts& facts) { return OfLoans(facts, "HLoanCashEqu1"); }},
    {"H", Page2, "HLoanCashEqu2", "HNotepad", [](const FormFacts& form) { return form.loans[1].cash; },
     [](const CalculatorFacts& facts) { return OfLoans(facts, "HLoanCashEqu2"); }},
    {"J", Page2, "JRelocation", "JNotepad", [](const FormFacts& form) { return form.relocation; }, OfRelocation},
});

} // namespace

std::string ShownAndWorkedOut(Amount shown, Amount workedOut)
{
    return fmt::format("{} on the form, {} worked out", Money(shown), Money(workedOut));
}

std::string FiguresOf(const CalculatorFacts& facts, std::string_view calculator)
{
    std::string figures;
    for (const CalculatedRow& row : Calculated)
        if (const auto text = row.workedOut(facts); row.calculator == calculator && text && Filled(*text))
            figures.append(figures.empty() ? "" : ", ").append(Trim(*text));
    return figures;
}

Spots CalculatorDiffers(const FormFacts& form)
{
    Spots spots;
    for (const CalculatedRow& row : Calculated) {
        const std::optional<std::string> text = row.workedOut(form.calculators);
        if (!text)
            continue;
        const Amount shown = ReadAmount(row.shown(form)), workedOut = ReadAmount(*text);
        if (shown != workedOut)
            spots.push_back({.section = row.section,
                             .screen = row.screen,
                             .box = std::string(row.box),
                             .detail = ShownAndWorkedOut(shown, workedOut)});
    }
    return spots;
}

} // namespace quillmere::review
