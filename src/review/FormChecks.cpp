#include "edition/Edition.h"
#include "edition/LoanRates.h"
#include "frame/Dates.h"
#include "review/CheckParts.h"

#include <algorithm>
#include <array>
#include <fmt/format.h>
#include <optional>

namespace quillmere::review {

std::optional<Amount> SumOf(const ListFacts::Column& column)
{
    std::optional<Amount> sum;
    for (const std::string_view text : column)
        if (Filled(text))
            sum = sum.value_or(Amount()) + ReadAmount(text);
    return sum;
}

namespace {

/// A spot for every line of the form that `trips` says so of, at the box that `at` names.
template<class Trips>
Spots OfSections(const FormFacts& form, std::string_view SectionRow::*at, Trips trips)
{
    Spots spots;
    for (const SectionFacts& facts : form.sections)
        if (trips(facts))
            spots.push_back(
                {.section = facts.row->section, .screen = facts.row->screen, .box = std::string(facts.row->*at)});
    return spots;
}

bool HasAmount(const SectionFacts& facts)
{
    return Filled(facts.cost) || Filled(facts.cash);
}

Spots NoDescription(const FormFacts& form)
{
    return OfSections(form, &SectionRow::description, [](const SectionFacts& facts) {
        return !facts.row->description.empty() && !Filled(facts.description) && HasAmount(facts);
    });
}

Spots NoAmount(const FormFacts& form)
{
    return OfSections(form, &SectionRow::cost,
                      [](const SectionFacts& facts) { return Filled(facts.description) && !HasAmount(facts); });
}

Spots NoCashEquivalent(const FormFacts& form)
{
    return OfSections(form, &SectionRow::cash, [](const SectionFacts& facts) {
        return !facts.row->cash.empty() && Filled(facts.cost) && !Filled(facts.cash);
    });
}

Spots MadeGoodAboveCost(const FormFacts& form)
{
    return OfSections(form, &SectionRow::madeGood, [](const SectionFacts& facts) {
        return Filled(facts.madeGood) && ReadAmount(facts.madeGood) > ReadAmount(facts.cost);
    });
}

Spots TypedOver(const FormFacts& form)
{
    return OfSections(form, &SectionRow::cash, [](const SectionFacts& facts) {
        if (!Filled(facts.cost) || !Filled(facts.cash))
            return false;
        const Amount net = ReadAmount(facts.cost) - ReadAmount(facts.madeGood);
        return ReadAmount(facts.cash) != std::max(net, Amount());
    });
}

// ---- who it is ----------------------------------------------------------------------------------

Spots NoEmployerReference(const FormFacts& form)
{
    return One(Page1, "PAYEBox", !Filled(form.payeReference));
}

Spots NoName(const FormFacts& form)
{
    if (!Filled(form.surname))
        return One(Page1, "EmployeeNameBox", true);
    return One(Page1, "EmployeeNameBox2", !Filled(form.firstName));
}

Spots NobodyInParticular(const FormFacts& form)
{
    return One(Page1, "NatIns", !Filled(form.nationalInsurance) && !(Filled(form.dateOfBirth) && Filled(form.sexTick)));
}

Spots BadNationalInsurance(const FormFacts& form)
{
    return One(Page1, "NatIns", !IsNationalInsuranceNumber(Trimmed(form.nationalInsurance)));
}

// ---- lists --------------------------------------------------------------------------------------

/// The letter of the form that a schedule stands behind: the first of its table's name.
std::string_view SectionOf(const NotepadMember& notepad)
{
    return notepad.name.substr(0, 1);
}

std::string_view PageOf(const NotepadMember& notepad)
{
    constexpr char LastOfPage1 = 'F';
    return notepad.name.front() <= LastOfPage1 ? Page1 : Page2;
}

Spots ListDiffers(const FormFacts& form)
{
    Spots spots;
    for (const ListFacts& list : form.lists) {
        for (std::size_t column = 0; column < list.amounts.size(); ++column) {
            const std::optional<Amount> sum = SumOf(list.amounts[column]);
            const Amount shown = ReadAmount(list.totals[column]);
            if (sum && shown != *sum)
                spots.push_back({.section = SectionOf(*list.notepad),
                                 .screen = PageOf(*list.notepad),
                                 .box = std::string(list.notepad->totalFields.at(column)),
                                 .detail = fmt::format("{} on the form, {} in the list", Money(shown), Money(*sum))});
        }
    }
    return spots;
}

Spots NothingAttached(const FormFacts& form)
{
    Spots spots;
    for (const ListFacts& list : form.lists)
        if (Trimmed(list.described) == edition::AsPerAttached && std::ranges::none_of(list.descriptions, Filled))
            spots.push_back({.section = SectionOf(*list.notepad),
                             .screen = PageOf(*list.notepad),
                             .box = std::string(list.notepad->describedField)});
    return spots;
}

// ---- vans and loans -----------------------------------------------------------------------------

Spots FuelWithoutVan(const FormFacts& form)
{
    const bool trips = !ReadAmount(form.vanFuel).IsZero() && ReadAmount(form.van).IsZero();
    return trips ? Spots{{.section = "G", .screen = Page2, .box = "GVan"}} : Spots{};
}

/// A spot for every loan of the page of which `trips` says so.
template<class Trips>
Spots OfLoans(const FormFacts& form, std::string_view box, Trips trips)
{
    Spots spots;
    for (std::size_t i = 0; i < form.loans.size(); ++i)
        if (const int loan = static_cast<int>(i) + 1; trips(form.loans[i]))
            spots.push_back(
                {.section = "H", .screen = Page2, .box = Numbered(box, loan), .detail = Numbered("Loan ", loan)});
    return spots;
}

Spots LoanWithoutCashEquivalent(const FormFacts& form)
{
    return OfLoans(form, "HLoanCashEqu", [](const LoanOnForm& loan) {
        const bool entered = Filled(loan.atStart) || Filled(loan.atEnd) || Filled(loan.largest);
        return entered && !Filled(loan.cash);
    });
}

Spots LoanEndsBeforeItBegins(const FormFacts& form)
{
    return OfLoans(form, "HLoanDischarge", [](const LoanOnForm& loan) {
        const auto made = ReadDate(Trimmed(loan.made));
        const auto discharged = ReadDate(Trimmed(loan.discharged));
        return made && discharged && *discharged < *made;
    });
}

Spots SmallLoans(const FormFacts& form)
{
    Amount largest;
    bool charged = false;
    for (const LoanOnForm& loan : form.loans) {
        largest += std::max({Amount(), ReadAmount(loan.atStart), ReadAmount(loan.atEnd), ReadAmount(loan.largest)});
        charged = charged || !ReadAmount(loan.cash).IsZero();
    }
    const bool trips = charged && !largest.IsZero() && largest <= Amount::WholePounds(edition::SmallLoansTo);
    return trips ? Spots{{.section = "H", .screen = Page2, .box = "HMaxLoan1"}} : Spots{};
}

// ---- the list -----------------------------------------------------------------------------------

using enum Severity;

constexpr auto ChecksOfEmployee = std::to_array<EmployeeCheck>({
    {{"ID1", Fault, "The employer's PAYE reference is missing", QualityStandard}, NoEmployerReference},
    {{"ID2", Fault, "The employee's name is incomplete", QualityStandard}, NoName},
    {{"ID3", Fault, "Neither a National Insurance number nor date of birth and gender", QualityStandard},
     NobodyInParticular},
    {{"ID4", Fault, "The National Insurance number has no possible form", QualityStandard}, BadNationalInsurance},
    {{"SE1", Fault, "An amount without a description", CommonMistakes}, NoDescription},
    {{"SE2", Fault, "The cash equivalent is empty though a cost is filled in", CommonMistakes}, NoCashEquivalent},
    {{"SE3", Oddity, "A description without an amount", Contradiction}, NoAmount},
    {{"SE4", Oddity, "More was made good than it cost", Contradiction}, MadeGoodAboveCost},
    {{"SE5", Oddity, "The figure is not cost less what was made good", Contradiction, true}, TypedOver},
    {{"SE6", Oddity, "The form and the list behind it differ", Contradiction, true}, ListDiffers},
    {{"SE7", Oddity, "The description names an attached list, and there is none", Contradiction}, NothingAttached},
    {{"SE8", Oddity, "The form and the calculator behind it differ", Contradiction, true}, CalculatorDiffers},
    {{"CA1", Fault, "A car without a list price", QualityStandard}, NoListPrice},
    {{"CA2", Fault, "A total for car fuel (box 10) without one for cars (box 9)", QualityStandard}, FuelWithoutCar},
    {{"CA3", Fault, "A car without a cash equivalent", CommonMistakes}, CarNotWorkedOut},
    {{"CA4", Fault, "Free fuel is ticked and has no charge", CommonMistakes}, FuelNotCompleted},
    {{"CA5", Oddity, "Fuel is charged though free fuel is not ticked", Contradiction}, FuelNotTicked},
    {{"CA6", Oddity, "The total is not the sum of the cars", Contradiction}, CarTotalDiffers},
    {{"CA7", Fault, "The car's dates leave the tax year or are reversed", Contradiction}, OutsideTheYear},
    {{"CA8", Fault, "The car was first available before it was registered", Contradiction}, RegisteredLater},
    {{"CA9", Oddity, "Days without the car overlap or lie outside its dates", Contradiction}, PeriodsOverlap},
    {{"CA10", Oddity, "Fuel was withdrawn on a day without the car", Contradiction}, WithdrawnOutside},
    {{"CA11", Oddity, "No CO2 figure, and the tick for a car without one is clear", CommonMistakes}, NoCO2Figure},
    {{"CA12", Oddity, "The dates are the whole tax year: leave them empty if the car came before or goes on",
      CommonMistakes},
     WholeYear},
    {{"CA13", Oddity, "The car's figure is not the one worked out of its boxes", Contradiction, true}, CarTypedOver},
    {{"VA1", Oddity, "A charge for van fuel without one for vans", Contradiction}, FuelWithoutVan},
    {{"LO1", Fault, "A loan without a cash equivalent (box 15)", QualityStandard}, LoanWithoutCashEquivalent},
    {{"LO2", Fault, "A loan that ends before it was made", Contradiction}, LoanEndsBeforeItBegins},
    {{"LO3", Oddity, "Loans of 5,000 or less in all are not charged", "ITEPA 2003 s.180"}, SmallLoans},
});

} // namespace

std::span<const EmployeeCheck> EmployeeChecks()
{
    return ChecksOfEmployee;
}

} // namespace quillmere::review
