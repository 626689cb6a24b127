#include "printing/forms/ExtraCarSheets.h"

#include "edition/Edition.h"
#include "edition/FormWords.h"
#include "frame/Amount.h"
#include "frame/Text.h"
#include "printing/forms/CarSection.h"

namespace quillmere {

namespace {

/// The sum of a numbered field of the sheet's two cars, as its box reads: a zero is seen if one of them has a figure.
std::string TotalOf(const FieldReader& read, std::string_view stem, int firstCar)
{
    Amount total;
    bool hasFigure = false;
    for (const int car : {firstCar, firstCar + 1}) {
        const std::string figure = read(Numbered(stem, car));
        total += ReadAmount(figure);
        hasFigure = hasFigure || !figure.empty();
    }
    return AmountText(total, hasFigure ? edition::FormatMoneyZero : edition::FormatMoneyBlankZero);
}

} // namespace

bool HaveCashEquivalents(Records& records, std::string_view table, int firstCar, int lastCar)
{
    for (int car = firstCar; car <= lastCar; ++car)
        for (const std::string_view stem : {"FCashEqu", "FFuelEqu"})
            if (!records.Field(table, Numbered(stem, car)).empty())
                return true;
    return false;
}

void DrawExtraCarSheet(PageLayer& page, const ExtraCarSheet& sheet, std::string_view nationalInsurance,
                       const FieldReader& readCars)
{
    const FieldReader read = [&](std::string_view field) {
        if (field == "FTotalCashCars")
            return TotalOf(readCars, "FCashEqu", sheet.firstCar);
        if (field == "FTotalCashFuel")
            return TotalOf(readCars, "FFuelEqu", sheet.firstCar);
        // The tick beside the date of withdrawal has a name of its own in this table.
        if (field.starts_with("FDateWithdrawnTick"))
            return readCars(Numbered("FWithdrawnTick", field.back() - '0'));
        return readCars(field);
    };

    FormSheet form(page);
    page.vsBookmark(sheet.bookmark);
    if (page.HasShading())
        DrawPanels(page, std::span(&CarPanel, 1), page.ColLight);
    page.vsFontName("Arial");
    DrawNumberAtTop(page, nationalInsurance);
    DrawSectionMarks(form, std::span(&CarMark, 1));
    DrawCarBoxes(form);
    DrawCarLabels(form, sheet.firstCar,
                  {.totalOfCars = edition::form::TotalOfExtraCars, .totalOfFuel = edition::form::TotalOfExtraCarFuel});
    DrawIdentifier(page, 276, edition::form::P11DIdentifier);
    BeginValues(page);
    DrawCarValues(form, sheet.firstCar, read);
}

} // namespace quillmere
