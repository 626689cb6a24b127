#include "calculators/LoanBenefit.h"

#include "edition/Edition.h"
#include "edition/LoanRates.h"
#include "frame/Dates.h"
#include "frame/Text.h"

#include <algorithm>

namespace quillmere {

namespace {

/// How many days of a series lie on or before the date; none for a text that is no date.
int CountUpTo(std::span<const edition::TaxMonthDay> series, std::string_view text)
{
    const auto day = ReadDate(text);
    if (!day)
        return 0;
    const std::chrono::year_month_day date(*day);
    const edition::TaxMonthDay limit{static_cast<int>(date.year()), static_cast<unsigned>(date.month()),
                                     static_cast<unsigned>(date.day())};
    return static_cast<int>(std::ranges::upper_bound(series, limit) - series.begin());
}

/// The fields of page 2 for loan 1 or 2, in the order in which they are written.
std::vector<PageField> FieldsOfLoan(const LoanTexts& loan, int number)
{
    std::string interest = loan.interestPaid;
    if (interest.empty() && !loan.cashEquivalent.empty())
        interest = "Nil";
    return {
        {Numbered("HOutstand", number), loan.ABox},
        {Numbered("HOutsand2003", number), loan.BBox},
        {Numbered("HMaxLoan", number), loan.maxAmount},
        {Numbered("HLoanInterest", number), interest},
        {Numbered("HLoanCashEqu", number), loan.cashEquivalent},
        {Numbered("HLoanDate", number), loan.dateFrom},
        {Numbered("HLoanDischarge", number), loan.dateTo},
    };
}

} // namespace

LoanWorking LoanBenefit(const LoanFacts& facts)
{
    LoanWorking working;
    if (facts.ABox.empty() || facts.BBox.empty())
        return working;
    working.computed = true;
    working.A = ReadAmount(facts.ABox);
    working.B = ReadAmount(facts.BBox);
    working.maxAmount = ReadAmount(facts.maxAmount);
    if (working.maxAmount < working.A)
        working.maxAmount = Amount();
    working.C = working.A + working.B;
    working.D = Amount::FromDouble(working.C.Pounds() / 2);
    working.E = CompleteTaxMonths(facts.dateFrom, facts.dateTo);
    working.G = ReadNumber(facts.interestRate);
    working.J = ReadAmount(facts.interestPaid);
    working.forTheMonths = Amount::FromDouble((working.D * working.E).Pounds() / 12);
    working.interest = Amount::FromDouble(working.forTheMonths.Pounds() * working.G / 100);
    working.cashEquivalent = working.interest - working.J;
    if (!IsNonNegative(working.cashEquivalent))
        working.cashEquivalent = Amount();
    return working;
}

int CompleteTaxMonths(std::string_view dateFrom, std::string_view dateTo)
{
    const int upTo = CountUpTo(edition::TaxMonthEnds, TextOr(dateTo, edition::TaxYearEnd));
    const int before = CountUpTo(edition::TaxMonthSecondDays, TextOr(dateFrom, edition::TaxYearStart));
    return std::max(upTo - before, 0);
}

std::string LeaveLoanDate(LoanDate left, std::string_view text, std::string_view other)
{
    std::string date = EnteredDate(text);
    if (date.empty())
        return date;
    const bool isFrom = left == LoanDate::From;
    const auto from = ReadDate(isFrom ? date : TextOr(other, edition::TaxYearStart));
    const auto to = ReadDate(isFrom ? TextOr(other, edition::TaxYearEnd) : date);
    const bool inOrder = from && to && DaysBetween(*from, *to) > 0;
    return inOrder ? date : std::string();
}

std::vector<PageField> LoanPageFields(const std::array<LoanTexts, 5>& loans)
{
    // Kept: the third loan alone decides whether the page takes the total.
    if (!loans[2].cashEquivalent.empty()) {
        Amount total;
        for (const LoanTexts& loan : loans)
            total += ReadAmount(loan.cashEquivalent);
        return {{"HLoanCashEqu1", AmountText(total, edition::FormatMoneyBlankZero)},
                {"HLoanCashEqu2", std::string(SeeAttach)}};
    }
    std::vector<PageField> fields = FieldsOfLoan(loans[0], 1);
    for (PageField& field : FieldsOfLoan(loans[1], 2))
        fields.push_back(std::move(field));
    return fields;
}

std::optional<std::string> RateOfCurrency(std::span<const std::string> names, std::span<const std::string> rates,
                                          std::string_view chosen)
{
    const std::string name = Trim(chosen);
    const auto row = std::ranges::find_if(names, [&](const std::string& ofRow) { return Trim(ofRow) == name; });
    if (name.empty() || row == names.end())
        return std::nullopt;
    return rates[static_cast<std::size_t>(row - names.begin())];
}

std::size_t PositionOfCurrency(std::span<const std::string> names, std::string_view remembered)
{
    const auto row = std::ranges::find(names, remembered);
    return row == names.end() ? 0 : static_cast<std::size_t>(row - names.begin());
}

} // namespace quillmere
