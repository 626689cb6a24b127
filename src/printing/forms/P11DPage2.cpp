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

constexpr auto Boxes = std::to_array<FormBox>({
    {PrintedKind::Number1A, 161, 4, 0, "    9"}, // G
    {PrintedKind::Number1A, 161, 11, 0, "  10"},
    {PrintedKind::Entry, 133, 31, 145}, // H: joint borrowers
    {PrintedKind::Entry, 169, 31, 181},
    {PrintedKind::Pound, 133, 38.5}, // at the start of the year
    {PrintedKind::Pound, 169, 38.5},
    {PrintedKind::Pound, 133, 46}, // at its end
    {PrintedKind::Pound, 169, 46},
    {PrintedKind::Pound, 133, 53.5}, // maximum
    {PrintedKind::Pound, 169, 53.5},
    {PrintedKind::Pound, 133, 61}, // interest
    {PrintedKind::Pound, 169, 61},
    {PrintedKind::Entry, 133, 68.5, 155}, // date made
    {PrintedKind::Entry, 169, 68.5, 191},
    {PrintedKind::Entry, 133, 76, 155}, // date discharged
    {PrintedKind::Entry, 169, 76, 191},
    {PrintedKind::Number1A, 125, 83.5, 0, "  15"},
    {PrintedKind::Number1A, 161, 83.5, 0, "  15"},
    {PrintedKind::Pound, 105, 100}, // I
    {PrintedKind::Pound, 133, 100},
    {PrintedKind::Number1A, 161, 100, 0, "  11"},
    {PrintedKind::Number1A, 161, 118, 0, "  15"}, // J
    {PrintedKind::Pound, 105, 131},               // K
    {PrintedKind::Pound, 133, 131},
    {PrintedKind::Number1A, 161, 131, 0, "  15"},
    {PrintedKind::Entry, 49, 148, 103}, // L
    {PrintedKind::Pound, 105, 148},
    {PrintedKind::Pound, 133, 148},
    {PrintedKind::Number1A, 161, 148, 0, "  13"},
    {PrintedKind::Entry, 49, 166, 103}, // M: items that bear Class 1A contributions
    {PrintedKind::Pound, 105, 166},
    {PrintedKind::Pound, 133, 166},
    {PrintedKind::Number1A, 161, 166, 0, "  15"},
    {PrintedKind::Entry, 49, 176, 103}, // items that do not
    {PrintedKind::Pound, 105, 176},
    {PrintedKind::Pound, 133, 176},
    {PrintedKind::Number, 161, 176, 0, "  15"},
    {PrintedKind::Number, 161, 186, 0, "  15"}, // tax paid
    {PrintedKind::Pound, 105, 204},             // N: travelling
    {PrintedKind::Pound, 133, 204},
    {PrintedKind::Number, 161, 204, 0, "  16"},
    {PrintedKind::Entry, 98, 213, 103.5}, // entertainment
    {PrintedKind::Pound, 105, 213},
    {PrintedKind::Pound, 133, 213},
    {PrintedKind::Number, 161, 213, 0, "  16"},
    {PrintedKind::Pound, 105, 222}, // general allowance
    {PrintedKind::Pound, 133, 222},
    {PrintedKind::Number, 161, 222, 0, "  16"},
    {PrintedKind::Pound, 105, 231}, // telephone
    {PrintedKind::Pound, 133, 231},
    {PrintedKind::Number, 161, 231, 0, "  16"},
    {PrintedKind::Pound, 105, 240}, // relocation
    {PrintedKind::Pound, 133, 240},
    {PrintedKind::Number, 161, 240, 0, "  16"},
    {PrintedKind::Entry, 49, 249, 103}, // other
    {PrintedKind::Pound, 105, 249},
    {PrintedKind::Pound, 133, 249},
    {PrintedKind::Number, 161, 249, 0, "  16"},
});

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

constexpr auto Labels = std::to_array<Label>({
    {{8, Weight::Bold}, At::Left, 9, 4, "Vans and van fuel"},
    {{8}, At::Left, 9, 9, edition::form::TotalOfVans, 0, "GVan"},
    {{8}, At::Left, 9, 14, edition::form::TotalOfVanFuel, 0, "GVanFuel"},
    {{8, Weight::Bold}, At::Left, 9, 21, "Interest-free and low interest loans"},
    {{8, Weight::Italic}, At::Left, 9, 24.5, edition::form::SmallLoans},
    {{8, Weight::Bold}, At::Left, 134, 30, "Loan 1"},
    {{8, Weight::Bold}, At::Left, 170, 30, "Loan 2"},
    {{8}, At::Left, 9, 36, "Number of joint borrowers"},
    {{8, Weight::Italic}, At::Run, 0, 0, " (if applicable)", 0, "HJointBorrow1 HJointBorrow2", Loans},
    {{8}, At::Left, 9, 43.5, edition::form::LoanAtStart, 0, "HOutstand1 HOutstand2", Loans},
    {{8}, At::Left, 9, 51, edition::form::LoanAtEnd, 0, "HOutsand20031 HOutsand20032", Loans},
    {{8}, At::Left, 9, 58.5, "Maximum amount outstanding at any time in the year", 0, "HMaxLoan1 HMaxLoan2", Loans},
    {{8}, At::Left, 9, 66, edition::form::LoanInterestPaid},
    {{8, Weight::Italic},
     At::Run,
     0,
     0,
     " - enter \"NIL\" if none was paid",
     0,
     "HLoanInterest1 HLoanInterest2",
     Loans},
    {{8}, At::Left, 9, 73.5, edition::form::LoanMade, 0, "HLoanDate1 HLoanDate2", Loans},
    {{8}, At::Left, 9, 81, edition::form::LoanDischarged, 0, "HLoanDischarge1 HLoanDischarge2", Loans},
    {{8},
     At::Left,
     9,
     88.5,
     "Cash equivalent of loans after deducting any interest paid by the borrower",
     0,
     "HLoanCashEqu1 HLoanCashEqu2",
     Loans},
    {{8, Weight::Bold}, At::Left, 9, 97, "Private medical treatment or insurance"},
    {{8}, At::Left, 9, 105, "Private medical treatment or insurance", 0, "IMedCost IAmountGood ICashEqu", CostColumns},
    {{7}, At::Left, 105, 99, "Cost to you"},
    {{7}, At::Left, 133, 96, "Amount made good or"},
    {{7}, At::Left, 133, 99, "from which tax deducted"},
    {{7}, At::Left, 168, 99, "Cash equivalent"},
    {{8}, At::Left, 129.5, 103, "-"},
    {{8}, At::Left, 157, 103, "="},
    {{8, Weight::Bold}, At::Left, 9, 113, "Qualifying relocation expenses payments and benefits"},
    {{8, Weight::Italic}, At::Left, 9, 117, "Non-qualifying benefits and expenses go in sections M and N below"},
    {{8}, At::Left, 9, 123, edition::form::RelocationExcess, 0, "JRelocationExp"},
    {{8, Weight::Bold}, At::Left, 9, 130, "Services supplied"},
    {{8}, At::Left, 9, 136, "Services supplied to the employee", 0, "KCostYou KAmountGood KCashEqu", CostColumns},
    {{7}, At::Left, 105, 130.5, "Cost to you"},
    {{7}, At::Left, 133, 127.5, "Amount made good or"},
    {{7}, At::Left, 133, 130.5, "from which tax deducted"},
    {{7}, At::Left, 168, 130.5, "Cash equivalent"},
    {{8}, At::Left, 129.5, 134, "-"},
    {{8}, At::Left, 157, 134, "="},
    {{8, Weight::Bold}, At::Left, 9, 145, "Assets placed at the employee's disposal"},
    {{8},
     At::Left,
     9,
     153,
     "Description of asset",
     0,
     "LDescriptAsset LAnnualValue LAmountGood LCashEqu",
     AssetColumns},
    {{7}, At::Left, 105, 144, "Annual value plus"},
    {{7}, At::Left, 105, 147, "expenses incurred"},
    {{7}, At::Left, 133, 144, "Amount made good or"},
    {{7}, At::Left, 133, 147, "from which tax deducted"},
    {{7}, At::Left, 168, 147, "Cash equivalent"},
    {{8}, At::Left, 129.5, 151, "-"},
    {{8}, At::Left, 157, 151, "="},
    {{8, Weight::Bold}, At::Left, 9, 159.5, "Other items (including subscriptions and professional fees)"},
    {{8}, At::Left, 9, 168, "Description of"},
    {{8}, At::Left, 9, 171, "other items", 0, "NDescriptItems1 NCostYou1 NAmountGood1 NCashEqu1", ItemColumns},
    {{7}, At::Left, 105, 164, "Cost to you"},
    {{7}, At::Left, 133, 161, "Amount made good or"},
    {{7}, At::Left, 133, 164, "from which tax deducted"},
    {{7}, At::Left, 168, 164, "Cash equivalent"},
    {{7}, At::Left, 168, 185, "Tax paid", 0, {}, {}, Reads::Nothing},
    {{8}, At::Left, 9, 178, "Description of"},
    {{8}, At::Left, 9, 181, "other items", 0, "NDescriptItems2 NCostYou2 NAmountGood2 NCashEqu2", ItemColumns},
    {{8}, At::Left, 9, 189, "Income tax paid but not deducted from director's remuneration", 0, "NTaxPaid", TaxColumns},
    {{8}, At::Left, 129.5, 169, "-"},
    {{8}, At::Left, 157, 169, "="},
    {{8}, At::Left, 129.5, 179, "-"},
    {{8}, At::Left, 157, 179, "="},
    {{8, Weight::Bold}, At::Left, 9, 201, "Expenses payments made to, or on behalf of, the employee"},
    {{8}, At::Left, 9, 206, "Travelling and subsistence payments "},
    {{8, Weight::Italic}, At::Left, 57.5, 206, "(except mileage allowance"},
    {{8, Weight::Italic}, At::Left, 9, 209, "payments for employee's own car"},
    {{8, Weight::Italic}, At::Run, 0, 0, " - see section E)", 0, "OCostYou1 OAmountGood1 OCashEqu1", ExpenseColumns},
    {{7}, At::Left, 105, 202.5, "Cost to you"},
    {{7}, At::Left, 133, 199.5, "Amount made good or"},
    {{7}, At::Left, 133, 202.5, "from which tax deducted"},
    {{7}, At::Left, 168, 202.5, "Taxable payment"},
    {{8}, At::Left, 9, 215, "Entertainment"},
    {{8, Weight::Italic}, At::Run, 0, 0, " (trading organisations read P11D Guide and then"},
    {{8, Weight::Italic},
     At::Left,
     9,
     218,
     "enter a tick or a cross as appropriate here)",
     0,
     "OEntertainTick OCostYou2 OAmountGood2 OCashEqu2",
     MarkedColumns},
    {{8},
     At::Left,
     9,
     226,
     "General expenses allowance for business travel",
     0,
     "OCostYou3 OAmountGood3 OCashEqu3",
     ExpenseColumns},
    {{8},
     At::Left,
     9,
     235,
     "Payments for use of home telephone",
     0,
     "OCostYou4 OAmountGood4 OCashEqu4",
     ExpenseColumns},
    {{8}, At::Left, 9, 243, "Non-qualifying relocation expenses"},
    {{7, Weight::Italic},
     At::Run,
     0,
     0,
     " (those not shown in sections J or M)",
     0,
     "OCostYou5 OAmountGood5 OCashEqu5",
     ExpenseColumns},
    {{8},
     At::Left,
     9,
     253,
     "Description of other expenses",
     0,
     "ODescExpenses OCostYou6 OAmountGood6 OCashEqu6",
     DescribedColumns},
    {{8}, At::Left, 129.5, 207, "-"},
    {{8}, At::Left, 157, 207, "="},
    {{8}, At::Left, 129.5, 216, "-"},
    {{8}, At::Left, 157, 216, "="},
    {{8}, At::Left, 129.5, 225, "-"},
    {{8}, At::Left, 157, 225, "="},
    {{8}, At::Left, 129.5, 234, "-"},
    {{8}, At::Left, 157, 234, "="},
    {{8}, At::Left, 129.5, 243, "-"},
    {{8}, At::Left, 157, 243, "="},
    {{8}, At::Left, 129.5, 252, "-"},
    {{8}, At::Left, 157, 252, "="},
});

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

constexpr auto Values = std::to_array<FormValue>({
    {"IMedCost", At::Right, 124, 104},     {"IAmountGood", At::Right, 152, 104},
    {"ICashEqu", At::Right, 188, 104},     {"JRelocationExp", At::Right, 188, 122},
    {"KCostYou", At::Right, 124, 135},     {"KAmountGood", At::Right, 152, 135},
    {"KCashEqu", At::Right, 188, 135},     {"LDescriptAsset", At::Left, 52, 152, 103},
    {"LAnnualValue", At::Right, 124, 152}, {"LAmountGood", At::Right, 152, 152},
    {"LCashEqu", At::Right, 188, 152},     {"NDescriptItems1", At::Left, 52, 170, 103},
    {"NCostYou1", At::Right, 124, 170},    {"NAmountGood1", At::Right, 152, 170},
    {"NCashEqu1", At::Right, 188, 170},    {"NDescriptItems2", At::Left, 52, 180, 103},
    {"NCostYou2", At::Right, 124, 180},    {"NAmountGood2", At::Right, 152, 180},
    {"NCashEqu2", At::Right, 188, 180},    {"NTaxPaid", At::Right, 188, 190},
    {"OCostYou1", At::Right, 124, 208},    {"OAmountGood1", At::Right, 152, 208},
    {"OCashEqu1", At::Right, 188, 208},
});

// The entertainment mark stands between.
constexpr auto ValuesFromEntertainment = std::to_array<FormValue>({
    {"OCostYou2", At::Right, 124, 217},
    {"OAmountGood2", At::Right, 152, 217},
    {"OCashEqu2", At::Right, 188, 217},
    {"OCostYou3", At::Right, 124, 226},
    {"OAmountGood3", At::Right, 152, 226},
    {"OCashEqu3", At::Right, 188, 226},
    {"OCostYou4", At::Right, 124, 235},
    {"OAmountGood4", At::Right, 152, 235},
    {"OCashEqu4", At::Right, 188, 235},
    {"OCostYou5", At::Right, 124, 244},
    {"OAmountGood5", At::Right, 152, 244},
    {"OCashEqu5", At::Right, 188, 244},
    {"ODescExpenses", At::Left, 52, 253, 103},
    {"OCostYou6", At::Right, 124, 253},
    {"OAmountGood6", At::Right, 152, 253},
    {"OCashEqu6", At::Right, 188, 253},
});

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
    page.vsTextColor(page.ColBlack);
    page.vsFont(9, true, true);
    {
        const BelongsTo element(page, Role::Paragraph);
        page.vsTextRight(193, 1, FieldText(read("NatIns"), 0));
    }

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
