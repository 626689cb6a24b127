#pragma once

#include <string_view>

/// The words of the section reports that belong to the year: its label, and the limits and rates that a label names.
/// The labels that stay from year to year are in the tables of printing/.
namespace quillmere::edition {

/// Cars and car fuel.
inline constexpr std::string_view ReportCarPrice = "Price of the car for 2010-11";
inline constexpr std::string_view ReportCarCharge = "Car benefit charge for 2010-11 on this car is";
inline constexpr std::string_view ReportCarFuelCharge = "Car fuel benefit charge for 2010-11 on this car is";

/// Vans.
inline constexpr std::string_view ReportVanFullCharge = "Van benefit charge for 2010-11";
inline constexpr std::string_view ReportVanAvailability = "Van availability for 2010-11";
inline constexpr std::string_view ReportVanCharge = "Van benefit charge for this van in 2010-11";
inline constexpr std::string_view ReportVanFuelCharge = "Van fuel benefit charge for this van in 2010-11";

/// Living accommodation.
inline constexpr std::string_view ReportCostLimit = "Excess of cost over £75,000";

/// Mileage allowance and passenger payments.
inline constexpr std::string_view ReportMileagePaid = "Mileage allowance payments made to employee in 2010-11";
inline constexpr std::string_view ReportMiles = "Total business miles travelled by the employee in 2010-11";
inline constexpr std::string_view ReportPassengers = "Total of any passenger payments to the employee in 2010-11";
inline constexpr std::string_view ReportPassengerRate = "Number of business miles x 5p";

/// Qualifying relocation.
inline constexpr std::string_view ReportExemption = "Exempt amount for 2010-11";
inline constexpr std::string_view ReportPriorExpenses = "Qualifying expenses and benefits incurred in 2009-10";

} // namespace quillmere::edition
