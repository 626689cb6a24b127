#include "screens/Side2Form1.h"

#include "edition/Edition.h"
#include "edition/LeftOvers.h"
#include "frame/CloseAll.h"
#include "frame/Dates.h"
#include "frame/KeyFilters.h"
#include "frame/Text.h"
#include "frame/YearEnd.h"

#include <array>
#include <utility>

namespace quillmere {

namespace {

constexpr BoxRow DescriptionRow(std::string_view name, std::string_view spoken)
{
    return {.name = name, .field = name, .spoken = spoken};
}
constexpr BoxRow DateRow(std::string_view name, std::string_view spoken)
{
    return {.name = name, .field = name, .filter = DateKeyFilter, .spoken = spoken};
}
constexpr BoxRow JointRow(std::string_view name, std::string_view spoken)
{
    return {.name = name, .field = name, .filter = WholeNumberKeyFilter, .spoken = spoken};
}
/// Interest takes a word as well as an amount, so every key goes in.
constexpr BoxRow InterestRow(std::string_view name, std::string_view spoken)
{
    return AmountRow(name, spoken, nullptr);
}

constexpr auto Rows = std::to_array<BoxRow>({
    {.name = "Page1", .kind = BoxKind::Label, .text = "Page 1", .spoken = "Page 1", .letter = '1'},
    {.name = "Page2", .kind = BoxKind::Label, .text = "Page 2", .spoken = "Page 2", .letter = '2'},
    {.name = "lblPage", .kind = BoxKind::Label, .text = "P11D, sections G to O"},

    AmountRow("GVan", "G, cash equivalent of all vans, box 9"),
    AmountRow("GVanFuel", "G, cash equivalent of fuel for all vans, box 10"),
    PictureRow("Image1", "Vans and van fuel: calculation"),

    JointRow("HJointBorrow1", "H, loan 1, number of joint borrowers"),
    AmountRow("HOutstand1", "H, loan 1, amount outstanding at last year's end or when made"),
    AmountRow("HOutsand20031", "H, loan 1, amount outstanding at this year's end or when discharged"),
    AmountRow("HMaxLoan1", "H, loan 1, maximum amount outstanding"),
    InterestRow("HLoanInterest1", "H, loan 1, interest paid, NIL if none was paid"),
    DateRow("HLoanDate1", "H, loan 1, date made"),
    DateRow("HLoanDischarge1", "H, loan 1, date discharged"),
    AmountRow("HLoanCashEqu1", "H, loan 1, cash equivalent, box 15"),
    JointRow("HJointBorrow2", "H, loan 2, number of joint borrowers"),
    AmountRow("HOutstand2", "H, loan 2, amount outstanding at last year's end or when made"),
    AmountRow("HOutsand20032", "H, loan 2, amount outstanding at this year's end or when discharged"),
    AmountRow("HMaxLoan2", "H, loan 2, maximum amount outstanding"),
    InterestRow("HLoanInterest2", "H, loan 2, interest paid, NIL if none was paid"),
    DateRow("HLoanDate2", "H, loan 2, date made"),
    DateRow("HLoanDischarge2", "H, loan 2, date discharged"),
    AmountRow("HLoanCashEqu2", "H, loan 2, cash equivalent, box 15"),
    PictureRow("Image12", "Interest-free and low interest loans: calculation"),

    AmountRow("IMedCost", "I, cost to you"),
    AmountRow("IAmountGood", "I, amount made good or from which tax deducted"),
    AmountRow("ICashEqu", "I, cash equivalent, box 11"),
    PictureRow("Image2", "Private medical treatment or insurance: list of items"),

    {.name = "JRelocation",
     .field = "JRelocationExp",
     .filter = MoneyKeyFilter,
     .spoken = "J, excess of qualifying relocation expenses, box 15",
     .amount = true},
    PictureRow("Image11", "Qualifying relocation: calculation"),

    AmountRow("KCostYou", "K, cost to you"),
    AmountRow("KAmountGood", "K, amount made good or from which tax deducted"),
    AmountRow("KCashEqu", "K, cash equivalent, box 15"),
    PictureRow("Image3", "Services supplied: list of items"),

    DescriptionRow("LDescriptAsset", "L, description of asset"),
    AmountRow("LAnnualValue", "L, annual value plus expenses incurred"),
    AmountRow("LAmountGood", "L, amount made good or from which tax deducted"),
    AmountRow("LCashEqu", "L, cash equivalent, box 13"),
    PictureRow("Image4", "Assets placed at the employee's disposal: list of items"),

    {.name = "MShareTick", .kind = BoxKind::Tick, .field = "MShareTick", .spoken = "M, shares"},

    DescriptionRow("NDescriptItems1", "N, first line, description of other items"),
    AmountRow("NCostYou1", "N, first line, cost to you"),
    AmountRow("NAmountGood1", "N, first line, amount made good or from which tax deducted"),
    AmountRow("NCashEqu1", "N, first line, cash equivalent, box 15"),
    PictureRow("Image13", "Other items, first line: list of items"),
    DescriptionRow("NDescriptItems2", "N, second line, description of other items"),
    AmountRow("NCostYou2", "N, second line, cost to you"),
    AmountRow("NAmountGood2", "N, second line, amount made good or from which tax deducted"),
    AmountRow("NCashEqu2", "N, second line, cash equivalent, box 15"),
    PictureRow("Image14", "Other items, second line: list of items"),
    AmountRow("NTaxPaid", "N, income tax paid but not deducted from director's remuneration, box 15"),
    PictureRow("Image15", "Income tax paid but not deducted: list of items"),

    AmountRow("OCostYou1", "O, travelling and subsistence, cost to you"),
    AmountRow("OAmountGood1", "O, travelling and subsistence, amount made good or from which tax deducted"),
    AmountRow("OCashEqu1", "O, travelling and subsistence, taxable payment, box 16"),
    PictureRow("Image5", "Travelling and subsistence payments: list of items"),
    {.name = "OEntertainTick",
     .field = "OEntertainTick",
     .filter = YesNoKeyFilter,
     .spoken = "O, entertainment, Y for a tick or N for a cross"},
    AmountRow("OCostYou2", "O, entertainment, cost to you"),
    AmountRow("OAmountGood2", "O, entertainment, amount made good or from which tax deducted"),
    AmountRow("OCashEqu2", "O, entertainment, taxable payment, box 16"),
    PictureRow("Image6", "Entertainment: list of items"),
    AmountRow("OCostYou3", "O, general expenses allowance, cost to you"),
    AmountRow("OAmountGood3", "O, general expenses allowance, amount made good or from which tax deducted"),
    AmountRow("OCashEqu3", "O, general expenses allowance, taxable payment, box 16"),
    PictureRow("Image7", "General expenses allowance for business travel: list of items"),
    AmountRow("OCostYou4", "O, home telephone, cost to you"),
    AmountRow("OAmountGood4", "O, home telephone, amount made good or from which tax deducted"),
    AmountRow("OCashEqu4", "O, home telephone, taxable payment, box 16"),
    PictureRow("Image8", "Payments for use of home telephone: list of items"),
    AmountRow("OCostYou5", "O, non-qualifying relocation, cost to you"),
    AmountRow("OAmountGood5", "O, non-qualifying relocation, amount made good or from which tax deducted"),
    AmountRow("OCashEqu5", "O, non-qualifying relocation, taxable payment, box 16"),
    PictureRow("Image9", "Non-qualifying relocation expenses: list of items"),
    DescriptionRow("ODescExpenses", "O, description of other expenses"),
    AmountRow("OCostYou6", "O, other expenses, cost to you"),
    AmountRow("OAmountGood6", "O, other expenses, amount made good or from which tax deducted"),
    AmountRow("OCashEqu6", "O, other expenses, taxable payment, box 16"),
    PictureRow("Image10", "Other expenses: list of items"),
});

constexpr auto Triples = std::to_array<AmountTriple>({
    {"IMedCost", "IAmountGood", "ICashEqu"},
    {"KCostYou", "KAmountGood", "KCashEqu"},
    {"LAnnualValue", "LAmountGood", "LCashEqu"},
    {"NCostYou1", "NAmountGood1", "NCashEqu1"},
    {"NCostYou2", "NAmountGood2", "NCashEqu2"},
    {"OCostYou1", "OAmountGood1", "OCashEqu1"},
    {"OCostYou2", "OAmountGood2", "OCashEqu2"},
    {"OCostYou3", "OAmountGood3", "OCashEqu3"},
    {"OCostYou4", "OAmountGood4", "OCashEqu4"},
    {"OCostYou5", "OAmountGood5", "OCashEqu5"},
    {"OCostYou6", "OAmountGood6", "OCashEqu6"},
});

constexpr auto Singles = std::to_array<std::string_view>({
    "GVan",
    "GVanFuel",
    "HLoanCashEqu1",
    "HMaxLoan1",
    "HOutstand1",
    "HOutsand20031",
    "HLoanCashEqu2",
    "HMaxLoan2",
    "HOutstand2",
    "HOutsand20032",
    "JRelocation",
    "NTaxPaid",
});

/// The pictures, and the screens that they open.
constexpr auto Pictures = std::to_array<std::pair<std::string_view, std::string_view>>({
    {"Image1", "GNotepad"},
    {"Image2", "INotepad"},
    {"Image3", "KNotepad"},
    {"Image4", "LNotepad"},
    {"Image5", "ONotepad1"},
    {"Image6", "ONotepad2"},
    {"Image7", "ONotepad3"},
    {"Image8", "ONotepad4"},
    {"Image9", "ONotepad5"},
    {"Image10", "ONotepad6"},
    {"Image11", "JNotepad"},
    {"Image12", "HNotepad"},
    {"Image13", "NNotepad1"},
    {"Image14", "NNotepad2"},
    {"Image15", "NNotepad3"},
});

constexpr auto Loans = std::to_array<int>({1, 2});

} // namespace

Side2Form1::Side2Form1(Session& session)
    : P11DPage(session, "Side2Form1", "P11D", "P11D Page 2 - Refresh after Print Error")
{
    AddBoxes(Rows);
    for (const AmountTriple& triple : Triples)
        OnLeaveTriple(triple);
    for (const std::string_view single : Singles)
        OnLeaveAmount(single);
    for (const int loan : Loans) {
        OnLeave(Numbered("HLoanInterest", loan), [this](Box& interest) { LeaveLoanInterest(interest); });
        OnLeave(Numbered("HLoanDate", loan), [this](Box& date) { LeaveLoanDate(date); });
        OnLeave(Numbered("HLoanDischarge", loan), [this, loan](Box&) { LeaveLoanDischarge(loan); });
    }
    OnLeave("OEntertainTick", [](Box& tick) { tick.SetText(UpperCase(tick.Text())); });
    OnClick("Page1", [this](Box&) { TurnTo("Form3", "P11D Page 1 - loading error"); });
    OnClick("Page2", [](Box&) {});
    for (const auto& [picture, screen] : Pictures)
        OpensScreen(picture, screen);
}

bool Side2Form1::Load()
{
    SetCaption("P11D");
    box("Page2").SetPaint(Paint::Yellow);
    session.CurrentPage = 2;
    return true;
}

void Side2Form1::Activate()
{
    session.CurrentPage = 2;
}

void Side2Form1::Unload()
{
    P11DPage::Unload();
    EnableEmployeeCommands(session, false);
}

void Side2Form1::LeaveLoanInterest(Box& interest)
{
    interest.SetText(UpperCase(interest.Text()));
    if (interest.Text() != "NIL")
        RewriteAmount(interest);
}

void Side2Form1::LeaveLoanDate(Box& date)
{
    const std::string text = date.TrimText();
    if (text.empty())
        return;
    const auto day = ReadDate(text);
    // Kept: the earliest date is that of an older year.
    const bool valid = IsDateText(text) && IsNotAfterYearEnd(session, text) && day && *day >= edition::EarliestLoanDay;
    date.SetText(valid ? NormaliseDate(text) : std::string());
}

void Side2Form1::LeaveLoanDischarge(int loan)
{
    Box& discharge = box(Numbered("HLoanDischarge", loan));
    LeaveLoanDate(discharge);
    const auto made = ReadDate(box(Numbered("HLoanDate", loan)).Text());
    const auto discharged = ReadDate(discharge.Text());
    if (!made || !discharged || *discharged >= *made)
        return;
    session.messages.Tell("Incorrect Date", "Date must not be earlier than first date");
    discharge.Clear();
}

} // namespace quillmere
