#include "calculators/HNotepad2.h"

#include "edition/LoanRates.h"

namespace quillmere {

HNotepad2::HNotepad2(Session& session)
    : CalculatorNotepad(session, "HNotepad2", "Add/Edit Currency", {.ok = "Notepad H2 'Ok' Error"})
{
    for (int row = 1; row <= CurrencyRows; ++row) {
        const std::string number = std::to_string(row);
        AddBox({.readOnly = row == 1}, "Currency", row).SetSpoken("Currency " + number);
        AddBox({.filter = MoneyKeyFilter, .amount = true}, "Rate", row).SetSpoken("Rate of currency " + number);
    }
    AddButtons();
}

bool HNotepad2::Load()
{
    return Open([this](Database& database) {
        const CurrencyList list = CurrencyList::Read(database);
        for (int row = 1; row <= CurrencyRows; ++row) {
            box("Currency", row).SetText(list.names[static_cast<std::size_t>(row - 1)]);
            box("Rate", row).SetText(list.rates[static_cast<std::size_t>(row - 1)]);
        }
        box("Currency", 1).SetText(edition::FirstCurrency);
    });
}

void HNotepad2::Ok()
{
    CurrencyList list;
    for (int row = 1; row <= CurrencyRows; ++row) {
        list.names[static_cast<std::size_t>(row - 1)] = box("Currency", row).Text();
        list.rates[static_cast<std::size_t>(row - 1)] = box("Rate", row).Text();
    }
    if (!StoreAll([&](Database& database) { list.Store(database); }, "Unable to update currency"))
        return;
    if (auto* loans = static_cast<HNotepad*>(session.screens.Find("HNotepad")))
        loans->TakeCurrencies(list);
    session.screens.Unload(Name());
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
