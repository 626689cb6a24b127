#pragma once

#include "edition/MileageRates.h"
#include "frame/Amount.h"

#include <array>
#include <string>

/// What mileage allowance and passenger payments exceed the approved amounts by. ITEPA 2003 s.229 to s.236.
namespace quillmere {

/// The kinds of vehicle in the order of the columns; column 1 is `CarOrVan`.
enum class Vehicle { CarOrVan, Motorcycle, Bicycle };

/// The entered boxes of one vehicle.
struct MileageFacts {
    Vehicle vehicle = Vehicle::CarOrVan;
    std::string ABox; ///< allowance paid
    std::string BBox; ///< of which taxed already
    std::string DBox; ///< business miles
    std::string KBox; ///< passenger payments
    std::string LBox; ///< miles for which they were made
};

/// The working paper of one vehicle. Amounts in pounds, D and L in miles.
struct MileageWorking {
    Amount A, B;
    Amount C; ///< A - B, never negative
    double D = 0;
    Amount J; ///< approved amount
    Amount K;
    double L = 0;
    Amount M;                 ///< approved passenger payments
    Amount taxableMileage;    ///< stands in no box of its own
    Amount taxablePassengers; ///< stands in no box of its own
    Amount Q;                 ///< total taxable
};

/// Works out one vehicle (recalculation of `ENotepad`).
MileageWorking MileageBenefit(const MileageFacts& facts, const edition::MileageRates& rates = edition::Mileage);

/// The miles as they count: those of the first band in whole miles, more than those with their decimals.
double MilesThatCount(double miles, const edition::MileageRates& rates = edition::Mileage);

/// Approved amount for so many miles (box J).
Amount ApprovedMileage(double miles, const edition::MileageRate& rate, const edition::MileageRates& rates);

/// What Ok makes of the three `QBox` rows.
struct MileageTotal {
    std::string box;    ///< box `ETaxAmount` of the page
    std::string stored; ///< field `ETaxAmount`
};
MileageTotal TotalOfMileage(const std::array<std::string, 3>& taxable);

} // namespace quillmere
