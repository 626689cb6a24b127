#include "frame/KeyFilters.h"

#include "edition/Edition.h"
#include "frame/Text.h"

#include <filesystem>

namespace quillmere {

namespace {

constexpr char32_t Backspace = 8;

constexpr KeyVerdict Pass(char32_t key)
{
    return {.key = key, .beep = false};
}

constexpr KeyVerdict RefuseWithBeep()
{
    return {.key = 0, .beep = true};
}

constexpr KeyVerdict Drop()
{
    return {.key = 0, .beep = false};
}

constexpr bool IsLetter(char32_t key)
{
    return (key >= U'A' && key <= U'Z') || (key >= U'a' && key <= U'z');
}

constexpr bool IsOneOf(char32_t key, std::u32string_view characters)
{
    return characters.find(key) != std::u32string_view::npos;
}

} // namespace

KeyVerdict DateKeyFilter(char32_t key)
{
    if (key == U'.')
        return Pass(U'/');
    return IsDigit(key) || key == U'/' || key == Backspace ? Pass(key) : RefuseWithBeep();
}

KeyVerdict WholeNumberKeyFilter(char32_t key)
{
    return IsDigit(key) || key == Backspace ? Pass(key) : RefuseWithBeep();
}

KeyVerdict MoneyKeyFilter(char32_t key)
{
    return IsDigit(key) || key == U'.' || key == Backspace ? Pass(key) : RefuseWithBeep();
}

KeyVerdict SignedMoneyKeyFilter(char32_t key)
{
    return IsDigit(key) || IsOneOf(key, U".()-") || key == Backspace ? Pass(key) : RefuseWithBeep();
}

KeyVerdict NationalInsuranceKeyFilter(char32_t key)
{
    return IsLetter(key) || IsDigit(key) || key == Backspace ? Pass(key) : Drop();
}

KeyVerdict SexKeyFilter(char32_t key)
{
    return IsOneOf(key, U"MFmf") || key == Backspace ? Pass(key) : Drop();
}

KeyVerdict YesNoKeyFilter(char32_t key)
{
    return IsOneOf(key, U"YNyn") || key == Backspace ? Pass(key) : Drop();
}

KeyVerdict FuelKeyFilter(char32_t key)
{
    return key == Backspace || IsFuelLetter(key) ? Pass(key) : Drop();
}

bool IsFuelLetter(std::string_view text)
{
    // Kept: the text is looked for in the list as a whole, so an empty one and neighbours such as "BC" count as found.
    return edition::FuelLetters.find(UpperCase(text)) != std::string_view::npos;
}

bool IsFuelLetter(char32_t key)
{
    return IsFuelLetter(key == 0 ? std::string() : Utf8({&key, 1}));
}

KeyVerdict PathKeyFilter(char32_t key)
{
    const bool isControl = (key >= 1 && key <= 7) || (key >= 10 && key <= 31);
    const bool isHigh = key >= 127 && key <= 255;
    const bool isSeparator = key == static_cast<char32_t>(std::filesystem::path::preferred_separator);
    if (isControl || isHigh || (IsOneOf(key, U"\"*/<>?|") && !isSeparator))
        return Drop();
    return Pass(key);
}

} // namespace quillmere
