#include "calculators/HNotepad2.h"

#include "edition/LoanRates.h"
#include "frame/Nth.h"
#include "frame/Text.h"

namespace quillmere {

HNotepad2::HNotepad2(Session& session)
    : Notepad(session, "HNotepad2", "Add/Edit Currency", "HNotepad2",
              {.ok = "Notepad H2 'Ok' Error", .okFailure = "Unable to update currency"})
{
    for (int row = 1; row <= CurrencyRows; ++row) {
        const std::string number = std::to_string(row);
        AddBox({.readOnly = row == 1}, "Currency", row).SetSpoken("Currency " + number);
        AddBox({.filter = MoneyKeyFilter, .amount = true}, "Rate", row).SetSpoken("Rate of currency " + number);
    }
    SetList({.columns = {"Currency", "Rate"}, .last = CurrencyRows});
    AddButtons();
    for (const std::string_view column : {"Currency", "Rate"})
        for (int row = 1; row <= CurrencyRows; ++row)
            Keep(Numbered(column, row), &box(column, row), row);
}

/// The list is one for the whole database.
Recordset HNotepad2::OpenOwn(Database& database) const
{
    Recordset records = database.OpenRecordset("HNotepad2");
    records.MoveFirst();
    return records;
}

void HNotepad2::Open(Database& database)
{
    Notepad::Open(database);
    box("Currency", 1).SetText(edition::FirstCurrency);
}

bool HNotepad2::HandOver(const std::vector<Result>& /*results*/)
{
    CurrencyList list;
    for (int row = 1; row <= CurrencyRows; ++row) {
        Nth(list.names, row) = TextOf("Currency", row);
        Nth(list.rates, row) = TextOf("Rate", row);
    }
    if (auto* loans = session.screens.Find<HNotepad>())
        loans->TakeCurrencies(list);
    return true;
}

void HNotepad2::Delete()
{
    for (int row = 1; row <= CurrencyRows; ++row) {
        if (row > 1)
            box("Currency", row).Clear();
        box("Rate", row).Clear();
    }
}

} // namespace quillmere
