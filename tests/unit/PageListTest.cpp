#include "printing/paper/PageList.h"

#include <gtest/gtest.h>

#include <string_view>
#include <vector>

namespace quillmere {
namespace {

using Pages = std::vector<int>;

TEST(PageList, NamesPagesAndRangesInTheOrderGiven)
{
    EXPECT_EQ(ReadPageList("1,3,5-12", 20), (Pages{1, 3, 5, 6, 7, 8, 9, 10, 11, 12}));
    EXPECT_EQ(ReadPageList("5,1,3", 5), (Pages{5, 1, 3}));
    EXPECT_EQ(ReadPageList("2,2", 5), (Pages{2, 2}));
    EXPECT_EQ(ReadPageList(" 1 , 2 - 3 ", 5), (Pages{1, 2, 3}));
    EXPECT_EQ(ReadPageList("1,,2,", 5), (Pages{1, 2}));
    EXPECT_EQ(ReadPageList("4-4", 5), (Pages{4}));
}

TEST(PageList, LeavesOutWhatTheDocumentLacks)
{
    EXPECT_EQ(ReadPageList("1,99", 5), (Pages{1}));
    EXPECT_EQ(ReadPageList("4-99999999999999999999", 5), (Pages{4, 5}));
    EXPECT_EQ(ReadPageList("6-9", 5), Pages{});
    EXPECT_EQ(ReadPageList("1", 0), Pages{});
}

TEST(PageList, GivesNoPageForAListWithoutSense)
{
    for (const std::string_view list :
         {"", " ", ",", ",,", "-", "0", "0-3", "3-1", "3-", "-3", "1-2-3", "a", "1,a", "1;2", "1.5", "+1", "--", "1 2"})
        EXPECT_EQ(ReadPageList(list, 5), Pages{}) << list;
}

} // namespace
} // namespace quillmere
