#pragma once

#include <compare>
#include <cstdint>
#include <string>
#include <string_view>

namespace quillmere {

/// Signed money with four decimal places, held in 64 bits as ten-thousandths of a pound. Sums and products with
/// whole numbers are exact; what would not fit is held at the largest or smallest amount.
/// There is no way in from `double` but the named functions.
class Amount {
public:
    /// Amounts are held in ten-thousandths of a pound.
    static constexpr std::int64_t UnitsOfAPound = 10'000;

    constexpr Amount() = default;

    /// The amount of so many ten-thousandths of a pound.
    static constexpr Amount FromUnits(std::int64_t tenThousandths) { return Amount(tenThousandths); }

    /// A whole number of pounds.
    static Amount WholePounds(std::int64_t pounds);

    /// A floating-point number of pounds brought to four decimals, ties to the even digit. For results of a division.
    static Amount FromDouble(double pounds);

    constexpr std::int64_t Units() const { return units; }

    /// The pounds as a floating-point number: the way into a division.
    double Pounds() const { return static_cast<double>(units) / static_cast<double>(UnitsOfAPound); }

    constexpr bool IsZero() const { return units == 0; }
    constexpr bool IsNegative() const { return units < 0; }

    Amount operator-() const;
    Amount& operator+=(Amount other);
    Amount& operator-=(Amount other);
    friend Amount operator+(Amount a, Amount b) { return a += b; }
    friend Amount operator-(Amount a, Amount b) { return a -= b; }
    friend Amount operator*(Amount a, std::int64_t times) { return a.Times(times); }
    friend Amount operator*(std::int64_t times, Amount a) { return a.Times(times); }
    // NOLINTNEXTLINE(modernize-use-nullptr): the check takes the 0 of a rewritten comparison for a null pointer.
    friend constexpr auto operator<=>(Amount, Amount) = default;

private:
    constexpr explicit Amount(std::int64_t tenThousandths) : units(tenThousandths) {}
    Amount Times(std::int64_t times) const;

    std::int64_t units = 0;
};

/// The largest whole number of pounds not above `pounds`, plus `added` before the cut where a rule adds a fraction
/// first: `Int(x + 0.001)` rounds down, `Int(x + 0.999)` rounds up unless the fraction is under a thousandth.
Amount IntPounds(double pounds, double added = 0.0);

/// Reads an amount from typed or stored text. Outer blanks are dropped; "(…)" and a leading "-" are negative; commas
/// are ignored; reading stops at the first character that cannot belong to a number. Empty or unreadable text is 0. The
/// decimal text is brought to four decimals, ties to the even digit.
Amount ReadAmount(std::string_view text);

/// The longest numeric start of a text as a floating-point number (miles, percentages); 0 when there is none.
double ReadNumber(std::string_view text);

/// `ReadNumber` rounded to the nearest whole number, ties to the even one; held inside the 32-bit range.
std::int32_t ReadWholeNumber(std::string_view text);

/// Puts an amount through a display format of three sections, "positive;negative;zero" (edition/Edition.h has them).
/// Two places, half away from zero; the section is chosen after rounding.
std::string FormatAmount(Amount amount, std::string_view format);

/// Trims; empty stays empty; over ten characters keeps the first ten; otherwise blanks in front up to ten.
std::string PadAmount(std::string_view text);

/// `PadAmount` of `FormatAmount`: what stands in a box or a column.
std::string AmountText(Amount amount, std::string_view format);

/// A number as plain text with no padding and no superfluous zeros: "12.5", "-2", "0".
std::string PlainNumber(double value);

/// `PlainNumber`, but an empty text for 0.
std::string PlainNumberBlankZero(double value);

/// Reads the text as an amount, writes the value back to it as a plain number, and says whether it is zero or more.
bool IsNonNegative(std::string& text);

/// Says whether the amount is zero or more.
bool IsNonNegative(Amount amount);

} // namespace quillmere
