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
    {"E", [](const WorkedLoan& loan) { return FigureText(loan.working.E); }},
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
    {"small", [](const WorkedLoan&) { return FigureText(edition::SmallLoansTo); }},
    {"authority's pounds",
     [](const WorkedLoan& loan) { return FigureText(IntPounds(loan.working.cashEquivalent.Pounds())); }},
    {"nothing", [](const WorkedLoan&) { return std::string("0"); }},
});

using Step = StepRow<WorkedLoan>;
constexpr auto Steps = std::to_array<Step>({
    Step::Fact("A", "Balance at the start of the year, or when the loan was made", {}, IsWorkedOut),
    Step::Fact("B", "Balance at the end of the year, or when it was discharged", {}, IsWorkedOut),
    Step::Sum("C", "CBox", "Both balances", "{A} + {B}", "ITEPA 2003 s.182 step 1", IsWorkedOut),
    Step::Words("C", "CBox", "Both balances are needed before anything is worked out", {}, IsIncomplete),
    Step::Sum("D", "DBox", "Average balance", "{C} / 2", "ITEPA 2003 s.182 step 1", IsWorkedOut),
    Step::Words("D", "DBox", "Both balances are needed before anything is worked out", {}, IsIncomplete),
    Step::Words("E", "EBox", "Complete tax months, each from the 6th to the 5th, between {from} and {to}",
                "ITEPA 2003 s.182 step 3", IsWorkedOut),
    Step::Words("E", "EBox", "Tax months are counted once both balances are there", {}, IsIncomplete),
    Step::Sum("months' balance", {}, "Average balance for those months", "{D} x {E} / 12", "ITEPA 2003 s.182 step 3",
              IsWorkedOut),
    Step::Words("G", "GBox", "Official rate of interest of the loan's currency", "ITEPA 2003 s.181"),
    Step::Sum("interest", {}, "Interest at the official rate", "{months' balance} x {G} / 100",
              "ITEPA 2003 s.182 step 3", IsWorkedOut),
    Step::Fact("J", "Interest that the employee paid", "ITEPA 2003 s.175(3)", IsWorkedOut),
    Step::Sum("cash equivalent", "CashEq", "Cash equivalent of the loan", "{interest} - {J}, at least 0",
              "ITEPA 2003 s.175(3)", IsWorkedOut),
    Step::Words("cash equivalent", "CashEq", "Both balances are needed before anything is worked out", {},
                IsIncomplete),
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
     .says = "Nothing is charged if all loans of the employee together never came to more than {small}, as the loans "
             "here did not. Whether there are others is for the user to see to",
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
