#pragma once

#include "printing/forms/FormTables.h"

namespace quillmere {

/// The words of section F that differ between the form's page and the sheets for further cars.
struct CarSectionWords {
    std::string_view totalOfCars;
    std::string_view totalOfFuel;
};

/// The panel and the mark of section F.
inline constexpr Panel CarPanel{2, 141.5, 195, 272};
inline constexpr SectionMark CarMark{"F", 2, 141.5, "Cars and car fuel"};

// Section F of the form for two neighbouring cars, each in its column. The form's page has cars 1 and 2.

void DrawCarBoxes(FormSheet& sheet);
void DrawCarLabels(FormSheet& sheet, int firstCar, const CarSectionWords& words);
/// Fields are read under their stem with the car's number; the totals under `FTotalCashCars` and `FTotalCashFuel`.
void DrawCarValues(FormSheet& sheet, int firstCar, const FieldReader& read);

/// Lists the texts of one car that may be longer than their boxes.
void AddBoxedTextsOfCar(int car, std::vector<BoxedText>& texts);

} // namespace quillmere
