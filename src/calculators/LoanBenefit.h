#pragma once

#include "frame/Amount.h"

#include <array>
#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

/// The cash equivalent of a cheap loan by the averaging method, its dates, and what five loans come to on page 2.
/// ITEPA 2003 s.175 and s.182.
namespace quillmere {

/// A loan as its boxes read.
struct LoanFacts {
    std::string ABox;         ///< balance when it was made or at the start of the year
    std::string BBox;         ///< balance when it was discharged or at the end of the year
    std::string interestRate; ///< `GBox`, per cent
    std::string interestPaid; ///< `JBox`
    std::string maxAmount;    ///< `MaxAmount`
    std::string dateFrom;     ///< empty: the first day of the tax year
    std::string dateTo;       ///< empty: the last day of the tax year
};

/// The working paper of a loan. Without both balances nothing is worked out: C, D, the maximum and the cash equivalent
/// are emptied and every other box stays as it is.
struct LoanWorking {
    bool computed = false;
    Amount A, B;
    Amount C;     ///< A + B
    Amount D;     ///< C / 2
    int E = 0;    ///< complete tax months
    double G = 0; ///< rate in per cent
    Amount J;
    Amount forTheMonths;   ///< D x E / 12, in no box of its own
    Amount interest;       ///< G per cent of it, in no box of its own
    Amount cashEquivalent; ///< never negative
    Amount maxAmount;      ///< 0 if it was entered below A
};

/// Works out one loan (recalculation of `HNotepad`).
LoanWorking LoanBenefit(const LoanFacts& facts);

/// Complete tax months throughout which a loan was owing, 0 to 12. Empty texts are the bounds of the tax year.
int CompleteTaxMonths(std::string_view dateFrom, std::string_view dateTo);

/// Which of a loan's two date boxes is left.
enum class LoanDate { From, To };

/// A date box is left: what it is to read. `other` is the other box's text; a blank box stands for its default in the
/// test of their order.
std::string LeaveLoanDate(LoanDate left, std::string_view text, std::string_view other);

/// A text and the field of page 2 (and box of the same name) that takes it.
struct PageField {
    std::string field;
    std::string text;

    friend bool operator==(const PageField&, const PageField&) = default;
};

/// What page 2 reads where the loans do not fit on it.
inline constexpr std::string_view SeeAttach = "See Attach";

/// The texts of a loan that page 2 takes.
struct LoanTexts {
    std::string ABox, BBox, maxAmount, interestPaid, cashEquivalent, dateFrom, dateTo;
};

/// What Ok puts into page 2: loans 1 and 2 field by field, or with a third loan the total of all five and "See Attach".
std::vector<PageField> LoanPageFields(const std::array<LoanTexts, 5>& loans);

/// Rate of the first row of the currency list whose name is the chosen one, outer blanks apart; nothing if there is
/// none.
std::optional<std::string> RateOfCurrency(std::span<const std::string> names, std::span<const std::string> rates,
                                          std::string_view chosen);

/// Position, counted from 0, of a name in a list of currencies; 0 if it is no longer there.
std::size_t PositionOfCurrency(std::span<const std::string> names, std::string_view remembered);

} // namespace quillmere
