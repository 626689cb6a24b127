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
    {{13, Weight::BoldItalic}, At::Right, 193, 7, edition::form::P11DHeading, 0, {}, {}, Reads::Title},
    {{14, Weight::Bold}, At::Left, 14, 7, "HM Revenue"},
    {{14, Weight::Bold}, At::Left, 14, 12, "& Customs"},
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

constexpr auto Boxes = std::to_array<FormBox>({
    {PrintedKind::Entry, 2, 22.5, 80},      // employer name
    {PrintedKind::Entry, 2, 33.5, 80},      // employer PAYE reference
    {PrintedKind::Entry, 2, 44, 80},        // surname
    {PrintedKind::Entry, 2, 49.25, 80},     // first names
    {PrintedKind::Entry, 119, 50, 125},     // director
    {PrintedKind::Entry, 2, 59.5, 55},      // works number
    {PrintedKind::Entry, 80, 59.5, 125},    // National Insurance number
    {PrintedKind::Entry, 189.5, 59.5, 195}, // gender
    {PrintedKind::Entry, 151, 50, 195},     // date of birth
    {PrintedKind::Entry, 42, 81, 103},      // A
    {PrintedKind::Pound, 105, 81},
    {PrintedKind::Pound, 133, 81},
    {PrintedKind::Number1A, 161, 81, 0, "  13"},
    {PrintedKind::Entry, 42, 92, 159}, // B
    {PrintedKind::Number, 161, 92, 0, "  15"},
    {PrintedKind::Number, 161, 98, 0, "  15"},
    {PrintedKind::Pound, 105, 111}, // C
    {PrintedKind::Pound, 133, 111},
    {PrintedKind::Number, 161, 111, 0, "  12"},
    {PrintedKind::Number1A, 161, 122, 0, "  14"}, // D
    {PrintedKind::Number, 161, 135, 0, "  12"},   // E
});

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

constexpr auto Labels = std::to_array<Label>({
    {{8, Weight::Bold}, At::Left, 103, 13, "Note to employer"},
    {{7.5}, At::Left, 103, 16.5, "Complete this return for a director, or an employee who earned at a"},
    {{7.5}, At::Left, 103, 20, edition::form::P11DWhoReturns},
    {{7.5}, At::Left, 103, 23.5, edition::form::P11DWhenReturned},
    {{8, Weight::Bold}, At::Left, 103, 30.5, "Note to employee"},
    {{7.5}, At::Left, 103, 34, "Your employer has filled in this form, keep it in a safe place.  You will"},
    {{7.5}, At::Left, 103, 37.5, edition::form::P11DTaxReturn},
    {{7.5}, At::Left, 103, 41, "numberings on this P11D are the same as on the Employment Page of"},
    {{7.5}, At::Left, 103, 44.5, "the tax return for example, boxes 13."},
    {{9, Weight::Bold}, At::Left, 2, 16.5, "Please ensure your entries are clear on both sides of the form."},
    {{8}, At::Left, 2, 21, "Employer name", 0, "EmployerName"},
    {{8}, At::Left, 2, 43, "Employee name", 0, "Surname FirstName", EmployeeNames},
    {{8}, At::Left, 150.5, 49, "Date of birth"},
    {{8, Weight::Italic}, At::Left, 167.5, 49, "in figures (if known)", 0, "DOB"},
    {{8}, At::Left, 150, 64, "Gender"},
    {{8, Weight::Bold}, At::Left, 161, 64, "M - Male F - Female", 0, "SexTick"},
    {{8}, At::Left, 2, 32.5, "Employer PAYE reference", 0, "PAYEBox"},
    {{8}, At::Left, 2, 58, "Works number/department", 0, "WorkNumberBox"},
    {{8}, At::Left, 80, 58, "National Insurance number", 0, "NatIns"},
    {{7.5}, At::Left, 90, 54, "If a director tick here", 0, "DirectorTick"},
    {{8},
     At::Right,
     152,
     72,
     "Employers pay Class 1A National Insurance contributions on most benefits. These are shown in boxes which have a"},
    {{8}, At::Left, 159, 72, "indicator"},
    {{8, Weight::Bold}, At::Left, 9, 79.5, "Assets transferred (cars, property, goods or other assets)"},
    {{7}, At::Left, 105, 80, "Cost/Market value"},
    {{7}, At::Left, 133, 77, "Amount made good or"},
    {{7}, At::Left, 133, 80, "from which tax deducted"},
    {{7}, At::Left, 161, 80, "Cash equivalent"},
    {{8},
     At::Left,
     9,
     85,
     "Description of asset",
     0,
     "ADescriptionAsset ACostMarketBox AAmountGood ACashEqu",
     AssetColumns},
    {{8}, At::Left, 129.5, 85, "-"},
    {{8}, At::Left, 157, 85, "="},
    {{8, Weight::Bold}, At::Left, 9, 91, "Payments made on behalf of employee"},
    {{8}, At::Left, 9, 96, "Description of payment", 0, "BDescriptionPayment B2", PaymentColumns},
    {{8},
     At::Left,
     9,
     102,
     "Tax on notional payments not borne by employee within 90 days of receipt of each notional payment",
     0,
     "BNotTax"},
    {{8, Weight::Bold}, At::Left, 9, 108, "Vouchers and credit cards"},
    {{7}, At::Left, 105, 110, "Gross amount"},
    {{7}, At::Left, 133, 107, "Amount made good or"},
    {{7}, At::Left, 133, 110, "from which tax deducted"},
    {{7}, At::Left, 161, 110, "Cash equivalent"},
    {{8}, At::Left, 10, 113, "Value of vouchers and payments made using credit cards or tokens"},
    {{8}, At::Left, 10, 116, edition::form::ChildcareVouchers, 0, "CGrossAmount CAmountGood CCashEqu", VoucherColumns},
    {{8}, At::Left, 129.5, 115, "-"},
    {{8}, At::Left, 157, 115, "="},
    {{8, Weight::Bold}, At::Left, 9, 120.5, "Living accommodation"},
    {{7}, At::Left, 161, 121, "Cash equivalent"},
    {{8},
     At::Left,
     9,
     126,
     "Cash equivalent of accommodation provided for employee, or his/her family or household",
     0,
     "DCashEqu"},
    {{8, Weight::Bold}, At::Left, 9, 132, "Mileage allowance and passenger payments"},
    {{7}, At::Left, 161, 134, "Taxable amount"},
    {{8},
     At::Left,
     9,
     136.5,
     "Amount of car and mileage allowances paid to employee for business travel in employee's own vehicle, and"},
    {{8}, At::Left, 9, 140, "passenger payments, in excess of maximum exempt amounts"},
    {{8, Weight::Italic}, At::Indented, 0, 0, edition::form::ExemptRates, 0, "ETaxAmount"},
});

constexpr auto Values = std::to_array<FormValue>({
    {"EmployerName", At::Left, 5, 27, 80},
    {"PAYEBox", At::Left, 5, 37.5, 80},
    {"Surname", At::Left, 5, 48, 80},
    {"FirstName", At::Left, 5, 53, 80},
    {"DirectorTick", At::Left, 121, 54, 0, ValueKind::Tick},
    {"WorkNumberBox", At::Left, 5, 63.5, 55},
    {"NatIns", At::Left, 80, 59.5, 0, ValueKind::NICells},
    {"DOB", At::Left, 151, 50, 0, ValueKind::DateCells},
    {"SexTick", At::Left, 191, 63.5, 195},
    {"ADescriptionAsset", At::Left, 45, 85, 103},
    {"ACostMarketBox", At::Right, 124, 85},
    {"AAmountGood", At::Right, 152, 85},
    {"ACashEqu", At::Right, 188, 85},
    {"BDescriptionPayment", At::Left, 45, 96, 159},
    {"B2", At::Right, 188, 96},
    {"BNotTax", At::Right, 188, 102},
    {"CGrossAmount", At::Right, 124, 115},
    {"CAmountGood", At::Right, 152, 115},
    {"CCashEqu", At::Right, 188, 115},
    {"DCashEqu", At::Right, 188, 126},
    {"ETaxAmount", At::Right, 188, 139},
});

} // namespace

void PrintP11D1(PageLayer& page, const FieldReader& read)
{
    FormSheet sheet(page);
    page.vsBookmark("P11D page 1");
    if (page.HasShading())
        DrawPanels(page, Panels, page.ColLight);

    // Kept: in the font name left in force by whatever was drawn last, in an earlier document too.
    page.vsTextColor(page.ColBlack);
    page.vsFont(9, true, true);
    {
        const BelongsTo element(page, Role::Paragraph);
        page.vsTextRight(193, 1, FieldText(read("NatIns"), 0));
    }

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
