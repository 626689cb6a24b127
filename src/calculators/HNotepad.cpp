#include "calculators/HNotepad.h"

#include "edition/Edition.h"
#include "frame/Text.h"

#include <algorithm>

namespace quillmere {

namespace {

constexpr std::string_view Page = "Side2Form1";

/// A box of one loan; `field` is the stem of its fields.
struct LoanRow {
    BoxRow row;
    std::string_view field = {};
    bool shown = true;    ///< the stored text comes back at the opening
    bool guarded = false; ///< needs a currency and the loans before
    bool deleted = true;
};

constexpr auto Rows = std::to_array<LoanRow>({
    {.row = {.name = "Currency", .kind = Kind::DropDown, .spoken = "Currency"}, .shown = false, .deleted = false},
    {.row = {.name = "ABox", .spoken = "Maximum balance at the start", .amount = true},
     .field = "MaxBalanceLater",
     .guarded = true},
    {.row = {.name = "BBox", .spoken = "Maximum balance at the end", .amount = true},
     .field = "MaxBalanceEarlier",
     .guarded = true},
    {.row = {.name = "CBox", .spoken = "Total", .readOnly = true, .amount = true}, .field = "TotalBalance"},
    {.row = {.name = "DBox", .spoken = "Total divided by 2", .readOnly = true, .amount = true}, .field = "Divide2"},
    {.row = {.name = "EBox", .spoken = "Complete tax months", .amount = true, .computed = true},
     .field = "TaxMonths",
     .guarded = true},
    {.row = {.name = "GBox", .spoken = "Official rate of interest", .readOnly = true, .amount = true},
     .field = "InterestRate",
     .shown = false,
     .deleted = false},
    {.row = {.name = "JBox", .spoken = "Interest paid", .amount = true}, .field = "InterestPaid", .guarded = true},
    {.row = {.name = "CashEq", .spoken = "Cash equivalent", .readOnly = true, .amount = true}, .field = "CashEq"},
    {.row = {.name = "MaxAmount", .spoken = "Maximum amount outstanding", .amount = true}, .field = "MaxBox"},
    {.row = {.name = "DateFrom", .filter = DateKeyFilter, .spoken = "Date loan was made"}, .field = "DateFrom"},
    {.row = {.name = "DateTo", .filter = DateKeyFilter, .spoken = "Date loan was discharged"}, .field = "DateTo"},
});

/// What is said where a loan is typed in before those in front of it are complete.
struct OrderMessage {
    std::string_view title, text;
};
constexpr auto OrderMessages = std::to_array<OrderMessage>({
    {"Loan 1 not complete", "You must complete Loan 1 first"},
    {"Previous loans not complete", "You must complete Loans 1 and 2 first"},
    {"Previous loans not complete", "You must complete Loans 1, 2 and 3 first"},
    {"Previous loans not complete", "You must complete Loans 1, 2, 3 and 4 first"},
});

} // namespace

CurrencyList CurrencyList::Read(Database& database)
{
    Recordset records = database.OpenRecordset("HNotepad2");
    records.MoveFirst();
    CurrencyList list;
    for (int row = 1; row <= CurrencyRows; ++row) {
        list.names[static_cast<std::size_t>(row - 1)] = records.Field(Numbered("Currency", row));
        list.rates[static_cast<std::size_t>(row - 1)] = records.Field(Numbered("Rate", row));
    }
    return list;
}

void CurrencyList::Store(Database& database) const
{
    Recordset records = database.OpenRecordset("HNotepad2");
    records.MoveFirst();
    for (int row = 1; row <= CurrencyRows; ++row)
        StoreField(records, Numbered("Currency", row), names[static_cast<std::size_t>(row - 1)]);
    for (int row = 1; row <= CurrencyRows; ++row)
        StoreField(records, Numbered("Rate", row), rates[static_cast<std::size_t>(row - 1)]);
}

std::vector<std::string> CurrencyList::Entries() const
{
    std::vector<std::string> entries;
    std::ranges::copy_if(names, std::back_inserter(entries), [](const std::string& name) { return !name.empty(); });
    return entries;
}

HNotepad::HNotepad(Session& session)
    : CalculatorNotepad(session, "HNotepad", NotepadCaption("Interest-free and low interest loans - ", session),
                        {.loading = "Notepad H - loading error", .failed = "Notepad H Error", .ok = "Notepad H Error"})
{
    for (int loan = 1; loan <= Loans; ++loan)
        AddLoan(loan);
    AddBox(PictureRow("Image1", "Add/Edit Currency"), "Image1");
    AddButtons();
    for (const LoanRow& row : Rows) {
        OnLeave(row.row.name, [this](Box& left) { Recalculate(left.Index()); });
        if (row.guarded)
            OnKey(row.row.name, [this](Box& typedIn) { return GuardEntry(typedIn); });
    }
    OnLeave("DateFrom", [this](Box& left) { LeaveDate(left, LoanDate::From); });
    OnLeave("DateTo", [this](Box& left) { LeaveDate(left, LoanDate::To); });
    OnChoose("Currency", [this](Box& list) { ChooseCurrency(list.Index()); });
    OnClick("Image1", [this](Box&) { this->session.screens.Show("HNotepad2"); });
}

void HNotepad::AddLoan(int loan)
{
    for (const LoanRow& row : Rows) {
        BoxRow made = row.row;
        // Kept: no key filter runs on the loans after the first.
        if (row.guarded && loan == 1)
            made.filter = MoneyKeyFilter;
        AddBox(made, std::string(made.name), loan)
            .SetSpoken("Loan " + std::to_string(loan) + ", " + std::string(made.spoken));
    }
}

bool HNotepad::Load()
{
    return Open(
        [this](Database& database) {
            currencies = CurrencyList::Read(database);
            for (int loan = 1; loan <= Loans; ++loan)
                box("Currency", loan).SetEntries(currencies.Entries());
            FindEmployee(database, "P11D", "Notepad H - Data 2 loading error");
            const Recordset own = FindEmployee(database, "HNotepad", titles.loading);
            for (int loan = 1; loan <= Loans; ++loan)
                ShowLoan(own, loan);
        },
        "Unable to load Notepad H data");
}

void HNotepad::ShowLoan(const Recordset& records, int loan)
{
    int position = 0;
    if (!records.NoMatch()) {
        for (const LoanRow& row : Rows) {
            if (!row.shown)
                continue;
            if (const std::string_view stored = records.Field(Numbered(row.field, loan)); !stored.empty())
                box(row.row.name, loan).SetText(stored);
        }
        if (!records.Field(Numbered("Currency", loan)).empty())
            position = ReadWholeNumber(records.Field(Numbered("Index", loan))) - 1;
    }
    box("Currency", loan).Select(position);
    ChooseCurrency(loan);
}

void HNotepad::ChooseCurrency(int loan)
{
    const Box& list = box("Currency", loan);
    if (list.Selected() < 0)
        return;
    if (const auto rate = RateOfCurrency(currencies.names, currencies.rates, list.Text()))
        box("GBox", loan).SetText(*rate);
    Recalculate(loan);
}

void HNotepad::TakeCurrencies(const CurrencyList& changed)
{
    currencies = changed;
    const std::vector<std::string> entries = currencies.Entries();
    for (int loan = 1; loan <= Loans; ++loan) {
        Box& list = box("Currency", loan);
        const std::string remembered = list.Text();
        list.SetEntries(entries);
        list.Select(static_cast<int>(PositionOfCurrency(entries, remembered)));
        ChooseCurrency(loan);
    }
}

Screen::Guard HNotepad::GuardEntry(Box& typedIn)
{
    const int loan = typedIn.Index();
    if (box("Currency", loan).Selected() < 0) {
        session.messages.Tell("No currency selected", "Please select a currency first");
        typedIn.Clear();
        return Guard::Drops;
    }
    for (int earlier = 1; earlier < loan; ++earlier) {
        if (!box("CashEq", earlier).Empty())
            continue;
        const OrderMessage& message = OrderMessages[static_cast<std::size_t>(loan - 2)];
        session.messages.Tell(message.title, message.text);
        return Guard::Drops;
    }
    return Guard::Filters;
}

void HNotepad::LeaveDate(Box& left, LoanDate which)
{
    const std::string_view other = which == LoanDate::From ? "DateTo" : "DateFrom";
    left.SetText(LeaveLoanDate(which, left.Text(), box(other, left.Index()).Text()));
    Recalculate(left.Index());
}

void HNotepad::Recalculate(int loan)
{
    const auto at = [this, loan](std::string_view boxName) -> Box& { return box(boxName, loan); };
    const auto amount = [&](std::string_view boxName, Amount value) {
        at(boxName).SetText(AmountText(value, edition::FormatMoneyBlankZero));
    };
    const LoanWorking working = LoanBenefit({.ABox = at("ABox").Text(),
                                             .BBox = at("BBox").Text(),
                                             .interestRate = at("GBox").Text(),
                                             .interestPaid = at("JBox").Text(),
                                             .maxAmount = at("MaxAmount").Text(),
                                             .dateFrom = at("DateFrom").Text(),
                                             .dateTo = at("DateTo").Text()});
    if (!working.computed) {
        for (const std::string_view emptied : {"MaxAmount", "CBox", "DBox", "CashEq"})
            at(emptied).Clear();
        return;
    }
    amount("ABox", working.A);
    amount("BBox", working.B);
    amount("CBox", working.C);
    amount("DBox", working.D);
    at("EBox").SetText(PlainNumberBlankZero(working.E));
    at("GBox").SetText(PlainNumberBlankZero(working.G));
    amount("JBox", working.J);
    at("CashEq").SetText(AmountText(working.cashEquivalent, edition::FormatMoneyZero));
    amount("MaxAmount", working.maxAmount);
}

LoanTexts HNotepad::Texts(int loan) const
{
    const auto text = [this, loan](std::string_view boxName) { return box(boxName, loan).Text(); };
    return {.ABox = text("ABox"),
            .BBox = text("BBox"),
            .maxAmount = text("MaxAmount"),
            .interestPaid = text("JBox"),
            .cashEquivalent = text("CashEq"),
            .dateFrom = text("DateFrom"),
            .dateTo = text("DateTo")};
}

void HNotepad::StoreLoan(Recordset& records, int loan) const
{
    const Box& currency = box("Currency", loan);
    StoreField(records, Numbered("Currency", loan), currency.Text());
    StoreField(records, Numbered("Index", loan), std::to_string(currency.Selected() + 1));
    for (const LoanRow& row : Rows)
        if (!row.field.empty())
            StoreField(records, Numbered(row.field, loan), box(row.row.name, loan).Text());
}

void HNotepad::Ok()
{
    const auto fields = LoanPageFields({Texts(1), Texts(2), Texts(3), Texts(4), Texts(5)});
    const bool stored = StoreAll([&](Database& database) {
        Recordset own = OpenCurrent(database, "HNotepad", session);
        for (int loan = 1; loan <= Loans; ++loan)
            StoreLoan(own, loan);
        Recordset page = OpenCurrent(database, "P11D", session);
        for (const PageField& field : fields)
            StoreField(page, field.field, field.text);
    });
    if (!stored)
        return;
    for (const PageField& field : fields)
        PutOnPage(Page, field.field, field.text, field.text);
    session.screens.Unload(Name());
}

void HNotepad::Delete()
{
    for (const LoanRow& row : Rows)
        if (row.deleted)
            for (int loan = 1; loan <= Loans; ++loan)
                box(row.row.name, loan).Clear();
}

} // namespace quillmere
