#include "calculators/GNotepad.h"
#include "desktop/layouts/DialogParts.h"
#include "desktop/layouts/Layouts.h"
#include "edition/Edition.h"
#include "edition/NotepadWords.h"
#include "frame/Text.h"

#include <algorithm>
#include <array>
#include <span>

namespace quillmere::layouts {

namespace {

constexpr TextLook Heading{.size = 13, .bold = true};
constexpr TextLook Caption{.size = 12};
constexpr TextLook Formula{.size = 12, .italic = true, .align = TextLook::Align::Right};
constexpr TextLook Centred{.size = 12, .align = TextLook::Align::Centre};
constexpr TextLook ColumnHeading{.size = 13, .bold = true, .align = TextLook::Align::Centre};

constexpr int Margin = 16, Gap = 8;
constexpr int TagWidth = 24, AmountWidth = 120, DateWidth = 100;
constexpr int RowGap = 6;
constexpr int TabWidth = 110, TabHeight = 28;

std::string With(std::string_view words, std::string_view label)
{
    return std::string(words) + std::string(label);
}

/// One line of a working sheet: letter, caption, box, how it is worked out.
struct SheetLine {
    std::string_view letter, caption, box;
    std::string_view formula = {};
    int boxWidth = 0; ///< 0: as wide as the sheet's amounts
};

/// A working sheet that is written from top to bottom: a panel with letters at its left and boxes at its right.
class Sheet {
public:
    Sheet(Layout& layout, int x, int y, int width, int boxWidth = AmountWidth)
        : layout(layout), x(x), y(y), width(width), boxWidth(boxWidth)
    {
    }

    int Bottom() const { return y; }
    int Left() const { return x; }
    int Right() const { return x + width; }
    int CaptionX() const { return x + TagWidth + Gap; }

    void Title(std::string_view text)
    {
        layout.Text(x, y, width, text, Heading);
        y += 26;
    }
    void Words(std::string_view text, const TextLook& look = Caption)
    {
        const int height = HeightOf(text, Right() - CaptionX(), look);
        layout.Text(CaptionX(), y, Right() - CaptionX(), text, look, height);
        y += height + 4;
    }
    void Space(int height) { y += height; }

    void Line(const SheetLine& line)
    {
        const int formulaWidth = line.formula.empty() ? 0 : static_cast<int>(WidthOf(line.formula, Formula)) + Gap;
        const int boxY = PlaceLine(line, formulaWidth);
        if (formulaWidth > 0)
            layout.Text(Right() - WidthOfBox(line) - Gap - formulaWidth, boxY + 3, formulaWidth, line.formula, Formula);
    }

    /// A line whose formula is shown by a label of the screen.
    void Line(const SheetLine& line, std::string_view label)
    {
        const int labelWidth = static_cast<int>(WidthOf(WithDaysOfYear(line.formula), Formula)) + Gap;
        const int boxY = PlaceLine(line, labelWidth + Gap);
        layout.Place(label, Right() - WidthOfBox(line) - Gap - labelWidth, boxY, labelWidth);
        layout.Looks(Formula);
    }

    /// A pair of dates.
    void Dates(std::string_view words, std::string_view from, std::string_view to)
    {
        const int toX = Right() - boxWidth - TagWidth - 3 * Gap - DateWidth;
        const int fromX = toX - 28 - DateWidth;
        layout.Text(fromX - 44 - Gap, y + 3, 44, "From", Formula);
        layout.Place(from, fromX, y, DateWidth, Layout::BoxHeight, std::string(words) + ", from");
        layout.Text(fromX + DateWidth, y + 3, 28, "to", Centred);
        layout.Place(to, toX, y, DateWidth, Layout::BoxHeight, std::string(words) + ", to");
        y += Layout::BoxHeight + RowGap;
    }
    /// A pair of dates with the day count that follows from them.
    void Period(std::string_view letter, std::string_view words, std::string_view from, std::string_view to,
                std::string_view days)
    {
        const int boxX = Right() - boxWidth;
        layout.Tag(boxX - TagWidth - Gap, y, letter);
        const int row = y;
        Dates(words, from, to);
        layout.Place(days, boxX, row, boxWidth, Layout::BoxHeight, Spoken(letter, words) + ", days");
    }

    static std::string Spoken(std::string_view letter, std::string_view caption)
    {
        return letter.empty() ? Trim(caption) : std::string(letter) + ", " + Trim(caption);
    }

private:
    int WidthOfBox(const SheetLine& line) const { return line.boxWidth > 0 ? line.boxWidth : boxWidth; }

    /// Letter, caption and box; gives the height at which the box stands.
    int PlaceLine(const SheetLine& line, int formulaWidth)
    {
        const int boxX = Right() - WidthOfBox(line);
        const int captionWidth = boxX - Gap - CaptionX() - formulaWidth;
        const int captionHeight = HeightOf(line.caption, captionWidth, Caption);
        const int height = std::max(captionHeight, Layout::BoxHeight);
        const int boxY = y + (height - Layout::BoxHeight) / 2;
        if (!line.letter.empty())
            layout.Tag(x, boxY, line.letter);
        layout.Text(CaptionX(), y + (height - captionHeight) / 2, captionWidth, line.caption, Caption, captionHeight);
        layout.Place(line.box, boxX, boxY, WidthOfBox(line), Layout::BoxHeight, Spoken(line.letter, line.caption));
        y += height + RowGap;
        return boxY;
    }

    Layout& layout;
    int x, y, width, boxWidth;
};

void Tabs(Layout& layout, std::span<const std::string_view> labels)
{
    int x = Margin;
    for (const std::string_view label : labels) {
        layout.Place(label, x, Margin, TabWidth, TabHeight);
        x += TabWidth + Gap;
    }
}

/// The three buttons at the foot, and with them the height of the window.
void Buttons(Layout& layout, int y)
{
    if (layout.footTop == 0)
        layout.footTop = y - Gap / 2;
    ButtonRow(layout, layout.width - Margin, y, OkDeleteCancel);
    layout.height = y + ButtonHeight + Margin;
}

/// The panel behind a sheet; it is drawn below what stands on it.
void PanelBehind(Layout& layout, int x, int y, int width, int height)
{
    layout.Panel(x, y, width, height);
    std::rotate(layout.drawn.begin(), layout.drawn.end() - 1, layout.drawn.end());
}

/// The one sheet of a window, from the given height down.
Sheet OnlySheet(Layout& layout, int top = Margin)
{
    return {layout, Margin + Gap, top + Gap, layout.width - 2 * (Margin + Gap)};
}

/// What follows the last line of the window's one sheet: the panel behind it, and the buttons.
void Finish(Layout& layout, const Sheet& sheet, int top = Margin)
{
    const int bottom = sheet.Bottom() + Gap;
    PanelBehind(layout, Margin, top, layout.width - 2 * Margin, bottom - top);
    Buttons(layout, bottom + Gap);
}

/// The van's benefit but for its last line, which stands at the foot beside that of its fuel.
void VanLines(Sheet& van)
{
    van.Title("Van benefit");
    van.Line({"", "Registration Number", "VanRegNumber"});
    van.Line({"A", edition::notepad::VanStandardCharge, "ABox"});
    van.Words("If the van was not available for the whole of the tax year, state the dates between which it was "
              "available.  The unavailable days will be calculated in box B");
    van.Dates("Dates between which the van was available", "DateFrom1", "DateTo1");
    van.Line({"B", "Days for which the van was unavailable", "BBox"});
    van.Words("If there were any other periods of at least 30 continuous days for which the van was not available to "
              "the employee, complete the boxes below");
    van.Period("C", "Second period for which the van was not available", "DateFrom2", "DateTo2", "CBox");
    van.Period("D", "Third period for which the van was not available", "DateFrom3", "DateTo3", "DBox");
    van.Line({"E", "Total Days for which the van was unavailable", "EBox", "B + C + D"});
    van.Line({"F", "Reduction for unavailability (round up to nearest whole number)", "FBox",
              edition::notepad::VanReductionFormula},
             "FFormula");
    van.Line({"G", "Van benefit charge after reduction for unavailability", "GBox", "A minus F"});
    van.Line({"H", "Percentage reduction", "HBox"});
    van.Line({"J", "Reduction for sharing (rounded up to next whole number)", "JBox", "G x H"});
    van.Line({"K", "Van benefit charge after reduction for sharing", "KBox", "G minus J"});
    van.Line({"L",
              "Enter any payments the employee was required to, and did, make for private use of this van in the year",
              "LBox"});
}

void VanFuelLines(Sheet& fuel, Layout& layout)
{
    fuel.Title("Van fuel benefit");
    layout.Place("VanFuelTick", fuel.CaptionX(), fuel.Bottom(), 240);
    layout.Looks(Caption);
    fuel.Space(Layout::BoxHeight + RowGap);
    fuel.Line({"P", "Fuel Benefit charge for the whole tax year", "PBox"});
    fuel.Line({"", "Date the provision of fuel was withdrawn (if applicable)", "DateWithdrawn"});
    fuel.Line({"R", "Additional days after fuel was withdrawn not already counted in box E", "RBox"});
    fuel.Line({"S", "Total days for which no fuel benefit applies", "SBox", "E + R"});
    fuel.Line({"T", "Reduction round up to next whole number", "TBox", edition::notepad::VanFuelReductionFormula},
              "TFormula");
    fuel.Line({"V", "Van fuel benefit charge after reduction for unavailability", "VBox", "P minus T"});
    fuel.Line({"W", "Reduction for sharing of this van", "WBox", "V x H"});
}

} // namespace

Layout GNotepad()
{
    constexpr int Top = Margin + TabHeight + Gap;
    constexpr int PanelWidth = 474, Inner = PanelWidth - 2 * Gap, BoxWidth = 100;
    constexpr int SecondX = Margin + PanelWidth + Gap;
    Layout layout{.width = SecondX + PanelWidth + Margin, .headerHeight = Top};
    Tabs(layout, std::to_array<std::string_view>({"Van1", "Van2", "Van3"}));
    Sheet van(layout, Margin + Gap, Top + Gap, Inner, BoxWidth);
    VanLines(van);
    Sheet fuel(layout, SecondX + Gap, Top + Gap, Inner, BoxWidth);
    VanFuelLines(fuel, layout);

    layout.footTop = van.Bottom();
    fuel.Space(van.Bottom() - fuel.Bottom());
    van.Line({"M", edition::notepad::VanResult, "MBox", "K minus L"});
    fuel.Line({"X", edition::notepad::VanFuelResult, "XBox", "V minus W"});
    const int bottom = van.Bottom() + Gap;
    PanelBehind(layout, Margin, Top, PanelWidth, bottom - Top);
    PanelBehind(layout, SecondX, Top, PanelWidth, bottom - Top);
    Buttons(layout, bottom + Gap);
    return layout;
}

Layout ENotepad()
{
    Layout layout{.width = 720};
    Tabs(layout, std::to_array<std::string_view>({"CarVan", "Motorcycle", "Bicycle"}));
    constexpr int Top = Margin + TabHeight + Gap;
    Sheet sheet = OnlySheet(layout, Top);
    sheet.Title("Mileage allowance");
    sheet.Line({"A", edition::notepad::MileagePaid, "ABox"});
    sheet.Line({"B", "Amounts from which tax has been deducted", "BBox"});
    sheet.Line({"C", "Net mileage allowance paid", "CBox", "A - B"});
    sheet.Line({"D", edition::notepad::MileageMiles, "DBox"});
    sheet.Line({"J", "Total approved mileage allowance payments", "JBox"});
    sheet.Space(Gap);
    sheet.Title("Passenger Payments (only to be completed once)");
    sheet.Line({"K", "Total of any passenger payments to the employee in " + std::string(edition::YearLabel), "KBox"});
    sheet.Line({"L", "Number of business miles for which passenger payments made", "LBox"});
    sheet.Line({"M", edition::notepad::MileagePassengers, "MBox"});
    sheet.Space(Gap);
    sheet.Line({"Q", "Total taxable payments", "QBox"});
    Finish(layout, sheet, Top);
    return layout;
}

Layout JNotepad()
{
    Layout layout{.width = 720};
    Sheet sheet = OnlySheet(layout);
    sheet.Title("Qualifying expenses payments");
    sheet.Line({"A", "Gross amount of all expenses payments", "ABox"});
    sheet.Space(Gap);
    sheet.Title("Qualifying benefits");
    sheet.Line({"", "The cost to you as an employer of any qualifying benefits", "EmployerCost"});
    sheet.Line({"", "Less anything paid towards the cost by the employee", "EmployeeCost"});
    sheet.Line({"B", "Amount of qualifying benefits", "BBox"});
    sheet.Line({"C", "Enter the cost of qualifying living accommodation provided", "CBox"});
    sheet.Line({"D", "Total of expenses and benefits ", "DBox", "A + B + C"});
    sheet.Space(Gap);
    sheet.Title("Calculating the exempt amount");
    sheet.Words(edition::notepad::RelocationExempt);
    sheet.Line({"", edition::notepad::RelocationPriorYear, "QualExp"});
    sheet.Line({"E", "Exempt amount for this employee", "EBox"});
    sheet.Space(Gap);
    sheet.Line({"F", "D - E", "FBox"});
    Finish(layout, sheet);
    return layout;
}

Layout HNotepad()
{
    constexpr int Loans = 5, LoanWidth = 126, LoanStep = LoanWidth + Gap;
    constexpr int CaptionX = Margin + 2 * Gap + TagWidth, CaptionWidth = 232;
    constexpr int FirstX = CaptionX + CaptionWidth + Gap;
    Layout layout{.width = FirstX + Loans * LoanStep + Margin};
    struct Line {
        std::string_view letter, caption, box;
    };
    static constexpr auto Lines = std::to_array<Line>({
        {"", "Currency", "Currency"},
        {"A", edition::notepad::LoanOpeningBalance, "ABox"},
        {"B", edition::notepad::LoanClosingBalance, "BBox"},
        {"C", "Total ", "CBox"},
        {"D", "Divide Total by 2", "DBox"},
        {"E", "Number of complete tax months in tax year throughout which loan was owing", "EBox"},
        {"G", "Official rate of interest", "GBox"},
        {"J", edition::notepad::LoanInterestPaid, "JBox"},
        {"", "Cash equivalent of loans", "CashEq"},
        {"", "Maximum amount outstanding at any time in the year", "MaxAmount"},
        {"", edition::notepad::LoanDateMade, "DateFrom"},
        {"", edition::notepad::LoanDateDischarged, "DateTo"},
    });
    int y = Margin + Gap;
    for (int loan = 1; loan <= Loans; ++loan)
        layout.Text(FirstX + (loan - 1) * LoanStep, y, LoanWidth, With("Loan ", std::to_string(loan)), ColumnHeading);
    y += 26;
    for (const Line& line : Lines) {
        const int captionHeight = HeightOf(line.caption, CaptionWidth, Caption);
        const int height = std::max(captionHeight, Layout::BoxHeight + 2);
        const int boxY = y + (height - Layout::BoxHeight) / 2;
        if (!line.letter.empty())
            layout.Tag(Margin + Gap, boxY, line.letter);
        layout.Text(CaptionX, y + (height - captionHeight) / 2, CaptionWidth, line.caption, Caption, captionHeight);
        for (int loan = 1; loan <= Loans; ++loan)
            layout.PlaceAt(line.box, loan, FirstX + (loan - 1) * LoanStep, boxY, LoanWidth);
        if (line.box == "Currency")
            layout.Place("Image1", FirstX - Gap - 26, boxY - 2, 26, 26);
        y += height + RowGap + 2;
    }
    y += Gap;
    PanelBehind(layout, Margin, Margin, layout.width - 2 * Margin, y - Margin);
    Buttons(layout, y + Gap);
    return layout;
}

Layout HNotepad2()
{
    constexpr int Rows = 15, NameWidth = 240, NumberWidth = 24;
    constexpr int NameX = Margin + NumberWidth + Gap, RateX = NameX + NameWidth + Gap;
    Layout layout{.width = RateX + AmountWidth + Margin, .headerHeight = Margin + 22};
    int y = Margin;
    layout.Text(NameX, y, NameWidth, "Currency", Heading);
    layout.Text(RateX, y, AmountWidth, "Rate", {.size = 13, .bold = true, .align = TextLook::Align::Right});
    y += 24;
    for (int row = 1; row <= Rows; ++row) {
        layout.Text(Margin, y + 4, NumberWidth, std::to_string(row), {.size = 11, .align = TextLook::Align::Right});
        layout.PlaceAt("Currency", row, NameX, y, NameWidth);
        layout.PlaceAt("Rate", row, RateX, y, AmountWidth);
        y += Layout::BoxHeight + 3;
    }
    Buttons(layout, y + Gap);
    return layout;
}

Layout DNotepad()
{
    Layout layout{.width = 760};
    Sheet sheet = OnlySheet(layout);
    sheet.Title("Give the address of the accommodation provided ");
    constexpr int AddressWidth = 420;
    for (const std::string_view line : {"1", "2", "3", "4", "5"})
        sheet.Line({"", With("Address Line ", line), "Address" + std::string(line), "", AddressWidth});
    layout.Text(sheet.CaptionX(), sheet.Bottom() + 3, 200, "Postcode", Caption);
    layout.Place("Postcode", sheet.Right() - AddressWidth, sheet.Bottom(), AmountWidth, Layout::BoxHeight, "Postcode");
    sheet.Space(Layout::BoxHeight + RowGap);
    const int tickY = sheet.Bottom();
    layout.Text(sheet.CaptionX(), tickY + 3, 400, "Was the accommodation provided for a full tax year?", Caption);
    layout.Place("AccommodationYTick", sheet.Right() - 150, tickY, 70, Layout::BoxHeight,
                 "Accommodation was provided for a full tax year: yes");
    layout.Looks(Caption);
    layout.Place("AccommodationNTick", sheet.Right() - 70, tickY, 70, Layout::BoxHeight,
                 "Accommodation was provided for a full tax year: no");
    layout.Looks(Caption);
    sheet.Space(Layout::BoxHeight + RowGap + Gap);
    sheet.Title("The basic charge");
    sheet.Line({"A",
                "Amount of rent paid for the year (or part of the year) by you or any other person at whose cost the "
                "accommodation is provided to the employee",
                "BasicChargeA"});
    sheet.Line({"B", "Enter the annual value (or part of the annual value) of the accommodation ", "BasicChargeB"});
    sheet.Line({"C", "Greater of A and B", "BasicChargeC"});
    sheet.Line({"D",
                "Enter any amount made good to you by the employee for the living accommodation (If this amount is "
                "more than C, enter the amount at C here.)",
                "BasicChargeD"});
    sheet.Line({"E", "The figure at E is the cash equivalent of the basic charge.  Subtract D from C", "BasicChargeE"});
    sheet.Space(Gap);
    layout.Place("Image1", sheet.Left() - 1, sheet.Bottom() - 2, 26, 26);
    layout.Text(sheet.CaptionX(), sheet.Bottom() + 3, 400, "Calculate Additional Charge (if needed)", Caption);
    sheet.Space(Layout::BoxHeight + RowGap);
    Finish(layout, sheet);
    return layout;
}

Layout D2Notepad()
{
    Layout layout{.width = 760};
    Sheet sheet = OnlySheet(layout);
    sheet.Title("The additional charge");
    sheet.Line({"F", "Cost of accommodation (including the cost of improvements)", "FBox"});
    layout.Place("Info", sheet.CaptionX(), sheet.Bottom(), 170, 24);
    sheet.Space(24 + RowGap);
    sheet.Line({"G", "Payments made by the employee towards the cost or for the grant of tenancy", "GBox"});
    sheet.Line({"H", "(F less G)", "HBox"});
    sheet.Line({"J", edition::notepad::AccommodationExcess, "JBox"});
    sheet.Line({"K", edition::notepad::AccommodationRate, "KBox"});
    sheet.Line({"",
                "If the accommodation was provided for part of the tax year only, enter the number of days it was "
                "provided here",
                "AddChargeDays"});
    sheet.Line({"L", edition::notepad::AccommodationDays, "LBox"});
    sheet.Line({"M", "Enter the rent paid by the employee for the accommodation", "MBox"});
    sheet.Line({"N", "Enter any rent which you have included in box D", "NBox"});
    sheet.Line({"P", "(M less N)", "PBox"});
    sheet.Line({"Q",
                "Subtract P from K (if the accommodation was provided throughout the tax year), or Subtract P from L "
                "(if the accommodation was provided for only part of the tax year)",
                "QBox"});
    sheet.Line({"E", "Enter the amount shown in box E on the front of this form", "EBox"});
    sheet.Line({"R", "Total of Q and E", "RBox"});
    Finish(layout, sheet);
    return layout;
}

Layout D2InfoNotepad()
{
    constexpr int Width = 860;
    constexpr TextLook Paragraph{.size = 13};
    Layout layout{.width = Width + 2 * (Margin + Gap)};
    int y = Margin;
    for (const edition::notepad::GuidanceParagraph& paragraph : edition::notepad::AccommodationGuidance) {
        layout.Text(Margin + Gap, y, Width, paragraph.heading, Heading);
        y += 22;
        const int height = HeightOf(paragraph.text, Width, Paragraph);
        layout.Text(Margin + Gap, y, Width, paragraph.text, Paragraph, height);
        y += height + Gap;
    }
    layout.footTop = y - Gap / 2;
    Button(layout, layout.width - Margin - Gap, y, "Close");
    layout.height = y + ButtonHeight + Margin;
    return layout;
}

} // namespace quillmere::layouts
