#pragma once

#include "calculators/CalculatorNotepad.h"
#include "calculators/LoanBenefit.h"

#include <array>
#include <string>
#include <string_view>
#include <vector>

namespace quillmere {

/// Rows of the list of currencies, one for the whole client database.
inline constexpr int CurrencyRows = 15;

/// The named currencies with their official rates, row by row; an empty name is no currency.
struct CurrencyList {
    std::array<std::string, CurrencyRows> names, rates;

    /// Reads the first record of the table. Throws StoreError, also if there is none.
    static CurrencyList Read(Database& database);
    /// Writes every row to the first record, each field in an edit and update of its own. Throws StoreError.
    void Store(Database& database) const;
    /// The names that are not empty, in row order.
    std::vector<std::string> Entries() const;
};

/// The calculator of cheap loans behind section H: five loans at once, each with the rate of its currency.
class HNotepad : public CalculatorNotepad {
public:
    static constexpr int Loans = 5;

    explicit HNotepad(Session& session);

    bool Load() override;
    /// Takes over a changed list: every loan keeps its currency by name, or falls back to the first, and brings in its
    /// present rate.
    void TakeCurrencies(const CurrencyList& changed);

private:
    void AddLoan(int loan);
    void ShowLoan(const Recordset& records, int loan);
    void ChooseCurrency(int loan);
    /// Looks at what is typed in a box whose entry needs a currency and the loans before.
    [[nodiscard]] Guard GuardEntry(Box& typedIn);
    void LeaveDate(Box& left, LoanDate which);
    void Recalculate(int loan);
    void StoreLoan(Recordset& records, int loan) const;
    LoanTexts Texts(int loan) const;
    void Ok() override;
    void Delete() override;

    CurrencyList currencies;
};

} // namespace quillmere
