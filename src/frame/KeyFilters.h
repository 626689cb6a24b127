#pragma once

#include <string_view>

namespace quillmere {

/// What a key filter made of one key: the character that goes in (0: nothing), and whether a beep sounds.
struct KeyVerdict {
    char32_t key = 0;
    bool beep = false;

    friend bool operator==(const KeyVerdict&, const KeyVerdict&) = default;
};

/// Looks at one typed or pasted character. Backspace is U+0008.
using KeyFilter = KeyVerdict (*)(char32_t key);

/// Digits, "/", backspace; "." becomes "/".
KeyVerdict DateKeyFilter(char32_t key);

/// Digits and backspace.
KeyVerdict WholeNumberKeyFilter(char32_t key);

/// Digits, ".", backspace.
KeyVerdict MoneyKeyFilter(char32_t key);

/// Digits, ".", "(", ")", "-", backspace.
KeyVerdict SignedMoneyKeyFilter(char32_t key);

/// Letters of either case A to Z, digits and backspace; anything else is dropped without a beep.
KeyVerdict NationalInsuranceKeyFilter(char32_t key);

/// "M", "F" in either case and backspace; others are dropped without a beep.
KeyVerdict SexKeyFilter(char32_t key);

/// "Y", "N" in either case and backspace; others are dropped without a beep.
KeyVerdict YesNoKeyFilter(char32_t key);

/// The letters of the fuel list in either case and backspace; others are dropped without a beep.
KeyVerdict FuelKeyFilter(char32_t key);

/// True if the upper-cased text is found in the list of fuel letters; an empty text (key 0) counts as found, and so do
/// letters that stand together in the list.
bool IsFuelLetter(std::string_view text);
bool IsFuelLetter(char32_t key);

/// Refuses without a beep the control characters 1 to 7 and 10 to 31, the characters " * / < > ? | (but not the
/// platform's own path separator) and every code from 127 to 255.
KeyVerdict PathKeyFilter(char32_t key);

} // namespace quillmere
