#include "calculators/AccommodationBenefit.h"

#include "edition/Edition.h"

#include <algorithm>

namespace quillmere {

BasicChargeWorking BasicCharge(const BasicChargeFacts& facts)
{
    BasicChargeWorking working;
    if (facts.BasicChargeA.empty() && facts.BasicChargeB.empty())
        return working;
    working.computed = true;
    working.A = ReadAmount(facts.BasicChargeA);
    working.B = ReadAmount(facts.BasicChargeB);
    working.C = std::max(working.A, working.B);
    working.D = ReadAmount(facts.BasicChargeD);
    if (working.D > working.C) {
        // Kept: an amount made good above C is cut back to C, and E stays at C instead of falling to nothing.
        working.D = working.C;
        working.E = working.C;
    } else {
        working.E = working.C - working.D;
    }
    working.E = std::max(working.E, Amount());
    return working;
}

AdditionalChargeWorking AdditionalCharge(const AdditionalChargeFacts& facts, const edition::AccommodationRates& rates)
{
    AdditionalChargeWorking working;
    if (facts.FBox.empty() && facts.GBox.empty())
        return working;
    working.computed = true;
    working.F = ReadAmount(facts.FBox);
    working.G = ReadAmount(facts.GBox);
    working.H = std::max(working.F - working.G, Amount());
    working.days = ReadWholeNumber(facts.AddChargeDays);
    working.M = ReadAmount(facts.MBox);
    working.N = ReadAmount(facts.NBox);
    working.E = ReadAmount(facts.EBox);

    const Amount limit = Amount::WholePounds(rates.costLimit);
    if (working.H < limit)
        return working;
    working.J = working.H - limit;
    working.K = Amount::FromDouble(working.J.Pounds() * rates.percentage / 100);
    if (working.days != 0)
        working.L = Amount::FromDouble(working.K.Pounds() * (static_cast<double>(working.days) / rates.daysDivisor));
    if (working.M < working.N)
        working.M = Amount();
    else
        working.P = working.M - working.N;
    working.Q = std::max((working.days != 0 ? working.L : working.K) - working.P, Amount());
    working.R = working.Q + working.E;
    return working;
}

bool IsCostTooLow(std::string_view text)
{
    return ReadAmount(text) < Amount::WholePounds(edition::Accommodation.costLimit);
}

bool AreDaysOutOfRange(std::string_view text)
{
    return ReadWholeNumber(text) > edition::Accommodation.longestStay;
}

std::string AccommodationTotalText(std::string_view basicChargeE, std::string_view storedAddChargeQ)
{
    return AmountText(ReadAmount(basicChargeE) + ReadAmount(storedAddChargeQ), edition::FormatMoneyBlankZero);
}

} // namespace quillmere
