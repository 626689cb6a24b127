#include "cars/CarBenefit.h"

#include "cars/CO2Calculations.h"
#include "cars/WholeNumbers.h"
#include "edition/CarRates.h"

#include <algorithm>

namespace quillmere {

namespace {

Day DayOr(std::string_view text, Day standIn)
{
    return text.empty() ? standIn : DateOf(text);
}

CarPercentages ByCO2(const CarFacts& facts)
{
    CarPercentages result;
    const std::int16_t entered = ShortNumber(*facts.co2);
    const bool low = entered < edition::LowBandBelow;
    result.G = ShortNumber(FloorQuotient(entered, edition::CO2Step) * edition::CO2Step);
    result.H = GetCO2Percentage(result.G, facts.fuel, facts.registered, low);
    if (!low) {
        result.J = GetFuelReduction(facts.fuel);
        result.M = result.J;
    }
    result.N = ShortNumber(result.H - result.M);
    return result;
}

CarPercentages ByEngine(const CarFacts& facts)
{
    CarPercentages result;
    result.H = GetEnginePercentage(facts.engine, facts.fuel, facts.registered);
    result.J = GetFuelReduction(facts.fuel);
    result.N = ShortNumber(result.H - result.J);
    return result;
}

} // namespace

CarFacts ReadCar(const CarTexts& boxes)
{
    CarFacts facts{.listPrice = ReadAmount(boxes.listPrice),
                   .accessories = ReadAmount(boxes.accessories),
                   .contribution = ReadAmount(boxes.contribution),
                   .isCharged = !boxes.registrationDate.empty() && !boxes.fuel.empty()};
    const bool withdrawn = !boxes.dateWithdrawn.empty() && !boxes.reinstated;
    // Kept: the last day of the year is known by its text.
    facts.fuelWithdrawnAtYearEnd = withdrawn && boxes.dateWithdrawn == edition::TaxYearEnd;
    if (facts.isCharged) {
        facts.registered = DateOf(boxes.registrationDate);
        facts.fuel = boxes.fuel;
        if (!boxes.co2.empty())
            facts.co2 = ReadWholeNumber(boxes.co2);
        facts.noCO2 = boxes.noCO2;
        facts.engine = ReadWholeNumber(boxes.engine);
        facts.privateUse = ReadAmount(boxes.privateUse);
        facts.available.first = DayOr(boxes.dateFrom, edition::TaxYearStartDay);
        facts.available.last = DayOr(boxes.dateTo, edition::TaxYearEndDay);
    }
    for (const UnavailablePeriod& period : boxes.periods) {
        if (period.first.empty() || period.last.empty())
            continue;
        if (facts.isCharged)
            facts.unavailable.push_back({DateOf(period.first), DateOf(period.last)});
        else if (const auto first = ReadDate(period.first), last = ReadDate(period.last); first && last)
            facts.unavailable.push_back({*first, *last});
    }
    if (withdrawn && !facts.fuelWithdrawnAtYearEnd) {
        facts.fuelWithdrawn = DateOf(boxes.dateWithdrawn);
        facts.available.last = DayOr(boxes.dateTo, edition::TaxYearEndDay);
    }
    return facts;
}

Amount CarPrice(Amount total, Amount contribution)
{
    const Amount price = std::max(total - contribution, Amount());
    return edition::MaximumCarPrice ? std::min(price, Amount::WholePounds(*edition::MaximumCarPrice)) : price;
}

PercentageBy DecidedBy(const CarFacts& facts)
{
    if (IsBeforeCO2Regime(facts.registered))
        return PercentageBy::EngineAlone;
    if (facts.fuel != "E" && facts.co2)
        return PercentageBy::CO2;
    if (facts.fuel == "E" || facts.noCO2)
        return PercentageBy::EngineAndFuel;
    // Kept: a newer car with neither a figure nor the tick is charged nothing, and nobody is told.
    return PercentageBy::Nothing;
}

CarPercentages PercentagesOf(const CarFacts& facts)
{
    switch (DecidedBy(facts)) {
    case PercentageBy::EngineAlone:
        return {.N = GetEnginePercentage(facts.engine, facts.fuel, facts.registered)};
    case PercentageBy::CO2:
        return ByCO2(facts);
    case PercentageBy::EngineAndFuel:
        return ByEngine(facts);
    case PercentageBy::Nothing:
        break;
    }
    return {};
}

Amount FullYearBenefit(Amount price, std::int16_t percentage)
{
    return IntPounds((price * percentage).Pounds() / 100, 0.001);
}

std::int16_t UnavailableDays(const CarFacts& facts)
{
    std::int64_t days = DaysBetween(edition::TaxYearStartDay, facts.available.first);
    days += DaysBetween(facts.available.last, edition::TaxYearEndDay);
    // Kept: periods are neither clipped to the days of availability nor tested for overlap, and the sum has no limit.
    for (const DayRange& period : facts.unavailable)
        days += DaysBetween(period.first, period.last) + 1;
    return ShortNumber(days);
}

Amount DeductionForDays(Amount fullYear, std::int16_t days)
{
    return IntPounds((fullYear * days).Pounds() / edition::DaysOfCarYear, 0.999);
}

FuelDays DaysWithoutFuel(const CarFacts& facts, std::int16_t unavailable)
{
    // Kept: fuel withdrawn on the last day of the year leaves the charge whole even for a car that was unavailable for
    // part of the year.
    if (facts.fuelWithdrawnAtYearEnd)
        return {};
    if (!facts.fuelWithdrawn)
        return {.X = unavailable};
    const DayRange without{*facts.fuelWithdrawn + std::chrono::days(1), facts.available.last};
    std::int64_t days = DaysBetween(without.first, without.last) + 1;
    for (const DayRange& period : facts.unavailable)
        days -= OverlapDays(period, without);
    // Kept: a withdrawal after the car's last day takes the unavailable days out of X as well.
    if (days < 0)
        return {};
    return {.W = ShortNumber(days), .X = ShortNumber(unavailable + days)};
}

CarWorking CarBenefit(const CarFacts& facts)
{
    CarWorking working;
    working.A = facts.listPrice;
    working.B = facts.accessories;
    working.D = facts.contribution;
    working.C = working.A + working.B;
    working.E = CarPrice(working.C, working.D);

    if (facts.isCharged) {
        working.T = facts.privateUse;
        working.percentages = PercentagesOf(facts);
        working.P = FullYearBenefit(working.E, working.percentages.N);
        working.Q = UnavailableDays(facts);
        if (working.Q != 0)
            working.R = DeductionForDays(working.P, working.Q);
        working.S = working.P - working.R;
        working.U = working.S - working.T;
        working.cashEquivalent = std::max(working.U, Amount());
    }

    working.V = Amount::WholePounds(std::int64_t{working.percentages.N} * edition::CarFuelMultiplier / 100);
    working.fuelDays = DaysWithoutFuel(facts, working.Q);
    working.Y = DeductionForDays(working.V, working.fuelDays.X);
    working.fuelEquivalent = ShortNumber((working.V - working.Y).Units() / Amount::UnitsOfAPound);
    return working;
}

std::string CarTotal::Text() const
{
    return AmountText(total, any ? edition::FormatMoneyZero : edition::FormatMoneyBlankZero);
}

CarTotal TotalOfCars(const std::array<std::string, 6>& figures)
{
    CarTotal result;
    for (const std::string& figure : figures) {
        result.total += ReadAmount(figure);
        result.any = result.any || !figure.empty();
    }
    return result;
}

} // namespace quillmere
