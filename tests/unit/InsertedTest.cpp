// What has come into a text, told from the text before, the text now and the caret.
#include "frame/Inserted.h"

#include <gtest/gtest.h>

namespace quillmere {
namespace {

struct InsertedCase {
    const char* name;
    std::u32string_view before, now;
    std::size_t caret;
    Insertion expected;
};

constexpr std::size_t None = 0;

class InsertedTest : public ::testing::TestWithParam<InsertedCase> {};

TEST_P(InsertedTest, TellsWhatCameInWhere)
{
    const auto& [name, before, now, caret, expected] = GetParam();
    const Insertion found = Inserted(before, now, caret);
    EXPECT_EQ(found.place, expected.place);
    EXPECT_EQ(found.removed, expected.removed);
    EXPECT_EQ(found.typed, expected.typed);
}

INSTANTIATE_TEST_SUITE_P(
    Cases, InsertedTest,
    ::testing::Values(InsertedCase{"IntoNothing", U"", U"7", 1, {0, None, U"7"}},
                      InsertedCase{"AtTheEnd", U"12", U"123", 3, {2, None, U"3"}},
                      InsertedCase{"AtTheStart", U"12", U"312", 1, {0, None, U"3"}},
                      InsertedCase{"InTheMiddle", U"12", U"132", 2, {1, None, U"3"}},
                      InsertedCase{"TheSameAgain", U"11", U"111", 2, {1, None, U"1"}},
                      InsertedCase{"SeveralAtOnce", U"12", U"1abc2", 4, {1, None, U"abc"}},
                      InsertedCase{"OverAll", U"500.00", U"7", 1, {0, 6, U"7"}},
                      InsertedCase{"OverAllButTheBlanks", U"    500.00", U"    7", 5, {4, 6, U"7"}},
                      InsertedCase{"OverPart", U"1234", U"194", 2, {1, 2, U"9"}},
                      InsertedCase{"OverPartThatBeginsAlike", U"1234", U"124", 2, {2, 1, U""}},
                      InsertedCase{"ByBackspace", U"123", U"12", 2, {2, 1, U""}},
                      InsertedCase{"ByDeleteInFront", U"123", U"23", 0, {0, 1, U""}},
                      InsertedCase{"AllTakenAway", U"123", U"", 0, {0, 3, U""}},
                      InsertedCase{"SharingNoEnd", U"abc", U"xyz", 1, {0, 3, U"x"}},
                      InsertedCase{"BeyondTheBasicPlane", U"a", U"a\U0001F600", 2, {1, None, U"\U0001F600"}}),
    [](const auto& parameter) { return std::string(parameter.param.name); });

} // namespace
} // namespace quillmere
