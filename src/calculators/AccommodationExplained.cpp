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

using BasicStep = StepRow<WorkedBasicCharge>;
constexpr auto BasicSteps = std::to_array<BasicStep>({
    BasicStep::Fact("A", "Rent paid", "ITEPA 2003 s.105(4)", IsBasicWorkedOut),
    BasicStep::Fact("B", "Annual value", "ITEPA 2003 s.105(3)", IsBasicWorkedOut),
    BasicStep::Sum("C", "BasicChargeC", "The greater of the two", "the larger of {A} and {B}",
                   "ITEPA 2003 s.105(3), (4)", IsBasicWorkedOut),
    BasicStep::Words("C", "BasicChargeC", "Rent or annual value is needed first", {}, IsBasicEmpty),
    BasicStep::Sum("D", {}, "Made good by the employee, not more than C", "{made good}, at most {C}",
                   "ITEPA 2003 s.105(2)", IsBasicWorkedOut),
    BasicStep::Sum("E", "BasicChargeE",
                   "Cash equivalent of the basic charge: more has been made good than C, and the charge stays whole",
                   "{C}", "ITEPA 2003 s.105", IsKeptWhole),
    BasicStep::Sum("E", "BasicChargeE", "Cash equivalent of the basic charge", "{C} - {D}, at least 0",
                   "ITEPA 2003 s.105", IsDifference),
    BasicStep::Words("E", "BasicChargeE", "Rent or annual value is needed first", {}, IsBasicEmpty),
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
    {"days", [](const Charge& charge) { return FigureText(charge.working.days); }},
    {"limit", [](const Charge&) { return FigureText(Rates.costLimit); }},
    {"rate", [](const Charge&) { return DecimalFigureText(Rates.percentage); }},
    {"divisor", [](const Charge&) { return FigureText(Rates.daysDivisor); }},
    {"authority's divisor", [](const Charge&) { return FigureText(edition::AccommodationDaysOfAuthority); }},
    {"authority's part",
     [](const Charge& charge) {
         return FigureText(
             Amount::FromDouble((charge.working.K * charge.working.days).Pounds() / edition::AccommodationDaysOfAuthority));
     }},
});

using Step = StepRow<Charge>;
constexpr auto Steps = std::to_array<Step>({
    Step::Fact("F", "Cost of the accommodation", "ITEPA 2003 s.104", IsWorkedOut),
    Step::Fact("G", "Payments of the employee towards it", "ITEPA 2003 s.104", IsWorkedOut),
    Step::Sum("H", "HBox", "Net cost", "{F} - {G}, at least 0", "ITEPA 2003 s.104", IsWorkedOut),
    Step::Words("H", "HBox", "The cost is needed before anything is worked out", {}, IsEmpty),
    Step::Sum("J", "JBox", "Cost above the limit of {limit}", "{H} - {limit}", "ITEPA 2003 s.106(2)", IsAboveTheLimit),
    Step::Words("J", "JBox", "The net cost is below the limit of {limit}: there is no additional charge",
                "ITEPA 2003 s.106(1)", IsBelowTheLimit),
    Step::Words("J", "JBox", "The cost is needed before anything is worked out", {}, IsEmpty),
    Step::Sum("K", "KBox", "Charge of a full year, at the official rate of {rate} per cent", "{J} x {rate} / 100",
              "ITEPA 2003 s.106(2), s.181"),
    Step::Fact("days", "Days of the part of the year", {}, IsPartOfTheYear),
    Step::Sum("L", "LBox", "Charge for the part of the year", "{K} x {days} / {divisor}", "ITEPA 2003 s.106(2)",
              IsPartOfTheYear),
    Step::Words("L", "LBox", "No days are entered: the charge is that of the whole year", {},
                [](const Charge& charge) { return !IsPartOfTheYear(charge); }),
    Step::Fact("N", "Rent of the employee that the basic charge has taken already", "ITEPA 2003 s.106(3)", IsWorkedOut),
    Step::Fact("M", "Rent of the employee, which counts only if it is not below {N}", "ITEPA 2003 s.106(3)",
               IsWorkedOut),
    Step::Sum("P", "PBox", "Rent that is left", "{M} - {N}", "ITEPA 2003 s.106(3)", IsRentLeft),
    Step::Words("P", "PBox", "No rent is left to be taken off", "ITEPA 2003 s.106(3)",
                [](const Charge& charge) { return !IsRentLeft(charge); }),
    Step::Sum("Q", "QBox", "Additional charge", "{L} - {P}, at least 0", "ITEPA 2003 s.106", IsPartOfTheYear),
    Step::Sum("Q", "QBox", "Additional charge", "{K} - {P}, at least 0", "ITEPA 2003 s.106", IsWholeYear),
    Step::Words("Q", "QBox", "No additional charge", "ITEPA 2003 s.106",
                [](const Charge& charge) { return !IsAboveTheLimit(charge); }),
    Step::Fact("E", "Basic charge", "ITEPA 2003 s.105", IsAboveTheLimit),
    Step::Sum("R", "RBox", "Both charges together", "{Q} + {E}", "ITEPA 2003 s.103", IsAboveTheLimit),
    Step::Words("R", "RBox", "Without an additional charge both are not added up here", {},
                [](const Charge& charge) { return !IsAboveTheLimit(charge); }),
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
