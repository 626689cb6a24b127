#include "edition/FormWords.h"
#include "printing/forms/CarSection.h"
#include "printing/forms/P11DPages.h"

#include <array>

namespace quillmere {

namespace {

constexpr auto Panels = std::to_array<Panel>({
    {102, 10, 195, 25.5},
    {102, 27, 195, 45.5},
    {2, 75, 195, 87},
    {2, 87.5, 195, 104},
    {2, 104.5, 195, 117},
    {2, 117.5, 195, 128},
    {2, 128.5, 195, 141},
    CarPanel,
});

constexpr auto Headings = std::to_array<Label>({
    ReadAs(Reads::Title, LabelTo({13, Weight::BoldItalic}, 193, 7, edition::form::P11DHeading)),
    LabelAt({14, Weight::Bold}, 14, 7, "HM Revenue"),
    LabelAt({14, Weight::Bold}, 14, 12, "& Customs"),
});

constexpr auto Sections = std::to_array<SectionMark>({
    {"A", 2, 75, "Assets transferred"},
    {"B", 2, 87.5, "Payments made on behalf of employee"},
    {"C", 2, 104.5, "Vouchers and credit cards"},
    {"D", 2, 117.5, "Living accommodation"},
    {"E", 2, 128.5, "Mileage allowance and passenger payments"},
    CarMark,
    {"1A", 153, 68.5}, // the legend of the indicator
});

constexpr auto Boxes = RowList{
    FormBox{PrintedKind::Entry, 2, 22.5, 80},      // employer name
    FormBox{PrintedKind::Entry, 2, 33.5, 80},      // employer PAYE reference
    FormBox{PrintedKind::Entry, 2, 44, 80},        // surname
    FormBox{PrintedKind::Entry, 2, 49.25, 80},     // first names
    FormBox{PrintedKind::Entry, 119, 50, 125},     // director
    FormBox{PrintedKind::Entry, 2, 59.5, 55},      // works number
    FormBox{PrintedKind::Entry, 80, 59.5, 125},    // National Insurance number
    FormBox{PrintedKind::Entry, 189.5, 59.5, 195}, // gender
    FormBox{PrintedKind::Entry, 151, 50, 195},     // date of birth
    FormBox{PrintedKind::Entry, 42, 81, 103},      // A
    ThreeBoxes(81, PrintedKind::Number1A, "  13"),
    FormBox{PrintedKind::Entry, 42, 92, 159}, // B
    FormBox{PrintedKind::Number, 161, 92, 0, "  15"},
    FormBox{PrintedKind::Number, 161, 98, 0, "  15"},
    ThreeBoxes(111, PrintedKind::Number, "  12"),        // C
    FormBox{PrintedKind::Number1A, 161, 122, 0, "  14"}, // D
    FormBox{PrintedKind::Number, 161, 135, 0, "  12"},   // E
};

/// What parts the cells of the National Insurance number and of the date of birth.
constexpr auto CellLines = std::to_array<FormLineRow>({
    {89, 59.5, 89, 65},
    {98, 59.5, 98, 65},
    {107, 59.5, 107, 65},
    {116, 59.5, 116, 65},
    {84.5, 63.5, 84.5, 65},
    {93.5, 63.5, 93.5, 65},
    {102.5, 63.5, 102.5, 65},
    {111.5, 63.5, 111.5, 65},
    {156.5, 50, 156.5, 55.6},
    {162, 50, 162, 55.6},
    {167.5, 50, 167.5, 55.6},
    {173, 50, 173, 55.6},
    {178.5, 50, 178.5, 55.6},
    {184, 50, 184, 55.6},
    {189.5, 50, 189.5, 55.6},
});

constexpr auto EmployeeNames = std::to_array<std::string_view>({"surname", "first name"});
constexpr auto AssetColumns = std::to_array<std::string_view>(
    {{}, "Cost/Market value", "Amount made good or from which tax deducted", "Cash equivalent"});
constexpr auto PaymentColumns = std::to_array<std::string_view>({{}, "amount"});
constexpr auto VoucherColumns =
    std::to_array<std::string_view>({"Gross amount", "Amount made good or from which tax deducted", "Cash equivalent"});

constexpr auto Labels = RowList{
    LabelAt({8, Weight::Bold}, 103, 13, "Note to employer"),
    LabelAt({7.5}, 103, 16.5, "Complete this return for a director, or an employee who earned at a"),
    LabelAt({7.5}, 103, 20, edition::form::P11DWhoReturns),
    LabelAt({7.5}, 103, 23.5, edition::form::P11DWhenReturned),
    LabelAt({8, Weight::Bold}, 103, 30.5, "Note to employee"),
    LabelAt({7.5}, 103, 34, "Your employer has filled in this form, keep it in a safe place.  You will"),
    LabelAt({7.5}, 103, 37.5, edition::form::P11DTaxReturn),
    LabelAt({7.5}, 103, 41, "numberings on this P11D are the same as on the Employment Page of"),
    LabelAt({7.5}, 103, 44.5, "the tax return for example, boxes 13."),
    LabelAt({9, Weight::Bold}, 2, 16.5, "Please ensure your entries are clear on both sides of the form."),
    LabelAt({8}, 2, 21, "Employer name", "EmployerName"),
    LabelAt({8}, 2, 43, "Employee name", "Surname FirstName", EmployeeNames),
    LabelAt({8}, 150.5, 49, "Date of birth"),
    LabelAt({8, Weight::Italic}, 167.5, 49, "in figures (if known)", "DOB"),
    LabelAt({8}, 150, 64, "Gender"),
    LabelAt({8, Weight::Bold}, 161, 64, "M - Male F - Female", "SexTick"),
    LabelAt({8}, 2, 32.5, "Employer PAYE reference", "PAYEBox"),
    LabelAt({8}, 2, 58, "Works number/department", "WorkNumberBox"),
    LabelAt({8}, 80, 58, "National Insurance number", "NatIns"),
    LabelAt({7.5}, 90, 54, "If a director tick here", "DirectorTick"),
    LabelTo({8}, 152, 72,
            "Employers pay Class 1A National Insurance contributions on most benefits. These are shown in boxes which "
            "have a"),
    LabelAt({8}, 159, 72, "indicator"),
    LabelAt({8, Weight::Bold}, 9, 79.5, "Assets transferred (cars, property, goods or other assets)"),
    HeadsOver(80, "Cost/Market value", 161, "Cash equivalent"),
    LabelAt({8}, 9, 85, "Description of asset", "ADescriptionAsset ACostMarketBox AAmountGood ACashEqu", AssetColumns),
    SignsBetween(85),
    LabelAt({8, Weight::Bold}, 9, 91, "Payments made on behalf of employee"),
    LabelAt({8}, 9, 96, "Description of payment", "BDescriptionPayment B2", PaymentColumns),
    LabelAt({8}, 9, 102,
            "Tax on notional payments not borne by employee within 90 days of receipt of each notional payment",
            "BNotTax"),
    LabelAt({8, Weight::Bold}, 9, 108, "Vouchers and credit cards"),
    HeadsOver(110, "Gross amount", 161, "Cash equivalent"),
    LabelAt({8}, 10, 113, "Value of vouchers and payments made using credit cards or tokens"),
    LabelAt({8}, 10, 116, edition::form::ChildcareVouchers, "CGrossAmount CAmountGood CCashEqu", VoucherColumns),
    SignsBetween(115),
    LabelAt({8, Weight::Bold}, 9, 120.5, "Living accommodation"),
    LabelAt({7}, 161, 121, "Cash equivalent"),
    LabelAt({8}, 9, 126, "Cash equivalent of accommodation provided for employee, or his/her family or household",
            "DCashEqu"),
    LabelAt({8, Weight::Bold}, 9, 132, "Mileage allowance and passenger payments"),
    LabelAt({7}, 161, 134, "Taxable amount"),
    LabelAt({8}, 9, 136.5,
            "Amount of car and mileage allowances paid to employee for business travel in employee's own vehicle, and"),
    LabelAt({8}, 9, 140, "passenger payments, in excess of maximum exempt amounts"),
    Label{{8, Weight::Italic}, At::Indented, 0, 0, edition::form::ExemptRates, 0, "ETaxAmount"},
};

constexpr auto Values = RowList{
    FormValue{"EmployerName", At::Left, 5, 27, 80},
    FormValue{"PAYEBox", At::Left, 5, 37.5, 80},
    FormValue{"Surname", At::Left, 5, 48, 80},
    FormValue{"FirstName", At::Left, 5, 53, 80},
    FormValue{"DirectorTick", At::Left, 121, 54, 0, ValueKind::Tick},
    FormValue{"WorkNumberBox", At::Left, 5, 63.5, 55},
    FormValue{"NatIns", At::Left, 80, 59.5, 0, ValueKind::NICells},
    FormValue{"DOB", At::Left, 151, 50, 0, ValueKind::DateCells},
    FormValue{"SexTick", At::Left, 191, 63.5, 195},
    FormValue{"ADescriptionAsset", At::Left, 45, 85, 103},
    ThreeFigures(85, "ACostMarketBox", "AAmountGood", "ACashEqu"),
    FormValue{"BDescriptionPayment", At::Left, 45, 96, 159},
    FormValue{"B2", At::Right, 188, 96},
    FormValue{"BNotTax", At::Right, 188, 102},
    ThreeFigures(115, "CGrossAmount", "CAmountGood", "CCashEqu"),
    FormValue{"DCashEqu", At::Right, 188, 126},
    FormValue{"ETaxAmount", At::Right, 188, 139},
};

} // namespace

void PrintP11D1(PageLayer& page, const FieldReader& read)
{
    FormSheet sheet(page);
    page.vsBookmark("P11D page 1");
    if (page.HasShading())
        DrawPanels(page, Panels, page.ColLight);

    // Kept: in the font name left in force by whatever was drawn last, in an earlier document too.
    DrawNumberAtTop(page, FieldText(read("NatIns"), 0));

    page.BeginFixedPart();
    DrawLabels(sheet, Headings);
    DrawSectionMarks(sheet, Sections);
    DrawBoxes(sheet, Boxes);
    DrawCarBoxes(sheet);
    DrawLines(page, CellLines);
    page.vsTriangle(page.ColBlack, 118, 52.75, 115.5, 50.5, 115.5, 55);
    // Kept: a line of no length, which prints as a dot.
    page.vsLine(FormLine, 156.5, 195, 156.5, 195);
    page.vsHLine(0.4, 2, 195, 68);

    DrawLabels(sheet, Labels);
    DrawCarLabels(sheet, 1, {.totalOfCars = edition::form::TotalOfCars, .totalOfFuel = edition::form::TotalOfCarFuel});
    DrawIdentifier(page, 276, edition::form::P11DIdentifier);

    page.EndFixedPart();

    BeginValues(page);
    DrawValues(sheet, Values, read);
    DrawCarValues(sheet, 1, read);
}

void AddBoxedTextsOfP11D1(std::vector<BoxedText>& texts)
{
    AddBoxedTexts(Values, {}, texts);
    for (const int car : {1, 2})
        AddBoxedTextsOfCar(car, texts);
}

} // namespace quillmere
