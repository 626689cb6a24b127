#include "calculators/LoanExplained.h"

#include "edition/Edition.h"
#include "edition/LoanRates.h"
#include "frame/Text.h"

#include <algorithm>
#include <array>

namespace quillmere {

namespace {

/// A loan and what the rule makes of it.
struct WorkedLoan {
    LoanFacts facts;
    LoanWorking working;
    Amount others;
};

bool IsWorkedOut(const WorkedLoan& loan)
{
    return loan.working.computed;
}
bool IsIncomplete(const WorkedLoan& loan)
{
    return !loan.working.computed;
}
bool HasOddPence(const WorkedLoan& loan)
{
    return loan.working.cashEquivalent.Units() % Amount::UnitsOfAPound != 0;
}
bool IsSmall(const WorkedLoan& loan)
{
    return !loan.working.cashEquivalent.IsZero() &&
           LargestBalance(loan.facts) + loan.others <= Amount::WholePounds(edition::SmallLoansTo);
}

constexpr auto Figures = std::to_array<FigureRow<WorkedLoan>>({
    {"A", [](const WorkedLoan& loan) { return FigureText(loan.working.A); }},
    {"B", [](const WorkedLoan& loan) { return FigureText(loan.working.B); }},
    {"C", [](const WorkedLoan& loan) { return FigureText(loan.working.C); }},
    {"D", [](const WorkedLoan& loan) { return FigureText(loan.working.D); }},
    {"E", [](const WorkedLoan& loan) { return FigureText(std::int64_t{loan.working.E}); }},
    {"G",
     [](const WorkedLoan& loan) {
         return DecimalFigureText(loan.working.computed ? loan.working.G : ReadNumber(loan.facts.interestRate));
     }},
    {"J", [](const WorkedLoan& loan) { return FigureText(loan.working.J); }},
    {"months' balance", [](const WorkedLoan& loan) { return FigureText(loan.working.forTheMonths); }},
    {"interest", [](const WorkedLoan& loan) { return FigureText(loan.working.interest); }},
    {"cash equivalent", [](const WorkedLoan& loan) { return FigureText(loan.working.cashEquivalent); }},
    {"from", [](const WorkedLoan& loan) { return std::string(TextOr(loan.facts.dateFrom, edition::TaxYearStart)); }},
    {"to", [](const WorkedLoan& loan) { return std::string(TextOr(loan.facts.dateTo, edition::TaxYearEnd)); }},
    {"small", [](const WorkedLoan&) { return FigureText(std::int64_t{edition::SmallLoansTo}); }},
    {"authority's pounds",
     [](const WorkedLoan& loan) { return FigureText(IntPounds(loan.working.cashEquivalent.Pounds())); }},
    {"nothing", [](const WorkedLoan&) { return std::string("0"); }},
});

constexpr auto Steps = std::to_array<StepRow<WorkedLoan>>({
    {.name = "A", .says = "Balance at the start of the year, or when the loan was made", .when = IsWorkedOut},
    {.name = "B", .says = "Balance at the end of the year, or when it was discharged", .when = IsWorkedOut},
    {.name = "C",
     .box = "CBox",
     .says = "Both balances",
     .sum = "{A} + {B}",
     .source = "ITEPA 2003 s.182 step 1",
     .when = IsWorkedOut},
    {.name = "C",
     .box = "CBox",
     .says = "Both balances are needed before anything is worked out",
     .when = IsIncomplete},
    {.name = "D",
     .box = "DBox",
     .says = "Average balance",
     .sum = "{C} / 2",
     .source = "ITEPA 2003 s.182 step 1",
     .when = IsWorkedOut},
    {.name = "D",
     .box = "DBox",
     .says = "Both balances are needed before anything is worked out",
     .when = IsIncomplete},
    {.name = "E",
     .box = "EBox",
     .says = "Complete tax months, each from the 6th to the 5th, between {from} and {to}",
     .source = "ITEPA 2003 s.182 step 3",
     .when = IsWorkedOut},
    {.name = "E", .box = "EBox", .says = "Tax months are counted once both balances are there", .when = IsIncomplete},
    {.name = "months' balance",
     .says = "Average balance for those months",
     .sum = "{D} x {E} / 12",
     .source = "ITEPA 2003 s.182 step 3",
     .when = IsWorkedOut},
    {.name = "G",
     .box = "GBox",
     .says = "Official rate of interest of the loan's currency",
     .source = "ITEPA 2003 s.181"},
    {.name = "interest",
     .says = "Interest at the official rate",
     .sum = "{months' balance} x {G} / 100",
     .source = "ITEPA 2003 s.182 step 3",
     .when = IsWorkedOut},
    {.name = "J", .says = "Interest that the employee paid", .source = "ITEPA 2003 s.175(3)", .when = IsWorkedOut},
    {.name = "cash equivalent",
     .box = "CashEq",
     .says = "Cash equivalent of the loan",
     .sum = "{interest} - {J}, at least 0",
     .source = "ITEPA 2003 s.175(3)",
     .when = IsWorkedOut},
    {.name = "cash equivalent",
     .box = "CashEq",
     .says = "Both balances are needed before anything is worked out",
     .when = IsIncomplete},
});

constexpr auto Notes = std::to_array<NoteRow<WorkedLoan>>({
    {.about = "cash equivalent",
     .says =
         "The pence are kept. HMRC's manual rounds down to whole pounds in one example and keeps the pence in others",
     .sum = "{cash equivalent}",
     .rounding = Rounding::DownToPounds,
     .result = "authority's pounds",
     .source = "EIM26221, EIM26311",
     .when = HasOddPence},
    {.about = "cash equivalent",
     .says =
         "Nothing is charged if all loans of the employee together never came to more than {small}, as the loans here "
         "did not. Whether there are others is for the user to see to",
     .result = "nothing",
     .source = "ITEPA 2003 s.180",
     .when = IsSmall},
});

} // namespace

Explained ExplainLoan(const LoanFacts& loan, Amount others)
{
    return FillIn<WorkedLoan>({.facts = loan, .working = LoanBenefit(loan), .others = others}, Figures, Steps, Notes);
}

Amount LargestBalance(const LoanFacts& loan)
{
    return std::max({ReadAmount(loan.ABox), ReadAmount(loan.BBox), ReadAmount(loan.maxAmount)});
}

} // namespace quillmere
