#include "cars/CarSheet.h"

#include "cars/CO2Calculations.h"
#include "cars/WholeNumbers.h"
#include "edition/Edition.h"
#include "edition/LeftOvers.h"
#include "frame/Text.h"

#include <algorithm>

namespace quillmere {

namespace {

const edition::SheetEngineColumn& ColumnOfEngine(std::int32_t engine)
{
    const auto column =
        std::ranges::find_if(edition::SheetEngineTable, [engine](const auto& row) { return engine < row.below; });
    return column == edition::SheetEngineTable.end() ? edition::SheetEngineTable.back() : *column;
}

const edition::SheetDiscountRow* DiscountsOf(std::string_view fuel)
{
    const auto row = std::ranges::find(edition::SheetDiscounts, fuel, &edition::SheetDiscountRow::letter);
    return row == edition::SheetDiscounts.end() ? nullptr : &*row;
}

int RateByEngine(std::string_view fuel, std::int32_t engine)
{
    if (fuel == "E")
        return edition::SheetElectricRate;
    const edition::SheetEngineColumn& column = ColumnOfEngine(engine);
    return fuel == "D" ? column.diesel : column.others;
}

int RateByFigure(std::string_view fuel, int figure, const SheetLookUp& lookUp)
{
    const edition::SheetCO2Limits& limits = edition::SheetCO2;
    const bool diesel = fuel == "D";
    if (figure < limits.lowest)
        return diesel ? limits.dieselFirst : limits.othersFirst;
    if (figure > limits.highest)
        return diesel ? limits.dieselLast : limits.othersLast;
    return ReadWholeNumber(lookUp(figure, diesel ? SheetColumn::Column2 : SheetColumn::Column1));
}

int FullDiscount(std::string_view fuel, int figure)
{
    const edition::SheetFullDiscount& rule = edition::SheetFullDiscounts;
    if (rule.letters.find(fuel) == std::string_view::npos || figure > rule.upTo)
        return 0;
    return FloorQuotient(rule.below - figure, rule.step);
}

void WorkOutPercentage(CarSheetWorking& working, const CarFacts& car, std::string_view co2, const SheetLookUp& lookUp)
{
    if (IsBeforeCO2Regime(car.registered)) {
        working.N = ShortNumber(ColumnOfEngine(car.engine).older);
        return;
    }
    const edition::SheetDiscountRow* discounts = DiscountsOf(car.fuel);
    if (car.fuel != "E" && car.co2) {
        working.G = SheetFigure(co2);
        working.H = ShortNumber(RateByFigure(car.fuel, working.G, lookUp));
        working.J = ShortNumber(discounts ? discounts->withFigure : 0);
        working.fullDiscount = ShortNumber(FullDiscount(car.fuel, working.G));
    } else {
        working.H = ShortNumber(RateByEngine(car.fuel, car.engine));
        working.J = ShortNumber(discounts ? discounts->withoutFigure : 0);
    }
    working.N = ShortNumber(working.H - (working.J + working.fullDiscount));
}

Amount PlainShare(Amount fullYear, std::int16_t days, int divisor)
{
    return Amount::FromDouble((fullYear * days).Pounds() / divisor);
}

} // namespace

CarSheetWorking CarSheet(const CarSheetFacts& facts, const SheetLookUp& lookUp)
{
    const CarFacts car = ReadCar(facts.car);
    CarSheetWorking working;
    working.A = car.listPrice;
    working.B = car.accessories;
    working.D = car.contribution;
    working.total = working.A + working.B;
    working.E = CarPrice(working.total, working.D);

    if (car.isCharged) {
        working.T = car.privateUse;
        WorkOutPercentage(working, car, facts.car.co2, lookUp);
        working.P = Amount::FromDouble((working.E * working.N).Pounds() / 100);
        working.Q = UnavailableDays(car);
        // Kept: the caption says 366, and the car's deduction is by the days of the year in which the tax year ends.
        working.R = PlainShare(working.P, working.Q, DaysInYear(ReadWholeNumber(edition::YearEndYear)));
        working.S = working.P - working.R;
        working.U = working.S - working.T;
        working.carBenefit = std::max(working.U, Amount());
    }

    working.fuelDays = DaysWithoutFuel(car, working.Q);
    if (!facts.fuelTick) {
        working.fuelDays.X = 0;
        return working;
    }
    working.V = Amount::WholePounds(std::int64_t{working.N} * edition::SheetFuelMultiplier / 100);
    working.Y = PlainShare(working.V, working.fuelDays.X, edition::SheetFuelDivisor);
    working.Z = working.V - working.Y;
    return working;
}

std::int16_t SheetFigure(std::string_view co2)
{
    std::string text = Trim(co2);
    const char last = text.empty() ? '0' : text.back();
    // Kept: the digit goes behind the first two characters, which suits figures of three digits and no others: 98
    // becomes 985.
    if (last >= '6' && last <= '9')
        text = Left(text, 2) + "5";
    else if (last >= '1' && last <= '4')
        text = Left(text, 2) + "0";
    return ShortNumber(ReadWholeNumber(text));
}

bool IsSheetFuelLetter(std::string_view fuel)
{
    return fuel.empty() || (fuel.size() == 1 && edition::SheetFuelLetters.find(fuel) != std::string_view::npos);
}

std::string MakeAndModel(std::string_view make, std::string_view model)
{
    const auto row = std::ranges::find(ShortMakes, make, &ShortMake::make);
    return std::string(row == ShortMakes.end() ? make : row->shortened) + " " + std::string(model);
}

} // namespace quillmere
