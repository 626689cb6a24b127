#include "review/Checks.h"

#include "edition/CarRates.h"
#include "edition/Edition.h"
#include "edition/LoanRates.h"
#include "frame/Dates.h"
#include "frame/ScheduleLines.h"
#include "frame/Text.h"
#include "frame/Tick.h"
#include "screens/ScheduleNotepad.h"

#include <algorithm>
#include <array>
#include <fmt/format.h>
#include <map>
#include <optional>

namespace quillmere::review {

namespace {

constexpr std::string_view QualityStandard = "HMRC, P11D Quality Standard";
constexpr std::string_view CommonMistakes = "HMRC, PAYE Manual PAYE57003: common mistakes";
constexpr std::string_view Contradiction = "The form contradicts itself";
constexpr std::string_view Declared = "The declaration contradicts the forms";

constexpr std::string_view Page1 = "Form3";
constexpr std::string_view Page2 = "Side2Form1";
constexpr std::string_view FormTable = "P11D";

// ---- reading ------------------------------------------------------------------------------------

std::string OnForm(const FieldReader& read, std::string_view field)
{
    return field.empty() ? std::string() : Trim(read(FormTable, field));
}

bool Filled(const FieldReader& read, std::string_view field)
{
    return !OnForm(read, field).empty();
}

Amount AmountOnForm(const FieldReader& read, std::string_view field)
{
    return ReadAmount(OnForm(read, field));
}

/// An amount as a person writes it.
std::string Money(Amount amount)
{
    return FormatAmount(amount, edition::FormatMoneyZero);
}

// ---- the sections of the form -------------------------------------------------------------------

/// One line of the form with a cost, what was made good, and a cash equivalent. Fields and boxes have one name.
struct SectionRow {
    std::string_view section;
    std::string_view screen;
    std::string_view description; ///< empty: the form asks for none
    std::string_view cost;
    std::string_view madeGood; ///< empty where what stands there is no part of the cost
    std::string_view cash;
};

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

Spots One(std::string_view screen, std::string_view box, bool trips)
{
    return trips ? Spots{{.section = {}, .screen = screen, .box = std::string(box)}} : Spots{};
}

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
        const std::string text = Trim(read(table, Numbered(stem, line)));
        sum.any = sum.any || !text.empty();
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

// ---- cars ---------------------------------------------------------------------------------------

constexpr int CarsOnThePage = 2;
constexpr int Cars = 6;
constexpr int PeriodsOfACar = 4;

/// One of the six cars, wherever its record is.
class Car {
public:
    Car(const FieldReader& read, int number) : read(read), number(number) {}

    std::string Text(std::string_view stem) const
    {
        return Trim(read(OnPage() ? FormTable : "ExtraCars", Numbered(stem, number)));
    }
    bool Filled(std::string_view stem) const { return !Text(stem).empty(); }
    Amount Money(std::string_view stem) const { return ReadAmount(Text(stem)); }
    std::optional<Day> DayOf(std::string_view stem) const { return ReadDate(Text(stem)); }
    /// True if somebody has begun to enter the car.
    bool Entered() const
    {
        return Filled("FMakeModel") || Filled("FRegDate") || Filled("FListPrice") || Filled("FCashEqu");
    }
    Day From() const { return DayOf("FDateFrom").value_or(YearStart()); }
    Day To() const { return DayOf("FDateTo").value_or(YearEnd()); }

    /// At a box of this car, whose name ends with the car's number.
    Spot At(std::string_view box) const
    {
        constexpr auto screens = std::to_array<std::string_view>({Page1, "Form3_4", "Form5_6"});
        return {.section = "F",
                .screen = screens.at(static_cast<std::size_t>((number - 1) / 2)),
                .box = Numbered(box, number),
                .detail = Numbered("Car ", number)};
    }

    static Day YearStart() { return edition::TaxYearStartDay; }
    static Day YearEnd() { return edition::TaxYearEndDay; }

private:
    bool OnPage() const { return number <= CarsOnThePage; }

    const FieldReader& read;
    int number;
};

/// A spot for every car that has been entered and of which `trips` says so, at its box `box`.
template<class Trips>
Spots OfCars(const FieldReader& read, std::string_view box, Trips trips)
{
    Spots spots;
    for (int number = 1; number <= Cars; ++number)
        if (const Car car(read, number); car.Entered() && trips(car))
            spots.push_back(car.At(box));
    return spots;
}

Spots NoListPrice(const FieldReader& read)
{
    return OfCars(read, "FListPrice", [](const Car& car) { return !car.Filled("FListPrice"); });
}

Spots CarNotWorkedOut(const FieldReader& read)
{
    return OfCars(read, "FCashEqu", [](const Car& car) { return !car.Filled("FCashEqu"); });
}

Spots NoCO2Figure(const FieldReader& read)
{
    return OfCars(read, "FC02", [](const Car& car) {
        const auto registered = car.DayOf("FRegDate");
        return registered && *registered >= edition::CO2RegimeStart && !car.Filled("FC02") &&
               !IsSet(car.Text("FNoC02"));
    });
}

Spots WholeYear(const FieldReader& read)
{
    return OfCars(read, "FDateFrom", [](const Car& car) {
        return car.DayOf("FDateFrom") == Car::YearStart() && car.DayOf("FDateTo") == Car::YearEnd();
    });
}

Spots OutsideTheYear(const FieldReader& read)
{
    return OfCars(read, "FDateFrom", [](const Car& car) {
        return car.From() < Car::YearStart() || car.To() > Car::YearEnd() || car.From() > car.To();
    });
}

Spots RegisteredLater(const FieldReader& read)
{
    return OfCars(read, "FRegDate", [](const Car& car) {
        const auto registered = car.DayOf("FRegDate");
        return registered && car.Filled("FDateFrom") && *registered > car.From();
    });
}

struct Period {
    Day first, last;
};

std::vector<Period> PeriodsOf(const Car& car)
{
    std::vector<Period> periods;
    for (int row = 1; row <= PeriodsOfACar; ++row) {
        const auto first = car.DayOf(Numbered("FUnavailableFirst", row));
        const auto last = car.DayOf(Numbered("FUnavailableLast", row));
        if (first && last)
            periods.push_back({*first, *last});
    }
    return periods;
}

Spots PeriodsOverlap(const FieldReader& read)
{
    Spots spots = OfCars(read, "txtUnavailableFirst", [](const Car& car) {
        const std::vector<Period> periods = PeriodsOf(car);
        for (std::size_t i = 0; i < periods.size(); ++i) {
            if (periods[i].first < car.From() || periods[i].last > car.To())
                return true;
            for (std::size_t j = 0; j < i; ++j)
                if (periods[i].first <= periods[j].last && periods[j].first <= periods[i].last)
                    return true;
        }
        return false;
    });
    for (Spot& spot : spots)
        spot.index = 1;
    return spots;
}

Spots FuelNotCompleted(const FieldReader& read)
{
    return OfCars(read, "FFuelEqu",
                  [](const Car& car) { return IsSet(car.Text("FFuelTick")) && !car.Filled("FFuelEqu"); });
}

Spots FuelNotTicked(const FieldReader& read)
{
    return OfCars(read, "FuelTick",
                  [](const Car& car) { return !IsSet(car.Text("FFuelTick")) && !car.Money("FFuelEqu").IsZero(); });
}

Spots WithdrawnOutside(const FieldReader& read)
{
    return OfCars(read, "FDateWithdrawn", [](const Car& car) {
        const auto withdrawn = car.DayOf("FDateWithdrawn");
        return withdrawn && (*withdrawn < car.From() || *withdrawn > car.To());
    });
}

/// The totals of section F, and the cars' field that each adds up.
struct CarTotalRow {
    std::string_view total, ofCar;
};
constexpr auto CarTotals = std::to_array<CarTotalRow>({
    {"FTotalCashCars", "FCashEqu"},
    {"FTotalCashFuel", "FFuelEqu"},
});

Spots CarTotalDiffers(const FieldReader& read)
{
    Spots spots;
    for (const CarTotalRow& row : CarTotals) {
        Amount sum;
        for (int number = 1; number <= Cars; ++number)
            sum += Car(read, number).Money(row.ofCar);
        if (const Amount shown = AmountOnForm(read, row.total); shown != sum)
            spots.push_back({.section = "F",
                             .screen = Page1,
                             .box = std::string(row.total),
                             .detail = fmt::format("{} on the form, {} over the cars", Money(shown), Money(sum))});
    }
    return spots;
}

Spots FuelWithoutCar(const FieldReader& read)
{
    const bool trips = !AmountOnForm(read, "FTotalCashFuel").IsZero() && AmountOnForm(read, "FTotalCashCars").IsZero();
    return trips ? Spots{{.section = "F", .screen = Page1, .box = "FTotalCashCars"}} : Spots{};
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

// ---- the employer -------------------------------------------------------------------------------

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
    {"EM1", Fault, "Two employees have one National Insurance number: is a form there twice?", CommonMistakes,
     OneNumberTwice},
    {"EM2", Oddity, "Nobody is ticked as a director", CommonMistakes, NoDirector},
    {"DE1", Fault, "The references of the declaration and of a form differ", Declared, ReferencesDiffer},
    {"DE2", Fault, "No benefits are declared, and there are some", Declared, NoBenefitsDeclared},
    {"DE3", Oddity, "There are forms, and the declaration neither encloses nor has sent them", Declared,
     NothingDeclared},
    {"DE4", Oddity, "Box A is not today's total of the forms", Declared, BoxAOutOfDate},
    {"DE5", Oddity, "Adjustments are ticked, and nothing is added or deducted", Declared, AdjustedByNothing},
    {"DE6", Fault, "The forms were sent, and the office or the day is missing", Declared, SentWithoutDate},
    {"DE7", Oddity, "Contributions are due, and the accounts office reference is missing", Declared, NoAccountsOffice},
});

template<class Looked>
std::vector<Finding> Run(std::span<const CheckRow<Looked>> checks, std::string_view employee, const Looked& looked)
{
    std::vector<Finding> findings;
    for (const CheckRow<Looked>& check : checks)
        for (Spot& spot : check.find(looked))
            findings.push_back({.code = check.code,
                                .severity = check.severity,
                                .words = check.words,
                                .source = check.source,
                                .employee = std::string(employee),
                                .spot = std::move(spot)});
    return findings;
}

} // namespace

std::span<const EmployeeCheck> EmployeeChecks()
{
    return ChecksOfEmployee;
}

std::span<const EmployerCheck> EmployerChecks()
{
    return ChecksOfEmployer;
}

std::vector<Finding> CheckEmployee(std::string_view employee, const FieldReader& read)
{
    return Run(EmployeeChecks(), employee, read);
}

std::vector<Finding> CheckEmployer(const EmployerFacts& facts)
{
    return Run(EmployerChecks(), {}, facts);
}

EmployerFacts::Employee FactsOf(std::string_view employee, const FieldReader& read)
{
    constexpr auto others =
        std::to_array<std::string_view>({"DCashEqu", "ETaxAmount", "FTotalCashCars", "FTotalCashFuel", "GVan",
                                         "GVanFuel", "HLoanCashEqu1", "HLoanCashEqu2", "JRelocationExp", "NTaxPaid"});
    const auto stands = [&](std::string_view field) { return !AmountOnForm(read, field).IsZero(); };
    return {.name = std::string(employee),
            .payeReference = OnForm(read, "PAYEBox"),
            .nationalInsurance = OnForm(read, "NatIns"),
            .director = IsSet(OnForm(read, "DirectorTick")),
            .anyBenefit = std::ranges::any_of(others, stands) || std::ranges::any_of(Sections, [&](const auto& row) {
                              return stands(row.cost) || stands(row.cash);
                          })};
}

} // namespace quillmere::review
