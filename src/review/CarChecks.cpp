#include "cars/CarBenefit.h"
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

Day From(const CarOnForm& car)
{
    return DayOf(car.from).value_or(YearStart);
}

Day To(const CarOnForm& car)
{
    return DayOf(car.to).value_or(YearEnd);
}

/// True if somebody has begun to enter the car.
bool Entered(const CarOnForm& car)
{
    return Filled(car.makeModel) || Filled(car.registered) || Filled(car.listPrice) || Filled(car.cash);
}

/// A spot for every car that has been entered and of which `trips` says so, at its box `box`.
template<class Trips>
Spots OfCars(const FormFacts& form, std::string_view box, Trips trips)
{
    Spots spots;
    for (const CarOnForm& car : form.cars)
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
    return OfCars(form, "FListPrice", [](const CarOnForm& car) { return !Filled(car.listPrice); });
}

Spots CarNotWorkedOut(const FormFacts& form)
{
    return OfCars(form, "FCashEqu", [](const CarOnForm& car) { return !Filled(car.cash); });
}

Spots NoCO2Figure(const FormFacts& form)
{
    return OfCars(form, "FC02", [](const CarOnForm& car) {
        const auto registered = DayOf(car.registered);
        return registered && *registered >= edition::CO2RegimeStart && !Filled(car.co2) && !IsSet(car.withoutCO2);
    });
}

Spots WholeYear(const FormFacts& form)
{
    return OfCars(form, "FDateFrom",
                  [](const CarOnForm& car) { return DayOf(car.from) == YearStart && DayOf(car.to) == YearEnd; });
}

Spots OutsideTheYear(const FormFacts& form)
{
    return OfCars(form, "FDateFrom", [](const CarOnForm& car) {
        return From(car) < YearStart || To(car) > YearEnd || From(car) > To(car);
    });
}

Spots RegisteredLater(const FormFacts& form)
{
    return OfCars(form, "FRegDate", [](const CarOnForm& car) {
        const auto registered = DayOf(car.registered);
        return registered && Filled(car.from) && *registered > From(car);
    });
}

namespace {

struct Period {
    Day first, last;
};

std::vector<Period> PeriodsOf(const CarOnForm& car)
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
    Spots spots = OfCars(form, "txtUnavailableFirst", [](const CarOnForm& car) {
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
    return OfCars(form, "FFuelEqu", [](const CarOnForm& car) { return IsSet(car.fuelTick) && !Filled(car.fuel); });
}

Spots FuelNotTicked(const FormFacts& form)
{
    return OfCars(form, "FuelTick",
                  [](const CarOnForm& car) { return !IsSet(car.fuelTick) && !ReadAmount(car.fuel).IsZero(); });
}

Spots WithdrawnOutside(const FormFacts& form)
{
    return OfCars(form, "FDateWithdrawn", [](const CarOnForm& car) {
        const auto withdrawn = DayOf(car.withdrawn);
        return withdrawn && (*withdrawn < From(car) || *withdrawn > To(car));
    });
}

namespace {

/// The totals of section F, and the cars' figure that each adds up.
struct CarTotalRow {
    std::string_view box;
    std::string_view FormFacts::*total;
    std::string_view CarOnForm::*ofCar;
};
constexpr auto CarTotals = std::to_array<CarTotalRow>({
    {"FTotalCashCars", &FormFacts::totalOfCars, &CarOnForm::cash},
    {"FTotalCashFuel", &FormFacts::totalOfFuel, &CarOnForm::fuel},
});

} // namespace

Spots CarTotalDiffers(const FormFacts& form)
{
    Spots spots;
    for (const CarTotalRow& row : CarTotals) {
        Amount sum;
        for (const CarOnForm& car : form.cars)
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

namespace {

/// True if every text that stands is a date.
bool AreDates(std::initializer_list<std::string_view> texts)
{
    return std::ranges::all_of(texts, [](std::string_view text) { return text.empty() || ReadDate(text); });
}

/// What the rule makes of a car's boxes; nothing for a car that is not charged, or that it cannot work out.
std::optional<CarWorking> WorkedOut(const CarOnForm& car)
{
    const auto& first = car.unavailableFirst;
    const auto& last = car.unavailableLast;
    if (car.registered.empty() || car.fuelLetter.empty() ||
        !AreDates({car.registered, car.from, car.to, car.withdrawn, first[0], first[1], first[2], first[3], last[0],
                   last[1], last[2], last[3]}))
        return std::nullopt;
    CarTexts texts{.registrationDate = std::string(car.registered),
                   .fuel = std::string(car.fuelLetter),
                   .co2 = std::string(car.co2),
                   .noCO2 = IsSet(car.withoutCO2),
                   .engine = std::string(car.engine),
                   .dateFrom = std::string(car.from),
                   .dateTo = std::string(car.to),
                   .listPrice = std::string(car.listPrice),
                   .accessories = std::string(car.accessories),
                   .contribution = std::string(car.contribution),
                   .privateUse = std::string(car.privateUse),
                   .periods = {},
                   .dateWithdrawn = std::string(car.withdrawn),
                   .reinstated = IsSet(car.reinstated)};
    for (std::size_t i = 0; i < texts.periods.size(); ++i)
        texts.periods[i] = {std::string(first[i]), std::string(last[i])};
    try {
        return CarBenefit(ReadCar(texts));
    } catch (const Failure&) {
        return std::nullopt; // its figures leave the range of the form's boxes
    }
}

/// A figure of a car: what it reads, and what has been worked out.
struct CarFigureRow {
    std::string_view box;
    std::string_view (*shown)(const CarOnForm&); ///< empty where another check says so, or nothing is charged
    Amount (*workedOut)(const CarWorking&);
};
constexpr auto CarFigures = std::to_array<CarFigureRow>({
    {"FCashEqu", [](const CarOnForm& car) { return car.cash; },
     [](const CarWorking& working) { return working.cashEquivalent; }},
    {"FFuelEqu", [](const CarOnForm& car) { return IsSet(car.fuelTick) ? car.fuel : std::string_view(); },
     [](const CarWorking& working) { return Amount::WholePounds(working.fuelEquivalent); }},
});

} // namespace

Spots CarTypedOver(const FormFacts& form)
{
    Spots spots;
    for (const CarOnForm& car : form.cars) {
        const std::optional<CarWorking> working = WorkedOut(car);
        for (const CarFigureRow& row : CarFigures) {
            const std::string_view text = row.shown(car);
            if (!working || !Filled(text) || ReadAmount(text) == row.workedOut(*working))
                continue;
            Spot& spot = spots.emplace_back(SpotOfCar(car.number, row.box));
            spot.detail += ", " + ShownAndWorkedOut(ReadAmount(text), row.workedOut(*working));
        }
    }
    return spots;
}

} // namespace quillmere::review
