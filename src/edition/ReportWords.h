#pragma once

#include "edition/AccommodationRates.h"
#include "edition/Edition.h"
#include "edition/JoinedText.h"
#include "edition/MileageRates.h"

/// The words of the section reports that belong to the year: its label, and the limits and rates that a label names.
/// The labels that stay from year to year are in the tables of printing/.
namespace quillmere::edition::report {

/// Cars and car fuel.
inline constexpr JoinedText CarPrice = Join({"Price of the car for ", YearLabel});
inline constexpr JoinedText CarCharge = Join({"Car benefit charge for ", YearLabel, " on this car is"});
inline constexpr JoinedText CarFuelCharge = Join({"Car fuel benefit charge for ", YearLabel, " on this car is"});

/// Vans.
inline constexpr JoinedText VanFullCharge = Join({"Van benefit charge for ", YearLabel});
inline constexpr JoinedText VanAvailability = Join({"Van availability for ", YearLabel});
inline constexpr JoinedText VanCharge = Join({"Van benefit charge for this van in ", YearLabel});
inline constexpr JoinedText VanFuelCharge = Join({"Van fuel benefit charge for this van in ", YearLabel});

/// Living accommodation.
inline constexpr JoinedText CostLimit = Join({"Excess of cost over ", Pounds(Accommodation.costLimit)});

/// Mileage allowance and passenger payments.
inline constexpr JoinedText MileagePaid = Join({"Mileage allowance payments made to employee in ", YearLabel});
inline constexpr JoinedText Miles = Join({"Total business miles travelled by the employee in ", YearLabel});
inline constexpr JoinedText Passengers = Join({"Total of any passenger payments to the employee in ", YearLabel});
inline constexpr JoinedText PassengerRate = Join({"Number of business miles x ", Digits(Mileage.passenger), "p"});

/// Qualifying relocation.
inline constexpr JoinedText Exemption = Join({"Exempt amount for ", YearLabel});
inline constexpr JoinedText PriorExpenses = Join({"Qualifying expenses and benefits incurred in ", YearLabelPrior});

} // namespace quillmere::edition::report
