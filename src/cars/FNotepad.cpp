#include "cars/FNotepad.h"

#include "cars/CarColumn.h"
#include "cars/CarMessages.h"
#include "cars/CarReference.h"
#include "edition/CarRates.h"
#include "edition/Edition.h"
#include "edition/LeftOvers.h"
#include "frame/Nth.h"
#include "frame/Text.h"

#include <algorithm>

namespace quillmere {

namespace {

/// A field of the sheet's working store: its box, and the stems of the fields that keep it.
struct SheetField {
    BoxRow row;
    int period = 0;               ///< row of the periods of unavailability, the box's index; 0: not of an array
    std::string_view stored = {}; ///< in the sheet's own table
    std::string_view page = {};   ///< in `P11D`, and in `ExtraCars` but for one tick
};

constexpr BoxRow Entered(std::string_view box, std::string_view spoken, KeyFilter filter = nullptr)
{
    return {.name = box, .filter = filter, .spoken = spoken};
}

constexpr BoxRow Pounds(std::string_view box, std::string_view spoken)
{
    return {.name = box, .filter = MoneyKeyFilter, .spoken = spoken, .amount = true};
}

constexpr BoxRow Worked(std::string_view box, std::string_view spoken)
{
    return {.name = box, .spoken = spoken, .readOnly = true};
}

constexpr BoxRow WorkedPounds(std::string_view box, std::string_view spoken)
{
    return {.name = box, .spoken = spoken, .readOnly = true, .amount = true};
}

constexpr BoxRow Tick(std::string_view box, std::string_view text, std::string_view spoken)
{
    return {.name = box, .kind = BoxKind::Tick, .text = text, .spoken = spoken};
}

constexpr BoxRow PeriodDate(std::string_view box, std::string_view spoken)
{
    return Entered(box, spoken, DateKeyFilter);
}

constexpr std::string_view FirstBox = "txtUnavailableFirst", LastBox = "txtUnavailableLast";

// clang-format off
/// The sheet from top to bottom.
// Kept: the record has one period for each car, no appropriate percentage and no full discount. What is in the other
// rows of periods reaches the page and is gone when the sheet is opened again.
constexpr auto SheetFields = std::to_array<SheetField>({
    {.row = Entered("Make", "Make"), .stored = "Make"},
    {.row = Entered("Model", "Model"), .stored = "Model"},
    {.row = Entered("EngineSize", "Engine Size", WholeNumberKeyFilter), .stored = "Engine", .page = "FEngine"},
    {.row = Entered("Fuel", "Type of Fuel, key letter", FuelKeyFilter), .stored = "Fuel", .page = "FFuel"},
    {.row = Entered("C02Level", "CO2 emissions (g/km). Leave blank if no approved CO2 emission figure", WholeNumberKeyFilter), .stored = "C02", .page = "FC02"},
    {.row = Entered("DateReg", "Date first registered", DateKeyFilter), .stored = "RegDate", .page = "FRegDate"},
    {.row = Entered("DateFirst", "Date first available", DateKeyFilter), .stored = "DateFirst", .page = "FDateFrom"},
    {.row = Entered("DateLast", "Date last available", DateKeyFilter), .stored = "DateLast", .page = "FDateTo"},
    {.row = PeriodDate(FirstBox, "Period unavailable 1, first date"), .period = 1, .stored = "FirstDateUnav", .page = "FUnavailableFirst1"},
    {.row = PeriodDate(LastBox, "Period unavailable 1, last date"), .period = 1, .stored = "LastDateUnav", .page = "FUnavailableLast1"},
    {.row = PeriodDate(FirstBox, "Period unavailable 2, first date"), .period = 2, .page = "FUnavailableFirst2"},
    {.row = PeriodDate(LastBox, "Period unavailable 2, last date"), .period = 2, .page = "FUnavailableLast2"},
    {.row = PeriodDate(FirstBox, "Period unavailable 3, first date"), .period = 3, .page = "FUnavailableFirst3"},
    {.row = PeriodDate(LastBox, "Period unavailable 3, last date"), .period = 3, .page = "FUnavailableLast3"},
    {.row = PeriodDate(FirstBox, "Period unavailable 4, first date"), .period = 4, .page = "FUnavailableFirst4"},
    {.row = PeriodDate(LastBox, "Period unavailable 4, last date"), .period = 4, .page = "FUnavailableLast4"},
    {.row = Pounds("ListPriceBox", "A, list price of car"), .stored = "ListPrice", .page = "FListPrice"},
    {.row = Pounds("AccessoriesBox", "B, accessories"), .stored = "Accessories", .page = "FAccessories"},
    {.row = WorkedPounds("ABox", "C, total price of cars and accessories"), .stored = "A"},
    {.row = Pounds("DBox", "D, capital contributions made towards the cost of car or accessories"), .stored = "D", .page = "FCaptContr"},
    {.row = WorkedPounds("EBox", "E, the price of the car"), .stored = "E"},
    {.row = Worked("GBox", "G, CO2 figure rounded down to next lowest 5 g/km"), .stored = "G"},
    {.row = Worked("HBox", "H, basic percentage"), .stored = "H"},
    {.row = Worked("JBox", "J, discounts for certain fuel types, percentage points"), .stored = "J"},
    {.row = Worked("FullDiscount", "Full discount, percentage points")},
    {.row = Worked("NBox", "N, appropriate percentage")},
    {.row = WorkedPounds("PBox", "P, car benefit for a full year"), .stored = "P"},
    {.row = Worked("QBox", "Q, number of days the car was unavailable"), .stored = "Q"},
    {.row = WorkedPounds("RBox", "R, deduction for unavailability"), .stored = "R"},
    {.row = WorkedPounds("SBox", "S, car benefit for the period the car was available"), .stored = "S"},
    {.row = Pounds("TBox", "T, payments made in the year for private use of the car"), .stored = "T", .page = "FPrivateUse"},
    {.row = WorkedPounds("UBox", "U, car benefit after deductions and payments"), .stored = "U"},
    {.row = WorkedPounds("CarBenefit", "Car benefit charge on this car"), .stored = "CashEqu", .page = "FCashEqu"},
    {.row = Tick("Check1", "Yes", "Fuel Benefit Required?"), .stored = "FuelBenTick"},
    {.row = WorkedPounds("VBox", "V, car fuel benefit charge for the whole of the tax year"), .stored = "V"},
    {.row = Entered("DateWithdrawn", "Date the fuel was withdrawn", DateKeyFilter), .stored = "DateWithdrawn", .page = "FDateWithdrawn"},
    {.row = Tick("WithdrawnTick", {}, "The fuel was reinstated later"), .stored = "DateWithdrawnTick", .page = "FDateWithdrawnTick"},
    {.row = Worked("WBox", "W, additional days after fuel was withdrawn"), .stored = "W"},
    {.row = Worked("XBox", "X, total days for which no car fuel benefit charge applies"), .stored = "X"},
    {.row = WorkedPounds("YBox", "Y, deduction from the fuel charge"), .stored = "Y"},
    {.row = WorkedPounds("ZBox", "Z, fuel charge less deduction"), .stored = "Z"},
    {.row = WorkedPounds("FuelBenefit", "Car fuel benefit charge on this car"), .stored = "FuelEqu", .page = "FFuelEqu"},
    // Carried in the record; no box shows it.
    {.row = {}, .stored = "Tick"},
});
// clang-format on
static_assert(SheetFields.size() == FNotepad::Fields);

constexpr auto TabRows = std::to_array<BoxRow>({
    {.name = "lblCar1", .kind = BoxKind::Label, .text = "Car 1", .letter = '1'},
    {.name = "lblCar2", .kind = BoxKind::Label, .text = "Car 2", .letter = '2'},
    {.name = "lblCar3", .kind = BoxKind::Label, .text = "Car 3", .letter = '3'},
    {.name = "lblCar4", .kind = BoxKind::Label, .text = "Car 4", .letter = '4'},
    {.name = "lblCar5", .kind = BoxKind::Label, .text = "Car 5", .letter = '5'},
});
/// The cars of page 1; the others are in the record of further cars.
constexpr int CarsOfPage = 2;

bool IsTick(const SheetField& field)
{
    return field.row.kind == BoxKind::Tick;
}

int IndexOf(const SheetField& field)
{
    return field.period > 0 ? field.period : Box::NoIndex;
}

std::size_t PlaceOf(std::string_view storedStem)
{
    const auto* const found = std::ranges::find(SheetFields, storedStem, &SheetField::stored);
    return static_cast<std::size_t>(found - SheetFields.begin());
}

/// The name of a field of a page's car in the record that has the car.
std::string FieldOfCar(std::string_view stem, int car)
{
    return Numbered(car > CarsOfPage && stem == "FDateWithdrawnTick" ? "FWithdrawnTick" : stem, car);
}

/// A stored date of a car that was carried over: one that says no more than that it was there all last year is none.
std::string_view WithoutLastYear(std::string_view stem, std::string_view text)
{
    const bool whole = (stem == "DateFirst" && text == edition::PriorYearStart) ||
                       (stem == "DateLast" && text == edition::PriorYearEnd);
    return whole ? std::string_view() : text;
}

/// What page 1 takes: a date that says no more than the year's own is left out.
std::string_view ForPage(std::string_view stem, std::string_view text)
{
    const bool whole = (stem == "FDateFrom" && text == edition::TaxYearStartShort) ||
                       (stem == "FDateTo" && text == edition::TaxYearEnd);
    return whole ? std::string_view() : text;
}

} // namespace

FNotepad::FNotepad(Session& session)
    : Notepad(session, "FNotepad", "Notepad F - Calculating Car and Fuel Benefit", "FNotepad",
              {.loading = "Car 1 Notepad - loading error",
               .loadingPage = "Car Notepad - loading error",
               .failed = "Notepad F Error",
               .ok = "Notepad F 'Ok' Error",
               .okIcon = Icon::Exclamation})
{
    AddBoxes(TabRows);
    for (const SheetField& field : SheetFields) {
        if (field.row.name.empty())
            continue;
        AddBox(field.row, std::string(field.row.name), IndexOf(field));
        if (field.row.name == "C02Level")
            AddBox(PictureRow("Image1", "CO2 Calculator"), "Image1");
    }
    AddButtons();
    KeepCars();
    BindEvents();
}

void FNotepad::KeepCars()
{
    for (int car = 1; car <= Tabs; ++car)
        for (const SheetField& field : SheetFields)
            Keep(field.stored.empty() ? std::string() : Numbered(field.stored, car),
                 FindBox(field.row.name, IndexOf(field)), car, car);
}

void FNotepad::BindEvents()
{
    for (const SheetField& field : SheetFields)
        if (!field.row.name.empty() && !IsTick(field))
            OnLeave(field.row.name, [this](Box&) { WorkOut(); });
    const auto leave = [this](std::string_view boxName, void (FNotepad::*operation)()) {
        OnLeave(boxName, [this, operation](Box&) { (this->*operation)(); });
    };
    leave("Fuel", &FNotepad::LeaveFuel);
    leave("DateReg", &FNotepad::LeaveRegistration);
    leave("DateFirst", &FNotepad::LeaveFirst);
    leave("DateLast", &FNotepad::LeaveLast);
    leave("ListPriceBox", &FNotepad::LeavePrice);
    leave("AccessoriesBox", &FNotepad::LeaveExtras);
    leave("DBox", &FNotepad::LeaveContribution);
    leave("DateWithdrawn", &FNotepad::LeaveWithdrawn);
    const auto leavePeriod = [this](std::string_view boxName, auto check) {
        OnLeave(boxName, [this, check](Box& left) {
            left.SetText(check(DateTexts(), PlaceOfNth(left.Index())).text);
            WorkOut();
        });
    };
    leavePeriod(FirstBox, LeavePeriodFirst);
    leavePeriod(LastBox, LeavePeriodLast);
    OnClick("Check1", [this](Box&) { ClickFuelTick(); });
    OnClick("WithdrawnTick", [this](Box&) { WorkOut(); });
    for (int car = 1; car <= Tabs; ++car)
        OnClick(Numbered("lblCar", car), [this, car](Box&) { ClickTab(car); });
    OnClick("Image1", [this](Box&) { session.screens.Show("Form1"); });
}

// ---- opening, and the car that shows

bool FNotepad::Load()
{
    // Kept: the sheet opens with every tab plain, and shows the first car.
    if (!Notepad::Load())
        return false;
    SetCaption(NotepadCaption("Cars and car fuel - ", session));
    return true;
}

void FNotepad::ShowStored(Entry& entry)
{
    const auto place = static_cast<std::size_t>(&entry - Entries().data()) % Fields;
    Show(entry, WithoutLastYear(SheetFields[place].stored, entry.stored));
}

std::string FNotepad::TextOfCar(int car, std::size_t place) const
{
    return Reads(Entries()[PlaceOfNth(car) * Fields + place]);
}

void FNotepad::ClickTab(int car)
{
    for (int tab = 1; tab <= Tabs; ++tab)
        box(Numbered("lblCar", tab)).SetPaint(tab == car ? Paint::Yellow : Paint::Plain);
    TurnTo(car);
}

void FNotepad::TakeCar(const FoundCar& car)
{
    box("Make").SetText(car.make);
    box("Model").SetText(car.model);
    box("Fuel").SetText(car.fuel);
    box("C02Level").SetText(car.co2);
    box("DateReg").SetText(car.registrationDate);
    box("EngineSize").SetText(car.engine);
    WorkOut();
}

// ---- the calculation

CarDateTexts FNotepad::DateTexts() const
{
    CarDateTexts dates{.dateFrom = box("DateFirst").Text(), .dateTo = box("DateLast").Text(), .periods = {}};
    int row = 0;
    for (UnavailablePeriod& period : dates.periods) {
        ++row;
        period = {box(FirstBox, row).Text(), box(LastBox, row).Text()};
    }
    return dates;
}

CarSheetFacts FNotepad::Facts() const
{
    return {.car = {.registrationDate = box("DateReg").Text(),
                    .fuel = box("Fuel").Text(),
                    .co2 = box("C02Level").Text(),
                    .engine = box("EngineSize").Text(),
                    .dateFrom = box("DateFirst").Text(),
                    .dateTo = box("DateLast").Text(),
                    .listPrice = box("ListPriceBox").Text(),
                    .accessories = box("AccessoriesBox").Text(),
                    .contribution = box("DBox").Text(),
                    .privateUse = box("TBox").Text(),
                    .periods = DateTexts().periods,
                    .dateWithdrawn = box("DateWithdrawn").Text(),
                    .reinstated = box("WithdrawnTick").Ticked()},
            .fuelTick = box("Check1").Ticked()};
}

void FNotepad::Recalculate()
{
    try {
        Compute();
    } catch (const std::exception& error) {
        ReportError(CarColumn::ComputeProcedure, error);
    }
}

void FNotepad::Compute()
{
    const CarSheetFacts facts = Facts();
    if (IsAvailableBeforeRegistered(facts.car.dateFrom, facts.car.registrationDate)) {
        session.messages.Tell(carwords::InvalidDate, carwords::AvailabilityMessage(edition::OldAvailabilityDate));
        box("DateFirst").Clear();
        return;
    }
    const CarSheetWorking working = CarSheet(facts, [this](int figure, SheetColumn column) {
        return CarReferenceRate(session.resourceFolder / CarReferenceName, figure, column);
    });
    SetWithdrawnState();
    Put(working);
}

void FNotepad::Put(const CarSheetWorking& working)
{
    const auto amount = [this](std::string_view boxName, Amount value) {
        box(boxName).SetText(AmountText(value, edition::FormatMoneyBlankZero));
    };
    const auto number = [this](std::string_view boxName, int value) {
        box(boxName).SetText(PlainNumberBlankZero(value));
    };
    amount("ListPriceBox", working.A);
    amount("AccessoriesBox", working.B);
    amount("ABox", working.total);
    amount("DBox", working.D);
    amount("EBox", working.E);
    number("GBox", working.G);
    number("HBox", working.H);
    number("JBox", working.J);
    number("FullDiscount", working.fullDiscount);
    number("NBox", working.N);
    amount("PBox", working.P);
    number("QBox", working.Q);
    amount("RBox", working.R);
    amount("SBox", working.S);
    amount("TBox", working.T);
    amount("UBox", working.U);
    box("CarBenefit")
        .SetText(AmountText(working.carBenefit,
                            box("Fuel").Empty() ? edition::FormatMoneyBlankZero : edition::FormatMoneyZero));
    amount("VBox", working.V);
    number("WBox", working.fuelDays.W);
    number("XBox", working.fuelDays.X);
    amount("YBox", working.Y);
    amount("ZBox", working.Z);
    if (box("Check1").Ticked())
        box("FuelBenefit").SetText(AmountText(working.Z, edition::FormatMoneyZero));
}

void FNotepad::SetWithdrawnState()
{
    const bool withdrawn = !box("DateWithdrawn").Empty();
    Box& reinstated = box("WithdrawnTick");
    if (!withdrawn)
        reinstated.SetTicked(false);
    reinstated.SetEnabled(withdrawn);
}

// ---- boxes that are left

void FNotepad::LeaveFuel()
{
    Box& fuel = box("Fuel");
    fuel.SetText(UpperCase(fuel.Text()));
    if (!IsSheetFuelLetter(fuel.Text())) {
        fuel.Clear();
        session.messages.Tell(edition::AppTitle, carwords::InvalidFuel);
    }
    WorkOut();
}

void FNotepad::LeaveRegistration()
{
    Box& registered = box("DateReg");
    const RegistrationOutcome outcome = LeaveRegistrationDate(registered.Text());
    registered.SetText(outcome.text);
    if (const std::string_view refusal = carwords::RegistrationMessage(outcome.check); !refusal.empty())
        session.messages.Tell(edition::AppTitle, refusal);
    WorkOut();
}

void FNotepad::LeaveFirst()
{
    Box& first = box("DateFirst");
    const CarDateOutcome outcome = LeaveDateFrom(first.Text(), box("DateReg").Text());
    first.SetText(outcome.text);
    if (outcome.beforeRegistration)
        session.messages.Tell(edition::AppTitle, carwords::FirstDateTooEarly);
    WorkOut();
}

void FNotepad::LeaveLast()
{
    Box& last = box("DateLast");
    const std::string entered = Trim(last.Text());
    last.SetText(LastDateChecker(box("DateFirst").Text(), entered));
    if (last.Empty() && !entered.empty() && IsDateText(entered))
        session.messages.Tell("Incorrect Date", "Date must not be earlier than first date");
    WorkOut();
}

void FNotepad::LeavePrice()
{
    Box& price = box("ListPriceBox");
    Refuse(price, CheckListPrice(price.Text(), box("AccessoriesBox").Text()));
    WorkOut();
}

void FNotepad::LeaveExtras()
{
    Box& accessories = box("AccessoriesBox");
    Refuse(accessories, CheckAccessories(accessories.Text()));
    WorkOut();
}

void FNotepad::LeaveContribution()
{
    Box& contribution = box("DBox");
    if (Refuse(contribution, CheckContribution(contribution.Text())))
        Focus(contribution);
    WorkOut();
}

bool FNotepad::Refuse(Box& price, PriceCheck check)
{
    if (check == PriceCheck::Good)
        return false;
    const carwords::Refusal refusal = carwords::PriceMessage(check);
    session.messages.Tell(refusal.title, refusal.text);
    price.Clear();
    return true;
}

void FNotepad::LeaveWithdrawn()
{
    Box& withdrawn = box("DateWithdrawn");
    withdrawn.SetText(CheckWithdrawnDate(withdrawn.Text(), box("DateFirst").Text(), box("DateLast").Text()));
    SetWithdrawnState();
    WorkOut();
}

void FNotepad::ClickFuelTick()
{
    if (box("Check1").Ticked()) {
        WorkOut();
        return;
    }
    // Kept: the additional days stay.
    for (const std::string_view emptied : {"VBox", "FuelBenefit", "YBox", "ZBox", "XBox"})
        box(emptied).Clear();
}

// ---- the buttons

std::vector<Notepad::Result> FNotepad::Results(const Recordset& /*own*/) const
{
    std::vector<Result> results;
    for (int car = 1; car <= Tabs; ++car)
        AddCar(results, car);
    for (const auto& [field, stem] : {std::pair("FTotalCashCars", "CashEqu"), std::pair("FTotalCashFuel", "FuelEqu")})
        results.push_back({.field = field, .stored = Total(stem), .shown = Total(stem)});
    return results;
}

/// A car's facts for the record that has the car, and for the page if it is one of the page's.
void FNotepad::AddCar(std::vector<Result>& results, int car) const
{
    const auto add = [&](std::string_view stem, std::string_view text) {
        if (car <= CarsOfPage) {
            const std::string forPage(ForPage(stem, text));
            results.push_back({.field = FieldOfCar(stem, car), .stored = forPage, .shown = forPage});
        } else {
            results.push_back(
                {.field = FieldOfCar(stem, car), .stored = std::string(text), .shown = {}, .table = "ExtraCars"});
        }
    };
    const std::string make = TextOfCar(car, PlaceOf("Make"));
    const std::string model = TextOfCar(car, PlaceOf("Model"));
    add("FMakeModel", make.empty() && model.empty() ? std::string() : MakeAndModel(make, model));
    for (std::size_t place = 0; place < Fields; ++place)
        if (const std::string_view stem = SheetFields[place].page; !stem.empty())
            add(stem, TextOfCar(car, place));
}

/// The sum of a figure of the sheet's cars, as page 1 shows it.
std::string FNotepad::Total(std::string_view storedStem) const
{
    Amount total;
    for (int car = 1; car <= Tabs; ++car)
        total += ReadAmount(TextOfCar(car, PlaceOf(storedStem)));
    return AmountText(total, edition::FormatMoneyBlankZero);
}

void FNotepad::Delete()
{
    Notepad::Delete();
    SetWithdrawnState();
}

} // namespace quillmere
