#include "frame/Amount.h"

#include "edition/Edition.h"
#include "frame/Text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <fmt/format.h>
#include <limits>

namespace quillmere {

namespace {

constexpr std::int64_t Largest = std::numeric_limits<std::int64_t>::max();
constexpr std::int64_t Smallest = std::numeric_limits<std::int64_t>::min();
constexpr std::size_t DecimalsHeld = 4;
constexpr std::size_t ColumnWidth = edition::AmountColumnWidth.size();

/// The size of a number of units without its sign; the smallest amount has one unit more than the largest.
constexpr std::uint64_t Magnitude(std::int64_t units)
{
    return units < 0 ? std::uint64_t{0} - static_cast<std::uint64_t>(units) : static_cast<std::uint64_t>(units);
}

constexpr std::int64_t WithSign(std::uint64_t magnitude, bool negative)
{
    constexpr auto limit = static_cast<std::uint64_t>(Largest);
    if (negative)
        return magnitude > limit ? Smallest : -static_cast<std::int64_t>(magnitude);
    return magnitude > limit ? Largest : static_cast<std::int64_t>(magnitude);
}

/// Units nearest to a floating-point number of units, ties to the even one.
std::int64_t NearestUnits(double units)
{
    if (std::isnan(units))
        return 0;
    constexpr double beyond = 9223372036854775808.0; // 2 to the 63rd
    if (units >= beyond)
        return Largest;
    if (units < -beyond)
        return Smallest;
    return static_cast<std::int64_t>(std::nearbyint(units));
}

/// One digit more behind a number, held at the limit of 64 bits.
constexpr std::uint64_t WithDigit(std::uint64_t number, char digit)
{
    constexpr std::uint64_t limit = std::numeric_limits<std::uint64_t>::max();
    const auto value = static_cast<std::uint64_t>(digit - '0');
    return number > (limit - value) / 10 ? limit : number * 10 + value;
}

/// Units of the decimal text of a number without sign, held at the limit of 64 bits. Commas are passed over; a second
/// point ends the number as any other character does. The digits past the fourth decimal decide on rounding as they are
/// written, not as a floating-point number would have them.
std::uint64_t ReadUnits(std::string_view text)
{
    std::uint64_t units = 0;
    bool afterPoint = false;
    std::size_t decimals = 0;
    char dropped = 0; // the fifth decimal
    bool isTie = true;
    for (const char character : text) {
        if (character == ',')
            continue;
        if (character == '.' && !afterPoint) {
            afterPoint = true;
        } else if (!IsDigit(character)) {
            break;
        } else if (decimals < DecimalsHeld) {
            units = WithDigit(units, character);
            decimals += afterPoint ? 1 : 0;
        } else if (dropped == 0) {
            dropped = character;
            isTie = character == '5';
        } else {
            isTie = isTie && character == '0';
        }
    }
    for (; decimals < DecimalsHeld; ++decimals)
        units = WithDigit(units, '0');
    const bool roundsUp = dropped >= '5' && (!isTie || units % 2 == 1);
    return roundsUp && units < std::numeric_limits<std::uint64_t>::max() ? units + 1 : units;
}

/// One section of a display format taken apart, such as "(#,###,##0.00)".
struct Picture {
    std::string_view before; ///< literal characters in front of the number
    std::string_view after;  ///< and behind it
    std::size_t leastDigits = 0;
    std::size_t decimals = 0;
    bool grouped = false;
};

Picture ReadPicture(std::string_view section)
{
    constexpr std::string_view placeholders = "#0,.";
    Picture picture;
    const auto first = section.find_first_of(placeholders);
    if (first == std::string_view::npos) {
        picture.before = section;
        return picture;
    }
    const auto last = section.find_last_of(placeholders);
    picture.before = section.substr(0, first);
    picture.after = section.substr(last + 1);
    bool afterPoint = false;
    for (const char character : section.substr(first, last - first + 1)) {
        if (character == '.')
            afterPoint = true;
        else if (character == ',')
            picture.grouped = true;
        else if (afterPoint)
            ++picture.decimals;
        else if (character == '0')
            ++picture.leastDigits;
    }
    return picture;
}

/// The number of pence and the like that an amount comes to with so many decimals, half away from zero.
std::uint64_t RoundedMagnitude(std::int64_t units, std::size_t decimals)
{
    std::uint64_t divisor = 1;
    for (std::size_t place = std::min(decimals, DecimalsHeld); place < DecimalsHeld; ++place)
        divisor *= 10;
    const std::uint64_t magnitude = Magnitude(units);
    return magnitude / divisor + (magnitude % divisor * 2 >= divisor ? 1 : 0);
}

/// A rounded number put through the picture of its section.
std::string Draw(std::uint64_t number, const Picture& picture)
{
    const std::size_t decimals = std::min(picture.decimals, DecimalsHeld);
    std::string digits = number == 0 ? std::string() : std::to_string(number);
    if (digits.size() < decimals)
        digits.insert(0, decimals - digits.size(), '0');
    std::string whole = digits.substr(0, digits.size() - decimals);
    if (whole.size() < picture.leastDigits)
        whole.insert(0, picture.leastDigits - whole.size(), '0');
    if (picture.grouped)
        for (std::size_t at = whole.size(); at > 3; at -= 3)
            whole.insert(at - 3, 1, ',');

    std::string text(picture.before);
    text += whole;
    if (decimals > 0) {
        text += '.';
        text += std::string_view(digits).substr(digits.size() - decimals);
    }
    text += picture.after;
    return text;
}

/// The decimal places an amount needs, with no superfluous zeros.
std::string PlainAmount(Amount amount)
{
    const std::uint64_t magnitude = Magnitude(amount.Units());
    std::string text = fmt::format("{}.{:04}", magnitude / Amount::UnitsOfAPound, magnitude % Amount::UnitsOfAPound);
    text.erase(text.find_last_not_of('0') + 1);
    if (text.back() == '.')
        text.pop_back();
    return amount.IsNegative() ? "-" + text : text;
}

} // namespace

Amount Amount::WholePounds(std::int64_t pounds)
{
    return Amount(UnitsOfAPound).Times(pounds);
}

Amount Amount::FromDouble(double pounds)
{
    return Amount(NearestUnits(pounds * static_cast<double>(UnitsOfAPound)));
}

Amount Amount::operator-() const
{
    return Amount(units == Smallest ? Largest : -units);
}

Amount& Amount::operator+=(Amount other)
{
    if (std::int64_t sum = 0; !__builtin_add_overflow(units, other.units, &sum))
        units = sum;
    else
        units = other.units < 0 ? Smallest : Largest;
    return *this;
}

Amount& Amount::operator-=(Amount other)
{
    if (std::int64_t difference = 0; !__builtin_sub_overflow(units, other.units, &difference))
        units = difference;
    else
        units = other.units < 0 ? Largest : Smallest;
    return *this;
}

Amount Amount::Times(std::int64_t times) const
{
    if (std::int64_t product = 0; !__builtin_mul_overflow(units, times, &product))
        return Amount(product);
    return Amount((units < 0) != (times < 0) ? Smallest : Largest);
}

Amount IntPounds(double pounds, double added)
{
    return Amount::FromDouble(std::floor(pounds + added));
}

Amount ReadAmount(std::string_view text)
{
    std::string_view rest = Trimmed(text);
    bool negative = false;
    if (rest.size() >= 2 && rest.front() == '(' && rest.back() == ')') {
        negative = true;
        rest = rest.substr(1, rest.size() - 2);
    }
    if (rest.starts_with('-')) {
        negative = true;
        rest.remove_prefix(1);
    }
    return Amount::FromUnits(WithSign(ReadUnits(rest), negative));
}

double ReadNumber(std::string_view text)
{
    const std::string_view trimmed = Trimmed(text);
    const bool negative = trimmed.starts_with('-');
    const std::string_view unsignedText = trimmed.substr(negative ? 1 : 0);
    if (unsignedText.empty() || !(IsDigit(unsignedText.front()) || unsignedText.front() == '.'))
        return 0.0;
    double value = 0.0;
    const auto read = std::from_chars(unsignedText.data(), unsignedText.data() + unsignedText.size(), value,
                                      std::chars_format::fixed);
    if (read.ec == std::errc::result_out_of_range) {
        const bool isTiny = unsignedText[unsignedText.find_first_not_of('0')] == '.';
        value = isTiny ? 0.0 : std::numeric_limits<double>::max();
    } else if (read.ec != std::errc()) {
        return 0.0;
    }
    return negative && value != 0.0 ? -value : value;
}

std::int32_t ReadWholeNumber(std::string_view text)
{
    constexpr double largest = std::numeric_limits<std::int32_t>::max();
    constexpr double smallest = std::numeric_limits<std::int32_t>::min();
    return static_cast<std::int32_t>(std::clamp(std::nearbyint(ReadNumber(text)), smallest, largest));
}

std::string FormatAmount(Amount amount, std::string_view format)
{
    std::array<std::string_view, 3> sections;
    for (std::string_view& section : sections) {
        const auto end = format.find(';');
        section = format.substr(0, end);
        format = end == std::string_view::npos ? std::string_view() : format.substr(end + 1);
    }
    const auto& [positive, negative, zero] = sections;
    const Picture picture = ReadPicture(positive);
    const std::uint64_t rounded = RoundedMagnitude(amount.Units(), picture.decimals);
    if (rounded == 0)
        return Draw(0, ReadPicture(zero));
    return Draw(rounded, amount.IsNegative() ? ReadPicture(negative) : picture);
}

std::string PadAmount(std::string_view text)
{
    std::string trimmed = Trim(text);
    const std::size_t length = Length(trimmed);
    if (trimmed.empty() || length == ColumnWidth)
        return trimmed;
    if (length > ColumnWidth)
        return Left(trimmed, ColumnWidth);
    return std::string(ColumnWidth - length, ' ') + trimmed;
}

std::string AmountText(Amount amount, std::string_view format)
{
    return PadAmount(FormatAmount(amount, format));
}

std::string PlainNumber(double value)
{
    if (!std::isfinite(value) || value == 0.0)
        return "0";
    // Fifteen figures are what a floating-point number holds for certain, so that 0.1 + 0.2 reads 0.3.
    constexpr int figures = 15;
    const int magnitude = static_cast<int>(std::floor(std::log10(std::fabs(value)))) + 1;
    std::string text = fmt::format("{:.{}f}", value, std::max(figures - magnitude, 0));
    if (text.find('.') != std::string::npos)
        text.erase(text.find_last_not_of('0') + 1);
    if (text.back() == '.')
        text.pop_back();
    return text == "-0" ? "0" : text;
}

std::string PlainNumberBlankZero(double value)
{
    std::string text = PlainNumber(value);
    return text == "0" ? std::string() : text;
}

bool IsNonNegative(std::string& text)
{
    const Amount amount = ReadAmount(text);
    text = PlainAmount(amount);
    return IsNonNegative(amount);
}

bool IsNonNegative(Amount amount)
{
    return !amount.IsNegative();
}

} // namespace quillmere
