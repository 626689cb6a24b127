#pragma once

#include <string_view>

/// What the price boxes of a car are held to when they are left, on the columns and on the car notepad. Each check
/// takes the texts of the boxes; a box whose price is refused is emptied.
namespace quillmere {

/// What leaving a price comes to.
enum class PriceCheck {
    Good,
    ListPriceTooHigh,    ///< above the cap on a car's price by itself
    SumTooHigh,          ///< above it with the accessories
    AccessoriesTooHigh,  ///< above it by themselves
    ContributionTooHigh, ///< above the most that counts
};

/// The list price is left. An exact sum of the cap passes.
PriceCheck CheckListPrice(std::string_view listPrice, std::string_view accessories);

/// The accessories are left. Their sum with the list price is not looked at.
PriceCheck CheckAccessories(std::string_view accessories);

/// The capital contribution is left.
PriceCheck CheckContribution(std::string_view contribution);

} // namespace quillmere
