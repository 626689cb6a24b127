#include "desktop/layouts/Layouts.h"
#include "desktop/layouts/PageParts.h"
#include "edition/FormWords.h"
#include "frame/Text.h"

namespace quillmere::layouts {

namespace {

// Columns of the two loans.
constexpr int LoanX[] = {614, CashX};
constexpr int LoanRow = 27;

void Vans(Layout& layout, int y)
{
    Section(layout, y, 84, "G", "Vans and van fuel", "Image1");
    layout.Text(TextX, y + 29, 700, edition::form::TotalOfVans);
    Single(layout, y + 26, "GVan", "9", Liability::Class1A);
    layout.Text(TextX, y + 57, 700, edition::form::TotalOfVanFuel);
    Single(layout, y + 54, "GVanFuel", "10", Liability::Class1A);
}

void Loans(Layout& layout, int y)
{
    Section(layout, y, 282, "H", "Interest-free and low interest loans", "Image12");
    layout.Text(TextX, y + 24, 520, edition::form::SmallLoans, Italic, 30);
    for (const int loan : {1, 2})
        layout.Text(LoanX[loan - 1], y + 34, AmountWidth, Numbered("Loan ", loan), Heading);
    int row = y + 56;
    const auto line = [&](std::string_view caption, std::string_view stem, int width, std::string_view note = {},
                          int noteX = 0) {
        layout.Text(TextX, row + 3, 560, caption);
        if (!note.empty())
            layout.Text(noteX, row + 4, 240, note, Italic);
        for (const int loan : {1, 2})
            layout.Place(Numbered(stem, loan), LoanX[loan - 1], row, width);
        row += LoanRow;
    };
    line("Number of joint borrowers", "HJointBorrow", 50, "(if applicable)", 196);
    line(edition::form::LoanAtStart, "HOutstand", AmountWidth);
    line(edition::form::LoanAtEnd, "HOutsand2003", AmountWidth);
    line("Maximum amount outstanding at any time in the year", "HMaxLoan", AmountWidth);
    line(edition::form::LoanInterestPaid, "HLoanInterest", AmountWidth, "- enter \"NIL\" if none was paid", 364);
    line(edition::form::LoanMade, "HLoanDate", 100);
    line(edition::form::LoanDischarged, "HLoanDischarge", 100);
    for (const int loan : {1, 2}) {
        layout.Tag(LoanX[loan - 1] - 26, row, "15");
        layout.Tag(LoanX[loan - 1] + AmountWidth + 4, row);
    }
    line("Cash equivalent of loans after deducting any interest paid by the borrower", "HLoanCashEqu", AmountWidth);
}

/// A section of one line: its caption below the heading, three amounts.
void OneTriple(Layout& layout, int y, std::string_view letter, std::string_view heading, std::string_view picture,
               std::string_view caption, const AmountTriple& boxes, std::string_view number)
{
    Section(layout, y, 62, letter, heading, picture);
    TripleCaptions(layout, y + 2, "Cost to you");
    layout.Text(TextX, y + 37, 430, caption);
    Triple(layout, y + 34, boxes, number, Liability::Class1A);
}

void OtherItems(Layout& layout, int y)
{
    Section(layout, y, 122, "N", "Other items (including subscriptions and professional fees)");
    TripleCaptions(layout, y + 2, "Cost to you");
    const auto line = [&](int top, std::string_view picture, std::string_view described, const AmountTriple& boxes,
                          Liability liability) {
        Picture(layout, top - 2, picture);
        layout.Text(TextX, top + 3, 150, "Description of other items");
        layout.Place(described, 206, top, 270);
        Triple(layout, top, boxes, "15", liability);
    };
    line(y + 34, "Image13", "NDescriptItems1", {"NCostYou1", "NAmountGood1", "NCashEqu1"}, Liability::Class1A);
    line(y + 62, "Image14", "NDescriptItems2", {"NCostYou2", "NAmountGood2", "NCashEqu2"}, Liability::None);
    Picture(layout, y + 90, "Image15");
    layout.Text(TextX, y + 95, 560, "Income tax paid but not deducted from director's remuneration");
    layout.Text(700, y + 96, 70, "Tax paid", Small);
    Single(layout, y + 92, "NTaxPaid", "15", Liability::None);
}

void Expenses(Layout& layout, int y)
{
    constexpr int Row = 30;
    Section(layout, y, 34 + 6 * Row + 8, "O", "Expenses payments made to, or on behalf of, the employee");
    TripleCaptions(layout, y + 2, "Cost to you", "Taxable payment");
    int top = y + 36;
    const auto line = [&](int number, std::string_view picture) {
        Picture(layout, top - 2, picture);
        Triple(layout, top,
               {.cost = Numbered("OCostYou", number),
                .madeGood = Numbered("OAmountGood", number),
                .cashEquivalent = Numbered("OCashEqu", number)},
               "16", Liability::None);
        top += Row;
    };
    layout.Text(TextX, top - 3, 240, "Travelling and subsistence payments");
    layout.Text(TextX, top + 11, 440, "(except mileage allowance payments for employee's own car - see section E)",
                Italic);
    line(1, "Image5");
    layout.Text(TextX, top - 3, 100, "Entertainment");
    layout.Text(122, top - 2, 330, "(trading organisations read P11D Guide and then", Italic);
    layout.Text(TextX, top + 11, 400, "enter a tick (Y) or a cross (N) as appropriate here)", Italic);
    layout.Place("OEntertainTick", 440, top, 32);
    line(2, "Image6");
    layout.Text(TextX, top + 3, 430, "General expenses allowance for business travel");
    line(3, "Image7");
    layout.Text(TextX, top + 3, 430, "Payments for use of home telephone");
    line(4, "Image8");
    layout.Text(TextX, top + 3, 220, "Non-qualifying relocation expenses");
    layout.Text(244, top + 4, 240, "(those not shown in sections J or N)", Italic);
    line(5, "Image9");
    layout.Text(TextX, top + 3, 170, "Description of other expenses");
    layout.Place("ODescExpenses", 220, top, 256);
    line(6, "Image10");
}

} // namespace

Layout Side2Form1()
{
    Layout layout{.width = PageWidth};
    PageHeader(layout);
    layout.Place("lblPage", 800, 8, 170);

    int y = 46;
    Vans(layout, y);
    y += 90;
    Loans(layout, y);
    y += 288;
    OneTriple(layout, y, "I", "Private medical treatment or insurance", "Image2",
              "Private medical treatment or insurance", {"IMedCost", "IAmountGood", "ICashEqu"}, "11");
    y += 68;
    Section(layout, y, 66, "J", "Qualifying relocation expenses payments and benefits", "Image11");
    layout.Text(TextX, y + 22, 600, "Non-qualifying benefits and expenses go in sections N and O below", Italic);
    layout.Text(TextX, y + 41, 720, edition::form::RelocationExcess);
    Single(layout, y + 38, "JRelocation", "15", Liability::Class1A);
    y += 72;
    OneTriple(layout, y, "K", "Services supplied", "Image3", "Services supplied to the employee",
              {"KCostYou", "KAmountGood", "KCashEqu"}, "15");
    y += 68;
    Section(layout, y, 62, "L", "Assets placed at the employee's disposal", "Image4");
    TripleCaptions(layout, y + 2, "Annual value plus\nexpenses incurred");
    layout.Text(TextX, y + 37, 130, "Description of asset");
    layout.Place("LDescriptAsset", 176, y + 34, 300);
    Triple(layout, y + 34, {"LAnnualValue", "LAmountGood", "LCashEqu"}, "13", Liability::Class1A);
    y += 68;
    Section(layout, y, 36, "M", "Shares");
    layout.Text(180, y + 5, 560, "Tick here if shares or share options were given to the employee", Small);
    layout.Place("MShareTick", CashX, y + 7, 22);
    y += 42;
    OtherItems(layout, y);
    y += 128;
    Expenses(layout, y);
    layout.height = y + 34 + 6 * 30 + 8 + 10;
    return layout;
}

} // namespace quillmere::layouts
