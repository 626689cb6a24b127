#include "desktop/layouts/PageParts.h"

#include "edition/CarWords.h"
#include "edition/FormWords.h"
#include "frame/Text.h"

namespace quillmere::layouts {

void PageHeader(Layout& layout)
{
    layout.headerHeight = 38;
    layout.Panel(0, 0, layout.width, 37);
    layout.Line(0, 37, layout.width, 1);
    layout.Place("Page1", 10, 6, 84, 26);
    layout.Place("Page2", 98, 6, 84, 26);
    layout.captionPlace = {.x = 190, .y = 2, .width = 430, .height = 34};
}

void Section(Layout& layout, int y, int height, std::string_view letter, std::string_view heading,
             std::string_view picture)
{
    layout.Panel(SectionX, y, SectionWidth, height);
    layout.Letter(SectionX, y, letter);
    layout.Text(TextX, y + 3, 430, heading, Heading);
    if (!picture.empty())
        Picture(layout, y + 26, picture);
}

void Picture(Layout& layout, int y, std::string_view picture)
{
    layout.Place(picture, SectionX - 2, y, 26, 26);
}

void TripleCaptions(Layout& layout, int y, std::string_view cost, std::string_view result)
{
    const bool twoLines = cost.find('\n') != std::string_view::npos;
    layout.Text(CostX, twoLines ? y : y + 14, GoodX - CostX, cost, Small);
    layout.Text(GoodX, y, 150, "Amount made good or\nfrom which tax deducted", Small);
    layout.Text(CashTagX, y + 14, 150, result, Small);
}

void Triple(Layout& layout, int y, const AmountTriple& boxes, std::string_view number, Liability liability)
{
    layout.Place(boxes.cost, CostX, y, AmountWidth);
    layout.Text(CostX + AmountWidth, y + 2, GoodX - CostX - AmountWidth, "-", Sign);
    layout.Place(boxes.madeGood, GoodX, y, AmountWidth);
    layout.Text(GoodX + AmountWidth, y + 2, CashTagX - GoodX - AmountWidth, "=", Sign);
    Single(layout, y, boxes.cashEquivalent, number, liability);
}

void Single(Layout& layout, int y, std::string_view box, std::string_view number, Liability liability)
{
    layout.Tag(CashTagX, y, number);
    layout.Place(box, CashX, y, AmountWidth);
    if (liability == Liability::Class1A)
        layout.Tag(MarkX, y);
}

namespace {

void CarsColumn(Layout& layout, int car, int x, int y)
{
    const auto name = [car](std::string_view stem) { return Numbered(stem, car); };
    const auto pound = [&](std::string_view stem, int top) {
        layout.Text(x - 12, top + 3, 12, "£");
        layout.Place(name(stem), x, top, AmountWidth);
    };
    layout.Text(x, y, 100, "Car " + std::to_string(car), Heading);
    y += 22;
    layout.Place(name("FMakeModel"), x, y, 262);
    layout.Place(name("FRegDate"), x, y += CarRow, 100);
    layout.Place(name("FC02"), x, y += CarRow, 60);
    layout.Text(x + 66, y + 3, 40, "g/km", Small);
    layout.Place(name("FNoC02"), x + 116, y, 22);
    layout.Text(x + 138, y + 4, 130, "no approved CO2 figure", Small);
    layout.Place(name("FEngine"), x, y += CarRow, 60);
    layout.Text(x + 66, y + 3, 40, "cc", Small);
    layout.Place(name("FFuel"), x, y += CarRow, 40);
    layout.Place(name("FDateFrom"), x, y += CarRow, 100);
    layout.Text(x + 102, y + 3, 28, "to", {.size = 11, .align = TextLook::Align::Centre});
    layout.Place(name("FDateTo"), x + 132, y, 100);
    for (int period = 1; period <= 4; ++period) {
        y += period == 1 ? CarRow + 4 : Layout::BoxHeight + 1;
        layout.PlaceAt(name("txtUnavailableFirst"), period, x, y, 100);
        layout.Text(x + 102, y + 3, 28, "to", {.size = 11, .align = TextLook::Align::Centre});
        layout.PlaceAt(name("txtUnavailableLast"), period, x + 132, y, 100);
    }
    pound("FListPrice", y += CarRow + 4);
    pound("FAccessories", y += CarRow);
    pound("FCaptContr", y += CarRow);
    pound("FPrivateUse", y += CarRow);
    layout.Place(name("FuelTick"), x, y += CarRow, 22);
    layout.Place(name("FDateWithdrawn"), x, y += CarRow, 100);
    layout.Place(name("FWithdrawnTick"), x + 132, y, 22);
    layout.Text(x + 154, y + 4, 110, "reinstated in year", Small);
    pound("FCashEqu", y += CarRow + 6);
    pound("FFuelEqu", y + CarRow);
}

} // namespace

int CarRows(Layout& layout, int y, int firstCar)
{
    const int first = y + 22;
    int row = first;
    const auto caption = [&](std::string_view text, int step = CarRow) {
        layout.Text(TextX, row + 3, 320, text);
        row += step;
    };
    caption("Make and Model");
    caption("Date first registered");
    caption(edition::car::CO2FigureCaption);
    caption("Engine size");
    layout.Text(TextX, row - 2, 330, "Type of fuel or power used.  Please use the key letter shown in the P11D Guide",
                Small, CarRow);
    row += CarRow;
    caption("Dates car was available: From", CarRow + 4);
    layout.Text(TextX, row + 3, 320, "Periods when the car was not available");
    layout.Text(TextX, row + 20, 320, "only enter periods of 30 days or more", Italic);
    row += 3 * (Layout::BoxHeight + 1) + CarRow + 4;
    caption("List price of car");
    caption("Accessories");
    caption(edition::form::CapitalContributions);
    caption("Amount paid by employee for private use of the car");
    caption("Fuel Benefit Required?");
    caption("Date free fuel was withdrawn", CarRow + 6);
    caption("Cash equivalent of each car");
    caption("Cash equivalent of fuel for each car");
    CarsColumn(layout, firstCar, 400, first - 22);
    CarsColumn(layout, firstCar + 1, 690, first - 22);
    return row;
}

} // namespace quillmere::layouts
