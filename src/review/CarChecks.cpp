#include "edition/CarRates.h"
#include "frame/Dates.h"
#include "frame/Tick.h"
#include "review/CheckParts.h"

#include <algorithm>
#include <array>
#include <fmt/format.h>
#include <optional>
#include <vector>

namespace quillmere::review {

namespace {

constexpr Day YearStart = edition::TaxYearStartDay;
constexpr Day YearEnd = edition::TaxYearEndDay;

std::optional<Day> DayOf(std::string_view text)
{
    return ReadDate(Trimmed(text));
}

Day From(const CarFacts& car)
{
    return DayOf(car.from).value_or(YearStart);
}

Day To(const CarFacts& car)
{
    return DayOf(car.to).value_or(YearEnd);
}

/// True if somebody has begun to enter the car.
bool Entered(const CarFacts& car)
{
    return Filled(car.makeModel) || Filled(car.registered) || Filled(car.listPrice) || Filled(car.cash);
}

/// A spot for every car that has been entered and of which `trips` says so, at its box `box`.
template<class Trips>
Spots OfCars(const FormFacts& form, std::string_view box, Trips trips)
{
    Spots spots;
    for (const CarFacts& car : form.cars)
        if (Entered(car) && trips(car))
            spots.push_back(SpotOfCar(car.number, box));
    return spots;
}

} // namespace

Spot SpotOfCar(int car, std::string_view box)
{
    constexpr auto screens = std::to_array<std::string_view>({Page1, "Form3_4", "Form5_6"});
    return {.section = "F",
            .screen = screens.at(static_cast<std::size_t>((car - 1) / 2)),
            .box = Numbered(box, car),
            .detail = Numbered("Car ", car)};
}

Spots NoListPrice(const FormFacts& form)
{
    return OfCars(form, "FListPrice", [](const CarFacts& car) { return !Filled(car.listPrice); });
}

Spots CarNotWorkedOut(const FormFacts& form)
{
    return OfCars(form, "FCashEqu", [](const CarFacts& car) { return !Filled(car.cash); });
}

Spots NoCO2Figure(const FormFacts& form)
{
    return OfCars(form, "FC02", [](const CarFacts& car) {
        const auto registered = DayOf(car.registered);
        return registered && *registered >= edition::CO2RegimeStart && !Filled(car.co2) && !IsSet(car.withoutCO2);
    });
}

Spots WholeYear(const FormFacts& form)
{
    return OfCars(form, "FDateFrom",
                  [](const CarFacts& car) { return DayOf(car.from) == YearStart && DayOf(car.to) == YearEnd; });
}

Spots OutsideTheYear(const FormFacts& form)
{
    return OfCars(form, "FDateFrom", [](const CarFacts& car) {
        return From(car) < YearStart || To(car) > YearEnd || From(car) > To(car);
    });
}

Spots RegisteredLater(const FormFacts& form)
{
    return OfCars(form, "FRegDate", [](const CarFacts& car) {
        const auto registered = DayOf(car.registered);
        return registered && Filled(car.from) && *registered > From(car);
    });
}

namespace {

struct Period {
    Day first, last;
};

std::vector<Period> PeriodsOf(const CarFacts& car)
{
    std::vector<Period> periods;
    for (std::size_t i = 0; i < car.unavailableFirst.size(); ++i) {
        const auto first = DayOf(car.unavailableFirst[i]);
        const auto last = DayOf(car.unavailableLast[i]);
        if (first && last)
            periods.push_back({*first, *last});
    }
    return periods;
}

} // namespace

Spots PeriodsOverlap(const FormFacts& form)
{
    Spots spots = OfCars(form, "txtUnavailableFirst", [](const CarFacts& car) {
        const std::vector<Period> periods = PeriodsOf(car);
        for (std::size_t i = 0; i < periods.size(); ++i) {
            if (periods[i].first < From(car) || periods[i].last > To(car))
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

Spots FuelNotCompleted(const FormFacts& form)
{
    return OfCars(form, "FFuelEqu", [](const CarFacts& car) { return IsSet(car.fuelTick) && !Filled(car.fuel); });
}

Spots FuelNotTicked(const FormFacts& form)
{
    return OfCars(form, "FuelTick",
                  [](const CarFacts& car) { return !IsSet(car.fuelTick) && !ReadAmount(car.fuel).IsZero(); });
}

Spots WithdrawnOutside(const FormFacts& form)
{
    return OfCars(form, "FDateWithdrawn", [](const CarFacts& car) {
        const auto withdrawn = DayOf(car.withdrawn);
        return withdrawn && (*withdrawn < From(car) || *withdrawn > To(car));
    });
}

namespace {

/// The totals of section F, and the cars' figure that each adds up.
struct CarTotalRow {
    std::string_view box;
    std::string_view FormFacts::*total;
    std::string_view CarFacts::*ofCar;
};
constexpr auto CarTotals = std::to_array<CarTotalRow>({
    {"FTotalCashCars", &FormFacts::totalOfCars, &CarFacts::cash},
    {"FTotalCashFuel", &FormFacts::totalOfFuel, &CarFacts::fuel},
});

} // namespace

Spots CarTotalDiffers(const FormFacts& form)
{
    Spots spots;
    for (const CarTotalRow& row : CarTotals) {
        Amount sum;
        for (const CarFacts& car : form.cars)
            sum += ReadAmount(car.*row.ofCar);
        if (const Amount shown = ReadAmount(form.*row.total); shown != sum)
            spots.push_back({.section = "F",
                             .screen = Page1,
                             .box = std::string(row.box),
                             .detail = fmt::format("{} on the form, {} over the cars", Money(shown), Money(sum))});
    }
    return spots;
}

Spots FuelWithoutCar(const FormFacts& form)
{
    const bool trips = !ReadAmount(form.totalOfFuel).IsZero() && ReadAmount(form.totalOfCars).IsZero();
    return trips ? Spots{{.section = "F", .screen = Page1, .box = "FTotalCashCars"}} : Spots{};
}

} // namespace quillmere::review
