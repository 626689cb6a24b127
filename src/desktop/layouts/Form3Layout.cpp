#include "desktop/layouts/Layouts.h"
#include "desktop/layouts/PageParts.h"
#include "edition/FormWords.h"

namespace quillmere::layouts {

namespace {

constexpr int CarsHeight = 610;

void Identity(Layout& layout, int y)
{
    layout.Text(560, y, 410, edition::form::P11DHeading,
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

void Cars(Layout& layout, int y)
{
    Section(layout, y, CarsHeight, "F", "Cars and car fuel", "Image6");
    layout.Text(180, y + 5, 560, "If more than two cars were made available, use Car 3 + 4 and Car 5 + 6", Italic);
    const int row = CarRows(layout, y + 28, 1) + 8;
    const int fuelRow = row + CarRow;
    layout.Line(TextX, row - 4, SectionX + SectionWidth - TextX, 1);
    layout.Text(TextX, row + 3, 600, edition::form::TotalOfCars, Heading);
    Single(layout, row, "FTotalCashCars", "9", Liability::Class1A);
    layout.Text(TextX, fuelRow + 3, 600, edition::form::TotalOfCarFuel, Heading);
    Single(layout, fuelRow, "FTotalCashFuel", "10", Liability::Class1A);
}

} // namespace

Layout Form3()
{
    Layout layout{.width = PageWidth};
    PageHeader(layout);
    layout.Place("Label65", 628, 6, 110, 26);
    layout.Place("Label66", 742, 6, 110, 26);
    layout.Place("lblP11DB", 860, 6, 110, 26);

    Identity(layout, 50);

    int y = 292;
    Section(layout, y, 62, "A", "Assets transferred (cars, property, goods or other assets)", "Image1");
    TripleCaptions(layout, y + 2, "Cost/Market value");
    layout.Text(TextX, y + 37, 130, "Description of asset");
    layout.Place("ADescriptionAsset", 176, y + 34, 300);
    Triple(layout, y + 34, {"ACostMarketBox", "AAmountGood", "ACashEqu"}, "13", Liability::Class1A);

    y += 68;
    Section(layout, y, 88, "B", "Payments made on behalf of employee", "Image2");
    layout.Text(TextX, y + 33, 140, "Description of payment");
    layout.Place("BDescriptionPayment", 196, y + 30, 558);
    Single(layout, y + 30, "B2", "15", Liability::None);
    layout.Text(TextX, y + 61, 720,
                "Tax on notional payments not borne by employee within 90 days of receipt of each notional payment");
    Single(layout, y + 58, "BNotTax", "15", Liability::None);

    y += 94;
    Section(layout, y, 66, "C", "Vouchers and credit cards", "Image3");
    TripleCaptions(layout, y + 2, "Gross amount");
    layout.Text(TextX, y + 28, 440,
                "Value of vouchers and payments made using credit cards or tokens\n" +
                    std::string(edition::form::ChildcareVouchers));
    Triple(layout, y + 36, {"CGrossAmount", "CAmountGood", "CCashEqu"}, "12", Liability::None);

    y += 72;
    Section(layout, y, 56, "D", "Living accommodation", "Image4");
    layout.Text(TextX, y + 31, 720,
                "Cash equivalent of accommodation provided for employee, or his/her family or household");
    layout.Text(CashTagX, y + 8, 150, "Cash equivalent", Small);
    Single(layout, y + 28, "DCashEqu", "14", Liability::Class1A);

    y += 62;
    Section(layout, y, 60, "E", "Mileage allowance and passenger payments", "Image5");
    layout.Text(TextX, y + 24, 720,
                "Amount of car and mileage allowances paid to employee for business travel in employee's own vehicle, "
                "and\npassenger payments, in excess of maximum exempt amounts");
    layout.Text(CashTagX, y + 12, 150, "Taxable amount", Small);
    Single(layout, y + 32, "ETaxAmount", "12", Liability::None);

    y += 66;
    Cars(layout, y);
    layout.height = y + CarsHeight + 10;
    return layout;
}

} // namespace quillmere::layouts
