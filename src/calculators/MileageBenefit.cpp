#include "calculators/MileageBenefit.h"

#include "edition/Edition.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace quillmere {

namespace {

/// So many miles at so many pence, in the order of the working paper: hundreds of miles times pence.
Amount AtPence(double miles, int pence)
{
    return Amount::FromDouble(miles / 100 * pence);
}

/// What was paid above the approved amount.
Amount Above(Amount approved, Amount paid)
{
    return approved < paid ? paid - approved : Amount();
}

} // namespace

double MilesThatCount(double miles, const edition::MileageRates& rates)
{
    // Kept: miles of the first band are rounded to whole ones, ties to even; those above it keep their decimals.
    return miles > rates.firstBand ? miles : std::nearbyint(miles);
}

Amount ApprovedMileage(double miles, const edition::MileageRate& rate, const edition::MileageRates& rates)
{
    if (miles > rates.firstBand)
        return AtPence(rates.firstBand, rate.first) + AtPence(miles - rates.firstBand, rate.second);
    return AtPence(MilesThatCount(miles, rates), rate.first);
}

MileageWorking MileageBenefit(const MileageFacts& facts, const edition::MileageRates& rates)
{
    MileageWorking working;
    working.A = ReadAmount(facts.ABox);
    working.B = ReadAmount(facts.BBox);
    working.C = std::max(working.A - working.B, Amount());
    working.D = ReadNumber(facts.DBox);
    working.J = ApprovedMileage(working.D, rates.vehicles[static_cast<std::size_t>(facts.vehicle)], rates);
    working.taxableMileage = Above(working.J, working.C);
    working.K = ReadAmount(facts.KBox);
    working.L = ReadNumber(facts.LBox);
    working.M = AtPence(working.L, rates.passenger);
    working.taxablePassengers = Above(working.M, working.K);
    working.Q = working.taxableMileage + working.taxablePassengers;
    return working;
}

MileageTotal TotalOfMileage(const std::array<std::string, 3>& taxable)
{
    Amount total;
    for (const std::string& row : taxable)
        total += ReadAmount(row);
    const std::string text = FormatAmount(total, edition::FormatMoneyBlankZero);
    // Kept: vehicle 1 alone decides whether the total is stored, and it is stored without padding.
    return {.box = PadAmount(text), .stored = taxable[0].empty() ? std::string() : text};
}

} // namespace quillmere
