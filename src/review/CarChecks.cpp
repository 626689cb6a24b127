#include "edition/CarRates.h"
#include "frame/Dates.h"
#include "frame/ScheduleLines.h"
#include "frame/Tick.h"
#include "review/CheckParts.h"

#include <algorithm>
#include <array>
#include <fmt/format.h>
#include <optional>
#include <vector>

namespace quillmere::review {

namespace {

constexpr int CarsOnThePage = 2;
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

    Spot At(std::string_view box) const { return SpotOfCar(number, box); }

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

} // namespace

Spot SpotOfCar(int car, std::string_view box)
{
    constexpr auto screens = std::to_array<std::string_view>({Page1, "Form3_4", "Form5_6"});
    return {.section = "F",
            .screen = screens.at(static_cast<std::size_t>((car - 1) / 2)),
            .box = Numbered(box, car),
            .detail = Numbered("Car ", car)};
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

namespace {

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

} // namespace

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

namespace {

/// The totals of section F, and the cars' field that each adds up.
struct CarTotalRow {
    std::string_view total, ofCar;
};
constexpr auto CarTotals = std::to_array<CarTotalRow>({
    {"FTotalCashCars", "FCashEqu"},
    {"FTotalCashFuel", "FFuelEqu"},
});

} // namespace

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

} // namespace quillmere::review
