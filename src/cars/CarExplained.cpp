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

std::string_view RateOf(const WorkedCar& car)
{
    return IsDieselRated(car.facts.fuel, car.facts.registered) ? "diesel" : "petrol";
}

/// A percentage of two for the fuel of the car.
std::string ByFuel(const WorkedCar& car, int petrol, int diesel)
{
    return FigureText(IsDieselRated(car.facts.fuel, car.facts.registered) ? diesel : petrol);
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
    {"G", [](const WorkedCar& car) { return FigureText(car.working.percentages.G); }},
    {"H", [](const WorkedCar& car) { return FigureText(car.working.percentages.H); }},
    {"J", [](const WorkedCar& car) { return FigureText(car.working.percentages.J); }},
    {"M", [](const WorkedCar& car) { return FigureText(car.working.percentages.M); }},
    {"N", [](const WorkedCar& car) { return FigureText(car.working.percentages.N); }},
    {"P", [](const WorkedCar& car) { return FigureText(car.working.P); }},
    {"Q", [](const WorkedCar& car) { return FigureText(car.working.Q); }},
    {"R", [](const WorkedCar& car) { return FigureText(car.working.R); }},
    {"S", [](const WorkedCar& car) { return FigureText(car.working.S); }},
    {"T", [](const WorkedCar& car) { return FigureText(car.working.T); }},
    {"U", [](const WorkedCar& car) { return FigureText(car.working.U); }},
    {"cash equivalent", [](const WorkedCar& car) { return FigureText(car.working.cashEquivalent); }},
    {"V", [](const WorkedCar& car) { return FigureText(car.working.V); }},
    {"W", [](const WorkedCar& car) { return FigureText(car.working.fuelDays.W); }},
    {"X", [](const WorkedCar& car) { return FigureText(car.working.fuelDays.X); }},
    {"Y", [](const WorkedCar& car) { return FigureText(car.working.Y); }},
    {"fuel benefit",
     [](const WorkedCar& car) { return car.fuelProvided ? FigureText(car.working.fuelEquivalent) : std::string(); }},

    {"registered", [](const WorkedCar& car) { return FormatDate(car.facts.registered); }},
    {"letter", [](const WorkedCar& car) { return car.facts.fuel; }},
    {"figure", [](const WorkedCar& car) { return FigureText(car.facts.co2.value_or(0)); }},
    {"engine", [](const WorkedCar& car) { return FigureText(car.facts.engine); }},
    {"rate", [](const WorkedCar& car) { return std::string(RateOf(car)); }},
    {"unavailable", UnavailableText},
    {"without fuel", WithoutFuelText},
    {"last day", [](const WorkedCar& car) { return FormatDate(car.facts.available.last); }},

    {"cap", [](const WorkedCar&) { return FigureText(edition::MaximumCarPrice.value_or(0)); }},
    {"step", [](const WorkedCar&) { return FigureText(edition::CO2Step); }},
    {"days", [](const WorkedCar&) { return FigureText(edition::DaysOfCarYear); }},
    {"multiplier", [](const WorkedCar&) { return FigureText(edition::CarFuelMultiplier); }},
    {"low", [](const WorkedCar&) { return FigureText(edition::LowBandBelow); }},
    {"ultra-low", [](const WorkedCar&) { return FigureText(edition::UltraLowBandTo); }},
    {"CO2 regime", [](const WorkedCar&) { return FormatDate(edition::CO2RegimeStart); }},

    {"authority's low", [](const WorkedCar& car) { return ByFuel(car, edition::PetrolLow, edition::DieselLow); }},
    {"authority's engine", [](const WorkedCar& car) { return FigureText(PercentageOfEngine(car)); }},
    {"authority's engine less J",
     [](const WorkedCar& car) { return FigureText(PercentageOfEngine(car) - car.working.percentages.J); }},
    {"authority's pounds",
     [](const WorkedCar& car) { return FigureText(IntPounds(car.working.cashEquivalent.Pounds())); }},
});

// ---- steps ----------------------------------------------------------------------------------------

constexpr auto Steps = std::to_array<Step>({
    Step::Fact("A", "List price", "ITEPA 2003 s.122"),
    Step::Fact("B", "Accessories", "ITEPA 2003 s.126"),
    Step::Sum("C", "CBox", "Total price", "{A} + {B}", "ITEPA 2003 s.121(1) step 2"),
    Step::Fact("D", "Capital contributions", "ITEPA 2003 s.132"),
    Step::Sum("E", "EBox", "Price on which the benefit is worked out, not more than the cap",
              "{C} - {D}, at least 0, at most {cap}", "ITEPA 2003 s.121(1) steps 3 and 4",
              [](const WorkedCar&) { return edition::MaximumCarPrice.has_value(); }),
    Step::Sum("E", "EBox", "Price on which the benefit is worked out", "{C} - {D}, at least 0",
              "ITEPA 2003 s.121(1) step 3", [](const WorkedCar&) { return !edition::MaximumCarPrice.has_value(); }),

    Step::Fact("registered", "Date of first registration", {}, IsCharged),
    Step::Fact("letter", "Key letter of the fuel", {}, IsCharged),
    Step::Fact("figure", "Approved CO2 figure, g/km", {}, IsByCO2),
    Step::Fact("engine", "Engine size, cc", {},
               [](const WorkedCar& car) { return IsByEngine(car) || IsBy(car, PercentageBy::EngineAlone); }),
    Step::Sum("G", "GBox", "CO2 figure for the table", "{figure} in whole steps of {step}", "ITEPA 2003 s.139",
              IsByCO2),
    Step::Words("H", "HBox", "Percentage for up to {ultra-low} g/km, {rate} rate: the figure of {figure} counts as {G}",
                "ITEPA 2003 s.139, s.141", IsUltraLow),
    Step::Words("H", "HBox", "Percentage for below {low} g/km, {rate} rate: the figure is {figure}, {G} in the table",
                "ITEPA 2003 s.139, s.141", [](const WorkedCar& car) { return IsLow(car) && !IsUltraLow(car); }),
    Step::Words("H", "HBox", "Percentage of the table for {G} g/km, {rate} rate", "ITEPA 2003 s.139, s.141",
                [](const WorkedCar& car) { return IsByCO2(car) && !IsLow(car); }),
    Step::Words("H", "HBox", "Percentage for {engine} cc without a CO2 figure, {rate} rate", "ITEPA 2003 s.140, s.141",
                [](const WorkedCar& car) { return IsByEngine(car) && !IsOutsideTheEngineTable(car); }),
    Step::Words("H", "HBox", "No engine size gives a car of letter {letter} a percentage", "ITEPA 2003 s.140",
                [](const WorkedCar& car) { return IsByEngine(car) && IsOutsideTheEngineTable(car); }),
    Step::Words("J", "JBox", "Points off for the fuel, letter {letter}", "ITEPA 2003 s.170(4), SI 2001/1123",
                [](const WorkedCar& car) { return IsByEngine(car) || (IsByCO2(car) && !IsLow(car)); }),
    Step::Sum("M", "MBox", "Points off that count", "{J}", {},
              [](const WorkedCar& car) { return IsByCO2(car) && !IsLow(car); }),
    Step::Words("M", "MBox", "Points off: none from a low percentage", {}, IsLow),
    Step::Sum("N", "NBox", "Appropriate percentage", "{H} - {M}", "ITEPA 2003 s.133", IsByCO2),
    Step::Sum("N", "NBox", "Appropriate percentage", "{H} - {J}", "ITEPA 2003 s.133", IsByEngine),
    Step::Words(
        "N", "NBox", "Percentage for {engine} cc, registered {registered}, before {CO2 regime}", "ITEPA 2003 s.142",
        [](const WorkedCar& car) { return IsBy(car, PercentageBy::EngineAlone) && !IsOutsideTheEngineTable(car); }),
    Step::Words(
        "N", "NBox", "Registered {registered}, before {CO2 regime}: letter {letter} has no percentage",
        "ITEPA 2003 s.142",
        [](const WorkedCar& car) { return IsBy(car, PercentageBy::EngineAlone) && IsOutsideTheEngineTable(car); }),
    Step::Words("N", "NBox", "Neither a CO2 figure nor the tick that there is none: nothing is charged", {},
                [](const WorkedCar& car) { return IsBy(car, PercentageBy::Nothing); }),
    Step::Words("N", "NBox", "Date of registration and fuel letter are needed before anything is charged", {},
                IsNotCharged),

    Step::Sum("P", "PBox", "Benefit of a full year", "{E} x {N} / 100", "ITEPA 2003 s.121(1) step 6", IsCharged)
        .Rounded(Rounding::DownToPounds),
    Step::Sum("Q", "QBox", "Days unavailable", "{unavailable}", "ITEPA 2003 s.143", IsCharged),
    Step::Sum("R", "RBox", "Deduction for the days unavailable", "{P} x {Q} / {days}", "ITEPA 2003 s.143", IsCharged)
        .Rounded(Rounding::UpToPoundsFromAThousandth),
    Step::Sum("S", "SBox", "Benefit less that", "{P} - {R}", {}, IsCharged),
    Step::Fact("T", "Payments of the employee for private use", "ITEPA 2003 s.144", IsCharged),
    Step::Sum("U", "UBox", "Benefit less the payments", "{S} - {T}", "ITEPA 2003 s.121(1) step 8", IsCharged),
    Step::Sum("cash equivalent", "FCashEqu", "Cash equivalent of the car", "{U}, at least 0", "ITEPA 2003 s.120, s.121",
              IsCharged),
    Step::Words(
        "cash equivalent", "FCashEqu",
        "Cash equivalent of the car: date of registration and fuel letter are needed, and the price so far is {E}", {},
        IsNotCharged),

    Step::Sum("V", "VBox", "Fuel benefit of a full year", "{N} x {multiplier} / 100", "ITEPA 2003 s.150"),
    Step::Words("W", "WBox", "Fuel was withdrawn on the last day of the year, {last day}: no day counts",
                "ITEPA 2003 s.152", IsWithdrawnAtYearEnd),
    Step::Sum("W", "WBox", "Days after fuel was withdrawn for good that Q does not hold", "{without fuel}, at least 0",
              "ITEPA 2003 s.152", IsWithdrawnEarlier),
    Step::Words("W", "WBox", "Fuel was not withdrawn for good", {},
                [](const WorkedCar& car) { return !IsWithdrawnAtYearEnd(car) && !IsWithdrawnEarlier(car); }),
    Step::Words("X", "XBox", "Days without the benefit of fuel: none, so that the charge stays whole",
                "ITEPA 2003 s.152", IsWithdrawnAtYearEnd),
    Step::Words(
        "X", "XBox", "Fuel was withdrawn after the car's last day, {last day}: no day counts", "ITEPA 2003 s.152",
        [](const WorkedCar& car) {
            return IsWithdrawnEarlier(car) && car.working.fuelDays.X != car.working.Q + car.working.fuelDays.W;
        }),
    Step::Sum("X", "XBox", "Days without the benefit of fuel", "{Q} + {W}", "ITEPA 2003 s.152",
              [](const WorkedCar& car) {
                  return !IsWithdrawnAtYearEnd(car) && car.working.fuelDays.X == car.working.Q + car.working.fuelDays.W;
              }),
    Step::Sum("Y", "YBox", "Deduction for those days", "{V} x {X} / {days}", "ITEPA 2003 s.152")
        .Rounded(Rounding::UpToPoundsFromAThousandth),
    Step::Sum("fuel benefit", "FFuelEqu", "Cash equivalent of the fuel", "{V} - {Y}", "ITEPA 2003 s.149 to s.152",
              [](const WorkedCar& car) { return car.fuelProvided; }),
    Step::Words("fuel benefit", "FFuelEqu", "Fuel benefit is not required: nothing is charged", "ITEPA 2003 s.149",
                [](const WorkedCar& car) { return !car.fuelProvided; }),
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
