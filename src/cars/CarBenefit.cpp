#include "cars/CarBenefit.h"

#include "cars/CO2Calculations.h"
#include "cars/WholeNumbers.h"
#include "edition/CarRates.h"
#include "edition/Edition.h"

#include <algorithm>

namespace quillmere {

namespace {

std::string_view DateFrom(const CarFacts& facts)
{
    return facts.dateFrom.empty() ? edition::TaxYearStart : std::string_view(facts.dateFrom);
}

std::string_view DateTo(const CarFacts& facts)
{
    return facts.dateTo.empty() ? edition::TaxYearEnd : std::string_view(facts.dateTo);
}

CarPercentages ByCO2(const CarFacts& facts)
{
    CarPercentages result;
    const std::int16_t entered = ShortNumber(ReadWholeNumber(facts.co2));
    const bool low = entered < edition::LowBandBelow;
    result.G = ShortNumber(FloorQuotient(entered, 5) * 5);
    result.H = GetCO2Percentage(result.G, facts.fuel, facts.registrationDate, low);
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
    result.H = GetEnginePercentage(ReadWholeNumber(facts.engine), facts.fuel, facts.registrationDate);
    result.J = GetFuelReduction(facts.fuel);
    result.N = ShortNumber(result.H - result.J);
    return result;
}

} // namespace

Amount CarPrice(Amount total, Amount contribution)
{
    return std::clamp(total - contribution, Amount(), Amount::WholePounds(edition::MaximumCarPrice));
}

CarPercentages PercentagesOf(const CarFacts& facts)
{
    if (IsBeforeCO2Regime(facts.registrationDate))
        return {.N = GetEnginePercentage(ReadWholeNumber(facts.engine), facts.fuel, facts.registrationDate)};
    if (facts.fuel != "E" && !facts.co2.empty())
        return ByCO2(facts);
    if (facts.fuel == "E" || facts.noCO2)
        return ByEngine(facts);
    // Kept: a newer car with neither a figure nor the tick is charged nothing, and nobody is told.
    return {};
}

Amount FullYearBenefit(Amount price, std::int16_t percentage)
{
    return IntPounds((price * percentage).Pounds() / 100, 0.001);
}

std::int16_t UnavailableDays(const CarFacts& facts)
{
    std::int64_t days = DaysBetween(DateOf(edition::TaxYearStart), DateOf(DateFrom(facts)));
    days += DaysBetween(DateOf(DateTo(facts)), DateOf(edition::TaxYearEnd));
    // Kept: periods are neither clipped to the days of availability nor tested for overlap, and the sum has no limit.
    for (const UnavailablePeriod& period : facts.periods)
        if (!period.first.empty() && !period.last.empty())
            days += DaysBetween(DateOf(period.first), DateOf(period.last)) + 1;
    return ShortNumber(days);
}

Amount DeductionForDays(Amount fullYear, std::int16_t days)
{
    return IntPounds((fullYear * days).Pounds() / edition::DaysOfCarYear, 0.999);
}

FuelDays DaysWithoutFuel(const CarFacts& facts, std::int16_t unavailable)
{
    if (facts.dateWithdrawn.empty() || facts.reinstated)
        return {.X = unavailable};
    // Kept: fuel withdrawn on the last day of the year, by its text, leaves the charge whole even for a car that was
    // unavailable for part of the year.
    if (facts.dateWithdrawn == edition::TaxYearEnd)
        return {};
    const std::string next = FormatDate(DateOf(facts.dateWithdrawn) + std::chrono::days(1));
    std::int64_t days = DaysBetween(DateOf(next), DateOf(DateTo(facts))) + 1;
    for (const UnavailablePeriod& period : facts.periods)
        days -= OverlapDays(period.first, period.last, next, DateTo(facts));
    // Kept: a withdrawal after the car's last day takes the unavailable days out of X as well.
    if (days < 0)
        return {};
    return {.W = ShortNumber(days), .X = ShortNumber(unavailable + days)};
}

CarWorking CarBenefit(const CarFacts& facts)
{
    CarWorking working;
    working.A = ReadAmount(facts.listPrice);
    working.B = ReadAmount(facts.accessories);
    working.D = ReadAmount(facts.contribution);
    working.C = working.A + working.B;
    working.E = CarPrice(working.C, working.D);

    if (!facts.registrationDate.empty() && !facts.fuel.empty()) {
        working.T = ReadAmount(facts.privateUse);
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
    working.fuelEquivalent = ShortNumber((working.V - working.Y).Units() / Amount::WholePounds(1).Units());
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
