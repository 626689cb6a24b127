#include "frame/CellEntry.h"

#include "frame/KeyFilters.h"
#include "frame/Screen.h"
#include "frame/Text.h"

#include <algorithm>
#include <array>
#include <fmt/format.h>
#include <span>
#include <utility>
#include <vector>

namespace quillmere {

namespace {

std::string Without(std::string text, std::string_view characters)
{
    std::erase_if(text, [&](char character) { return characters.find(character) != std::string_view::npos; });
    return text;
}

bool AreDigits(std::string_view text)
{
    return !text.empty() && text.find_first_not_of("0123456789") == std::string_view::npos;
}

constexpr auto Months = std::to_array<std::string_view>(
    {"JAN", "FEB", "MAR", "APR", "MAY", "JUN", "JUL", "AUG", "SEP", "OCT", "NOV", "DEC"});

/// "5 Apr 1961", "5-April-61": the month as a number.
std::string MonthInFigures(const std::string& piece)
{
    const auto* const month = std::ranges::find(Months, UpperCase(piece).substr(0, 3));
    return month == Months.end() || AreDigits(piece) ? piece : std::to_string(month - Months.begin() + 1);
}

/// Day first, parted by strokes: also what is written with points or dashes, with the name of the month, or year first
/// with four digits.
std::string DateEntry(const std::string& text)
{
    std::vector<std::string> pieces(1);
    for (const char character : text) {
        if (std::string_view("/.- ").find(character) == std::string_view::npos)
            pieces.back() += character;
        else if (!pieces.back().empty())
            pieces.emplace_back();
        if (pieces.size() > 3) { // the time of day, which some programs write behind it
            pieces.pop_back();
            break;
        }
    }
    if (pieces.size() != 3)
        return text;
    if (AreDigits(pieces[0]) && pieces[0].size() == 4)
        std::swap(pieces[0], pieces[2]);
    return fmt::format("{}/{}/{}", pieces[0], MonthInFigures(pieces[1]), pieces[2]);
}

/// True for digits in threes after each comma.
bool HasThousands(std::string_view text)
{
    std::size_t comma = text.find(',');
    if (comma == std::string_view::npos || comma == 0)
        return false;
    while (comma != std::string_view::npos) {
        const std::size_t next = text.find_first_of(",.)", comma + 1);
        const std::size_t end = next == std::string_view::npos ? text.size() : next;
        if (end - comma != 4 || !AreDigits(text.substr(comma + 1, 3)))
            return false;
        comma = next != std::string_view::npos && text[next] == ',' ? next : std::string_view::npos;
    }
    return true;
}

std::string AmountEntry(std::string text)
{
    constexpr std::string_view Pound = "£", Code = "GBP";
    if (const std::size_t sign = text.find(Pound); sign != std::string::npos)
        text.erase(sign, Pound.size());
    if (text.starts_with(Code))
        text.erase(0, Code.size());
    text = Without(text, " ");
    return HasThousands(text) ? Without(text, ",") : text;
}

/// A spreadsheet may write whole numbers with decimals.
std::string WholeNumberEntry(const std::string& text)
{
    std::string number = AmountEntry(text);
    const std::size_t point = number.find('.');
    if (point != std::string::npos && number.find_first_not_of('0', point + 1) == std::string::npos)
        number.erase(point);
    return number;
}

/// Words for what is ticked or not, for a man or a woman.
struct WordRow {
    std::string_view word, entry;
};
constexpr auto TickWords = std::to_array<WordRow>({{"YES", "1"},
                                                   {"Y", "1"},
                                                   {"TRUE", "1"},
                                                   {"1", "1"},
                                                   {"X", "1"},
                                                   {"NO", "0"},
                                                   {"N", "0"},
                                                   {"FALSE", "0"},
                                                   {"0", "0"}});
constexpr auto SexWords = std::to_array<WordRow>({{"MALE", "M"}, {"MAN", "M"}, {"FEMALE", "F"}, {"WOMAN", "F"}});
constexpr auto YesNoWords = std::to_array<WordRow>({{"YES", "Y"}, {"NO", "N"}});

std::string InLetters(const std::string& text, std::span<const WordRow> words)
{
    const auto found = std::ranges::find(words, UpperCase(text), &WordRow::word);
    return found == words.end() ? text : std::string(found->entry);
}

bool IsZero(std::string_view entry)
{
    return entry.find_first_not_of("0.") == std::string_view::npos;
}

} // namespace

std::string OneLine(std::string_view cell)
{
    std::u32string line;
    for (const char32_t character : CodePoints(cell)) {
        constexpr char32_t NoBreak = 0xA0, NarrowNoBreak = 0x202F;
        const bool isBlank = character == U'\n' || character == U'\r' || character == U'\t' || character == NoBreak ||
                             character == NarrowNoBreak;
        line += isBlank ? U' ' : character;
    }
    return Trim(Utf8(line));
}

std::string Entry(const Box& box, std::string_view cell)
{
    std::string text = OneLine(cell);
    if (text.empty())
        return text;
    if (box.Kind() == BoxKind::Tick)
        return InLetters(text, TickWords);
    if (box.Filter() == DateKeyFilter)
        return DateEntry(text);
    if (box.Filter() == WholeNumberKeyFilter)
        return WholeNumberEntry(text);
    if (box.IsAmount())
        return AmountEntry(text);
    if (box.Filter() == SexKeyFilter)
        return InLetters(text, SexWords);
    if (box.Filter() == YesNoKeyFilter)
        return InLetters(text, YesNoWords);
    if (box.Filter() == NationalInsuranceKeyFilter)
        return Without(text, " -");
    return text;
}

std::string TypeCell(Screen& screen, Box& box, std::string_view cell)
{
    const std::string entry = Entry(box, cell);
    if (box.Kind() == BoxKind::Tick) {
        if (entry != "0" && entry != "1")
            return fmt::format("\"{}\" is neither yes nor no", entry);
    } else {
        if (box.ReadOnly() && Trimmed(box.Text()) != entry)
            return fmt::format("\"{}\" cannot be entered here", entry);
        const std::u32string keys = CodePoints(entry);
        if (screen.Keys(box, keys).size() != keys.size())
            return fmt::format("\"{}\" cannot be typed here", entry);
    }
    if (!box.ReadOnly() && box.Enabled())
        screen.TypeIn(box, entry);
    return IsTaken(box, entry) ? std::string() : fmt::format("\"{}\" is not taken", entry);
}

bool IsTaken(const Box& box, std::string_view entry)
{
    return box.Kind() == BoxKind::Tick || entry.empty() || !Trimmed(box.Text()).empty() || IsZero(entry);
}

} // namespace quillmere
