#pragma once

#include "cars/CarDates.h"
#include "edition/Edition.h"
#include "frame/Amount.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

/// The car benefit and the car fuel benefit of one car, and the totals of the six. ITEPA 2003 s.114 to s.153.
namespace quillmere {

/// A car as its column's boxes read when the routine is run.
struct CarTexts {
    std::string registrationDate; ///< `FRegDateN`
    std::string fuel;             ///< `FFuelN`, one letter
    std::string co2;              ///< `FC02N`, g/km; empty: the car has no figure
    bool noCO2 = false;           ///< `FNoC02N`
    std::string engine;           ///< `FEngineN`, cc
    std::string dateFrom;         ///< `FDateFromN`; empty: the first day of the tax year
    std::string dateTo;           ///< `FDateToN`; empty: the last day of the tax year
    std::string listPrice;        ///< `FListPriceN`, A
    std::string accessories;      ///< `FAccessoriesN`, B
    std::string contribution;     ///< `FCaptContrN`, D
    std::string privateUse;       ///< `FPrivateUseN`, T
    UnavailablePeriods periods;   ///< rows of which one box is empty count nothing
    std::string dateWithdrawn;    ///< `FDateWithdrawnN`
    bool reinstated = false;      ///< `FWithdrawnTickN`
};

/// What the rules go by: the texts, read once.
struct CarFacts {
    Amount listPrice, accessories, contribution; ///< A, B, D
    bool isCharged = false;                      ///< date of registration and fuel letter are known

    // Of a car that is charged.
    Day registered;
    std::string fuel;
    std::optional<std::int32_t> co2; ///< g/km; nothing: the car has no figure
    bool noCO2 = false;
    std::int32_t engine = 0; ///< cc
    Amount privateUse;       ///< T

    DayRange available{edition::TaxYearStartDay, edition::TaxYearEndDay};
    std::vector<DayRange> unavailable;   ///< in the order of the rows, of those with both dates
    std::optional<Day> fuelWithdrawn;    ///< for good, and before the last day of the year
    bool fuelWithdrawnAtYearEnd = false; ///< for good, on the last day of the year
};

/// Reads the boxes. Of a car that is not charged a text that is no date is passed over unless free fuel was withdrawn
/// from it. Throws Failure with "Type mismatch" for a text that is no date and decides something.
CarFacts ReadCar(const CarTexts& boxes);

/// Percentages of a car: what the CO2 figure, the engine and the fuel make of it.
struct CarPercentages {
    std::int16_t G = 0; ///< CO2 figure rounded down to a multiple of five
    std::int16_t H = 0; ///< basic percentage
    std::int16_t J = 0; ///< points off for the fuel
    std::int16_t M = 0; ///< points that entered N by way of the CO2 figure
    std::int16_t N = 0; ///< appropriate percentage

    friend bool operator==(const CarPercentages&, const CarPercentages&) = default;
};

/// Days after free fuel was withdrawn.
struct FuelDays {
    std::int16_t W = 0; ///< days after withdrawal that Q does not hold already
    std::int16_t X = 0; ///< all days without the benefit

    friend bool operator==(const FuelDays&, const FuelDays&) = default;
};

/// The working paper of a car, box by box. Amounts in pounds; percentages and days whole.
struct CarWorking {
    Amount A, B, D; ///< list price, accessories, capital contributions, as read
    Amount C;       ///< A + B
    Amount E;       ///< price after contributions, from 0 to the cap
    CarPercentages percentages;
    Amount P;              ///< full-year benefit
    std::int16_t Q = 0;    ///< days the car was unavailable
    Amount R;              ///< deduction for them
    Amount S;              ///< P - R
    Amount T;              ///< payments for private use
    Amount U;              ///< S - T, may be negative
    Amount cashEquivalent; ///< `FCashEquN`: U, or 0 if U is negative
    Amount V;              ///< full-year fuel charge
    FuelDays fuelDays;
    Amount Y;                        ///< deduction for X
    std::int16_t fuelEquivalent = 0; ///< `FFuelEquN`: V - Y; shown only where free fuel was provided
};

/// Price of the car (box E): total price less contributions, held between 0 and the cap, which comes last.
Amount CarPrice(Amount total, Amount contribution);

/// What a car's percentage goes by.
enum class PercentageBy {
    EngineAlone, ///< registered before the CO2 figure began to count
    CO2,
    EngineAndFuel, ///< a newer car without a figure, or an electric one
    Nothing,
};
PercentageBy DecidedBy(const CarFacts& facts);

/// Percentages of a car whose date of registration and fuel letter are known.
/// Throws Failure for a CO2 figure beyond 16 bits.
CarPercentages PercentagesOf(const CarFacts& facts);

/// Full-year benefit (box P) in whole pounds. The thousandth that is added before the cut keeps 3199.9995 at 3200.
Amount FullYearBenefit(Amount price, std::int16_t percentage);

/// Days on which the car was unavailable (box Q): before `dateFrom`, after `dateTo`, and the four periods as they
/// stand. Throws Failure for a count beyond 16 bits.
std::int16_t UnavailableDays(const CarFacts& facts);

/// Deduction for `days` of `fullYear` (boxes R and Y) in whole pounds, rounded up from a thousandth on.
Amount DeductionForDays(Amount fullYear, std::int16_t days);

/// Days without free fuel (boxes W and X). Throws as `UnavailableDays` does.
FuelDays DaysWithoutFuel(const CarFacts& facts, std::int16_t unavailable);

/// Works out one car, box by box (`CarBenefitCompute`). A car without a date of registration or a fuel letter has its
/// prices C and E and nothing else; T is 0 there too.
/// Throws Failure with "Overflow" where a whole number leaves 16 bits.
CarWorking CarBenefit(const CarFacts& facts);

/// A total of the six cars (`ComputeCash`, `ComputeFuel`).
struct CarTotal {
    Amount total;
    bool any = false; ///< one of the texts was not empty, so that a total of 0 is shown

    /// What the total's box reads.
    std::string Text() const;
};

/// Adds the six cars' figures, cars 1 to 6 in turn.
CarTotal TotalOfCars(const std::array<std::string, 6>& figures);

} // namespace quillmere
