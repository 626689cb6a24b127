#include "calculators/AccommodationBenefit.h"
#include "calculators/LoanBenefit.h"
#include "calculators/MileageBenefit.h"
#include "calculators/RelocationBenefit.h"
#include "calculators/VanBenefit.h"
#include "cars/CarBenefit.h"
#include "cars/CarSheet.h"
#include "declaration/Class1A.h"
#include "edition/CarRates.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <cstdint>

// Each pair "what/rule" and "what/bare" works the same case. The rule reads the texts of the boxes and gives the
// working paper; the bare side has its numbers and day counts ready in plain whole numbers and doubles and does the
// arithmetic alone. The distance between the two is what reading the texts and the dates costs.
namespace quillmere {
namespace {

/// Makes the compiler take a number as unknown, so that the arithmetic is done in every round.
template<typename Number>
Number Unknown(Number number)
{
    benchmark::DoNotOptimize(number);
    return number;
}

void Rule(benchmark::State& state, auto work)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(work());
}

double RoundUp(double pounds)
{
    return std::ceil(std::nearbyint(pounds * 10000) / 10000);
}

// ---- cars ----

CarTexts Car()
{
    return {.registrationDate = "01/02/2008",
            .fuel = "H",
            .co2 = "152",
            .dateFrom = "16/04/2010",
            .dateTo = "31/03/2011",
            .listPrice = "  21333.33",
            .accessories = "   1200.00",
            .contribution = "   1000.00",
            .privateUse = "    250.00",
            .periods = {{{"01/06/2010", "30/06/2010"}, {"01/01/2011", "31/01/2011"}}},
            .dateWithdrawn = "05/10/2010"};
}

double BareCar()
{
    const double c = Unknown(21333.33) + Unknown(1200.0);
    const double e = std::clamp(c - Unknown(1000.0), 0.0, 80000.0);
    const int g = Unknown(152) / 5 * 5;
    const int n = edition::CO2Table[static_cast<std::size_t>((g - 130) / 5)].petrol - Unknown(3);
    const double p = std::floor(e * n / 100 + 0.001);
    const int q = Unknown(10) + Unknown(5) + Unknown(30) + Unknown(31);
    const double s = p - std::floor(p * q / 365 + 0.999);
    const double cash = std::max(s - Unknown(250.0), 0.0);
    const double v = n * 18000.0 / 100;
    const int x = q + Unknown(177) - Unknown(31);
    return cash + v - std::floor(v * x / 365 + 0.999);
}

double BareCarTotal()
{
    double total = 0;
    for (int car = 0; car < 6; ++car)
        total += Unknown(2700.0);
    return total;
}

// ---- calculators ----

VanFacts Van()
{
    VanFacts facts{.registrationNumber = "A1 VAN", .percentage = "30", .payments = "    100.00", .fuelTick = true};
    facts.dates.texts = {"", "31/12/2010", "01/07/2010", "31/07/2010", "01/09/2010", "30/09/2010", "20/06/2010"};
    return facts;
}

double BareVan()
{
    const int e = Unknown(95) + Unknown(31) + Unknown(30);
    const double g = 3000 - RoundUp(Unknown(3000.0) * e / 365);
    const double h = Unknown(30.0);
    const double k = g - RoundUp(g * h / 100);
    const double l = Unknown(100.0);
    const double m = l > k ? 0 : k - l;
    const int s = e + Unknown(10) + Unknown(31) + Unknown(92);
    const double v = 550 - RoundUp(Unknown(550.0) * s / 365);
    return m + v - RoundUp(v * (h / 100));
}

LoanFacts Loan()
{
    return {.ABox = "  15300.00",
            .BBox = "  14085.00",
            .interestRate = "4",
            .interestPaid = "    443.25",
            .maxAmount = "  15300.00",
            .dateFrom = "01/07/2010"};
}

double BareLoan()
{
    const double d = (Unknown(15300.0) + Unknown(14085.0)) / 2;
    const double months = std::nearbyint(d * Unknown(9) / 12 * 10000) / 10000;
    const double interest = std::nearbyint(months * Unknown(4.0) / 100 * 10000) / 10000;
    return std::max(interest - Unknown(443.25), 0.0);
}

double BareAccommodation()
{
    const double j = Unknown(175000.0) - Unknown(0.0) - 75000;
    const double k = j * 4 / 100;
    const double l = std::nearbyint(k * (Unknown(183) / 366.0) * 10000) / 10000;
    return std::max(l - (Unknown(1250.0) - Unknown(1000.0)), 0.0) + Unknown(5000.0);
}

double BareMileage()
{
    const double c = std::max(Unknown(5000.0) - Unknown(0.0), 0.0);
    const double j = 10000 / 100 * 40 + (Unknown(12000.0) - 10000) / 100 * 25;
    return std::max(c - j / 100, 0.0) + std::max(Unknown(100.0) - Unknown(1000.0) / 100 * 5, 0.0);
}

double BareRelocation()
{
    const double d = Unknown(6000.0) + (Unknown(400.0) - Unknown(100.0)) + Unknown(50.0);
    const double e = 8000 - Unknown(3000.0);
    return e > d ? 0 : d - e;
}

// ---- declaration ----

constexpr std::array<std::string_view, Class1AFields.size()> Employee = {
    "    100.00", "", "   3200.00", "   2700.00", "   3000.00", "    550.00", "    500.00", "See Attach", "", "Nil", "",
    "",           ""};

double BareEmployee()
{
    double total = 0;
    for (std::size_t field = 0; field < Class1AFields.size(); ++field)
        total += Unknown(100.0);
    return total;
}

double BareContributions()
{
    return Unknown(156500.0) * 12.8 / 100;
}

#define QUILLMERE_PAIR(name, rule, bare)                                                                               \
    BENCHMARK_CAPTURE(Rule, name##_rule, rule)->Name(#name "/rule");                                                   \
    BENCHMARK_CAPTURE(Rule, name##_bare, bare)->Name(#name "/bare")

QUILLMERE_PAIR(car, ([texts = Car()] { return CarBenefit(ReadCar(texts)); }), BareCar);
QUILLMERE_PAIR(car_totals,
               ([texts = std::array<std::string, 6>{"   2700.00", "   2700.00", "   2700.00", "   2700.00",
                                                    "   2700.00", "   2700.00"}] { return TotalOfCars(texts).total; }),
               BareCarTotal);
QUILLMERE_PAIR(car_sheet, ([facts = CarSheetFacts{.car = Car(), .fuelTick = true}] {
                   return CarSheet(facts, [](int, SheetColumn) { return std::string(); });
               }),
               BareCar);
QUILLMERE_PAIR(van, ([facts = Van()] { return VanBenefit(facts); }), BareVan);
QUILLMERE_PAIR(loan, ([facts = Loan()] { return LoanBenefit(facts); }), BareLoan);
QUILLMERE_PAIR(accommodation,
               ([facts = AdditionalChargeFacts{.FBox = " 175000.00",
                                               .AddChargeDays = "183",
                                               .MBox = "   1250.00",
                                               .NBox = "   1000.00",
                                               .EBox = "   5000.00"}] { return AdditionalCharge(facts); }),
               BareAccommodation);
QUILLMERE_PAIR(mileage,
               ([facts = MileageFacts{.ABox = "   5000.00", .DBox = "12000", .KBox = "    100.00", .LBox = "1000"}] {
                   return MileageBenefit(facts);
               }),
               BareMileage);
QUILLMERE_PAIR(relocation,
               ([facts = RelocationFacts{"   6000.00", "    400.00", "    100.00", "     50.00", "   3000.00"}] {
                   return RelocationBenefit(facts);
               }),
               BareRelocation);
QUILLMERE_PAIR(
    employee_total, [] { return Class1ABenefits(Employee); }, BareEmployee);
QUILLMERE_PAIR(
    contributions, [] { return ComputeSection1(Unknown(Amount::WholePounds(156500))); }, BareContributions);

} // namespace
} // namespace quillmere

BENCHMARK_MAIN();
