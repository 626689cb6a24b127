#include "cars/CarPrices.h"

#include "edition/CarRates.h"
#include "frame/Amount.h"

namespace quillmere {

namespace {

bool IsAboveCap(Amount price)
{
    return edition::MaximumCarPrice && price > Amount::WholePounds(*edition::MaximumCarPrice);
}

const Amount HighestContribution = Amount::WholePounds(edition::MaximumCapitalContribution);

} // namespace

PriceCheck CheckListPrice(std::string_view listPrice, std::string_view accessories)
{
    const Amount price = ReadAmount(listPrice);
    if (IsAboveCap(price))
        return PriceCheck::ListPriceTooHigh;
    return IsAboveCap(price + ReadAmount(accessories)) ? PriceCheck::SumTooHigh : PriceCheck::Good;
}

PriceCheck CheckAccessories(std::string_view accessories)
{
    // Kept: with the accessories entered last a sum above the cap stands.
    return IsAboveCap(ReadAmount(accessories)) ? PriceCheck::AccessoriesTooHigh : PriceCheck::Good;
}

PriceCheck CheckContribution(std::string_view contribution)
{
    return ReadAmount(contribution) > HighestContribution ? PriceCheck::ContributionTooHigh : PriceCheck::Good;
}

} // namespace quillmere
