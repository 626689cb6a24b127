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
    {"band", [](const WorkedMileage&) { return FigureText(std::int64_t{Rates.firstBand}); }},
    {"pence", [](const WorkedMileage& mileage) { return FigureText(std::int64_t{RateOf(mileage).first}); }},
    {"further pence", [](const WorkedMileage& mileage) { return FigureText(std::int64_t{RateOf(mileage).second}); }},
    {"passenger pence", [](const WorkedMileage&) { return FigureText(std::int64_t{Rates.passenger}); }},
});

constexpr auto Steps = std::to_array<StepRow<WorkedMileage>>({
    {.name = "A", .says = "Mileage allowance paid", .source = "ITEPA 2003 s.229"},
    {.name = "B", .says = "Of which tax has been deducted"},
    {.name = "C", .box = "CBox", .says = "Net allowance paid", .sum = "{A} - {B}, at least 0"},
    {.name = "D", .says = "Business miles"},
    {.name = "miles",
     .says = "Miles that count, up to {band} in whole miles",
     .sum = "{D}",
     .rounding = Rounding::ToWhole,
     .when = IsRounded},
    {.name = "J",
     .box = "JBox",
     .says = "Approved allowance: {pence} pence a mile",
     .sum = "{miles} x {pence} / 100",
     .source = "ITEPA 2003 s.230",
     .when = IsInTheBand},
    {.name = "J",
     .box = "JBox",
     .says = "Approved allowance: {pence} pence a mile up to {band} miles, {further pence} pence above",
     .sum = "{band} x {pence} / 100 + ({D} - {band}) x {further pence} / 100",
     .source = "ITEPA 2003 s.230",
     .when = IsAboveTheBand},
    {.name = "mileage above",
     .says = "Allowance above what is approved",
     .sum = "{C} - {J}, at least 0",
     .source = "ITEPA 2003 s.229"},
    {.name = "K", .says = "Passenger payments", .source = "ITEPA 2003 s.233"},
    {.name = "L", .says = "Miles for which they were made"},
    {.name = "M",
     .box = "MBox",
     .says = "Approved passenger payments: {passenger pence} pence a mile",
     .sum = "{L} x {passenger pence} / 100",
     .source = "ITEPA 2003 s.234"},
    {.name = "passengers above",
     .says = "Passenger payments above what is approved",
     .sum = "{K} - {M}, at least 0",
     .source = "ITEPA 2003 s.233"},
    {.name = "Q", .box = "QBox", .says = "Taxable payments", .sum = "{mileage above} + {passengers above}"},
});

} // namespace

Explained ExplainMileage(const MileageFacts& vehicle)
{
    return FillIn<WorkedMileage>({.facts = vehicle, .working = MileageBenefit(vehicle)}, Figures, Steps);
}

} // namespace quillmere
