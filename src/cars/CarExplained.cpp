#include "cars/CarExplained.h"

#include "cars/CO2Calculations.h"
#include "edition/CarRates.h"

#include <algorithm>
#include <array>

namespace quillmere {

namespace {

/// A car and what the rule makes of it.
struct WorkedCar {
    CarFacts facts;
    CarWorking working;
    bool fuelProvided = false;
};

using Figure = FigureRow<WorkedCar>;
using Step = StepRow<WorkedCar>;
using Note = NoteRow<WorkedCar>;

// ---- what the steps depend on -------------------------------------------------------------------

bool IsCharged(const WorkedCar& car)
{
    return car.facts.isCharged;
}
bool IsNotCharged(const WorkedCar& car)
{
    return !car.facts.isCharged;
}
bool IsBy(const WorkedCar& car, PercentageBy road)
{
    return car.facts.isCharged && DecidedBy(car.facts) == road;
}
bool IsByCO2(const WorkedCar& car)
{
    return IsBy(car, PercentageBy::CO2);
}
bool IsLow(const WorkedCar& car)
{
    return IsByCO2(car) && *car.facts.co2 < edition::LowBandBelow;
}
bool IsUltraLow(const WorkedCar& car)
{
    return IsLow(car) && car.working.percentages.G <= edition::UltraLowBandTo;
}
bool IsByEngine(const WorkedCar& car)
{
    return IsBy(car, PercentageBy::EngineAndFuel);
}
/// No engine size gives a car of these letters a percentage.
bool IsOutsideTheEngineTable(const WorkedCar& car)
{
    return car.facts.fuel == "B" || car.facts.fuel == "E";
}
bool IsUnavailable(const WorkedCar& car)
{
    return car.working.Q != 0;
}
bool IsWithdrawnAtYearEnd(const WorkedCar& car)
{
    return car.facts.fuelWithdrawnAtYearEnd;
}
bool IsWithdrawnEarlier(const WorkedCar& car)
{
    return car.facts.fuelWithdrawn && !IsWithdrawnAtYearEnd(car);
}
bool HasOddPence(Amount amount)
{
    return amount.Units() % Amount::UnitsOfAPound != 0;
}

// ---- figures --------------------------------------------------------------------------------------

std::string Number(int number)
{
    return FigureText(std::int64_t{number});
}

std::string_view RateOf(const WorkedCar& car)
{
    return IsDieselRated(car.facts.fuel, car.facts.registered) ? "diesel" : "petrol";
}

/// A percentage of two for the fuel of the car.
std::string ByFuel(const WorkedCar& car, int petrol, int diesel)
{
    return Number(IsDieselRated(car.facts.fuel, car.facts.registered) ? diesel : petrol);
}

/// What the engine alone makes of a car whose letter the table of engines passes over.
int PercentageOfEngine(const WorkedCar& car)
{
    return GetEnginePercentage(car.facts.engine, "P", car.facts.registered);
}

/// The days before and after those of availability, and the periods, each with both its ends.
std::string UnavailableText(const WorkedCar& car)
{
    using std::chrono::days;
    const DayRange& available = car.facts.available;
    std::vector<std::string> periods;
    if (available.first != edition::TaxYearStartDay)
        periods.push_back(FigureText(DayRange{edition::TaxYearStartDay, available.first - days(1)}));
    if (available.last != edition::TaxYearEndDay)
        periods.push_back(FigureText(DayRange{available.last + days(1), edition::TaxYearEndDay}));
    for (const DayRange& period : car.facts.unavailable)
        periods.push_back(FigureText(period));
    return AddedUp(periods);
}

/// The days after the withdrawal, less those of them that Q holds.
std::string WithoutFuelText(const WorkedCar& car)
{
    if (!car.facts.fuelWithdrawn)
        return "0";
    const DayRange without{*car.facts.fuelWithdrawn + std::chrono::days(1), car.facts.available.last};
    std::string text = FigureText(without);
    for (const DayRange& period : car.facts.unavailable)
        if (OverlapDays(period, without) != 0)
            text += " - " +
                    FigureText(DayRange{std::max(period.first, without.first), std::min(period.last, without.last)});
    return text;
}

constexpr auto Figures = std::to_array<Figure>({
    {"A", [](const WorkedCar& car) { return FigureText(car.working.A); }},
    {"B", [](const WorkedCar& car) { return FigureText(car.working.B); }},
    {"C", [](const WorkedCar& car) { return FigureText(car.working.C); }},
    {"D", [](const WorkedCar& car) { return FigureText(car.working.D); }},
    {"E", [](const WorkedCar& car) { return FigureText(car.working.E); }},
    {"G", [](const WorkedCar& car) { return Number(car.working.percentages.G); }},
    {"H", [](const WorkedCar& car) { return Number(car.working.percentages.H); }},
    {"J", [](const WorkedCar& car) { return Number(car.working.percentages.J); }},
    {"M", [](const WorkedCar& car) { return Number(car.working.percentages.M); }},
    {"N", [](const WorkedCar& car) { return Number(car.working.percentages.N); }},
    {"P", [](const WorkedCar& car) { return FigureText(car.working.P); }},
    {"Q", [](const WorkedCar& car) { return Number(car.working.Q); }},
    {"R", [](const WorkedCar& car) { return FigureText(car.working.R); }},
    {"S", [](const WorkedCar& car) { return FigureText(car.working.S); }},
    {"T", [](const WorkedCar& car) { return FigureText(car.working.T); }},
    {"U", [](const WorkedCar& car) { return FigureText(car.working.U); }},
    {"cash equivalent", [](const WorkedCar& car) { return FigureText(car.working.cashEquivalent); }},
    {"V", [](const WorkedCar& car) { return FigureText(car.working.V); }},
    {"W", [](const WorkedCar& car) { return Number(car.working.fuelDays.W); }},
    {"X", [](const WorkedCar& car) { return Number(car.working.fuelDays.X); }},
    {"Y", [](const WorkedCar& car) { return FigureText(car.working.Y); }},
    {"fuel benefit",
     [](const WorkedCar& car) { return car.fuelProvided ? Number(car.working.fuelEquivalent) : std::string(); }},

    {"registered", [](const WorkedCar& car) { return FormatDate(car.facts.registered); }},
    {"letter", [](const WorkedCar& car) { return car.facts.fuel; }},
    {"figure", [](const WorkedCar& car) { return Number(car.facts.co2.value_or(0)); }},
    {"engine", [](const WorkedCar& car) { return Number(car.facts.engine); }},
    {"rate", [](const WorkedCar& car) { return std::string(RateOf(car)); }},
    {"unavailable", UnavailableText},
    {"without fuel", WithoutFuelText},
    {"last day", [](const WorkedCar& car) { return FormatDate(car.facts.available.last); }},

    {"cap", [](const WorkedCar&) { return Number(edition::MaximumCarPrice.value_or(0)); }},
    {"step", [](const WorkedCar&) { return Number(edition::CO2Step); }},
    {"days", [](const WorkedCar&) { return Number(edition::DaysOfCarYear); }},
    {"multiplier", [](const WorkedCar&) { return Number(edition::CarFuelMultiplier); }},
    {"low", [](const WorkedCar&) { return Number(edition::LowBandBelow); }},
    {"ultra-low", [](const WorkedCar&) { return Number(edition::UltraLowBandTo); }},
    {"CO2 regime", [](const WorkedCar&) { return FormatDate(edition::CO2RegimeStart); }},

    {"authority's low", [](const WorkedCar& car) { return ByFuel(car, edition::PetrolLow, edition::DieselLow); }},
    {"authority's engine", [](const WorkedCar& car) { return Number(PercentageOfEngine(car)); }},
    {"authority's engine less J",
     [](const WorkedCar& car) { return Number(PercentageOfEngine(car) - car.working.percentages.J); }},
    {"authority's pounds",
     [](const WorkedCar& car) { return FigureText(IntPounds(car.working.cashEquivalent.Pounds())); }},
});

// ---- steps ----------------------------------------------------------------------------------------

constexpr auto Steps = std::to_array<Step>({
    {.name = "A", .says = "List price", .source = "ITEPA 2003 s.122"},
    {.name = "B", .says = "Accessories", .source = "ITEPA 2003 s.126"},
    {.name = "C", .box = "CBox", .says = "Total price", .sum = "{A} + {B}", .source = "ITEPA 2003 s.121(1) step 2"},
    {.name = "D", .says = "Capital contributions", .source = "ITEPA 2003 s.132"},
    {.name = "E",
     .box = "EBox",
     .says = "Price on which the benefit is worked out, not more than the cap",
     .sum = "{C} - {D}, at least 0, at most {cap}",
     .source = "ITEPA 2003 s.121(1) steps 3 and 4",
     .when = [](const WorkedCar&) { return edition::MaximumCarPrice.has_value(); }},
    {.name = "E",
     .box = "EBox",
     .says = "Price on which the benefit is worked out",
     .sum = "{C} - {D}, at least 0",
     .source = "ITEPA 2003 s.121(1) step 3",
     .when = [](const WorkedCar&) { return !edition::MaximumCarPrice.has_value(); }},

    {.name = "registered", .says = "Date of first registration", .when = IsCharged},
    {.name = "letter", .says = "Key letter of the fuel", .when = IsCharged},
    {.name = "figure", .says = "Approved CO2 figure, g/km", .when = IsByCO2},
    {.name = "engine",
     .says = "Engine size, cc",
     .when = [](const WorkedCar& car) { return IsByEngine(car) || IsBy(car, PercentageBy::EngineAlone); }},
    {.name = "G",
     .box = "GBox",
     .says = "CO2 figure for the table",
     .sum = "{figure} in whole steps of {step}",
     .source = "ITEPA 2003 s.139",
     .when = IsByCO2},
    {.name = "H",
     .box = "HBox",
     .says = "Percentage for up to {ultra-low} g/km, {rate} rate: the figure of {figure} counts as {G}",
     .source = "ITEPA 2003 s.139, s.141",
     .when = IsUltraLow},
    {.name = "H",
     .box = "HBox",
     .says = "Percentage for below {low} g/km, {rate} rate: the figure is {figure}, {G} in the table",
     .source = "ITEPA 2003 s.139, s.141",
     .when = [](const WorkedCar& car) { return IsLow(car) && !IsUltraLow(car); }},
    {.name = "H",
     .box = "HBox",
     .says = "Percentage of the table for {G} g/km, {rate} rate",
     .source = "ITEPA 2003 s.139, s.141",
     .when = [](const WorkedCar& car) { return IsByCO2(car) && !IsLow(car); }},
    {.name = "H",
     .box = "HBox",
     .says = "Percentage for {engine} cc without a CO2 figure, {rate} rate",
     .source = "ITEPA 2003 s.140, s.141",
     .when = [](const WorkedCar& car) { return IsByEngine(car) && !IsOutsideTheEngineTable(car); }},
    {.name = "H",
     .box = "HBox",
     .says = "No engine size gives a car of letter {letter} a percentage",
     .source = "ITEPA 2003 s.140",
     .when = [](const WorkedCar& car) { return IsByEngine(car) && IsOutsideTheEngineTable(car); }},
    {.name = "J",
     .box = "JBox",
     .says = "Points off for the fuel, letter {letter}",
     .source = "ITEPA 2003 s.170(4), SI 2001/1123",
     .when = [](const WorkedCar& car) { return IsByEngine(car) || (IsByCO2(car) && !IsLow(car)); }},
    {.name = "M",
     .box = "MBox",
     .says = "Points off that count",
     .sum = "{J}",
     .when = [](const WorkedCar& car) { return IsByCO2(car) && !IsLow(car); }},
    {.name = "M", .box = "MBox", .says = "Points off: none from a low percentage", .when = IsLow},
    {.name = "N",
     .box = "NBox",
     .says = "Appropriate percentage",
     .sum = "{H} - {M}",
     .source = "ITEPA 2003 s.133",
     .when = IsByCO2},
    {.name = "N",
     .box = "NBox",
     .says = "Appropriate percentage",
     .sum = "{H} - {J}",
     .source = "ITEPA 2003 s.133",
     .when = IsByEngine},
    {.name = "N",
     .box = "NBox",
     .says = "Percentage for {engine} cc, registered {registered}, before {CO2 regime}",
     .source = "ITEPA 2003 s.142",
     .when =
         [](const WorkedCar& car) { return IsBy(car, PercentageBy::EngineAlone) && !IsOutsideTheEngineTable(car); }},
    {.name = "N",
     .box = "NBox",
     .says = "Registered {registered}, before {CO2 regime}: letter {letter} has no percentage",
     .source = "ITEPA 2003 s.142",
     .when = [](const WorkedCar& car) { return IsBy(car, PercentageBy::EngineAlone) && IsOutsideTheEngineTable(car); }},
    {.name = "N",
     .box = "NBox",
     .says = "Neither a CO2 figure nor the tick that there is none: nothing is charged",
     .when = [](const WorkedCar& car) { return IsBy(car, PercentageBy::Nothing); }},
    {.name = "N",
     .box = "NBox",
     .says = "Date of registration and fuel letter are needed before anything is charged",
     .when = IsNotCharged},

    {.name = "P",
     .box = "PBox",
     .says = "Benefit of a full year",
     .sum = "{E} x {N} / 100",
     .rounding = Rounding::DownToPounds,
     .source = "ITEPA 2003 s.121(1) step 6",
     .when = IsCharged},
    {.name = "Q",
     .box = "QBox",
     .says = "Days unavailable",
     .sum = "{unavailable}",
     .source = "ITEPA 2003 s.143",
     .when = IsCharged},
    {.name = "R",
     .box = "RBox",
     .says = "Deduction for the days unavailable",
     .sum = "{P} x {Q} / {days}",
     .rounding = Rounding::UpToPoundsFromAThousandth,
     .source = "ITEPA 2003 s.143",
     .when = IsCharged},
    {.name = "S", .box = "SBox", .says = "Benefit less that", .sum = "{P} - {R}", .when = IsCharged},
    {.name = "T", .says = "Payments of the employee for private use", .source = "ITEPA 2003 s.144", .when = IsCharged},
    {.name = "U",
     .box = "UBox",
     .says = "Benefit less the payments",
     .sum = "{S} - {T}",
     .source = "ITEPA 2003 s.121(1) step 8",
     .when = IsCharged},
    {.name = "cash equivalent",
     .box = "FCashEqu",
     .says = "Cash equivalent of the car",
     .sum = "{U}, at least 0",
     .source = "ITEPA 2003 s.120, s.121",
     .when = IsCharged},
    {.name = "cash equivalent",
     .box = "FCashEqu",
     .says = "Cash equivalent of the car: date of registration and fuel letter are needed, and the price so far is {E}",
     .when = IsNotCharged},

    {.name = "V",
     .box = "VBox",
     .says = "Fuel benefit of a full year",
     .sum = "{N} x {multiplier} / 100",
     .source = "ITEPA 2003 s.150"},
    {.name = "W",
     .box = "WBox",
     .says = "Fuel was withdrawn on the last day of the year, {last day}: no day counts",
     .source = "ITEPA 2003 s.152",
     .when = IsWithdrawnAtYearEnd},
    {.name = "W",
     .box = "WBox",
     .says = "Days after fuel was withdrawn for good that Q does not hold",
     .sum = "{without fuel}, at least 0",
     .source = "ITEPA 2003 s.152",
     .when = IsWithdrawnEarlier},
    {.name = "W",
     .box = "WBox",
     .says = "Fuel was not withdrawn for good",
     .when = [](const WorkedCar& car) { return !IsWithdrawnAtYearEnd(car) && !IsWithdrawnEarlier(car); }},
    {.name = "X",
     .box = "XBox",
     .says = "Days without the benefit of fuel: none, so that the charge stays whole",
     .source = "ITEPA 2003 s.152",
     .when = IsWithdrawnAtYearEnd},
    {.name = "X",
     .box = "XBox",
     .says = "Fuel was withdrawn after the car's last day, {last day}: no day counts",
     .source = "ITEPA 2003 s.152",
     .when =
         [](const WorkedCar& car) {
             return IsWithdrawnEarlier(car) && car.working.fuelDays.X != car.working.Q + car.working.fuelDays.W;
         }},
    {.name = "X",
     .box = "XBox",
     .says = "Days without the benefit of fuel",
     .sum = "{Q} + {W}",
     .source = "ITEPA 2003 s.152",
     .when =
         [](const WorkedCar& car) {
             return !IsWithdrawnAtYearEnd(car) && car.working.fuelDays.X == car.working.Q + car.working.fuelDays.W;
         }},
    {.name = "Y",
     .box = "YBox",
     .says = "Deduction for those days",
     .sum = "{V} x {X} / {days}",
     .rounding = Rounding::UpToPoundsFromAThousandth,
     .source = "ITEPA 2003 s.152"},
    {.name = "fuel benefit",
     .box = "FFuelEqu",
     .says = "Cash equivalent of the fuel",
     .sum = "{V} - {Y}",
     .source = "ITEPA 2003 s.149 to s.152",
     .when = [](const WorkedCar& car) { return car.fuelProvided; }},
    {.name = "fuel benefit",
     .box = "FFuelEqu",
     .says = "Fuel benefit is not required: nothing is charged",
     .source = "ITEPA 2003 s.149",
     .when = [](const WorkedCar& car) { return !car.fuelProvided; }},
});

constexpr auto Notes = std::to_array<Note>({
    {.about = "H",
     .says = "HMRC holds the exact figure of {figure} g/km, and not the rounded one, against the limit of {ultra-low}: "
             "{authority's low} per cent instead of {H}",
     .result = "authority's low",
     .source = "EIM24605",
     .when = [](const WorkedCar& car) { return IsUltraLow(car) && *car.facts.co2 > edition::UltraLowBandTo; }},
    {.about = "N",
     .says = "HMRC charges a car registered before {CO2 regime} by its engine whatever the fuel: {authority's engine} "
             "per cent instead of {N}",
     .result = "authority's engine",
     .source = "EIM24975",
     .when = [](const WorkedCar& car) { return IsBy(car, PercentageBy::EngineAlone) && IsOutsideTheEngineTable(car); }},
    {.about = "N",
     .says = "HMRC takes a bi-fuel car without a CO2 figure by its engine first: {authority's engine less J} per cent "
             "instead of {N}",
     .sum = "{authority's engine} - {J}",
     .result = "authority's engine less J",
     .source = "EIM24950 with EIM24725",
     .when = [](const WorkedCar& car) { return IsByEngine(car) && car.facts.fuel == "B"; }},
    {.about = "X",
     .says =
         "HMRC takes the days on which the car was unavailable off the fuel benefit all the same: {Q} instead of {X}",
     .sum = "{Q}",
     .result = "Q",
     .source = "EIM25565",
     .when = [](const WorkedCar& car) { return IsWithdrawnAtYearEnd(car) && IsUnavailable(car); }},
    {.about = "cash equivalent",
     .says = "HMRC's working sheet ignores the pence",
     .sum = "{cash equivalent}",
     .rounding = Rounding::DownToPounds,
     .result = "authority's pounds",
     .source = "P11D WS2, box S",
     .when = [](const WorkedCar& car) { return HasOddPence(car.working.cashEquivalent); }},
});

} // namespace

Explained ExplainCar(const CarTexts& boxes, bool fuelProvided)
{
    WorkedCar car{.facts = ReadCar(boxes), .working = {}, .fuelProvided = fuelProvided};
    car.working = CarBenefit(car.facts);
    return FillIn<WorkedCar>(car, Figures, Steps, Notes);
}

} // namespace quillmere
