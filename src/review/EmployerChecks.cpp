#include "frame/Tick.h"
#include "review/CheckParts.h"

#include <algorithm>
#include <array>
#include <fmt/format.h>
#include <map>

namespace quillmere::review {

namespace {

using enum Severity;

constexpr std::string_view Declared = "The declaration contradicts the forms";
constexpr std::string_view DeclarationScreen = "P11DDeclaration";

Spots NoDirector(const EmployerFacts& facts)
{
    const bool trips = !facts.employees.empty() &&
                       std::ranges::none_of(facts.employees, [](const auto& employee) { return employee.director; });
    return One(Page1, "DirectorTick", trips);
}

Spots OneNumberTwice(const EmployerFacts& facts)
{
    std::map<std::string_view, std::string_view> seen;
    Spots spots;
    for (const EmployerFacts::Employee& employee : facts.employees) {
        if (employee.nationalInsurance.empty())
            continue;
        const auto [first, isNew] = seen.emplace(employee.nationalInsurance, employee.name);
        if (!isNew)
            spots.push_back(
                {.section = {},
                 .screen = Page1,
                 .box = "NatIns",
                 .detail = fmt::format("{}: {} and {}", employee.nationalInsurance, first->second, employee.name)});
    }
    return spots;
}

Spots ReferencesDiffer(const EmployerFacts& facts)
{
    Spots spots;
    for (const EmployerFacts::Employee& employee : facts.employees)
        if (!employee.payeReference.empty() && employee.payeReference != Trim(facts.declaration.employerReference))
            spots.push_back({.section = {},
                             .screen = DeclarationScreen,
                             .box = "EmployerRef",
                             .detail = fmt::format("{} on the form of {}", employee.payeReference, employee.name)});
    return spots;
}

Spots NoBenefitsDeclared(const EmployerFacts& facts)
{
    const bool any = std::ranges::any_of(facts.employees, [](const auto& employee) { return employee.anyBenefit; });
    return One(DeclarationScreen, "NoBenefitTick", facts.declaration.section2Tick1 && any);
}

Spots NothingDeclared(const EmployerFacts& facts)
{
    const DeclarationTotals& declaration = facts.declaration;
    const bool any = std::ranges::any_of(facts.employees, [](const auto& employee) { return employee.anyBenefit; });
    return One(DeclarationScreen, "DeclarationTick", any && !declaration.section2Tick2 && !declaration.section2Tick3);
}

Spots BoxAOutOfDate(const EmployerFacts& facts)
{
    const Amount stored = ReadAmount(facts.storedBoxA);
    const Amount today = ReadAmount(facts.declaration.section1ABox);
    if (Trim(facts.storedBoxA).empty() || stored == today)
        return {};
    return {{.section = {},
             .screen = DeclarationScreen,
             .box = "Section1BoxA",
             .detail = fmt::format("{} on the declaration, {} over the forms today", Money(stored), Money(today))}};
}

Spots AdjustedByNothing(const EmployerFacts& facts)
{
    const DeclarationTotals& declaration = facts.declaration;
    return One(DeclarationScreen, "AdjustTick",
               declaration.section1Tick && ReadAmount(declaration.section4BBox).IsZero() &&
                   ReadAmount(declaration.section4CBox).IsZero());
}

Spots SentWithoutDate(const EmployerFacts& facts)
{
    const DeclarationTotals& declaration = facts.declaration;
    if (!declaration.section2Tick3)
        return {};
    if (Trim(declaration.sentToBox).empty())
        return One(DeclarationScreen, "InlRevOffice", true);
    return One(DeclarationScreen, "SentDate", Trim(declaration.sentToDate).empty());
}

Spots NoAccountsOffice(const EmployerFacts& facts)
{
    const DeclarationTotals& declaration = facts.declaration;
    return One(DeclarationScreen, "AccOfficeRef",
               !declaration.section1ABox.empty() && Trim(declaration.accountsOffReference).empty());
}

constexpr auto ChecksOfEmployer = std::to_array<EmployerCheck>({
    {{"EM1", Fault, "Two employees have one National Insurance number: is a form there twice?", CommonMistakes},
     OneNumberTwice},
    {{"EM2", Oddity, "Nobody is ticked as a director", CommonMistakes}, NoDirector},
    {{"DE1", Fault, "The references of the declaration and of a form differ", Declared}, ReferencesDiffer},
    {{"DE2", Fault, "No benefits are declared, and there are some", Declared}, NoBenefitsDeclared},
    {{"DE3", Oddity, "There are forms, and the declaration neither encloses nor has sent them", Declared},
     NothingDeclared},
    {{"DE4", Oddity, "Box A is not today's total of the forms", Declared}, BoxAOutOfDate},
    {{"DE5", Oddity, "Adjustments are ticked, and nothing is added or deducted", Declared}, AdjustedByNothing},
    {{"DE6", Fault, "The forms were sent, and the office or the day is missing", Declared}, SentWithoutDate},
    {{"DE7", Oddity, "Contributions are due, and the accounts office reference is missing", Declared},
     NoAccountsOffice},
});

} // namespace

std::span<const EmployerCheck> EmployerChecks()
{
    return ChecksOfEmployer;
}

EmployerFacts::Employee FactsOf(std::string_view employee, const FormFacts& form)
{
    const auto stands = [](std::string_view text) { return !ReadAmount(text).IsZero(); };
    const auto others = std::to_array<std::string_view>({form.accommodation, form.mileageTax, form.totalOfCars,
                                                         form.totalOfFuel, form.van, form.vanFuel, form.loans[0].cash,
                                                         form.loans[1].cash, form.relocation, form.taxPaid});
    return {.name = std::string(employee),
            .payeReference = Trim(form.payeReference),
            .nationalInsurance = Trim(form.nationalInsurance),
            .director = IsSet(form.directorTick),
            .anyBenefit = std::ranges::any_of(others, stands) ||
                          std::ranges::any_of(form.sections, [&](const SectionFacts& facts) {
                              return stands(facts.cost) || stands(facts.cash);
                          })};
}

} // namespace quillmere::review
