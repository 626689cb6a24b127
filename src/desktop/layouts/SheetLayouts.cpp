#include "desktop/layouts/DialogParts.h"
#include "desktop/layouts/Layouts.h"
#include "edition/LeftOvers.h"
#include "frame/Text.h"

namespace quillmere::layouts {

namespace {

constexpr TextLook Heading{.size = 13, .bold = true};
constexpr TextLook Bold{.size = 12, .bold = true};
constexpr TextLook Small{.size = 11};
constexpr TextLook Italic{.size = 11, .italic = true};
constexpr TextLook Formula{.size = 11, .align = TextLook::Align::Right};

// ---- the car notepad

/// A column of the sheet, whose lines read: caption, formula, letter, box.
struct SheetColumn {
    Layout& layout;
    int captionX, captionWidth, formulaWidth;
    int y;
    static constexpr int Row = 25, Gap = 8, AmountWidth = 118, NumberWidth = 50;

    int FormulaX() const { return captionX + captionWidth; }
    int LetterX() const { return FormulaX() + formulaWidth + 8; }
    int BoxX() const { return LetterX() + 40; }

    void Head(std::string_view text)
    {
        layout.Text(captionX, y + 3, captionWidth, text, Heading);
        y += Row - 2;
    }
    /// What stands to the left of a box; a caption of two lines makes a higher row.
    int Caption(std::string_view letter, std::string_view caption, std::string_view formula, int lines)
    {
        const int middle = y + (lines - 1) * 7;
        layout.Text(captionX, y + 3, captionWidth, caption, {.size = 12}, lines * 15 + 1);
        if (!formula.empty())
            layout.Text(FormulaX(), middle + 4, formulaWidth, formula, Formula);
        if (!letter.empty())
            layout.Letter(LetterX(), middle, letter);
        y += Row + (lines - 1) * 12;
        return middle;
    }
    void Pounds(std::string_view letter, std::string_view caption, std::string_view formula, std::string_view box,
                int lines = 1)
    {
        const int middle = Caption(letter, caption, formula, lines);
        layout.Text(BoxX() - 12, middle + 3, 12, "£");
        layout.Place(box, BoxX(), middle, AmountWidth);
    }
    void Number(std::string_view letter, std::string_view caption, std::string_view formula, std::string_view box,
                std::string_view unit, int lines = 1)
    {
        const int middle = Caption(letter, caption, formula, lines);
        layout.Place(box, BoxX(), middle, NumberWidth);
        layout.Text(BoxX() + NumberWidth + 6, middle + 4, 60, unit, Small);
    }
};

/// The sheet is wider than a small screen: what is always to be seen ends here.
constexpr int SmallScreen = 980;
constexpr int SheetHeader = 42, SheetTop = 48, SheetBottom = 672;
constexpr int LeftX = 10, LeftWidth = 470, RightX = 488, RightWidth = 700;

void Particulars(Layout& layout)
{
    constexpr int captionX = LeftX + 10, boxX = 234;
    int y = SheetTop + 8;
    const auto line = [&](std::string_view caption, std::string_view box, int width) {
        layout.Text(captionX, y + 3, boxX - captionX - 6, caption, {.size = 12});
        layout.Place(box, boxX, y, width);
        y += SheetColumn::Row;
    };
    line("Make", "Make", 236);
    line("Model", "Model", 236);
    line("Engine Size", "EngineSize", 60);
    layout.Text(boxX + 66, y - SheetColumn::Row + 4, 30, "cc", Small);
    line("Type of Fuel", "Fuel", 40);
    layout.Place("Image1", boxX + 66, y - 2, 26, 26);
    line("CO2 emissions (g/km)", "C02Level", 60);
    layout.Text(captionX, y, 360, "Leave blank if no approved CO2 emission figure", Italic);
    y += 20;
    line("Date first registered", "DateReg", 100);
    line("Date first available", "DateFirst", 100);
    line("Date last available", "DateLast", 100);
    y += 6;
    layout.Text(captionX, y, 200, "Periods unavailable", Bold);
    layout.Text(boxX, y, 100, "First date", Small);
    layout.Text(boxX + 116, y, 100, "Last date", Small);
    y += 18;
    for (int period = 1; period <= 4; ++period) {
        layout.PlaceAt("txtUnavailableFirst", period, boxX, y, 100);
        layout.PlaceAt("txtUnavailableLast", period, boxX + 116, y, 100);
        y += Layout::BoxHeight + 1;
    }
}

void Price(Layout& layout, int y)
{
    SheetColumn column{.layout = layout, .captionX = LeftX + 10, .captionWidth = 226, .formulaWidth = 44, .y = y};
    column.Head("Price");
    column.Pounds("A", "List Price of Car", {}, "ListPriceBox");
    column.Pounds("B", "Accessories", {}, "AccessoriesBox");
    column.Pounds("C", "Total price of cars and accessories", "A + B", "ABox");
    column.Pounds("D", "Capital contributions made towards the cost of car or accessories", {}, "DBox", 2);
    column.Pounds("E", edition::SheetPriceCaption, "C - D", "EBox");
}

void Benefits(Layout& layout)
{
    SheetColumn column{
        .layout = layout, .captionX = RightX + 10, .captionWidth = 420, .formulaWidth = 84, .y = SheetTop + 4};
    column.Head("Percentage");
    column.Number("G", "CO2 figure rounded down to next lowest 5 g/km", {}, "GBox", "g/km");
    column.Number("H", "Basic percentage", {}, "HBox", "%");
    column.Number("J", "Discounts for certain fuel types (%)", {}, "JBox", "%");
    column.Number({}, "Calculate full discount", {}, "FullDiscount", "%");
    column.Number("N", "Appropriate Percentage", {}, "NBox", "%");
    column.y += SheetColumn::Gap;

    column.Head("Car benefit");
    column.Pounds("P", "Car Benefit for a full year", "E * N", "PBox");
    column.Number("Q", "Number of days the car was unavailable", {}, "QBox", "days");
    column.Pounds("R", "Deduction for unavailability (round up to next whole number)",
                  edition::SheetCarDeductionCaption, "RBox");
    column.Pounds("S", "Car benefit for the period the car was available", "P - R", "SBox");
    column.Pounds("T", "Payments made in the year for private use of the car", {}, "TBox");
    column.Pounds("U", "Car benefit after deduction for days the car was unavailable and private use payments ",
                  "S - T", "UBox", 2);
    column.Pounds({}, edition::SheetCarResultCaption, {}, "CarBenefit");
    column.y += SheetColumn::Gap;

    column.Head("Car fuel benefit");
    layout.Place("Check1", column.BoxX(), column.y, 70);
    layout.Looks({.size = 12});
    column.Caption({}, "Fuel Benefit Required?", {}, 1);
    column.Pounds("V", "Car fuel benefit charge for the whole of the tax year ", edition::SheetFuelCaption, "VBox");
    const int withdrawn = column.Caption(
        {}, "Enter the Date the Fuel was Withdrawn.  Tick the box if the fuel was reinstated later", {}, 2);
    layout.Place("DateWithdrawn", column.BoxX(), withdrawn, 92);
    layout.Place("WithdrawnTick", column.BoxX() + 98, withdrawn, 22);
    column.Number("W", "Additional days after fuel was withdrawn not already counted in box Q", {}, "WBox", "days");
    column.Number("X", "Total days for which no car fuel benefit charge applies", "Q + W", "XBox", "days");
    column.Pounds("Y", "Deduction (round up to next whole figure)", edition::SheetFuelDeductionCaption, "YBox");
    column.Pounds("Z", {}, "V - Y", "ZBox");
    column.Pounds({}, edition::SheetFuelResultCaption, {}, "FuelBenefit");
}

} // namespace

Layout FNotepad()
{
    Layout layout{.width = RightX + RightWidth + 10, .height = SheetBottom + 6, .headerHeight = SheetHeader};
    layout.Panel(0, 0, layout.width, SheetHeader - 1);
    layout.Line(0, SheetHeader - 1, layout.width, 1);
    for (int car = 1; car <= 5; ++car)
        layout.Place(Numbered("lblCar", car), 10 + (car - 1) * 88, 7, 84, ButtonHeight);
    ButtonRow(layout, SmallScreen, 7, OkDeleteCancel);

    constexpr int particulars = 372;
    layout.Panel(LeftX, SheetTop, LeftWidth, particulars);
    Particulars(layout);
    layout.Panel(LeftX, SheetTop + particulars + 8, LeftWidth, SheetBottom - SheetTop - particulars - 8);
    Price(layout, SheetTop + particulars + 12);
    layout.Panel(RightX, SheetTop, RightWidth, SheetBottom - SheetTop);
    Benefits(layout);
    return layout;
}

// ---- its dialog

Layout Form1()
{
    struct Column {
        std::string_view caption, list, display;
        int width;
    };
    constexpr auto Columns = std::to_array<Column>({
        {"Make", "Manufacture", "MakeBox", 240},
        {"Model", "Model", "ModelBox", 190},
        {"Description", "ModelDescription", "ModelDescBox", 260},
        {"Transmission", "Transm", "TransmissionBox", 110},
        {"Type of fuel", "FuelT", "FuelBox", 100},
    });
    constexpr int Left = 16, ListTop = 78, ListHeight = 270, Gap = 10;
    Layout layout;
    layout.Text(Left, 19, 140, "Date first registered", {.size = 13});
    layout.Place("CarReg", Left + 146, 16, 100);
    layout.Text(Left + 262, 20, 500, "Enter the date, then choose in each list from left to right", Italic);
    int x = Left;
    for (const Column& column : Columns) {
        layout.Text(x, ListTop - 20, column.width, column.caption, Bold);
        layout.Place(column.list, x, ListTop, column.width, ListHeight);
        layout.Place(column.display, x, ListTop + ListHeight + 8, column.width);
        x += column.width + Gap;
    }
    layout.width = x - Gap + Left;
    constexpr int Found = ListTop + ListHeight + 48;
    layout.Text(Left, Found + 3, 140, "CO2 emissions (g/km)", {.size = 13});
    layout.Place("C02Level", Left + 146, Found, 70);
    layout.Text(Left + 246, Found + 3, 80, "Engine size", {.size = 13});
    layout.Place("EngineBox", Left + 330, Found, 70);
    layout.Text(Left + 406, Found + 4, 30, "cc", Small);
    ButtonRow(layout, layout.width - Left, Found - 3, OkDeleteCancel);
    layout.height = Found + 40;
    return layout;
}

// ---- the history of a van

Layout GNotepad2()
{
    constexpr int Left = 16, NumberWidth = 20, DateX = Left + NumberWidth + 8, TypeX = DateX + 130, DaysX = TypeX + 90;
    constexpr int First = 44, Row = 26, Rows = 9;
    constexpr int LegendX = DaysX + 100, LegendWidth = 270;
    Layout layout{.width = LegendX + LegendWidth + 16};
    layout.Text(DateX, First - 22, 120, "Change of use", Bold);
    layout.Text(TypeX, First - 22, 80, "Type of use", Bold);
    layout.Text(DaysX, First - 22, 60, "Days", Bold);
    for (int row = 1; row <= Rows; ++row) {
        const int y = First + (row - 1) * Row;
        layout.Text(Left, y + 4, NumberWidth, std::to_string(row), {.size = 11, .align = TextLook::Align::Right});
        layout.PlaceAt("ChangeUse", row, DateX, y, 100);
        layout.PlaceAt("TypeUse", row, TypeX, y, 36);
        layout.PlaceAt("Days", row, DaysX, y, 60);
    }
    constexpr int Last = First + Rows * Row + 8;
    layout.Text(DateX, Last + 3, DaysX - DateX - 8, "Days of the last use, to " + std::string(edition::VanHistoryEnd),
                {.size = 12});
    layout.Place("FinalDays", DaysX, Last, 60);

    layout.Panel(LegendX, First - 22, LegendWidth, 122);
    layout.Text(LegendX + 12, First - 12, LegendWidth - 24, "Codes for Type (of use)", Heading);
    layout.Text(LegendX + 12, First + 14, LegendWidth - 24,
                "1 = Exclusive\n2 = Shared\n3 = Unavailable (less than 30 days)\n4 = Unavailable (more than 29 days)",
                {.size = 13}, 80);
    layout.Text(LegendX + 12, First + 116, LegendWidth - 24,
                "The first row runs from " + std::string(edition::VanHistoryStart) +
                    ". Each change ends the use of the row before it.",
                Italic, 34);

    constexpr int ButtonTop = Last + 40;
    TakeTurns(layout, layout.width - 16, ButtonTop, {"Ok", "OK2", "OK3"}, "Cancel");
    layout.height = ButtonTop + ButtonHeight + 16;
    return layout;
}

} // namespace quillmere::layouts
