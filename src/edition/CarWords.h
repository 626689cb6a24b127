#pragma once

#include "edition/CarRates.h"
#include "edition/JoinedText.h"

#include <array>
#include <string_view>

/// What the screens say of a car that names a limit of the year or the year in which the CO2 figure began to count.
namespace quillmere::edition::car {

// Where the year has no limit of the price nobody reads the words that name it.
inline constexpr int NamedCarPrice = MaximumCarPrice.value_or(0);
inline constexpr JoinedText ListPriceTooHigh = Join({"Listprice value cannot exceed ", Pounds(NamedCarPrice)});
inline constexpr JoinedText AccessoriesTooHigh = Join({"Accessories value cannot exceed ", Pounds(NamedCarPrice)});
inline constexpr JoinedText BothTooHigh =
    Join({"Listprice and Accessories combined cannot exceed ", Pounds(NamedCarPrice)});
// Kept: the second car's message leaves a word out.
inline constexpr JoinedText BothTooHighOfSecondCar =
    Join({"Listprice and Accessories cannot exceed ", Pounds(NamedCarPrice)});
inline constexpr JoinedText ContributionTooHigh =
    Join({"Capital Contribution cannot be over £", Digits(MaximumCapitalContribution)});

/// The fuel letters in the order of the authority's guide to the form, with its names for them.
struct FuelName {
    std::string_view letter;
    std::string_view name;
};
inline constexpr auto Fuels = std::to_array<FuelName>({
    {"P", "Petrol"},
    {"D", "Diesel, not approved to Euro IV"},
    {"L", "Diesel approved to Euro IV"},
    {"E", "Electricity only"},
    {"H", "Hybrid electric"},
    {"B", "Gas only, or bi-fuel with an approved CO2 figure for gas"},
    {"C", "Conversion, and any other bi-fuel car"},
    {"G", "E85, bioethanol and petrol"},
});

inline constexpr std::string_view CO2FigureCaption = "Approved CO2 emissions figure (if registered from 1998)";
inline constexpr std::string_view NoCO2Figure = "Car registered before 1st Jan 1998.  No CO2 figure available";

} // namespace quillmere::edition::car
