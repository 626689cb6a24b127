#include "frame/Text.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

namespace quillmere {
namespace {

TEST(Text, TrimmingTakesBlanksAlone)
{
    EXPECT_EQ(Trim("  a b  "), "a b");
    EXPECT_EQ(Trim("\ta\n"), "\ta\n");
    EXPECT_EQ(Trim(" \t "), "\t");
    EXPECT_EQ(Trim("   "), "");
    EXPECT_EQ(Trim(""), "");
    EXPECT_EQ(Trim("\u00a0a"), "\u00a0a");
}

TEST(Text, UpperCaseKnowsAsciiAndLatin1)
{
    EXPECT_EQ(UpperCase("ab123456c"), "AB123456C");
    EXPECT_EQ(UpperCase("élan à þæø"), "ÉLAN À ÞÆØ");
    EXPECT_EQ(UpperCase("÷ ß ÿ × É"), "÷ ß ÿ × É");
    EXPECT_EQ(UpperCase("αβ жя"), "αβ жя");
    EXPECT_EQ(UpperCase("a\xC3"), "A\xC3");
    EXPECT_EQ(UpperCase("\xFFz"), "\xFFZ");
}

TEST(Text, LengthAndLeftCountCharactersNotBytes)
{
    EXPECT_EQ(Length(""), 0U);
    EXPECT_EQ(Length("£12"), 3U);
    EXPECT_EQ(Length("Ω€😀"), 3U);
    EXPECT_EQ(Left("£12", 2), "£1");
    EXPECT_EQ(Left("Ω€😀x", 3), "Ω€😀");
    EXPECT_EQ(Left("ab", 5), "ab");
    EXPECT_EQ(Left("ab", 0), "");
}

TEST(Text, NumberedNamesAreJoinedWithoutPadding)
{
    EXPECT_EQ(Numbered("Description", 7), "Description7");
    EXPECT_EQ(Numbered("Description", 20), "Description20");
    EXPECT_EQ(Numbered("DateFrom1", 2), "DateFrom12");
}

TEST(Text, BytesThatAreNoUtf8CountAsOneCharacterEach)
{
    struct Case {
        std::string_view bytes;
        std::u32string_view read;
    };
    for (const Case& c : {
             Case{"\xFF", U"\uFFFD"},
             Case{"a\x80z", U"a\uFFFDz"},
             Case{"\xC3", U"\uFFFD"},                               // cut short
             Case{"\xE2\x82", U"\uFFFD\uFFFD"},                     // cut short
             Case{"\xC0\xAF", U"\uFFFD\uFFFD"},                     // overlong
             Case{"\xE0\x80\xAF", U"\uFFFD\uFFFD\uFFFD"},           // overlong
             Case{"\xED\xA0\x80", U"\uFFFD\uFFFD\uFFFD"},           // surrogate
             Case{"\xF4\x90\x80\x80", U"\uFFFD\uFFFD\uFFFD\uFFFD"}, // past the last plane
             Case{"\xF0\x9F\x98\x80", U"\U0001F600"},
         }) {
        EXPECT_EQ(CodePoints(c.bytes), c.read) << testing::PrintToString(c.bytes);
        EXPECT_EQ(Length(c.bytes), c.read.size()) << testing::PrintToString(c.bytes);
    }
    EXPECT_EQ(Left("\xFFz", 1), "\xFF") << "the bytes themselves stay";
}

TEST(Text, CodePointsThatDoNotExistAreWrittenAsTheReplacementCharacter)
{
    EXPECT_EQ(Utf8(std::u32string{0xD800}), "\uFFFD");
    EXPECT_EQ(Utf8(std::u32string{0x110000}), "\uFFFD");
    EXPECT_EQ(Utf8(U"A£€😀"), "A£€😀");
}

RC_GTEST_PROP(Text, AnyCodePointsReadBackFromTheirUtf8, ())
{
    const auto codes = *rc::gen::container<std::vector<std::uint32_t>>(
        rc::gen::suchThat(rc::gen::inRange<std::uint32_t>(0, 0x110000),
                          [](std::uint32_t code) { return code < 0xD800 || code > 0xDFFF; }));
    const std::u32string points(codes.begin(), codes.end());
    RC_ASSERT(CodePoints(Utf8(points)) == points);
    RC_ASSERT(Length(Utf8(points)) == points.size());
}

RC_GTEST_PROP(Text, AnyBytesCanBeReadAndCut, (const std::string& bytes, std::size_t count))
{
    const std::size_t length = Length(bytes);
    RC_ASSERT(CodePoints(bytes).size() == length);
    RC_ASSERT(Left(bytes, length) == bytes);
    const std::string cut = Left(bytes, count);
    RC_ASSERT(bytes.starts_with(cut));
    RC_ASSERT(Length(cut) <= count);
    RC_ASSERT(UpperCase(UpperCase(bytes)) == UpperCase(bytes));
}

} // namespace
} // namespace quillmere
