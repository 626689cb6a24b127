#include "edition/Edition.h"
#include "edition/LoanRates.h"
#include "frame/Dates.h"
#include "frame/ScheduleLines.h"
#include "frame/Tick.h"
#include "review/CheckParts.h"
#include "screens/ScheduleNotepad.h"

#include <algorithm>
#include <array>
#include <fmt/format.h>

namespace quillmere::review {

namespace {

constexpr auto Sections = std::to_array<SectionRow>({
    {"A", Page1, "ADescriptionAsset", "ACostMarketBox", "AAmountGood", "ACashEqu"},
    {"B", Page1, "BDescriptionPayment", "B2", {}, {}},
    {"C", Page1, {}, "CGrossAmount", "CAmountGood", "CCashEqu"},
    {"I", Page2, {}, "IMedCost", "IAmountGood", "ICashEqu"},
    {"K", Page2, {}, "KCostYou", "KAmountGood", "KCashEqu"},
    {"L", Page2, "LDescriptAsset", "LAnnualValue", "LAmountGood", "LCashEqu"},
    {"N", Page2, "NDescriptItems1", "NCostYou1", "NAmountGood1", "NCashEqu1"},
    {"N", Page2, "NDescriptItems2", "NCostYou2", "NAmountGood2", "NCashEqu2"},
    {"O", Page2, {}, "OCostYou1", "OAmountGood1", "OCashEqu1"},
    {"O", Page2, {}, "OCostYou2", "OAmountGood2", "OCashEqu2"},
    {"O", Page2, {}, "OCostYou3", "OAmountGood3", "OCashEqu3"},
    {"O", Page2, {}, "OCostYou4", "OAmountGood4", "OCashEqu4"},
    {"O", Page2, {}, "OCostYou5", "OAmountGood5", "OCashEqu5"},
    {"O", Page2, "ODescExpenses", "OCostYou6", "OAmountGood6", "OCashEqu6"},
});

/// A spot for every line of the form that `trips` says so of, at the box that `at` names.
template<class Trips>
Spots OfSections(std::string_view SectionRow::*at, Trips trips)
{
    Spots spots;
    for (const SectionRow& row : Sections)
        if (trips(row))
            spots.push_back({.section = std::string(row.section), .screen = row.screen, .box = std::string(row.*at)});
    return spots;
}

bool HasAmount(const FieldReader& read, const SectionRow& row)
{
    return Filled(read, row.cost) || Filled(read, row.cash);
}

Spots NoDescription(const FieldReader& read)
{
    return OfSections(&SectionRow::description, [&](const SectionRow& row) {
        return !row.description.empty() && !Filled(read, row.description) && HasAmount(read, row);
    });
}

Spots NoAmount(const FieldReader& read)
{
    return OfSections(&SectionRow::cost,
                      [&](const SectionRow& row) { return Filled(read, row.description) && !HasAmount(read, row); });
}

Spots NoCashEquivalent(const FieldReader& read)
{
    return OfSections(&SectionRow::cash, [&](const SectionRow& row) {
        return !row.cash.empty() && Filled(read, row.cost) && !Filled(read, row.cash);
    });
}

Spots MadeGoodAboveCost(const FieldReader& read)
{
    return OfSections(&SectionRow::madeGood, [&](const SectionRow& row) {
        return Filled(read, row.madeGood) && AmountOnForm(read, row.madeGood) > AmountOnForm(read, row.cost);
    });
}

Spots TypedOver(const FieldReader& read)
{
    return OfSections(&SectionRow::cash, [&](const SectionRow& row) {
        if (!Filled(read, row.cost) || !Filled(read, row.cash))
            return false;
        const Amount net = AmountOnForm(read, row.cost) - AmountOnForm(read, row.madeGood);
        return AmountOnForm(read, row.cash) != std::max(net, Amount());
    });
}

// ---- who it is ----------------------------------------------------------------------------------

Spots NoEmployerReference(const FieldReader& read)
{
    return One(Page1, "PAYEBox", !Filled(read, "PAYEBox"));
}

Spots NoName(const FieldReader& read)
{
    if (!Filled(read, "Surname"))
        return One(Page1, "EmployeeNameBox", true);
    return One(Page1, "EmployeeNameBox2", !Filled(read, "FirstName"));
}

Spots NobodyInParticular(const FieldReader& read)
{
    return One(Page1, "NatIns", !Filled(read, "NatIns") && !(Filled(read, "DOB") && Filled(read, "SexTick")));
}

Spots BadNationalInsurance(const FieldReader& read)
{
    return One(Page1, "NatIns", !IsNationalInsuranceNumber(OnForm(read, "NatIns")));
}

// ---- lists --------------------------------------------------------------------------------------

/// What the lines of a column add up to; nothing if no line has an amount.
struct ColumnSum {
    Amount sum;
    bool any = false;
};

ColumnSum SumOf(const FieldReader& read, std::string_view table, std::string_view stem)
{
    ColumnSum sum;
    for (int line = 1; line <= LinesOfASchedule; ++line) {
        const std::string_view text = read(table, Numbered(stem, line));
        if (text.find_first_not_of(' ') == std::string_view::npos)
            continue;
        sum.any = true;
        sum.sum += ReadAmount(text);
    }
    return sum;
}

/// The letter of the form that a schedule stands behind: the first of its table's name.
std::string SectionOf(const NotepadMember& notepad)
{
    return std::string(notepad.name.substr(0, 1));
}

std::string_view PageOf(const NotepadMember& notepad)
{
    constexpr char LastOfPage1 = 'F';
    return notepad.name.front() <= LastOfPage1 ? Page1 : Page2;
}

Spots ListDiffers(const FieldReader& read)
{
    Spots spots;
    for (const NotepadMember& notepad : Notepads()) {
        for (std::size_t column = 0; column < notepad.totalFields.size(); ++column) {
            const ScheduleColumn& listed = notepad.columns.at(column + 1);
            const std::string_view field = notepad.totalFields.at(column);
            if (!listed.Exists() || field.empty())
                continue;
            const ColumnSum sum = SumOf(read, notepad.name, listed.field);
            const Amount shown = AmountOnForm(read, field);
            if (sum.any && shown != sum.sum)
                spots.push_back(
                    {.section = SectionOf(notepad),
                     .screen = PageOf(notepad),
                     .box = std::string(field),
                     .detail = fmt::format("{} on the form, {} in the list", Money(shown), Money(sum.sum))});
        }
    }
    return spots;
}

bool AnyDescription(const FieldReader& read, const NotepadMember& notepad)
{
    for (int line = 1; line <= LinesOfASchedule; ++line)
        if (!Trim(read(notepad.name, Numbered(notepad.columns.front().field, line))).empty())
            return true;
    return false;
}

Spots NothingAttached(const FieldReader& read)
{
    Spots spots;
    for (const NotepadMember& notepad : Notepads())
        if (!notepad.describedField.empty() && OnForm(read, notepad.describedField) == edition::AsPerAttached &&
            !AnyDescription(read, notepad))
            spots.push_back(
                {.section = SectionOf(notepad), .screen = PageOf(notepad), .box = std::string(notepad.describedField)});
    return spots;
}

// ---- vans and loans -----------------------------------------------------------------------------

Spots FuelWithoutVan(const FieldReader& read)
{
    const bool trips = !AmountOnForm(read, "GVanFuel").IsZero() && AmountOnForm(read, "GVan").IsZero();
    return trips ? Spots{{.section = "G", .screen = Page2, .box = "GVan"}} : Spots{};
}

constexpr int LoansOnThePage = 2;
constexpr auto LoanFields = std::to_array<std::string_view>({"HOutstand", "HOutsand2003", "HMaxLoan"});

/// A spot for every loan of the page of which `trips` says so.
template<class Trips>
Spots OfLoans(std::string_view box, Trips trips)
{
    Spots spots;
    for (int loan = 1; loan <= LoansOnThePage; ++loan)
        if (trips(loan))
            spots.push_back(
                {.section = "H", .screen = Page2, .box = Numbered(box, loan), .detail = Numbered("Loan ", loan)});
    return spots;
}

bool LoanEntered(const FieldReader& read, int loan)
{
    return std::ranges::any_of(LoanFields, [&](std::string_view stem) { return Filled(read, Numbered(stem, loan)); });
}

Spots LoanWithoutCashEquivalent(const FieldReader& read)
{
    return OfLoans("HLoanCashEqu",
                   [&](int loan) { return LoanEntered(read, loan) && !Filled(read, Numbered("HLoanCashEqu", loan)); });
}

Spots LoanEndsBeforeItBegins(const FieldReader& read)
{
    return OfLoans("HLoanDischarge", [&](int loan) {
        const auto made = ReadDate(OnForm(read, Numbered("HLoanDate", loan)));
        const auto discharged = ReadDate(OnForm(read, Numbered("HLoanDischarge", loan)));
        return made && discharged && *discharged < *made;
    });
}

Spots SmallLoans(const FieldReader& read)
{
    Amount largest;
    bool charged = false;
    for (int loan = 1; loan <= LoansOnThePage; ++loan) {
        Amount ofThis;
        for (const std::string_view stem : LoanFields)
            ofThis = std::max(ofThis, AmountOnForm(read, Numbered(stem, loan)));
        largest += ofThis;
        charged = charged || !AmountOnForm(read, Numbered("HLoanCashEqu", loan)).IsZero();
    }
    const bool trips = charged && !largest.IsZero() && largest <= Amount::WholePounds(edition::SmallLoansTo);
    return trips ? Spots{{.section = "H", .screen = Page2, .box = "HMaxLoan1"}} : Spots{};
}

// ---- the list -----------------------------------------------------------------------------------

using enum Severity;

constexpr auto ChecksOfEmployee = std::to_array<EmployeeCheck>({
    {"ID1", Fault, "The employer's PAYE reference is missing", QualityStandard, NoEmployerReference},
    {"ID2", Fault, "The employee's name is incomplete", QualityStandard, NoName},
    {"ID3", Fault, "Neither a National Insurance number nor date of birth and gender", QualityStandard,
     NobodyInParticular},
    {"ID4", Fault, "The National Insurance number has no possible form", QualityStandard, BadNationalInsurance},
    {"SE1", Fault, "An amount without a description", CommonMistakes, NoDescription},
    {"SE2", Fault, "The cash equivalent is empty though a cost is filled in", CommonMistakes, NoCashEquivalent},
    {"SE3", Oddity, "A description without an amount", Contradiction, NoAmount},
    {"SE4", Oddity, "More was made good than it cost", Contradiction, MadeGoodAboveCost},
    {"SE5", Oddity, "The figure is not cost less what was made good", Contradiction, TypedOver},
    {"SE6", Oddity, "The form and the list behind it differ", Contradiction, ListDiffers},
    {"SE7", Oddity, "The description names an attached list, and there is none", Contradiction, NothingAttached},
    {"CA1", Fault, "A car without a list price", QualityStandard, NoListPrice},
    {"CA2", Fault, "A total for car fuel (box 10) without one for cars (box 9)", QualityStandard, FuelWithoutCar},
    {"CA3", Fault, "A car without a cash equivalent", CommonMistakes, CarNotWorkedOut},
    {"CA4", Fault, "Free fuel is ticked and has no charge", CommonMistakes, FuelNotCompleted},
    {"CA5", Oddity, "Fuel is charged though free fuel is not ticked", Contradiction, FuelNotTicked},
    {"CA6", Oddity, "The total is not the sum of the cars", Contradiction, CarTotalDiffers},
    {"CA7", Fault, "The car's dates leave the tax year or are reversed", Contradiction, OutsideTheYear},
    {"CA8", Fault, "The car was first available before it was registered", Contradiction, RegisteredLater},
    {"CA9", Oddity, "Days without the car overlap or lie outside its dates", Contradiction, PeriodsOverlap},
    {"CA10", Oddity, "Fuel was withdrawn on a day without the car", Contradiction, WithdrawnOutside},
    {"CA11", Oddity, "No CO2 figure, and the tick for a car without one is clear", CommonMistakes, NoCO2Figure},
    {"CA12", Oddity, "The dates are the whole tax year: leave them empty if the car came before or goes on",
     CommonMistakes, WholeYear},
    {"VA1", Oddity, "A charge for van fuel without one for vans", Contradiction, FuelWithoutVan},
    {"LO1", Fault, "A loan without a cash equivalent (box 15)", QualityStandard, LoanWithoutCashEquivalent},
    {"LO2", Fault, "A loan that ends before it was made", Contradiction, LoanEndsBeforeItBegins},
    {"LO3", Oddity, "Loans of 5,000 or less in all are not charged", "ITEPA 2003 s.180", SmallLoans},
});

} // namespace

std::span<const SectionRow> SectionRows()
{
    return Sections;
}

std::span<const EmployeeCheck> EmployeeChecks()
{
    return ChecksOfEmployee;
}

} // namespace quillmere::review
