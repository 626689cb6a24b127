#include "cars/CarColumn.h"

#include "cars/CO2Calculations.h"
#include "cars/CarMessages.h"
#include "clientdb/CurrentRecord.h"
#include "clientdb/OpenRecord.h"
#include "edition/CarRates.h"
#include "edition/CarWords.h"
#include "edition/Edition.h"
#include "edition/LeftOvers.h"
#include "frame/Nth.h"
#include "frame/Text.h"

namespace quillmere {

namespace {

/// A box of the column: its stem, and the stem of its field where that differs.
struct ColumnRow {
    std::string_view stem;
    std::string_view spoken;
    BoxKind kind = BoxKind::Text;
    KeyFilter filter = nullptr;
    std::string_view field = {};
    bool amount = false;
    bool hidden = false;
};

/// The column in the order of the form. Periods of unavailability stand between the two blocks.
constexpr auto UpperRows = std::to_array<ColumnRow>({
    {.stem = "FMakeModel", .spoken = "Make and model"},
    {.stem = "FRegDate", .spoken = "Date first registered", .filter = DateKeyFilter},
    {.stem = "FC02", .spoken = "Approved CO2 emissions figure, g/km", .filter = WholeNumberKeyFilter},
    {.stem = "FNoC02", .spoken = "The car does not have an approved CO2 figure", .kind = BoxKind::Tick},
    {.stem = "FEngine", .spoken = "Engine size, cc", .filter = WholeNumberKeyFilter},
    {.stem = "FFuel", .spoken = "Type of fuel or power used, key letter", .filter = FuelKeyFilter},
    {.stem = "FDateFrom", .spoken = "Date car was available from", .filter = DateKeyFilter},
    {.stem = "FDateTo", .spoken = "Date car was available to", .filter = DateKeyFilter},
});
constexpr auto LowerRows = std::to_array<ColumnRow>({
    {.stem = "FListPrice", .spoken = "List price of car", .filter = MoneyKeyFilter, .amount = true},
    {.stem = "FAccessories", .spoken = "Accessories", .filter = MoneyKeyFilter, .amount = true},
    {.stem = "FCaptContr", .spoken = "Capital contributions", .filter = MoneyKeyFilter, .amount = true},
    {.stem = "FPrivateUse",
     .spoken = "Amount paid by employee for private use",
     .filter = MoneyKeyFilter,
     .amount = true},
    {.stem = "FuelTick", .spoken = "Fuel Benefit Required?", .kind = BoxKind::Tick, .field = "FFuelTick"},
    {.stem = "FDateWithdrawn", .spoken = "Date the fuel was withdrawn", .filter = DateKeyFilter},
    {.stem = "FWithdrawnTick", .spoken = "Fuel was reinstated later", .kind = BoxKind::Tick},
    {.stem = "FCashEqu", .spoken = "Cash equivalent of the car", .filter = MoneyKeyFilter, .amount = true},
    {.stem = "FFuelEqu", .spoken = "Cash equivalent of the fuel", .filter = MoneyKeyFilter, .amount = true},
    {.stem = "Discount", .spoken = "Full discount", .kind = BoxKind::Tick, .field = "FFullDisc", .hidden = true},
});
/// The working boxes, which do not show; their fields have an F in front.
constexpr auto WorkingBoxes =
    std::to_array<std::string_view>({"CBox", "EBox", "GBox", "HBox", "JBox", "MBox", "NBox", "PBox", "QBox", "RBox",
                                     "SBox", "UBox", "VBox", "WBox", "XBox", "YBox"});

constexpr int PeriodRows = 4;

carwords::Refusal PriceMessageOf(int car, PriceCheck check)
{
    carwords::Refusal refusal = carwords::PriceMessage(check);
    if (car == 2 && check == PriceCheck::SumTooHigh)
        refusal.text = edition::car::BothTooHighOfSecondCar;
    return refusal;
}

/// The first day of the year in the message about a car available before it was registered.
std::string_view DefaultFirstDay(int car)
{
    // Kept: only the first car's message follows the year.
    return car == 1 ? edition::TaxYearStart : edition::OldAvailabilityDate;
}

/// A result of the car is left: in amount form like any other amount, a zero blank. The zero that the routine itself
/// has written stays: passing the box changes nothing.
void LeaveResult(Box& left)
{
    const Amount result = ReadAmount(left.Text());
    if (left.Text() != AmountText(result, edition::FormatMoneyZero))
        left.SetText(AmountText(result, edition::FormatMoneyBlankZero));
}

} // namespace

CarColumn::CarColumn(Session& session, Screen& screen, int car, Totals totals)
    : session(session), screen(screen), car(car), totals(std::move(totals))
{
    AddBoxes();
    BindEvents();
}

Box& CarColumn::box(std::string_view stem) const
{
    return screen.box(Numbered(stem, car));
}

Box& CarColumn::PeriodBox(std::string_view stem, int row) const
{
    return screen.box(Numbered(stem, car), row);
}

void CarColumn::AddBoxes()
{
    const std::string ofCar = ", car " + std::to_string(car);
    const auto add = [&](const ColumnRow& row) {
        Box& added = screen.AddBox({.kind = row.kind, .filter = row.filter, .hidden = row.hidden, .amount = row.amount},
                                   Numbered(row.stem, car));
        std::string_view field = row.field.empty() ? row.stem : row.field;
        if (row.stem == "FWithdrawnTick" && car <= 2)
            field = "FDateWithdrawnTick";
        added.SetField(Numbered(field, car));
        added.SetSpoken(std::string(row.spoken) + ofCar);
    };
    for (const ColumnRow& row : UpperRows)
        add(row);
    for (int row = 1; row <= PeriodRows; ++row) {
        for (const std::string_view end : {"First", "Last"}) {
            Box& added =
                screen.AddBox({.filter = DateKeyFilter}, Numbered("txtUnavailable" + std::string(end), car), row);
            added.SetField(Numbered("FUnavailable" + std::string(end) + std::to_string(row), car));
            added.SetSpoken("Period unavailable " + std::to_string(row) + ", " + (end == "First" ? "first" : "last") +
                            " date" + ofCar);
        }
    }
    for (const ColumnRow& row : LowerRows)
        add(row);
    for (const std::string_view working : WorkingBoxes)
        screen.AddBox({.hidden = true}, Numbered(working, car)).SetField(Numbered("F" + std::string(working), car));
}

void CarColumn::BindEvents()
{
    const auto leave = [this](std::string_view stem, void (CarColumn::*operation)()) {
        screen.OnLeave(Numbered(stem, car), [this, operation](Box&) { (this->*operation)(); });
    };
    leave("FRegDate", &CarColumn::LeaveRegistrationDate);
    leave("FFuel", &CarColumn::LeaveFuel);
    leave("FDateFrom", &CarColumn::LeaveDateFrom);
    leave("FDateTo", &CarColumn::LeaveDateTo);
    leave("FListPrice", &CarColumn::LeaveListPrice);
    leave("FAccessories", &CarColumn::LeaveAccessories);
    leave("FCaptContr", &CarColumn::LeaveCapitalContribution);
    leave("FDateWithdrawn", &CarColumn::LeaveDateWithdrawn);
    for (const std::string_view stem : {"FPrivateUse", "FEngine", "FC02"})
        leave(stem, &CarColumn::CarBenefitCompute);
    for (const std::string_view stem : {"FCashEqu", "FFuelEqu"})
        screen.OnLeave(Numbered(stem, car), LeaveResult);
    screen.OnLeave(Numbered("txtUnavailableFirst", car),
                   [this](Box& left) { LeavePeriod(left, LeavePeriodFirst(DateTexts(), PlaceOfNth(left.Index()))); });
    screen.OnLeave(Numbered("txtUnavailableLast", car),
                   [this](Box& left) { LeavePeriod(left, LeavePeriodLast(DateTexts(), PlaceOfNth(left.Index()))); });
    screen.OnClick(Numbered("FNoC02", car), [this](Box&) { CarBenefitCompute(); });
    screen.OnClick(Numbered("FWithdrawnTick", car), [this](Box&) { CarBenefitCompute(); });
    screen.OnClick(Numbered("FuelTick", car), [this](Box&) { ClickFuelTick(); });
}

void CarColumn::Tell(std::string_view title, std::string_view text) const
{
    session.messages.Tell(title, text);
}

CarDateTexts CarColumn::DateTexts() const
{
    const CarTexts texts = CarTextsOn(screen, car);
    return {.dateFrom = texts.dateFrom, .dateTo = texts.dateTo, .periods = texts.periods};
}

void CarColumn::CarBenefitCompute()
{
    try {
        Compute();
    } catch (const std::exception& error) {
        session.messages.ReportError(ComputeProcedure, error);
    }
}

void CarColumn::Compute()
{
    SetStates();
    const CarTexts texts = CarTextsOn(screen, car);
    if (IsAvailableBeforeRegistered(texts.dateFrom, texts.registrationDate)) {
        Tell(carwords::InvalidDate, carwords::AvailabilityMessage(DefaultFirstDay(car)));
        box("FDateFrom").Clear();
        return;
    }
    const CarWorking working = CarBenefit(ReadCar(texts));
    SetWithdrawnState(texts.dateWithdrawn);
    Write(working);
    if (totals.computeBoth)
        totals.computeBoth();
}

/// What has been entered decides which boxes can be used, and empties some.
void CarColumn::SetStates()
{
    Box& co2 = box("FC02");
    Box& noCO2 = box("FNoC02");
    Box& withdrawn = box("FDateWithdrawn");
    Box& reinstated = box("FWithdrawnTick");
    Box& fuelTick = box("FuelTick");
    const auto close = [](Box& text) {
        text.Clear();
        text.SetReadOnly(true);
    };
    const auto setAndDisable = [](Box& tick, bool ticked) {
        tick.SetTicked(ticked);
        tick.SetEnabled(false);
    };

    const std::string& registered = box("FRegDate").Text();
    if (!registered.empty()) {
        const bool electric = box("FFuel").Text() == "E";
        if (electric) {
            close(co2);
            setAndDisable(noCO2, true);
            close(withdrawn);
            setAndDisable(reinstated, false);
            if (fuelTick.Ticked())
                box("FFuelEqu").Clear();
            setAndDisable(fuelTick, false);
        } else if (IsBeforeCO2Regime(DateOf(registered))) {
            withdrawn.SetReadOnly(false);
            close(co2);
            setAndDisable(noCO2, true);
            fuelTick.SetEnabled(true);
        } else {
            noCO2.SetEnabled(true);
            co2.SetReadOnly(false);
            withdrawn.SetReadOnly(false);
            reinstated.SetEnabled(true);
            fuelTick.SetEnabled(true);
        }
    }
    if (fuelTick.Ticked()) {
        withdrawn.SetReadOnly(false);
        reinstated.SetEnabled(true);
    } else {
        close(withdrawn);
        reinstated.SetEnabled(false);
    }
    if (noCO2.Ticked())
        close(co2);
}

/// The tick beside the date of withdrawal has a meaning only with a date.
void CarColumn::SetWithdrawnState(std::string_view dateWithdrawn)
{
    Box& reinstated = box("FWithdrawnTick");
    if (!dateWithdrawn.empty()) {
        reinstated.SetEnabled(true);
    } else if (!session.DeclarationOpen && !session.EmployeeOpenFlag) {
        reinstated.SetTicked(false);
        reinstated.SetEnabled(false);
    }
}

void CarColumn::Write(const CarWorking& working)
{
    const auto amount = [this](std::string_view stem, Amount value) {
        box(stem).SetText(AmountText(value, edition::FormatMoneyBlankZero));
    };
    const auto number = [this](std::string_view stem, int value) { box(stem).SetText(PlainNumber(value)); };
    const auto numberBlankZero = [this](std::string_view stem, int value) {
        box(stem).SetText(PlainNumberBlankZero(value));
    };
    amount("FListPrice", working.A);
    amount("FAccessories", working.B);
    amount("CBox", working.C);
    amount("FCaptContr", working.D);
    amount("EBox", working.E);
    number("GBox", working.percentages.G);
    number("HBox", working.percentages.H);
    number("JBox", working.percentages.J);
    number("MBox", working.percentages.M);
    numberBlankZero("NBox", working.percentages.N);
    amount("PBox", working.P);
    numberBlankZero("QBox", working.Q);
    amount("RBox", working.R);
    amount("SBox", working.S);
    amount("FPrivateUse", working.T);
    amount("UBox", working.U);
    box("FCashEqu")
        .SetText(AmountText(working.cashEquivalent,
                            box("FFuel").Empty() ? edition::FormatMoneyBlankZero : edition::FormatMoneyZero));
    amount("VBox", working.V);
    numberBlankZero("WBox", working.fuelDays.W);
    numberBlankZero("XBox", working.fuelDays.X);
    amount("YBox", working.Y);
    if (box("FuelTick").Ticked())
        box("FFuelEqu").SetText(AmountText(Amount::WholePounds(working.fuelEquivalent), edition::FormatMoneyZero));
}

void CarColumn::LeaveFuel()
{
    Box& fuel = box("FFuel");
    fuel.SetText(UpperCase(fuel.Text()));
    if (!IsFuelLetter(fuel.Text())) {
        fuel.Clear();
        Tell(edition::AppTitle, carwords::InvalidFuel);
        return;
    }
    CarBenefitCompute();
}

void CarColumn::LeaveRegistrationDate()
{
    Box& registered = box("FRegDate");
    const RegistrationOutcome outcome = quillmere::LeaveRegistrationDate(registered.Text());
    registered.SetText(outcome.text);
    if (const std::string_view refusal = carwords::RegistrationMessage(outcome.check); !refusal.empty())
        return Tell(edition::AppTitle, refusal);
    if (outcome.check == RegistrationCheck::Empty)
        return;
    // Kept: the first car's check leaves the tick as the user set it.
    if (car > 1) {
        const bool early = IsBeforeCO2Regime(DateOf(outcome.text));
        if (early)
            box("FC02").Clear();
        box("FNoC02").SetTicked(early);
        box("FNoC02").SetEnabled(!early);
    }
    CarBenefitCompute();
}

void CarColumn::LeaveDateFrom()
{
    Box& from = box("FDateFrom");
    const CarDateOutcome outcome = quillmere::LeaveDateFrom(from.Text(), box("FRegDate").Text());
    from.SetText(outcome.text);
    if (outcome.beforeRegistration)
        Tell(edition::AppTitle, carwords::FirstDateTooEarly);
    if (outcome.compute)
        CarBenefitCompute();
}

void CarColumn::LeaveDateTo()
{
    Box& to = box("FDateTo");
    const CarDateOutcome outcome = quillmere::LeaveDateTo(to.Text(), box("FDateFrom").Text());
    to.SetText(outcome.text);
    if (outcome.compute)
        CarBenefitCompute();
}

void CarColumn::LeavePeriod(Box& left, const CarDateOutcome& outcome)
{
    left.SetText(outcome.text);
    if (outcome.compute)
        CarBenefitCompute();
}

void CarColumn::LeaveListPrice()
{
    Box& price = box("FListPrice");
    Refuse(price, CheckListPrice(price.Text(), box("FAccessories").Text()));
    CarBenefitCompute();
}

void CarColumn::LeaveAccessories()
{
    Box& accessories = box("FAccessories");
    Refuse(accessories, CheckAccessories(accessories.Text()));
    CarBenefitCompute();
}

void CarColumn::LeaveCapitalContribution()
{
    Box& contribution = box("FCaptContr");
    if (Refuse(contribution, CheckContribution(contribution.Text())))
        screen.Focus(contribution);
    else if (!contribution.Empty())
        CarBenefitCompute();
}

/// Says what is wrong with a price and empties its box; false if nothing is.
bool CarColumn::Refuse(Box& price, PriceCheck check) const
{
    if (check == PriceCheck::Good)
        return false;
    const carwords::Refusal refusal = PriceMessageOf(car, check);
    Tell(refusal.title, refusal.text);
    price.Clear();
    return true;
}

void CarColumn::LeaveDateWithdrawn()
{
    Box& withdrawn = box("FDateWithdrawn");
    Box& reinstated = box("FWithdrawnTick");
    withdrawn.SetText(CheckWithdrawnDate(withdrawn.Text(), box("FDateFrom").Text(), box("FDateTo").Text()));
    if (withdrawn.Empty())
        reinstated.SetTicked(false);
    reinstated.SetEnabled(!withdrawn.Empty());
    CarBenefitCompute();
}

void CarColumn::ClickFuelTick()
{
    if (box("FuelTick").Ticked()) {
        CarBenefitCompute();
        return;
    }
    box("FFuelEqu").Clear();
    box("FDateWithdrawn").Clear();
    box("FDateWithdrawn").SetReadOnly(true);
    box("FWithdrawnTick").SetTicked(false);
    box("FWithdrawnTick").SetEnabled(false);
    if (totals.computeFuel)
        totals.computeFuel();
}

void CarColumn::Empty()
{
    const auto empty = [](Box& emptied) {
        emptied.SetEnabled(true);
        emptied.SetReadOnly(false);
        emptied.Clear();
    };
    for (const ColumnRow& row : UpperRows)
        empty(box(row.stem));
    for (const ColumnRow& row : LowerRows)
        empty(box(row.stem));
    for (int row = 1; row <= PeriodRows; ++row) {
        empty(PeriodBox("txtUnavailableFirst", row));
        empty(PeriodBox("txtUnavailableLast", row));
    }
    for (const std::string_view working : WorkingBoxes)
        empty(box(working));
}

CarTexts CarTextsOn(const Screen& screen, int car)
{
    const auto box = [&](std::string_view stem) -> const Box& { return screen.box(Numbered(stem, car)); };
    const auto period = [&](std::string_view stem, int row) { return screen.box(Numbered(stem, car), row).Text(); };
    CarTexts texts{.registrationDate = box("FRegDate").Text(),
                   .fuel = box("FFuel").Text(),
                   .co2 = box("FC02").Text(),
                   .noCO2 = box("FNoC02").Ticked(),
                   .engine = box("FEngine").Text(),
                   .dateFrom = box("FDateFrom").Text(),
                   .dateTo = box("FDateTo").Text(),
                   .listPrice = box("FListPrice").Text(),
                   .accessories = box("FAccessories").Text(),
                   .contribution = box("FCaptContr").Text(),
                   .privateUse = box("FPrivateUse").Text(),
                   .periods = {},
                   .dateWithdrawn = box("FDateWithdrawn").Text(),
                   .reinstated = box("FWithdrawnTick").Ticked()};
    for (int row = 1; row <= PeriodRows; ++row)
        texts.periods[static_cast<std::size_t>(row - 1)] = {period("txtUnavailableFirst", row),
                                                            period("txtUnavailableLast", row)};
    return texts;
}

std::array<std::string, 6> CarFigures(const OpenRecord* page, const Screen& screen, std::string_view stem,
                                      const FurtherCars& furtherCars)
{
    std::array<std::string, 6> figures;
    for (int car = 1; car <= 6; ++car) {
        const std::string name = Numbered(stem, car);
        std::string& figure = figures[static_cast<std::size_t>(car - 1)];
        if (const Box* here = screen.FindBox(name))
            figure = here->Text();
        else if (const auto onPage = page != nullptr ? page->Reads(name) : std::nullopt)
            figure = *onPage;
        else
            figure = furtherCars.Figure(name);
    }
    return figures;
}

void ComputeCarTotals(Session& session, const Screen& screen, std::span<const CarTotalKind> kinds,
                      const FurtherCars& furtherCars)
{
    OpenRecord& page = EmployeeRecord(session);
    for (const CarTotalKind& kind : kinds) {
        if (!furtherCars.AreThere())
            session.messages.Tell(kind.errorTitle, "Employee not found");
        const CarTotal total = TotalOfCars(CarFigures(&page, screen, kind.figure, furtherCars));
        page.HandOver(kind.total, total.Text(), {});
    }
}

} // namespace quillmere
