#include "Compare.h"

#include <gtest/gtest.h>

namespace quillmere::scenario {
namespace {

TEST(Places, ArePutIntoATextAsOftenAsTheyStandThere)
{
    const Places places{.program = "/r/P", .root = "/r", .client = "/c"};
    EXPECT_EQ(WithPlaces("PATH 1={root}/Q;{program};{client};{root}", places), "PATH 1=/r/Q;/r/P;/c;/r");
    EXPECT_EQ(WithPlaces("{other} {root", places), "{other} {root");
    EXPECT_EQ(WithPlaces("", places), "");
}

TEST(Places, AreNotLookedForInWhatWasPutIn)
{
    EXPECT_EQ(WithPlaces("{program}", {.program = "{root}", .root = "/r", .client = ""}), "{root}");
}

TEST(Slashes, StandForThePlatformsSeparator)
{
    EXPECT_EQ(WithSlashes("C:\\a\\b", '\\'), "C:/a/b");
    EXPECT_EQ(WithSlashes("a\\b/c", '/'), "a\\b/c");
}

TEST(ShownTexts, AreWrittenAsAScenarioWouldWriteThem)
{
    EXPECT_EQ(Shown("a \"b\"\\\n\t"), R"("a \"b\"\\\n\t")");
    EXPECT_EQ(Shown(""), "\"\"");
    EXPECT_EQ(ShownList({"a", ""}), "\"a\" \"\"");
    EXPECT_EQ(ShownList({}), "nothing");
}

TEST(Lines, StandInOrderAmongOthers)
{
    std::string missing;
    EXPECT_TRUE(StandInOrder({"a", "x", "b", "b", "c"}, {"a", "b", "c"}, missing));
    EXPECT_TRUE(StandInOrder({"a"}, {}, missing));
    EXPECT_FALSE(StandInOrder({"b", "a"}, {"a", "b"}, missing));
    EXPECT_EQ(missing, "b");
    EXPECT_FALSE(StandInOrder({"a"}, {"a", "a"}, missing));
    EXPECT_EQ(missing, "a");
}

const std::vector<DrawnText> Drawn{
    {40, 30, "Ltd"}, {10, 30, "Acme"},       {12, 50, "0"},
    {20, 50.3, "5"}, {60, 50, "    250.00"}, {10, 70, "Car fuel benefit"},
    {5, 71, "next"},
};

TEST(Pages, HoldATextInsideOneDrawnText)
{
    EXPECT_TRUE(PageHolds(Drawn, "fuel"));
    EXPECT_TRUE(PageHolds(Drawn, "    250.00"));
    EXPECT_FALSE(PageHolds(Drawn, "Fuel"));
}

TEST(Pages, HoldATextAcrossNeighboursOfALine)
{
    EXPECT_TRUE(PageHolds(Drawn, "Acme Ltd"));
    EXPECT_TRUE(PageHolds(Drawn, "05"));
    EXPECT_TRUE(PageHolds(Drawn, "5 250.00"));
}

TEST(Pages, DoNotHoldATextAcrossLines)
{
    EXPECT_FALSE(PageHolds(Drawn, "benefit next"));
    EXPECT_FALSE(PageHolds(Drawn, "Ltd 0"));
    EXPECT_FALSE(PageHolds({}, "a"));
}

TEST(Pages, DoNotHoldNeighboursInTheWrongOrder)
{
    EXPECT_FALSE(PageHolds(Drawn, "Ltd Acme"));
}

} // namespace
} // namespace quillmere::scenario
