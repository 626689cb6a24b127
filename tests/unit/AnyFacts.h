#pragma once

#include "calculators/AccommodationBenefit.h"
#include "calculators/LoanBenefit.h"
#include "calculators/MileageBenefit.h"
#include "calculators/RelocationBenefit.h"
#include "calculators/VanBenefit.h"
#include "cars/CarBenefit.h"
#include "edition/Edition.h"
#include "frame/Dates.h"

#include <rapidcheck.h>

#include <string>
#include <vector>

/// Facts at random, such as the boxes of the screens let stand: what the rules, and what tells of them, are held to.
namespace quillmere::test {

/// A date of the tax year, counted from its first day.
inline std::string DayOfYear(int day)
{
    return FormatDate(*ReadDate(edition::TaxYearStart) + std::chrono::days(day));
}

/// A car with any fuel, figure, price, days and payments.
inline CarTexts AnyCar()
{
    CarTexts facts;
    facts.registrationDate = FormatDate(*ReadDate("01/01/1995") + std::chrono::days(*rc::gen::inRange(0, 5600)));
    facts.fuel = *rc::gen::elementOf(std::vector<std::string>{"B", "C", "D", "E", "G", "H", "L", "P"});
    if (*rc::gen::arbitrary<bool>())
        facts.co2 = std::to_string(*rc::gen::inRange(0, 450));
    facts.noCO2 = *rc::gen::arbitrary<bool>();
    facts.engine = std::to_string(*rc::gen::inRange(0, 6000));
    facts.listPrice = std::to_string(*rc::gen::inRange(0, 80001));
    facts.contribution = std::to_string(*rc::gen::inRange(0, 5001));
    facts.privateUse = std::to_string(*rc::gen::inRange(0, 9000));
    const int from = *rc::gen::inRange(0, 200);
    const int to = *rc::gen::inRange(200, 365);
    facts.dateFrom = DayOfYear(from);
    facts.dateTo = DayOfYear(to);
    // Periods as the boxes let them stand: in turn, each within the days of availability.
    int day = from;
    for (UnavailablePeriod& period : facts.periods) {
        const int first = day + *rc::gen::inRange(0, 60);
        const int last = first + *rc::gen::inRange(29, 90);
        if (last > to)
            break;
        period = {DayOfYear(first), DayOfYear(last)};
        day = last + 30;
    }
    if (*rc::gen::arbitrary<bool>())
        facts.dateWithdrawn = DayOfYear(*rc::gen::inRange(from, to + 1));
    return facts;
}

/// Dates as the boxes let them stand: each typed in turn, those that do not fit emptied.
inline VanDates AnyDates()
{
    VanDates dates;
    using enum VanDate;
    for (const VanDate box : {From1, To1, From2, To2, From3, To3, Withdrawn}) {
        if (*rc::gen::inRange(0, 5) == 0)
            continue;
        VanDates now = dates;
        now[box] = DayOfYear(*rc::gen::inRange(0, 365));
        dates = LeaveVanDate(dates, now, box);
    }
    return dates;
}

inline VanFacts AnyVan()
{
    return {.registrationNumber = "V",
            .dates = AnyDates(),
            .percentage = std::to_string(*rc::gen::inRange(0, 200)),
            .payments = std::to_string(*rc::gen::inRange(0, 4000)),
            .fuelTick = *rc::gen::arbitrary<bool>()};
}

/// Whole pounds below a limit.
inline std::string AnyPounds(int below)
{
    return std::to_string(*rc::gen::inRange(0, below));
}

inline LoanFacts AnyLoan()
{
    return {.ABox = AnyPounds(100000),
            .BBox = AnyPounds(100000),
            .interestRate = AnyPounds(20),
            .interestPaid = AnyPounds(10000),
            .dateFrom = DayOfYear(*rc::gen::inRange(0, 365)),
            .dateTo = DayOfYear(*rc::gen::inRange(0, 365))};
}

/// Pounds that may be below nothing.
inline std::string AnySignedPounds(int below)
{
    return std::to_string(*rc::gen::inRange(-below / 4, below));
}

inline BasicChargeFacts AnyBasicCharge()
{
    return {AnySignedPounds(9000), AnySignedPounds(9000), AnySignedPounds(12000)};
}

inline AdditionalChargeFacts AnyAdditionalCharge()
{
    return {AnySignedPounds(300000), AnySignedPounds(100000), std::to_string(*rc::gen::inRange(0, 367)),
            AnySignedPounds(20000),  AnySignedPounds(20000),  AnySignedPounds(9000)};
}

inline MileageFacts AnyMileage()
{
    return {.vehicle =
                *rc::gen::elementOf(std::vector<Vehicle>{Vehicle::CarOrVan, Vehicle::Motorcycle, Vehicle::Bicycle}),
            .ABox = AnyPounds(9000),
            .BBox = AnyPounds(9000),
            .DBox = AnyPounds(30000),
            .KBox = AnyPounds(900),
            .LBox = AnyPounds(9000)};
}

inline RelocationFacts AnyRelocation()
{
    return {AnyPounds(12000), AnyPounds(5000), AnyPounds(5000), AnyPounds(5000), AnyPounds(12000)};
}

} // namespace quillmere::test
