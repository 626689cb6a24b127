#include "calculators/HNotepad.h"

#include "calculators/CalculatorFacts.h"
#include "edition/Edition.h"
#include "frame/Nth.h"
#include "frame/Text.h"

#include <algorithm>

namespace quillmere {

namespace {

/// A box of one loan; its field is the stem of five.
struct LoanRow {
    BoxRow row;
    bool shown = true;    ///< the stored text comes back at the opening
    bool guarded = false; ///< needs a currency and the loans before
    bool deleted = true;
};

constexpr auto Rows = std::to_array<LoanRow>({
    {.row = {.name = "Currency", .kind = BoxKind::DropDown, .field = "Currency", .spoken = "Currency"},
     .shown = false,
     .deleted = false},
    {.row = {.name = "ABox", .field = "MaxBalanceLater", .spoken = "Maximum balance at the start", .amount = true},
     .guarded = true},
    {.row = {.name = "BBox", .field = "MaxBalanceEarlier", .spoken = "Maximum balance at the end", .amount = true},
     .guarded = true},
    {.row = {.name = "CBox", .field = "TotalBalance", .spoken = "Total", .readOnly = true, .amount = true}},
    {.row = {.name = "DBox", .field = "Divide2", .spoken = "Total divided by 2", .readOnly = true, .amount = true}},
    {.row = {.name = "EBox", .field = "TaxMonths", .spoken = "Complete tax months", .amount = true, .computed = true},
     .guarded = true},
    {.row = {.name = "GBox",
             .field = "InterestRate",
             .spoken = "Official rate of interest",
             .readOnly = true,
             .amount = true},
     .shown = false,
     .deleted = false},
    {.row = {.name = "JBox", .field = "InterestPaid", .spoken = "Interest paid", .amount = true}, .guarded = true},
    {.row = {.name = "CashEq", .field = "CashEq", .spoken = "Cash equivalent", .readOnly = true, .amount = true}},
    {.row = {.name = "MaxAmount", .field = "MaxBox", .spoken = "Maximum amount outstanding", .amount = true}},
    {.row = {.name = "DateFrom", .field = "DateFrom", .filter = DateKeyFilter, .spoken = "Date loan was made"}},
    {.row = {.name = "DateTo", .field = "DateTo", .filter = DateKeyFilter, .spoken = "Date loan was discharged"}},
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
        Nth(list.names, row) = records.Field(Numbered("Currency", row));
        Nth(list.rates, row) = records.Field(Numbered("Rate", row));
    }
    return list;
}

std::vector<std::string> CurrencyList::Entries() const
{
    std::vector<std::string> entries;
    std::ranges::copy_if(names, std::back_inserter(entries), [](const std::string& name) { return !name.empty(); });
    return entries;
}

HNotepad::HNotepad(Session& session)
    : Notepad(session, "HNotepad", NotepadCaption("Interest-free and low interest loans - ", session), "HNotepad",
              {.loading = "Notepad H - loading error",
               .failed = "Notepad H Error",
               .failure = "Unable to load Notepad H data",
               .ok = "Notepad H Error"})
{
    for (int loan = 1; loan <= Loans; ++loan)
        AddLoan(loan);
    AddBox(PictureRow("Image1", "Add/Edit Currency"), "Image1");
    AddButtons();
    for (int loan = 1; loan <= Loans; ++loan)
        KeepLoan(loan);
    for (const LoanRow& row : Rows) {
        OnLeave(row.row.name, [this](Box& left) { WorkOut([&] { Recalculate(left.Index()); }); });
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

/// The fields of a loan, in the order in which they are written. The position of its currency in the list has no box.
void HNotepad::KeepLoan(int loan)
{
    for (const LoanRow& row : Rows) {
        Keep(Numbered(row.row.field, loan), &box(row.row.name, loan), loan);
        if (row.row.name == "Currency")
            Keep(Numbered("Index", loan), nullptr, loan);
    }
}

void HNotepad::Open(Database& database)
{
    currencies = CurrencyList::Read(database);
    for (int loan = 1; loan <= Loans; ++loan) {
        box("Currency", loan).SetEntries(currencies.Entries());
        box("Currency", loan).Select(0);
    }
    FindEmployee(database, "P11D", "Notepad H - Data 2 loading error");
    Notepad::Open(database);
    Recalculate();
}

void HNotepad::ShowStored(Entry& entry)
{
    if (entry.box == nullptr) {
        if (!EntryOf(Numbered("Currency", entry.thing)).stored.empty())
            box("Currency", entry.thing).Select(ReadWholeNumber(entry.stored) - 1);
    } else if (std::ranges::any_of(
                   Rows, [&](const LoanRow& row) { return row.shown && row.row.name == entry.box->Name(); })) {
        Show(entry, entry.stored);
    }
}

std::string HNotepad::Reads(const Entry& entry) const
{
    return entry.box == nullptr ? std::to_string(box("Currency", entry.thing).Selected() + 1) : Notepad::Reads(entry);
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
    const std::vector<std::string> names = currencies.Entries();
    WorkOut([&] {
        for (int loan = 1; loan <= Loans; ++loan) {
            Box& list = box("Currency", loan);
            const std::string remembered = list.Text();
            list.SetEntries(names);
            list.Select(static_cast<int>(PositionOfCurrency(names, remembered)));
            ChooseCurrency(loan);
        }
    });
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
        const OrderMessage& message = Nth(OrderMessages, loan - 1);
        session.messages.Tell(message.title, message.text);
        return Guard::Drops;
    }
    return Guard::Filters;
}

void HNotepad::LeaveDate(Box& left, LoanDate which)
{
    const std::string_view other = which == LoanDate::From ? "DateTo" : "DateFrom";
    left.SetText(LeaveLoanDate(which, left.Text(), box(other, left.Index()).Text()));
    WorkOut([&] { Recalculate(left.Index()); });
}

/// Every loan, with the present rate of its currency.
void HNotepad::Recalculate()
{
    for (int loan = 1; loan <= Loans; ++loan)
        ChooseCurrency(loan);
}

void HNotepad::Recalculate(int loan)
{
    const auto at = [this, loan](std::string_view boxName) -> Box& { return box(boxName, loan); };
    const auto amount = [&](std::string_view boxName, Amount value) {
        at(boxName).SetText(AmountText(value, edition::FormatMoneyBlankZero));
    };
    const LoanWorking working = LoanBenefit(ReadLoan(OnScreen(*this, loan)));
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

std::vector<Notepad::Result> HNotepad::Results(const Recordset& /*own*/) const
{
    std::vector<Result> results;
    for (const PageField& field : LoanPageFields({Texts(1), Texts(2), Texts(3), Texts(4), Texts(5)}))
        results.push_back({.field = field.field, .stored = field.text, .shown = field.text});
    return results;
}

void HNotepad::Delete()
{
    for (const LoanRow& row : Rows)
        if (row.deleted)
            for (int loan = 1; loan <= Loans; ++loan)
                box(row.row.name, loan).Clear();
}

} // namespace quillmere
