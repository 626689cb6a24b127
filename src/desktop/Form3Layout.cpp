#include "desktop/Layouts.h"
#include "edition/Edition.h"
#include "frame/Text.h"

namespace quillmere::layouts {

namespace {

constexpr TextLook Heading{.size = 13, .bold = true};
constexpr TextLook Small{.size = 11};
constexpr TextLook Italic{.size = 11, .italic = true};
constexpr TextLook Sign{.size = 14, .bold = true, .align = TextLook::Align::Centre};

// Columns of the sections, as on the form.
constexpr int SectionX = 10, SectionWidth = 960;
constexpr int TextX = 44;
constexpr int CostX = 490, GoodX = 634, CashTagX = 772, CashX = 798, MarkX = 922;
constexpr int AmountWidth = 120;
constexpr int CarsHeight = 610, CarRow = 27;

/// A section's panel with its letter and heading, and the picture that opens its notepad below the letter.
void Section(Layout& layout, int y, int height, std::string_view letter, std::string_view heading,
             std::string_view picture = {})
{
    layout.Panel(SectionX, y, SectionWidth, height);
    layout.Letter(SectionX, y, letter);
    layout.Text(TextX, y + 3, 430, heading, Heading);
    if (!picture.empty())
        layout.Place(picture, SectionX - 2, y + 26, 26, 26);
}

/// The three amount columns of a section with their captions.
void TripleCaptions(Layout& layout, int y, std::string_view cost)
{
    layout.Text(CostX, y + 14, AmountWidth, cost, Small);
    layout.Text(GoodX, y, 150, "Amount made good or\nfrom which tax deducted", Small);
    layout.Text(CashTagX, y + 14, 150, "Cash equivalent", Small);
}

void Triple(Layout& layout, int y, std::string_view cost, std::string_view good, std::string_view cash,
            std::string_view number, bool class1A)
{
    layout.Place(cost, CostX, y, AmountWidth);
    layout.Text(CostX + AmountWidth, y + 2, GoodX - CostX - AmountWidth, "-", Sign);
    layout.Place(good, GoodX, y, AmountWidth);
    layout.Text(GoodX + AmountWidth, y + 2, CashTagX - GoodX - AmountWidth, "=", Sign);
    layout.Tag(CashTagX, y, number);
    layout.Place(cash, CashX, y, AmountWidth);
    if (class1A)
        layout.Tag(MarkX, y);
}

/// One amount with its number at the right of a section.
void Single(Layout& layout, int y, std::string_view box, std::string_view number, bool class1A)
{
    layout.Tag(CashTagX, y, number);
    layout.Place(box, CashX, y, AmountWidth);
    if (class1A)
        layout.Tag(MarkX, y);
}

void Identity(Layout& layout, int y)
{
    layout.Text(560, y, 410, "P11D Expenses and benefits " + std::string(edition::YearLabel),
                {.size = 18, .bold = true, .italic = true, .align = TextLook::Align::Right});
    layout.Text(SectionX, y, 300, "Employer name");
    layout.Place("EmployerNameBox", SectionX, y + 16, 380);
    layout.Text(SectionX, y + 44, 300, "Employer PAYE reference");
    layout.Place("PAYEBox", SectionX, y + 60, 380);
    layout.Text(SectionX, y + 88, 300, "Employee name");
    layout.Place("EmployeeNameBox", SectionX, y + 104, 380);
    layout.Place("EmployeeNameBox2", SectionX, y + 128, 380);
    layout.Text(396, y + 107, 60, "Surname", Small);
    layout.Text(396, y + 131, 80, "First name(s)", Small);

    layout.Text(520, y + 107, 130, "If a director tick here", Small);
    layout.Place("DirectorTick", 642, y + 104, 22);
    layout.Text(740, y + 88, 100, "Date of birth");
    layout.Text(840, y + 89, 130, "in figures (if known)", Italic);
    layout.Place("DateofBirth", 740, y + 104, 110);

    layout.Text(SectionX, y + 158, 300, "Works number/department");
    layout.Place("WorkNumberBox", SectionX, y + 174, 260);
    layout.Text(396, y + 158, 220, "National Insurance number");
    layout.Place("NatIns", 396, y + 174, 140);
    layout.Text(740, y + 177, 60, "Gender");
    layout.Text(790, y + 177, 130, "M - Male F - Female", {.size = 11, .bold = true});
    layout.Place("SexBox", 930, y + 174, 30);

    layout.Line(SectionX, y + 206, SectionWidth, 2);
    layout.Text(SectionX, y + 213, 750,
                "Employers pay Class 1A National Insurance contributions on most benefits. These are shown in boxes "
                "which have a",
                {.size = 11, .align = TextLook::Align::Right});
    layout.Tag(766, y + 210);
    layout.Text(798, y + 213, 100, "indicator", Small);
}

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

void Cars(Layout& layout, int y)
{
    Section(layout, y, CarsHeight, "F", "Cars and car fuel", "Image6");
    layout.Text(180, y + 5, 560, "If more than two cars were made available, use Car 3 + 4 and Car 5 + 6", Italic);
    const int first = y + 50;
    int row = first;
    const auto caption = [&](std::string_view text, int step = CarRow) {
        layout.Text(TextX, row + 3, 320, text);
        row += step;
    };
    caption("Make and Model");
    caption("Date first registered");
    caption("Approved CO2 emissions figure (if registered from 1998)");
    caption("Engine size");
    caption("Type of fuel or power used (key letter, see P11D Guide)");
    caption("Dates car was available: From", CarRow + 4);
    layout.Text(TextX, row + 3, 320, "Periods when the car was not available");
    layout.Text(TextX, row + 20, 320, "only enter periods of 30 days or more", Italic);
    row += 3 * (Layout::BoxHeight + 1) + CarRow + 4;
    caption("List price of car");
    caption("Accessories");
    caption("Capital contributions (maximum £5,000)");
    caption("Amount paid by employee for private use of the car");
    caption("Fuel Benefit Required?");
    caption("Date free fuel was withdrawn", CarRow + 6);
    caption("Cash equivalent of each car");
    caption("Cash equivalent of fuel for each car");
    CarsColumn(layout, 1, 400, first - 22);
    CarsColumn(layout, 2, 690, first - 22);
    row += 8;
    layout.Line(TextX, row - 4, SectionX + SectionWidth - TextX, 1);
    layout.Text(TextX, row + 3, 600,
                "Total cash equivalent of all cars made available in " + std::string(edition::YearLabel), Heading);
    Single(layout, row, "FTotalCashCars", "9", true);
    layout.Text(TextX, row + CarRow + 3, 600,
                "Total cash equivalent of fuel for all cars made available in " + std::string(edition::YearLabel),
                Heading);
    Single(layout, row + CarRow, "FTotalCashFuel", "10", true);
}

} // namespace

void PageHeader(Layout& layout)
{
    layout.headerHeight = 38;
    layout.Panel(0, 0, layout.width, 37);
    layout.Line(0, 37, layout.width, 1);
    layout.Place("Page1", 10, 6, 84, 26);
    layout.Place("Page2", 98, 6, 84, 26);
}

Layout Form3()
{
    Layout layout{.width = 980, .height = 1300};
    PageHeader(layout);
    layout.Place("Label65", 560, 6, 110, 26);
    layout.Place("Label66", 674, 6, 110, 26);
    layout.Place("lblP11DB", 860, 6, 110, 26);

    Identity(layout, 50);

    int y = 292;
    Section(layout, y, 62, "A", "Assets transferred (cars, property, goods or other assets)", "Image1");
    TripleCaptions(layout, y + 2, "Cost/Market value");
    layout.Text(TextX, y + 37, 130, "Description of asset");
    layout.Place("ADescriptionAsset", 176, y + 34, 300);
    Triple(layout, y + 34, "ACostMarketBox", "AAmountGood", "ACashEqu", "13", true);

    y += 68;
    Section(layout, y, 88, "B", "Payments made on behalf of employee", "Image2");
    layout.Text(TextX, y + 33, 140, "Description of payment");
    layout.Place("BDescriptionPayment", 196, y + 30, 558);
    Single(layout, y + 30, "B2", "15", false);
    layout.Text(TextX, y + 61, 720,
                "Tax on notional payments not borne by employee within 90 days of receipt of each notional payment");
    Single(layout, y + 58, "BNotTax", "15", false);

    y += 94;
    Section(layout, y, 66, "C", "Vouchers and credit cards", "Image3");
    TripleCaptions(layout, y + 2, "Gross amount");
    layout.Text(TextX, y + 28, 440,
                "Value of vouchers and payments made using credit cards or tokens\n(for qualifying childcare vouchers "
                "the excess over £55 a week)");
    Triple(layout, y + 36, "CGrossAmount", "CAmountGood", "CCashEqu", "12", false);

    y += 72;
    Section(layout, y, 56, "D", "Living accommodation", "Image4");
    layout.Text(TextX, y + 31, 720,
                "Cash equivalent of accommodation provided for employee, or his/her family or household");
    layout.Text(CashTagX, y + 8, 150, "Cash equivalent", Small);
    Single(layout, y + 28, "DCashEqu", "14", true);

    y += 62;
    Section(layout, y, 60, "E", "Mileage allowance and passenger payments", "Image5");
    layout.Text(TextX, y + 24, 720,
                "Amount of car and mileage allowances paid to employee for business travel in employee's own vehicle, "
                "and\npassenger payments, in excess of maximum exempt amounts");
    layout.Text(CashTagX, y + 12, 150, "Taxable amount", Small);
    Single(layout, y + 32, "ETaxAmount", "12", false);

    y += 66;
    Cars(layout, y);
    layout.height = y + CarsHeight + 10;
    return layout;
}

} // namespace quillmere::layouts
