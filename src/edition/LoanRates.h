#pragma once

#include <algorithm>
#include <array>
#include <compare>
#include <string_view>

/// Numbers of the benefit of cheap loans for 2010-11: the Income Tax (Earnings and Pensions) Act 2003 (ITEPA), s.173 to
/// s.191, and the authority's booklet 480, chapter 17.
namespace quillmere::edition {

/// Official rate of interest, percent a year, as the list of currencies of a new client database holds it. ITEPA s.181;
/// Taxes (Interest Rate) Regulations 1989 reg. 5. The loans take their rate from that list, not from here.
inline constexpr std::string_view OfficialRateOfInterest = "4.00";
/// The currency to which that rate belongs: the first of the list.
inline constexpr std::string_view FirstCurrency = "Sterling";

/// Loans of one employee that never come to more than this many pounds together are not charged. ITEPA s.180, as it
/// stood for the year.
inline constexpr int SmallLoansTo = 5000;

/// A day that ends or begins the count of a tax month, as year, month and day.
struct TaxMonthDay {
    int year;
    unsigned month;
    unsigned day;

    friend constexpr auto operator<=>(const TaxMonthDay&, const TaxMonthDay&) = default;
};

/// Last days of the tax months: a loan still owing on one of them was owing throughout that month. ITEPA s.182.
inline constexpr auto TaxMonthEnds = std::to_array<TaxMonthDay>({
    {2010, 5, 5},
    {2010, 6, 5},
    {2010, 7, 5},
    {2010, 8, 5},
    {2010, 9, 5},
    {2010, 10, 5},
    {2010, 11, 5},
    {2010, 12, 5},
    {2011, 1, 5},
    {2011, 2, 5},
    {2011, 3, 5},
    {2011, 4, 5},
});

/// Second days of the tax months: a loan made on one of them or later was not owing throughout that month. ITEPA s.182.
inline constexpr auto TaxMonthSecondDays = std::to_array<TaxMonthDay>({
    {2010, 4, 7},
    {2010, 5, 7},
    {2010, 6, 7},
    {2010, 7, 7},
    {2010, 8, 7},
    {2010, 9, 7},
    {2010, 10, 7},
    {2010, 11, 7},
    {2010, 12, 7},
    {2011, 1, 7},
    {2011, 2, 7},
    {2011, 3, 7},
});

static_assert(TaxMonthEnds.size() == 12 && TaxMonthSecondDays.size() == 12);
static_assert(std::ranges::is_sorted(TaxMonthEnds) && std::ranges::is_sorted(TaxMonthSecondDays));

} // namespace quillmere::edition
