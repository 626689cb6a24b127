#include "frame/KeyFilters.h"

#include "edition/Edition.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <filesystem>
#include <string_view>

namespace quillmere {
namespace {

struct FilterCase {
    const char* name;
    KeyFilter filter;
    std::u32string_view accepted; ///< backspace apart
    bool beeps;
};

constexpr FilterCase Filters[] = {
    {"Date", DateKeyFilter, U"0123456789/", true},
    {"WholeNumber", WholeNumberKeyFilter, U"0123456789", true},
    {"Money", MoneyKeyFilter, U"0123456789.", true},
    {"SignedMoney", SignedMoneyKeyFilter, U"0123456789.()-", true},
    {"NationalInsurance", NationalInsuranceKeyFilter, U"ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789",
     false},
    {"Sex", SexKeyFilter, U"MFmf", false},
    {"YesNo", YesNoKeyFilter, U"YNyn", false},
    {"Fuel", FuelKeyFilter, U"BCDEGHLPbcdeghlp", false},
};

TEST(KeyFilters, EachLetsItsOwnCharactersInAndNoOthers)
{
    for (const FilterCase& c : Filters) {
        for (char32_t key = 1; key < 0x600; ++key) {
            if (c.filter == KeyFilter{DateKeyFilter} && key == U'.')
                continue;
            const bool accepted = key == 8 || c.accepted.find(key) != std::u32string_view::npos;
            const KeyVerdict expected = accepted ? KeyVerdict{key, false} : KeyVerdict{0, c.beeps};
            EXPECT_EQ(c.filter(key), expected) << c.name << " filter, key " << static_cast<unsigned>(key);
        }
    }
}

TEST(KeyFilters, APointInADateBecomesAStroke)
{
    EXPECT_EQ(DateKeyFilter(U'.'), (KeyVerdict{U'/', false}));
}

TEST(KeyFilters, OfTheControlKeysBackspaceAlonePasses)
{
    for (const FilterCase& c : Filters)
        for (char32_t key = 1; key < 32; ++key)
            EXPECT_EQ(c.filter(key).key, key == 8 ? key : 0U) << c.name << ' ' << static_cast<unsigned>(key);
}

TEST(KeyFilters, FuelLettersAreThoseOfTheFormInEitherCase)
{
    EXPECT_EQ(edition::FuelLetters, "BCDEGHLP");
    for (const char32_t key : std::u32string_view(U"BCDEGHLPbcdeghlp"))
        EXPECT_TRUE(IsFuelLetter(key));
    for (const char32_t key : std::u32string_view(U"AFIJKMNOQRSTUVWXYZ1 £é"))
        EXPECT_FALSE(IsFuelLetter(key));
    EXPECT_TRUE(IsFuelLetter("h"));
    EXPECT_FALSE(IsFuelLetter("x"));
}

TEST(KeyFilters, AnEmptyFuelAndNeighboursOfTheListCountAsFound)
{
    EXPECT_TRUE(IsFuelLetter(U'\0'));
    EXPECT_TRUE(IsFuelLetter(""));
    EXPECT_TRUE(IsFuelLetter("bc"));
    EXPECT_FALSE(IsFuelLetter("BD"));
}

TEST(KeyFilters, PathsRefuseWhatCannotStandInOneWithoutABeep)
{
    const auto separator = static_cast<char32_t>(std::filesystem::path::preferred_separator);
    for (char32_t key = 1; key < 0x200; ++key) {
        const bool isWild = std::u32string_view(U"\"*/<>?|").find(key) != std::u32string_view::npos;
        const bool refused =
            (key <= 7) || (key >= 10 && key <= 31) || (key >= 127 && key <= 255) || (isWild && key != separator);
        EXPECT_EQ(PathKeyFilter(key), refused ? KeyVerdict{} : (KeyVerdict{key, false})) << static_cast<unsigned>(key);
    }
    EXPECT_EQ(PathKeyFilter(separator).key, separator);
    EXPECT_EQ(PathKeyFilter(8).key, 8U);
    EXPECT_EQ(PathKeyFilter(9).key, 9U);
}

RC_GTEST_PROP(KeyFilters, NoFilterLetsARefusedCharacterIn, (const std::vector<std::uint32_t>& pasted))
{
    for (const FilterCase& c : Filters)
        for (const std::uint32_t key : pasted) {
            const KeyVerdict verdict = c.filter(key);
            RC_ASSERT(verdict.key == 0U || verdict.key == 8U ||
                      c.accepted.find(verdict.key) != std::u32string_view::npos);
            RC_ASSERT(!(verdict.beep && verdict.key != 0U));
        }
}

} // namespace
} // namespace quillmere
