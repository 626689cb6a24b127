#include "calculators/VanExplained.h"

#include "edition/Edition.h"

#include <array>

namespace quillmere {

namespace {

/// A van and what the rule makes of it.
struct WorkedVan {
    VanFacts facts;
    VanWorking working;
};

using enum VanDate;

std::string Number(int number)
{
    return FigureText(std::int64_t{number});
}

bool IsThere(const WorkedVan& van)
{
    return !van.facts.registrationNumber.empty();
}
bool HasFuel(const WorkedVan& van)
{
    return IsThere(van) && van.facts.fuelTick;
}
bool HasNoFuel(const WorkedVan& van)
{
    return !HasFuel(van);
}

/// The days before and after those of availability, each with both its ends.
std::string UnavailableText(const WorkedVan& van)
{
    using std::chrono::days;
    const DayRange available = DaysAvailable(van.working.dates);
    std::vector<std::string> periods;
    if (available.first != edition::TaxYearStartDay)
        periods.push_back(FigureText(DayRange{edition::TaxYearStartDay, available.first - days(1)}));
    if (available.last != edition::TaxYearEndDay)
        periods.push_back(FigureText(DayRange{available.last + days(1), edition::TaxYearEndDay}));
    return AddedUp(periods);
}

/// A further period; nothing where it is not entered whole.
template<VanDate From, VanDate To>
std::string PeriodText(const WorkedVan& van)
{
    const auto first = ReadDate(van.working.dates[From]);
    const auto last = ReadDate(van.working.dates[To]);
    return first && last ? FigureText(DayRange{*first, *last}) : "0";
}

std::string WithoutFuelText(const WorkedVan& van)
{
    std::vector<std::string> texts;
    for (const DayRange& period : PeriodsAfterFuelWithdrawn(van.working.dates))
        texts.push_back(FigureText(period));
    return AddedUp(texts);
}

constexpr auto Figures = std::to_array<FigureRow<WorkedVan>>({
    {"A", [](const WorkedVan& van) { return FigureText(van.working.A); }},
    {"B", [](const WorkedVan& van) { return Number(van.working.B); }},
    {"C", [](const WorkedVan& van) { return Number(van.working.C); }},
    {"D", [](const WorkedVan& van) { return Number(van.working.D); }},
    {"E", [](const WorkedVan& van) { return Number(van.working.E); }},
    {"F", [](const WorkedVan& van) { return FigureText(van.working.F); }},
    {"G", [](const WorkedVan& van) { return FigureText(van.working.G); }},
    {"H", [](const WorkedVan& van) { return FigureText(van.working.H); }},
    {"J", [](const WorkedVan& van) { return FigureText(van.working.J); }},
    {"K", [](const WorkedVan& van) { return FigureText(van.working.K); }},
    {"L", [](const WorkedVan& van) { return FigureText(van.working.L); }},
    {"M", [](const WorkedVan& van) { return FigureText(van.working.M); }},
    {"P", [](const WorkedVan& van) { return FigureText(van.working.P); }},
    {"R", [](const WorkedVan& van) { return Number(van.working.R); }},
    {"S", [](const WorkedVan& van) { return Number(van.working.S); }},
    {"T", [](const WorkedVan& van) { return FigureText(van.working.T); }},
    {"V", [](const WorkedVan& van) { return FigureText(van.working.V); }},
    {"W", [](const WorkedVan& van) { return FigureText(van.working.W); }},
    {"X", [](const WorkedVan& van) { return FigureText(van.working.X); }},
    {"unavailable", UnavailableText},
    {"second period", PeriodText<From2, To2>},
    {"third period", PeriodText<From3, To3>},
    {"without fuel", WithoutFuelText},
    {"shortest", [](const WorkedVan&) { return Number(edition::Vans.shortestPeriod); }},
    {"days", [](const WorkedVan&) { return Number(DaysInYear(ReadWholeNumber(edition::YearEndYear))); }},
});

constexpr auto Steps = std::to_array<StepRow<WorkedVan>>({
    {.name = "A", .box = "ABox", .says = "Van benefit of a full year", .source = "ITEPA 2003 s.155", .when = IsThere},
    {.name = "A",
     .box = "ABox",
     .says = "Without a registration number there is no van, and nothing is worked out",
     .when = [](const WorkedVan& van) { return !IsThere(van); }},
    {.name = "B",
     .box = "BBox",
     .says = "Days before and after those between which the van was available",
     .sum = "{unavailable}",
     .source = "ITEPA 2003 s.156",
     .when = IsThere},
    {.name = "B",
     .box = "BBox",
     .says = "No days without a van",
     .when = [](const WorkedVan& van) { return !IsThere(van); }},
    {.name = "C",
     .box = "CBox",
     .says = "Days of the second period unavailable",
     .sum = "{second period}",
     .source = "ITEPA 2003 s.156",
     .when = [](const WorkedVan& van) { return van.working.C != 0; }},
    {.name = "C",
     .box = "CBox",
     .says = "No second period unavailable of {shortest} days or more",
     .source = "ITEPA 2003 s.156",
     .when = [](const WorkedVan& van) { return van.working.C == 0; }},
    {.name = "D",
     .box = "DBox",
     .says = "Days of the third period unavailable",
     .sum = "{third period}",
     .source = "ITEPA 2003 s.156",
     .when = [](const WorkedVan& van) { return van.working.D != 0; }},
    {.name = "D",
     .box = "DBox",
     .says = "No third period unavailable of {shortest} days or more",
     .source = "ITEPA 2003 s.156",
     .when = [](const WorkedVan& van) { return van.working.D == 0; }},
    {.name = "E", .box = "EBox", .says = "Days unavailable", .sum = "{B} + {C} + {D}"},
    {.name = "F",
     .box = "FBox",
     .says = "Reduction for them",
     .sum = "{A} x {E} / {days}",
     .rounding = Rounding::UpToPounds,
     .source = "ITEPA 2003 s.156"},
    {.name = "G", .box = "GBox", .says = "Van benefit less that", .sum = "{A} - {F}"},
    {.name = "H", .says = "Percentage by which it is reduced for sharing"},
    {.name = "J",
     .box = "JBox",
     .says = "Reduction for sharing",
     .sum = "{G} x {H} / 100",
     .rounding = Rounding::UpToPounds,
     .source = "ITEPA 2003 s.157"},
    {.name = "K", .box = "KBox", .says = "Van benefit less that", .sum = "{G} - {J}"},
    {.name = "L", .says = "Payments of the employee for private use", .source = "ITEPA 2003 s.158"},
    {.name = "M",
     .box = "MBox",
     .says = "Van benefit charge",
     .sum = "{K} - {L}, at least 0",
     .source = "ITEPA 2003 s.154, s.158"},

    {.name = "P", .box = "PBox", .says = "Fuel benefit of a full year", .source = "ITEPA 2003 s.161", .when = HasFuel},
    {.name = "P",
     .box = "PBox",
     .says = "Fuel benefit is not required",
     .source = "ITEPA 2003 s.160",
     .when = HasNoFuel},
    {.name = "R",
     .box = "RBox",
     .says = "Days after fuel was withdrawn that E does not hold",
     .sum = "{without fuel}",
     .source = "ITEPA 2003 s.163",
     .when = HasFuel},
    {.name = "R", .box = "RBox", .says = "No days without fuel", .when = HasNoFuel},
    {.name = "S",
     .box = "SBox",
     .says = "Days without the benefit of fuel",
     .sum = "{E} + {R}",
     .source = "ITEPA 2003 s.163",
     .when = HasFuel},
    {.name = "S", .box = "SBox", .says = "No days are counted without fuel", .when = HasNoFuel},
    {.name = "T",
     .box = "TBox",
     .says = "Reduction for them",
     .sum = "{P} x {S} / {days}",
     .rounding = Rounding::UpToPounds,
     .source = "ITEPA 2003 s.163"},
    {.name = "V", .box = "VBox", .says = "Fuel benefit less that", .sum = "{P} - {T}"},
    {.name = "W",
     .box = "WBox",
     .says = "Reduction for sharing",
     .sum = "{V} x {H} / 100",
     .rounding = Rounding::UpToPounds,
     .source = "ITEPA 2003 s.164"},
    {.name = "X", .box = "XBox", .says = "Van fuel benefit charge", .sum = "{V} - {W}", .source = "ITEPA 2003 s.160"},
});

} // namespace

Explained ExplainVan(const VanFacts& van)
{
    return FillIn<WorkedVan>({.facts = van, .working = VanBenefit(van)}, Figures, Steps);
}

} // namespace quillmere
