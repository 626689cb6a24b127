#include "edition/FormWords.h"
#include "frame/Amount.h"
#include "frame/Text.h"
#include "printing/forms/FormTables.h"
#include "printing/forms/P11DPages.h"

#include <array>

namespace quillmere {

namespace {

constexpr auto Panels = std::to_array<Panel>({
    {2, 1, 195, 17.5},
    {2, 18, 195, 90.5},
    {2, 93, 195, 106.5},
    {2, 109, 195, 124.5},
    {2, 125, 195, 138.5},
    {2, 140, 195, 154.5},
    {2, 155, 195, 193},
    {2, 197, 195, 272},
});

constexpr auto Sections = std::to_array<SectionMark>({
    {"G", 2, 1, "Vans and van fuel"},
    {"H", 2, 18, "Interest-free and low interest loans"},
    {"I", 2, 93, "Private medical treatment or insurance"},
    {"J", 2, 109, "Qualifying relocation expenses payments and benefits"},
    {"K", 2, 125, "Services supplied"},
    {"L", 2, 140, "Assets placed at the employee's disposal"},
    {"M", 2, 155, "Other items"},
    {"N", 2, 197, "Expenses payments made to, or on behalf of, the employee"},
});

constexpr auto Boxes = RowList{
    FormBox{PrintedKind::Number1A, 161, 4, 0, "    9"}, // G
    FormBox{PrintedKind::Number1A, 161, 11, 0, "  10"},
    FormBox{PrintedKind::Entry, 133, 31, 145}, // H: joint borrowers
    FormBox{PrintedKind::Entry, 169, 31, 181},
    FormBox{PrintedKind::Pound, 133, 38.5}, // at the start of the year
    FormBox{PrintedKind::Pound, 169, 38.5},
    FormBox{PrintedKind::Pound, 133, 46}, // at its end
    FormBox{PrintedKind::Pound, 169, 46},
    FormBox{PrintedKind::Pound, 133, 53.5}, // maximum
    FormBox{PrintedKind::Pound, 169, 53.5},
    FormBox{PrintedKind::Pound, 133, 61}, // interest
    FormBox{PrintedKind::Pound, 169, 61},
    FormBox{PrintedKind::Entry, 133, 68.5, 155}, // date made
    FormBox{PrintedKind::Entry, 169, 68.5, 191},
    FormBox{PrintedKind::Entry, 133, 76, 155}, // date discharged
    FormBox{PrintedKind::Entry, 169, 76, 191},
    FormBox{PrintedKind::Number1A, 125, 83.5, 0, "  15"},
    FormBox{PrintedKind::Number1A, 161, 83.5, 0, "  15"},
    ThreeBoxes(100, PrintedKind::Number1A, "  11"),      // I
    FormBox{PrintedKind::Number1A, 161, 118, 0, "  15"}, // J
    ThreeBoxes(131, PrintedKind::Number1A, "  15"),      // K
    FormBox{PrintedKind::Entry, 49, 148, 103},           // L
    ThreeBoxes(148, PrintedKind::Number1A, "  13"),
    FormBox{PrintedKind::Entry, 49, 166, 103}, // M: items that bear Class 1A contributions
    ThreeBoxes(166, PrintedKind::Number1A, "  15"),
    FormBox{PrintedKind::Entry, 49, 176, 103}, // items that do not
    ThreeBoxes(176, PrintedKind::Number, "  15"),
    FormBox{PrintedKind::Number, 161, 186, 0, "  15"}, // tax paid
    ThreeBoxes(204, PrintedKind::Number, "  16"),      // N: travelling
    FormBox{PrintedKind::Entry, 98, 213, 103.5},       // entertainment
    ThreeBoxes(213, PrintedKind::Number, "  16"),
    ThreeBoxes(222, PrintedKind::Number, "  16"), // general allowance
    ThreeBoxes(231, PrintedKind::Number, "  16"), // telephone
    ThreeBoxes(240, PrintedKind::Number, "  16"), // relocation
    FormBox{PrintedKind::Entry, 49, 249, 103},    // other
    ThreeBoxes(249, PrintedKind::Number, "  16"),
};

constexpr auto Loans = std::to_array<std::string_view>({"Loan 1", "Loan 2"});

// The heads of the columns, for each of the boxes below them.
constexpr std::string_view MadeGood = "Amount made good or from which tax deducted";
constexpr auto CostColumns = std::to_array<std::string_view>({"Cost to you", MadeGood, "Cash equivalent"});
constexpr auto AssetColumns =
    std::to_array<std::string_view>({{}, "Annual value plus expenses incurred", MadeGood, "Cash equivalent"});
constexpr auto ItemColumns = std::to_array<std::string_view>({{}, "Cost to you", MadeGood, "Cash equivalent"});
constexpr auto TaxColumns = std::to_array<std::string_view>({"Tax paid"});
constexpr auto ExpenseColumns = std::to_array<std::string_view>({"Cost to you", MadeGood, "Taxable payment"});
constexpr auto MarkedColumns =
    std::to_array<std::string_view>({"tick or cross", "Cost to you", MadeGood, "Taxable payment"});
constexpr auto DescribedColumns = std::to_array<std::string_view>({{}, "Cost to you", MadeGood, "Taxable payment"});

constexpr auto Labels = RowList{
    LabelAt({8, Weight::Bold}, 9, 4, "Vans and van fuel"),
    LabelAt({8}, 9, 9, edition::form::TotalOfVans, "GVan"),
    LabelAt({8}, 9, 14, edition::form::TotalOfVanFuel, "GVanFuel"),
    LabelAt({8, Weight::Bold}, 9, 21, "Interest-free and low interest loans"),
    LabelAt({8, Weight::Italic}, 9, 24.5, edition::form::SmallLoans),
    LabelAt({8, Weight::Bold}, 134, 30, "Loan 1"),
    LabelAt({8, Weight::Bold}, 170, 30, "Loan 2"),
    LabelAt({8}, 9, 36, "Number of joint borrowers"),
    LabelOn({8, Weight::Italic}, " (if applicable)", "HJointBorrow1 HJointBorrow2", Loans),
    LabelAt({8}, 9, 43.5, edition::form::LoanAtStart, "HOutstand1 HOutstand2", Loans),
    LabelAt({8}, 9, 51, edition::form::LoanAtEnd, "HOutsand20031 HOutsand20032", Loans),
    LabelAt({8}, 9, 58.5, "Maximum amount outstanding at any time in the year", "HMaxLoan1 HMaxLoan2", Loans),
    LabelAt({8}, 9, 66, edition::form::LoanInterestPaid),
    LabelOn({8, Weight::Italic}, " - enter \"NIL\" if none was paid", "HLoanInterest1 HLoanInterest2", Loans),
    LabelAt({8}, 9, 73.5, edition::form::LoanMade, "HLoanDate1 HLoanDate2", Loans),
    LabelAt({8}, 9, 81, edition::form::LoanDischarged, "HLoanDischarge1 HLoanDischarge2", Loans),
    LabelAt({8}, 9, 88.5, "Cash equivalent of loans after deducting any interest paid by the borrower",
            "HLoanCashEqu1 HLoanCashEqu2", Loans),
    LabelAt({8, Weight::Bold}, 9, 97, "Private medical treatment or insurance"),
    LabelAt({8}, 9, 105, "Private medical treatment or insurance", "IMedCost IAmountGood ICashEqu", CostColumns),
    HeadsOver(99, "Cost to you", 168, "Cash equivalent"),
    SignsBetween(103),
    LabelAt({8, Weight::Bold}, 9, 113, "Qualifying relocation expenses payments and benefits"),
    LabelAt({8, Weight::Italic}, 9, 117, "Non-qualifying benefits and expenses go in sections M and N below"),
    LabelAt({8}, 9, 123, edition::form::RelocationExcess, "JRelocationExp"),
    LabelAt({8, Weight::Bold}, 9, 130, "Services supplied"),
    LabelAt({8}, 9, 136, "Services supplied to the employee", "KCostYou KAmountGood KCashEqu", CostColumns),
    HeadsOver(130.5, "Cost to you", 168, "Cash equivalent"),
    SignsBetween(134),
    LabelAt({8, Weight::Bold}, 9, 145, "Assets placed at the employee's disposal"),
    LabelAt({8}, 9, 153, "Description of asset", "LDescriptAsset LAnnualValue LAmountGood LCashEqu", AssetColumns),
    LabelAt({7}, 105, 144, "Annual value plus"),
    HeadsOver(147, "expenses incurred", 168, "Cash equivalent"),
    SignsBetween(151),
    LabelAt({8, Weight::Bold}, 9, 159.5, "Other items (including subscriptions and professional fees)"),
    LabelAt({8}, 9, 168, "Description of"),
    LabelAt({8}, 9, 171, "other items", "NDescriptItems1 NCostYou1 NAmountGood1 NCashEqu1", ItemColumns),
    HeadsOver(164, "Cost to you", 168, "Cash equivalent"),
    ReadAs(Reads::Nothing, LabelAt({7}, 168, 185, "Tax paid")),
    LabelAt({8}, 9, 178, "Description of"),
    LabelAt({8}, 9, 181, "other items", "NDescriptItems2 NCostYou2 NAmountGood2 NCashEqu2", ItemColumns),
    LabelAt({8}, 9, 189, "Income tax paid but not deducted from director's remuneration", "NTaxPaid", TaxColumns),
    SignsBetween(169),
    SignsBetween(179),
    LabelAt({8, Weight::Bold}, 9, 201, "Expenses payments made to, or on behalf of, the employee"),
    LabelAt({8}, 9, 206, "Travelling and subsistence payments "),
    LabelAt({8, Weight::Italic}, 57.5, 206, "(except mileage allowance"),
    LabelAt({8, Weight::Italic}, 9, 209, "payments for employee's own car"),
    LabelOn({8, Weight::Italic}, " - see section E)", "OCostYou1 OAmountGood1 OCashEqu1", ExpenseColumns),
    HeadsOver(202.5, "Cost to you", 168, "Taxable payment"),
    LabelAt({8}, 9, 215, "Entertainment"),
    LabelOn({8, Weight::Italic}, " (trading organisations read P11D Guide and then"),
    LabelAt({8, Weight::Italic}, 9, 218, "enter a tick or a cross as appropriate here)",
            "OEntertainTick OCostYou2 OAmountGood2 OCashEqu2", MarkedColumns),
    LabelAt({8}, 9, 226, "General expenses allowance for business travel", "OCostYou3 OAmountGood3 OCashEqu3",
            ExpenseColumns),
    LabelAt({8}, 9, 235, "Payments for use of home telephone", "OCostYou4 OAmountGood4 OCashEqu4", ExpenseColumns),
    LabelAt({8}, 9, 243, "Non-qualifying relocation expenses"),
    LabelOn({7, Weight::Italic}, " (those not shown in sections J or M)", "OCostYou5 OAmountGood5 OCashEqu5",
            ExpenseColumns),
    LabelAt({8}, 9, 253, "Description of other expenses", "ODescExpenses OCostYou6 OAmountGood6 OCashEqu6",
            DescribedColumns),
    SignsBetween(207),
    SignsBetween(216),
    SignsBetween(225),
    SignsBetween(234),
    SignsBetween(243),
    SignsBetween(252),
};

/// The cash equivalent of the second loan stands between these two lists.
constexpr auto ValuesToLoans = std::to_array<FormValue>({
    {"GVan", At::Right, 188, 8},
    {"GVanFuel", At::Right, 188, 15},
    {"HJointBorrow1", At::Centre, 133, 35, 145},
    {"HJointBorrow2", At::Centre, 169, 35, 181},
    {"HOutstand1", At::Right, 152, 42.5},
    {"HOutstand2", At::Right, 188, 42.5},
    {"HOutsand20031", At::Right, 152, 50},
    {"HOutsand20032", At::Right, 188, 50},
    {"HMaxLoan1", At::Right, 152, 57.5},
    {"HMaxLoan2", At::Right, 188, 57.5},
    {"HLoanInterest1", At::Right, 152, 65},
    {"HLoanInterest2", At::Right, 188, 65},
    {"HLoanDate1", At::Centre, 133, 72.5, 155},
    {"HLoanDate2", At::Centre, 169, 72.5, 191},
    {"HLoanDischarge1", At::Centre, 133, 80, 155},
    {"HLoanDischarge2", At::Centre, 169, 80, 191},
    {"HLoanCashEqu1", At::Right, 152, 87.5},
});

constexpr auto Values = RowList{
    ThreeFigures(104, "IMedCost", "IAmountGood", "ICashEqu"),     FormValue{"JRelocationExp", At::Right, 188, 122},
    ThreeFigures(135, "KCostYou", "KAmountGood", "KCashEqu"),     FormValue{"LDescriptAsset", At::Left, 52, 152, 103},
    ThreeFigures(152, "LAnnualValue", "LAmountGood", "LCashEqu"), FormValue{"NDescriptItems1", At::Left, 52, 170, 103},
    ThreeFigures(170, "NCostYou1", "NAmountGood1", "NCashEqu1"),  FormValue{"NDescriptItems2", At::Left, 52, 180, 103},
    ThreeFigures(180, "NCostYou2", "NAmountGood2", "NCashEqu2"),  FormValue{"NTaxPaid", At::Right, 188, 190},
    ThreeFigures(208, "OCostYou1", "OAmountGood1", "OCashEqu1"),
};

// The entertainment mark stands between.
constexpr auto ValuesFromEntertainment = RowList{
    ThreeFigures(217, "OCostYou2", "OAmountGood2", "OCashEqu2"),
    ThreeFigures(226, "OCostYou3", "OAmountGood3", "OCashEqu3"),
    ThreeFigures(235, "OCostYou4", "OAmountGood4", "OCashEqu4"),
    ThreeFigures(244, "OCostYou5", "OAmountGood5", "OCashEqu5"),
    FormValue{"ODescExpenses", At::Left, 52, 253, 103},
    ThreeFigures(253, "OCostYou6", "OAmountGood6", "OCashEqu6"),
};

/// The box of the second loan holds its figure or, with more than two loans, words that have no room in it.
void DrawSecondLoan(FormSheet& sheet, std::string_view value)
{
    PageLayer& page = sheet.page;
    const BelongsTo element(page, sheet.FigureOf("HLoanCashEqu2", 188, 87.5));
    constexpr std::size_t LongestFigure = 5;
    const std::string text = Trim(value);
    // Kept: words of five characters or fewer print in the box, and so does a zero.
    if (Length(text) > LongestFigure && ReadAmount(text).IsZero())
        page.vsTextLeft(125, 93, "See attached schedule");
    else
        page.vsTextRight(188, 87.5, text);
}

/// A tick for Y, a cross for N.
void DrawEntertainmentMark(FormSheet& sheet, std::string_view value)
{
    PageLayer& page = sheet.page;
    const ElementNumber entry = sheet.EntryOf("OEntertainTick");
    const BelongsTo element(page, entry);
    if (value == "Y")
        DrawTick(page, entry, 100, 217);
    else if (value == "N")
        page.vsTextCentre(98, 103.5, 217, "X");
}

} // namespace

void PrintP11D2(PageLayer& page, const FieldReader& read)
{
    FormSheet sheet(page);
    page.vsBookmark("P11D page 2");
    page.BeginFixedPart();
    if (page.HasShading())
        DrawPanels(page, Panels, page.ColLight);
    DrawSectionMarks(sheet, Sections);
    page.vsFontName("Arial");
    DrawBoxes(sheet, Boxes);
    page.EndFixedPart();

    // Each side of the form carries the number.
    DrawNumberAtTop(page, FieldText(read("NatIns"), 0));

    page.BeginFixedPart();
    DrawLabels(sheet, Labels);
    DrawIdentifier(page, 276, edition::form::P11DIdentifier);
    page.EndFixedPart();

    BeginValues(page);
    DrawValues(sheet, ValuesToLoans, read);
    DrawSecondLoan(sheet, read("HLoanCashEqu2"));
    DrawValues(sheet, Values, read);
    DrawEntertainmentMark(sheet, FieldText(read("OEntertainTick"), 0));
    DrawValues(sheet, ValuesFromEntertainment, read);
}

void AddBoxedTextsOfP11D2(std::vector<BoxedText>& texts)
{
    AddBoxedTexts(Values, {}, texts);
    AddBoxedTexts(ValuesFromEntertainment, {}, texts);
}

} // namespace quillmere
