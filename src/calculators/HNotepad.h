#pragma once

#include "calculators/LoanBenefit.h"
#include "clientdb/Notepad.h"

#include <array>
#include <string>
#include <vector>

namespace quillmere {

/// Rows of the list of currencies, one for the whole client database.
inline constexpr int CurrencyRows = 15;

/// The named currencies with their official rates, row by row; an empty name is no currency.
struct CurrencyList {
    std::array<std::string, CurrencyRows> names, rates;

    /// Reads the first record of the table. Throws StoreError, also if there is none.
    static CurrencyList Read(Database& database);
    /// The names that are not empty, in row order.
    std::vector<std::string> Entries() const;
};

/// The calculator of cheap loans behind section H: five loans at once, each with the rate of its currency.
class HNotepad : public Notepad {
public:
    static constexpr int Loans = 5;

    explicit HNotepad(Session& session);

    /// Takes over a changed list: every loan keeps its currency by name, or falls back to the first, and brings in its
    /// present rate.
    void TakeCurrencies(const CurrencyList& changed);

private:
    void AddLoan(int loan);
    void KeepLoan(int loan);
    void Open(Database& database) override;
    void ShowStored(Entry& entry) override;
    std::string Reads(const Entry& entry) const override;
    using Notepad::Reads;
    void ChooseCurrency(int loan);
    /// Looks at what is typed in a box whose entry needs a currency and the loans before.
    [[nodiscard]] Guard GuardEntry(Box& typedIn);
    void LeaveDate(Box& left, LoanDate which);
    void Recalculate() override;
    void Recalculate(int loan);
    LoanTexts Texts(int loan) const;
    // Kept: Ok works nothing out.
    bool MayStore() override { return true; }
    std::vector<Result> Results(const Recordset& own) const override;
    void Delete() override;

    CurrencyList currencies;
};

} // namespace quillmere
