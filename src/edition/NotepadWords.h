#pragma once

#include "edition/AccommodationRates.h"
#include "edition/Edition.h"
#include "edition/JoinedText.h"
#include "edition/LoanRates.h"
#include "edition/MileageRates.h"
#include "edition/RelocationRates.h"

#include <array>
#include <string_view>

/// Captions of the calculators' notepads that name the year, a rate or a limit of it, and the guidance on the cost of
/// living accommodation. The spelling is the notepads' own.
namespace quillmere::edition::notepad {

// Vans. %DIY% becomes the number of days of the tax year.
inline constexpr JoinedText VanStandardCharge = Join({"Standard charge for this van for the whole of ", YearLabel});
inline constexpr std::string_view VanReductionFormula = "(A*E) / %DIY%";
inline constexpr JoinedText VanResult = Join({"Van benefit charge for this van in ", YearLabel});
inline constexpr std::string_view VanFuelReductionFormula = "(P X S) / %DIY%";
inline constexpr JoinedText VanFuelResult = Join({"Van Fuel Benefit charge for this van in ", YearLabel});

// Loans.
inline constexpr JoinedText LoanOpeningBalance =
    Join({"Maximum balance on later of day loan was taken out, or ", LongYearEndPrior});
inline constexpr JoinedText LoanClosingBalance =
    Join({"Maximum balance on earlier of day loan was discharged, or ", LongYearEnd});
inline constexpr JoinedText LoanInterestPaid = Join({"Enter interest paid in ", YearLabel});
inline constexpr JoinedText LoanDateMade = Join({"Date loan was made in ", YearLabel, " if applicable"});
inline constexpr JoinedText LoanDateDischarged = Join({"Date loan was discharged in ", YearLabel, " if applicable"});

// Living accommodation.
inline constexpr JoinedText AccommodationExcess =
    Join({"Excess of cost over ", Pounds(Accommodation.costLimit), " is H minus ", Pounds(Accommodation.costLimit)});
// Kept: the notepad's own spelling.
inline constexpr JoinedText AccommodationRate = Join({"Multilply J by ", OfficialRateOfInterest, "% "});
// Kept: the caption says 365 and the days are divided by 366.
inline constexpr std::string_view AccommodationDays = "Divide the number of days by 365 and multiply the result by K";
inline constexpr JoinedText AccommodationCostTooLow =
    Join({"Value must not be lower than ", Pounds(Accommodation.costLimit)});
inline constexpr JoinedText AccommodationDaysOutOfRange =
    Join({"Value can not be greater than ", Digits(Accommodation.longestStay)});

/// A heading of the guidance on the cost of accommodation and what stands below it.
struct GuidanceParagraph {
    std::string_view heading, text;
};
inline constexpr auto AccommodationGuidance = std::to_array<GuidanceParagraph>({
    {.heading = "When there is an additional charge",
     .text = "The additional charge is due only if the accommodation cost more than £75,000. Accommodation that cost "
             "£75,000 or less has the basic charge alone, and boxes F to R are left empty. The charge is worked out on "
             "the part of the cost above £75,000."},
    {.heading = "Cost of acquisition",
     .text = "Start with what was paid to acquire the property, or the interest in it, from which the accommodation is "
             "provided: the price paid by you, by whoever provides the accommodation, or by anyone connected with "
             "either, not counting fees. Put the part of the price that belongs to this accommodation if more than one "
             "was bought together."},
    {.heading = "Improvements",
     .text = "Add what the same persons spent on improvements before the tax year began. An improvement makes the "
             "property better than it was: an extension, a new garage, central heating where there was none. Repairs "
             "and redecoration are not improvements. Improvements made in the year count from the next year on. Enter "
             "the cost of acquisition and of improvements together in box F."},
    {.heading = "Payments made by the employee",
     .text = "Enter in box G what the employee paid towards the cost of acquiring or improving the property, or gave "
             "for the grant of the tenancy. It is taken off the cost before the £75,000. Rent is not entered there: "
             "rent for the year goes into box M."},
    {.heading = "If the property was acquired long before the employee moved in",
     .text = "If everybody who provides the accommodation had the property for the six years before the employee first "
             "moved in, and that was after 30 March 1983, the market value on the day of moving in takes the place of "
             "the cost of acquisition and earlier improvements. This applies only if the cost itself, with the "
             "improvements, was more than £75,000."},
});

// Mileage.
inline constexpr JoinedText MileagePaid = Join({"Mileage allowance payments made to employee in ", YearLabel});
inline constexpr JoinedText MileageMiles = Join({"Total business miles travelled by the employee in ", YearLabel});
inline constexpr JoinedText MileagePassengers = Join({"L x ", Digits(Mileage.passenger), "p"});

// Relocation.
inline constexpr std::string_view RelocationPriorYear = "Qualifying expenses and benefits incurred in 2009-2010";
inline constexpr JoinedText RelocationExempt =
    Join({"Exempt amount for ", YearLabelLong, " = ", Pounds(RelocationExemption)});

} // namespace quillmere::edition::notepad
