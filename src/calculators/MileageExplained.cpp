#include "calculators/MileageExplained.h"

#include <array>
#include <cstddef>

namespace quillmere {

namespace {

/// A kind of vehicle and what the rule makes of it.
struct WorkedMileage {
    MileageFacts facts;
    MileageWorking working;
};

constexpr const edition::MileageRates& Rates = edition::Mileage;

const edition::MileageRate& RateOf(const WorkedMileage& mileage)
{
    return Rates.vehicles[static_cast<std::size_t>(mileage.facts.vehicle)];
}

bool IsAboveTheBand(const WorkedMileage& mileage)
{
    return mileage.working.D > Rates.firstBand;
}
bool IsInTheBand(const WorkedMileage& mileage)
{
    return !IsAboveTheBand(mileage);
}
bool IsRounded(const WorkedMileage& mileage)
{
    return MilesThatCount(mileage.working.D) != mileage.working.D;
}

constexpr auto Figures = std::to_array<FigureRow<WorkedMileage>>({
    {"A", [](const WorkedMileage& mileage) { return FigureText(mileage.working.A); }},
    {"B", [](const WorkedMileage& mileage) { return FigureText(mileage.working.B); }},
    {"C", [](const WorkedMileage& mileage) { return FigureText(mileage.working.C); }},
    {"D", [](const WorkedMileage& mileage) { return DecimalFigureText(mileage.working.D); }},
    {"J", [](const WorkedMileage& mileage) { return FigureText(mileage.working.J); }},
    {"K", [](const WorkedMileage& mileage) { return FigureText(mileage.working.K); }},
    {"L", [](const WorkedMileage& mileage) { return DecimalFigureText(mileage.working.L); }},
    {"M", [](const WorkedMileage& mileage) { return FigureText(mileage.working.M); }},
    {"Q", [](const WorkedMileage& mileage) { return FigureText(mileage.working.Q); }},
    {"miles", [](const WorkedMileage& mileage) { return DecimalFigureText(MilesThatCount(mileage.working.D)); }},
    {"mileage above", [](const WorkedMileage& mileage) { return FigureText(mileage.working.taxableMileage); }},
    {"passengers above", [](const WorkedMileage& mileage) { return FigureText(mileage.working.taxablePassengers); }},
    {"band", [](const WorkedMileage&) { return FigureText(Rates.firstBand); }},
    {"pence", [](const WorkedMileage& mileage) { return FigureText(RateOf(mileage).first); }},
    {"further pence", [](const WorkedMileage& mileage) { return FigureText(RateOf(mileage).second); }},
    {"passenger pence", [](const WorkedMileage&) { return FigureText(Rates.passenger); }},
});

using Step = StepRow<WorkedMileage>;
constexpr auto Steps = std::to_array<Step>({
    Step::Fact("A", "Mileage allowance paid", "ITEPA 2003 s.229"),
    Step::Fact("B", "Of which tax has been deducted"),
    Step::Sum("C", "CBox", "Net allowance paid", "{A} - {B}, at least 0"),
    Step::Fact("D", "Business miles"),
    Step::Sum("miles", {}, "Miles that count, up to {band} in whole miles", "{D}", {}, IsRounded)
        .Rounded(Rounding::ToWhole),
    Step::Sum("J", "JBox", "Approved allowance: {pence} pence a mile", "{miles} x {pence} / 100", "ITEPA 2003 s.230",
              IsInTheBand),
    Step::Sum("J", "JBox", "Approved allowance: {pence} pence a mile up to {band} miles, {further pence} pence above",
              "{band} x {pence} / 100 + ({D} - {band}) x {further pence} / 100", "ITEPA 2003 s.230", IsAboveTheBand),
    Step::Sum("mileage above", {}, "Allowance above what is approved", "{C} - {J}, at least 0", "ITEPA 2003 s.229"),
    Step::Fact("K", "Passenger payments", "ITEPA 2003 s.233"),
    Step::Fact("L", "Miles for which they were made"),
    Step::Sum("M", "MBox", "Approved passenger payments: {passenger pence} pence a mile",
              "{L} x {passenger pence} / 100", "ITEPA 2003 s.234"),
    Step::Sum("passengers above", {}, "Passenger payments above what is approved", "{K} - {M}, at least 0",
              "ITEPA 2003 s.233"),
    Step::Sum("Q", "QBox", "Taxable payments", "{mileage above} + {passengers above}"),
});

} // namespace

Explained ExplainMileage(const MileageFacts& vehicle)
{
    return FillIn<WorkedMileage>({.facts = vehicle, .working = MileageBenefit(vehicle)}, Figures, Steps);
}

} // namespace quillmere
