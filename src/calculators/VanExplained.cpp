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
    {"B", [](const WorkedVan& van) { return FigureText(van.working.B); }},
    {"C", [](const WorkedVan& van) { return FigureText(van.working.C); }},
    {"D", [](const WorkedVan& van) { return FigureText(van.working.D); }},
    {"E", [](const WorkedVan& van) { return FigureText(van.working.E); }},
    {"F", [](const WorkedVan& van) { return FigureText(van.working.F); }},
    {"G", [](const WorkedVan& van) { return FigureText(van.working.G); }},
    {"H", [](const WorkedVan& van) { return FigureText(van.working.H); }},
    {"J", [](const WorkedVan& van) { return FigureText(van.working.J); }},
    {"K", [](const WorkedVan& van) { return FigureText(van.working.K); }},
    {"L", [](const WorkedVan& van) { return FigureText(van.working.L); }},
    {"M", [](const WorkedVan& van) { return FigureText(van.working.M); }},
    {"P", [](const WorkedVan& van) { return FigureText(van.working.P); }},
    {"R", [](const WorkedVan& van) { return FigureText(van.working.R); }},
    {"S", [](const WorkedVan& van) { return FigureText(van.working.S); }},
    {"T", [](const WorkedVan& van) { return FigureText(van.working.T); }},
    {"V", [](const WorkedVan& van) { return FigureText(van.working.V); }},
    {"W", [](const WorkedVan& van) { return FigureText(van.working.W); }},
    {"X", [](const WorkedVan& van) { return FigureText(van.working.X); }},
    {"unavailable", UnavailableText},
    {"second period", PeriodText<From2, To2>},
    {"third period", PeriodText<From3, To3>},
    {"without fuel", WithoutFuelText},
    {"shortest", [](const WorkedVan&) { return FigureText(edition::Vans.shortestPeriod); }},
    {"days", [](const WorkedVan&) { return FigureText(DaysInYear(ReadWholeNumber(edition::YearEndYear))); }},
});

using Step = StepRow<WorkedVan>;
constexpr auto Steps = std::to_array<Step>({
    Step::Words("A", "ABox", "Van benefit of a full year", "ITEPA 2003 s.155", IsThere),
    Step::Words("A", "ABox", "Without a registration number there is no van, and nothing is worked out", {},
                [](const WorkedVan& van) { return !IsThere(van); }),
    Step::Sum("B", "BBox", "Days before and after those between which the van was available", "{unavailable}",
              "ITEPA 2003 s.156", IsThere),
    Step::Words("B", "BBox", "No days without a van", {}, [](const WorkedVan& van) { return !IsThere(van); }),
    Step::Sum("C", "CBox", "Days of the second period unavailable", "{second period}", "ITEPA 2003 s.156",
              [](const WorkedVan& van) { return van.working.C != 0; }),
    Step::Words("C", "CBox", "No second period unavailable of {shortest} days or more", "ITEPA 2003 s.156",
                [](const WorkedVan& van) { return van.working.C == 0; }),
    Step::Sum("D", "DBox", "Days of the third period unavailable", "{third period}", "ITEPA 2003 s.156",
              [](const WorkedVan& van) { return van.working.D != 0; }),
    Step::Words("D", "DBox", "No third period unavailable of {shortest} days or more", "ITEPA 2003 s.156",
                [](const WorkedVan& van) { return van.working.D == 0; }),
    Step::Sum("E", "EBox", "Days unavailable", "{B} + {C} + {D}"),
    Step::Sum("F", "FBox", "Reduction for them", "{A} x {E} / {days}", "ITEPA 2003 s.156")
        .Rounded(Rounding::UpToPounds),
    Step::Sum("G", "GBox", "Van benefit less that", "{A} - {F}"),
    Step::Fact("H", "Percentage by which it is reduced for sharing"),
    Step::Sum("J", "JBox", "Reduction for sharing", "{G} x {H} / 100", "ITEPA 2003 s.157")
        .Rounded(Rounding::UpToPounds),
    Step::Sum("K", "KBox", "Van benefit less that", "{G} - {J}"),
    Step::Fact("L", "Payments of the employee for private use", "ITEPA 2003 s.158"),
    Step::Sum("M", "MBox", "Van benefit charge", "{K} - {L}, at least 0", "ITEPA 2003 s.154, s.158"),

    Step::Words("P", "PBox", "Fuel benefit of a full year", "ITEPA 2003 s.161", HasFuel),
    Step::Words("P", "PBox", "Fuel benefit is not required", "ITEPA 2003 s.160", HasNoFuel),
    Step::Sum("R", "RBox", "Days after fuel was withdrawn that E does not hold", "{without fuel}", "ITEPA 2003 s.163",
              HasFuel),
    Step::Words("R", "RBox", "No days without fuel", {}, HasNoFuel),
    Step::Sum("S", "SBox", "Days without the benefit of fuel", "{E} + {R}", "ITEPA 2003 s.163", HasFuel),
    Step::Words("S", "SBox", "No days are counted without fuel", {}, HasNoFuel),
    Step::Sum("T", "TBox", "Reduction for them", "{P} x {S} / {days}", "ITEPA 2003 s.163")
        .Rounded(Rounding::UpToPounds),
    Step::Sum("V", "VBox", "Fuel benefit less that", "{P} - {T}"),
    Step::Sum("W", "WBox", "Reduction for sharing", "{V} x {H} / 100", "ITEPA 2003 s.164")
        .Rounded(Rounding::UpToPounds),
    Step::Sum("X", "XBox", "Van fuel benefit charge", "{V} - {W}", "ITEPA 2003 s.160"),
});

} // namespace

Explained ExplainVan(const VanFacts& van)
{
    return FillIn<WorkedVan>({.facts = van, .working = VanBenefit(van)}, Figures, Steps);
}

} // namespace quillmere
