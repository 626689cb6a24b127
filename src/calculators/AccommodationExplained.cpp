#include "calculators/AccommodationExplained.h"

#include "edition/Edition.h"

#include <array>

namespace quillmere {

namespace {

// ---- the basic charge -----------------------------------------------------------------------------

/// A basic charge and what the rule makes of it.
struct WorkedBasicCharge {
    BasicChargeWorking working;
    Amount madeGood; ///< as entered
};

bool IsBasicWorkedOut(const WorkedBasicCharge& charge)
{
    return charge.working.computed;
}
bool IsBasicEmpty(const WorkedBasicCharge& charge)
{
    return !charge.working.computed;
}
/// More has been made good than C, and E stays whole.
bool IsKeptWhole(const WorkedBasicCharge& charge)
{
    const BasicChargeWorking& working = charge.working;
    return working.computed && working.D == working.C && working.E == working.C && !working.C.IsZero();
}
bool IsDifference(const WorkedBasicCharge& charge)
{
    return charge.working.computed && !IsKeptWhole(charge);
}

constexpr auto BasicFigures = std::to_array<FigureRow<WorkedBasicCharge>>({
    {"A", [](const WorkedBasicCharge& charge) { return FigureText(charge.working.A); }},
    {"B", [](const WorkedBasicCharge& charge) { return FigureText(charge.working.B); }},
    {"C", [](const WorkedBasicCharge& charge) { return FigureText(charge.working.C); }},
    {"D", [](const WorkedBasicCharge& charge) { return FigureText(charge.working.D); }},
    {"E", [](const WorkedBasicCharge& charge) { return FigureText(charge.working.E); }},
    {"made good", [](const WorkedBasicCharge& charge) { return FigureText(charge.madeGood); }},
    {"nothing", [](const WorkedBasicCharge&) { return std::string("0"); }},
});

constexpr auto BasicSteps = std::to_array<StepRow<WorkedBasicCharge>>({
    {.name = "A", .says = "Rent paid", .source = "ITEPA 2003 s.105(4)", .when = IsBasicWorkedOut},
    {.name = "B", .says = "Annual value", .source = "ITEPA 2003 s.105(3)", .when = IsBasicWorkedOut},
    {.name = "C",
     .box = "BasicChargeC",
     .says = "The greater of the two",
     .sum = "the larger of {A} and {B}",
     .source = "ITEPA 2003 s.105(3), (4)",
     .when = IsBasicWorkedOut},
    {.name = "C", .box = "BasicChargeC", .says = "Rent or annual value is needed first", .when = IsBasicEmpty},
    {.name = "D",
     .says = "Made good by the employee, not more than C",
     .sum = "{made good}, at most {C}",
     .source = "ITEPA 2003 s.105(2)",
     .when = IsBasicWorkedOut},
    {.name = "E",
     .box = "BasicChargeE",
     .says = "Cash equivalent of the basic charge: more has been made good than C, and the charge stays whole",
     .sum = "{C}",
     .source = "ITEPA 2003 s.105",
     .when = IsKeptWhole},
    {.name = "E",
     .box = "BasicChargeE",
     .says = "Cash equivalent of the basic charge",
     .sum = "{C} - {D}, at least 0",
     .source = "ITEPA 2003 s.105",
     .when = IsDifference},
    {.name = "E", .box = "BasicChargeE", .says = "Rent or annual value is needed first", .when = IsBasicEmpty},
});

constexpr auto BasicNotes = std::to_array<NoteRow<WorkedBasicCharge>>({
    {.about = "E",
     .says = "Where as much is made good as the accommodation is worth, or more, HMRC charges nothing",
     .sum = "{C} - {D}",
     .result = "nothing",
     .source = "ITEPA 2003 s.105(5)",
     .when = IsKeptWhole},
});

// ---- the additional charge ------------------------------------------------------------------------

/// An additional charge and what the rule makes of it.
struct WorkedAdditionalCharge {
    AdditionalChargeFacts facts;
    AdditionalChargeWorking working;
};

using Charge = WorkedAdditionalCharge;

constexpr edition::AccommodationRates Rates = edition::Accommodation;

bool IsWorkedOut(const Charge& charge)
{
    return charge.working.computed;
}
bool IsEmpty(const Charge& charge)
{
    return !charge.working.computed;
}
bool IsAboveTheLimit(const Charge& charge)
{
    return IsWorkedOut(charge) && charge.working.H >= Amount::WholePounds(Rates.costLimit);
}
bool IsBelowTheLimit(const Charge& charge)
{
    return IsWorkedOut(charge) && !IsAboveTheLimit(charge);
}
bool IsPartOfTheYear(const Charge& charge)
{
    return IsAboveTheLimit(charge) && charge.working.days != 0;
}
bool IsWholeYear(const Charge& charge)
{
    return IsAboveTheLimit(charge) && charge.working.days == 0;
}
/// The rent is less than what the basic charge has taken of it already.
bool IsRentUsedUp(const Charge& charge)
{
    return IsAboveTheLimit(charge) && ReadAmount(charge.facts.MBox) < charge.working.N;
}
bool IsRentLeft(const Charge& charge)
{
    return IsAboveTheLimit(charge) && !IsRentUsedUp(charge);
}

std::string Number(int number)
{
    return FigureText(std::int64_t{number});
}

constexpr auto Figures = std::to_array<FigureRow<Charge>>({
    {"F", [](const Charge& charge) { return FigureText(charge.working.F); }},
    {"G", [](const Charge& charge) { return FigureText(charge.working.G); }},
    {"H", [](const Charge& charge) { return FigureText(charge.working.H); }},
    {"J", [](const Charge& charge) { return FigureText(charge.working.J); }},
    {"K", [](const Charge& charge) { return FigureText(charge.working.K); }},
    {"L", [](const Charge& charge) { return FigureText(charge.working.L); }},
    {"M", [](const Charge& charge) { return FigureText(charge.working.M); }},
    {"N", [](const Charge& charge) { return FigureText(charge.working.N); }},
    {"P", [](const Charge& charge) { return FigureText(charge.working.P); }},
    {"Q", [](const Charge& charge) { return FigureText(charge.working.Q); }},
    {"E", [](const Charge& charge) { return FigureText(charge.working.E); }},
    {"R", [](const Charge& charge) { return FigureText(charge.working.R); }},
    {"days", [](const Charge& charge) { return Number(charge.working.days); }},
    {"limit", [](const Charge&) { return Number(Rates.costLimit); }},
    {"rate", [](const Charge&) { return DecimalFigureText(Rates.percentage); }},
    {"divisor", [](const Charge&) { return Number(Rates.daysDivisor); }},
    {"authority's divisor", [](const Charge&) { return Number(edition::AccommodationDaysOfAuthority); }},
    {"authority's part",
     [](const Charge& charge) {
         return FigureText(
             Amount::FromDouble((charge.working.K * charge.working.days).Pounds() / edition::AccommodationDaysOfAuthority));
     }},
});

constexpr auto Steps = std::to_array<StepRow<Charge>>({
    {.name = "F", .says = "Cost of the accommodation", .source = "ITEPA 2003 s.104", .when = IsWorkedOut},
    {.name = "G", .says = "Payments of the employee towards it", .source = "ITEPA 2003 s.104", .when = IsWorkedOut},
    {.name = "H",
     .box = "HBox",
     .says = "Net cost",
     .sum = "{F} - {G}, at least 0",
     .source = "ITEPA 2003 s.104",
     .when = IsWorkedOut},
    {.name = "H", .box = "HBox", .says = "The cost is needed before anything is worked out", .when = IsEmpty},
    {.name = "J",
     .box = "JBox",
     .says = "Cost above the limit of {limit}",
     .sum = "{H} - {limit}",
     .source = "ITEPA 2003 s.106(2)",
     .when = IsAboveTheLimit},
    {.name = "J",
     .box = "JBox",
     .says = "The net cost is below the limit of {limit}: there is no additional charge",
     .source = "ITEPA 2003 s.106(1)",
     .when = IsBelowTheLimit},
    {.name = "J", .box = "JBox", .says = "The cost is needed before anything is worked out", .when = IsEmpty},
    {.name = "K",
     .box = "KBox",
     .says = "Charge of a full year, at the official rate of {rate} per cent",
     .sum = "{J} x {rate} / 100",
     .source = "ITEPA 2003 s.106(2), s.181"},
    {.name = "days", .says = "Days of the part of the year", .when = IsPartOfTheYear},
    {.name = "L",
     .box = "LBox",
     .says = "Charge for the part of the year",
     .sum = "{K} x {days} / {divisor}",
     .source = "ITEPA 2003 s.106(2)",
     .when = IsPartOfTheYear},
    {.name = "L",
     .box = "LBox",
     .says = "No days are entered: the charge is that of the whole year",
     .when = [](const Charge& charge) { return !IsPartOfTheYear(charge); }},
    {.name = "N",
     .says = "Rent of the employee that the basic charge has taken already",
     .source = "ITEPA 2003 s.106(3)",
     .when = IsWorkedOut},
    {.name = "M",
     .says = "Rent of the employee, which counts only if it is not below {N}",
     .source = "ITEPA 2003 s.106(3)",
     .when = IsWorkedOut},
    {.name = "P",
     .box = "PBox",
     .says = "Rent that is left",
     .sum = "{M} - {N}",
     .source = "ITEPA 2003 s.106(3)",
     .when = IsRentLeft},
    {.name = "P",
     .box = "PBox",
     .says = "No rent is left to be taken off",
     .source = "ITEPA 2003 s.106(3)",
     .when = [](const Charge& charge) { return !IsRentLeft(charge); }},
    {.name = "Q",
     .box = "QBox",
     .says = "Additional charge",
     .sum = "{L} - {P}, at least 0",
     .source = "ITEPA 2003 s.106",
     .when = IsPartOfTheYear},
    {.name = "Q",
     .box = "QBox",
     .says = "Additional charge",
     .sum = "{K} - {P}, at least 0",
     .source = "ITEPA 2003 s.106",
     .when = IsWholeYear},
    {.name = "Q",
     .box = "QBox",
     .says = "No additional charge",
     .source = "ITEPA 2003 s.106",
     .when = [](const Charge& charge) { return !IsAboveTheLimit(charge); }},
    {.name = "E", .says = "Basic charge", .source = "ITEPA 2003 s.105", .when = IsAboveTheLimit},
    {.name = "R",
     .box = "RBox",
     .says = "Both charges together",
     .sum = "{Q} + {E}",
     .source = "ITEPA 2003 s.103",
     .when = IsAboveTheLimit},
    {.name = "R",
     .box = "RBox",
     .says = "Without an additional charge both are not added up here",
     .when = [](const Charge& charge) { return !IsAboveTheLimit(charge); }},
});

constexpr auto Notes = std::to_array<NoteRow<Charge>>({
    {.about = "L",
     .says = "HMRC divides by {authority's divisor}, as the caption beside the box says, and not by {divisor}",
     .sum = "{K} x {days} / {authority's divisor}",
     .result = "authority's part",
     .source = "ITEPA 2003 s.106, P11D WS1",
     .when = IsPartOfTheYear},
    {.about = "K",
     .says = "The printed working paper heads this line with another rate. The figure is at HMRC's {rate} per cent",
     .result = "rate",
     .source = "EIM26104",
     .when = [](const Charge& charge) { return !charge.working.K.IsZero(); }},
});

} // namespace

Explained ExplainBasicCharge(const BasicChargeFacts& boxes, std::string_view shownE)
{
    WorkedBasicCharge charge{.working = BasicCharge(boxes), .madeGood = ReadAmount(boxes.BasicChargeD)};
    BasicChargeWorking& working = charge.working;
    // The box still shows what stayed whole, although D reads no more than C by now.
    if (working.computed && working.D == working.C && ReadAmount(shownE) == working.C)
        working.E = working.C;
    return FillIn<WorkedBasicCharge>(charge, BasicFigures, BasicSteps, BasicNotes);
}

Explained ExplainAdditionalCharge(const AdditionalChargeFacts& boxes)
{
    return FillIn<Charge>({.facts = boxes, .working = AdditionalCharge(boxes)}, Figures, Steps, Notes);
}

} // namespace quillmere
