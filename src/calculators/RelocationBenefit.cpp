#include "calculators/RelocationBenefit.h"

#include "edition/Edition.h"

namespace quillmere {

namespace {

std::string TextOrNil(bool nil, Amount amount)
{
    return nil ? "Nil" : AmountText(amount, edition::FormatMoneyBlankZero);
}

} // namespace

std::string RelocationWorking::EText() const
{
    return TextOrNil(exemptNil, E);
}

std::string RelocationWorking::FText() const
{
    return TextOrNil(resultNil, F);
}

RelocationWorking RelocationBenefit(const RelocationFacts& facts, int exemption)
{
    RelocationWorking working;
    if (facts.ABox.empty() && facts.CBox.empty() && facts.EmployerCost.empty() && facts.EmployeeCost.empty())
        return working;
    working.computed = true;
    working.A = ReadAmount(facts.ABox);
    working.employerCost = ReadAmount(facts.EmployerCost);
    working.employeeCost = ReadAmount(facts.EmployeeCost);
    working.C = ReadAmount(facts.CBox);
    working.qualExp = ReadAmount(facts.QualExp);
    working.B = working.employerCost - working.employeeCost;
    working.D = working.A + working.B + working.C;

    const Amount limit = Amount::WholePounds(exemption);
    working.exemptNil = working.qualExp > limit;
    if (!working.exemptNil)
        working.E = limit - working.qualExp;
    working.resultNil = working.E > working.D;
    if (!working.resultNil)
        working.F = working.D - working.E;
    return working;
}

bool DoesEmployeeCostStand(std::string_view employeeCost, std::string_view employerCost)
{
    return ReadAmount(employeeCost) <= ReadAmount(employerCost);
}

} // namespace quillmere
