#include "cars/CarPrices.h"

#include "edition/CarRates.h"
#include "frame/Amount.h"

namespace quillmere {

namespace {

const Amount HighestPrice = Amount::WholePounds(edition::MaximumCarPrice);
const Amount HighestContribution = Amount::WholePounds(edition::MaximumCapitalContribution);

} // namespace

PriceCheck CheckListPrice(std::string_view listPrice, std::string_view accessories)
{
    const Amount price = ReadAmount(listPrice);
    if (price > HighestPrice)
        return PriceCheck::ListPriceTooHigh;
    return price + ReadAmount(accessories) > HighestPrice ? PriceCheck::SumTooHigh : PriceCheck::Good;
}

PriceCheck CheckAccessories(std::string_view accessories)
{
    // Kept: with the accessories entered last a sum above the cap stands.
    return ReadAmount(accessories) > HighestPrice ? PriceCheck::AccessoriesTooHigh : PriceCheck::Good;
}

PriceCheck CheckContribution(std::string_view contribution)
{
    return ReadAmount(contribution) > HighestContribution ? PriceCheck::ContributionTooHigh : PriceCheck::Good;
}

} // namespace quillmere
