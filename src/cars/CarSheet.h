#pragma once

#include "cars/CarBenefit.h"

#include <functional>
#include <string>
#include <string_view>

/// The rules of the car notepad (`FNotepad`), which keeps those of an older year. They follow the columns' rules step
/// by step and differ from them where edition/LeftOvers.h has a number of the sheet.
namespace quillmere {

/// Column of the reference database's `Figures` that holds a rate.
enum class SheetColumn { Column1, Column2 };

/// Looks a rate up in the reference database: the column's text in the row whose `C02` equals the figure, or an empty
/// text. Called only for a figure between the sheet's limits.
using SheetLookUp = std::function<std::string(int figure, SheetColumn column)>;

/// The sheet as its boxes read. Of the car the tick for no CO2 figure is not looked at: an empty `C02Level` says it.
struct CarSheetFacts {
    CarTexts car;
    bool fuelTick = false; ///< `Check1`
};

/// The working of the sheet, box by box. Nothing but E's limits is rounded or cut: P, R, V and Y stand at four
/// decimals.
struct CarSheetWorking {
    Amount A, B, D;
    Amount total; ///< `ABox`: A + B
    Amount E;
    std::int16_t G = 0;            ///< CO2 figure rounded by its last digit
    std::int16_t H = 0;            ///< basic percentage
    std::int16_t J = 0;            ///< points off for the fuel
    std::int16_t fullDiscount = 0; ///< points off for a low figure
    std::int16_t N = 0;
    Amount P;
    std::int16_t Q = 0;
    Amount R, S, T, U;
    Amount carBenefit; ///< U, or 0 if U is negative
    Amount V;
    FuelDays fuelDays;
    Amount Y;
    Amount Z; ///< V - Y, the fuel benefit
};

/// Works out the sheet. Without the fuel tick V, X, Y and Z are 0.
/// Throws as `CarBenefit` does, and whatever `lookUp` throws.
CarSheetWorking CarSheet(const CarSheetFacts& facts, const SheetLookUp& lookUp);

/// The CO2 figure as the sheet rounds it: a last digit of 6 to 9 becomes 5 and one of 1 to 4 becomes 0, behind the
/// first two characters of the text; any other text is read as it stands. Throws Failure for a figure
/// beyond 16 bits.
std::int16_t SheetFigure(std::string_view co2);

/// True if the sheet takes the text as a fuel letter; an empty text is taken too.
bool IsSheetFuelLetter(std::string_view fuel);

/// A make of the reference database as page 1 takes it.
struct ShortMake {
    std::string_view make;
    std::string_view shortened;
};
inline constexpr auto ShortMakes = std::to_array<ShortMake>({
    {"ROLLS-ROYCE AND BENTLEY MOTOR CARS", "R-ROYCE & BENTLEY"},
    {"MG ROVER GROUP LTD", "MG ROVER"},
    {"MORGAN MOTOR COMPANY", "MORGAN"},
});

/// Make, a blank and model, with the long makes shortened: what `FMakeModelN` takes.
std::string MakeAndModel(std::string_view make, std::string_view model);

} // namespace quillmere
