#include "Script.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <map>
#include <regex>
#include <string>

namespace quillmere::scenario {
namespace {

std::string Manual()
{
    return test::Content(SOURCE_DIR "/docs/scenarios.md");
}

/// How often the first cells of the manual's tables name each step: `click CONTROL` stands for `click`.
std::map<std::string, int> TimesNamedInTables(const std::string& manual)
{
    const std::regex row(R"(\n\| (`.*?) \| )"), name(R"(`([a-z][a-z-]*)[^`]*`)");
    std::map<std::string, int> names;
    for (std::sregex_iterator found(manual.begin(), manual.end(), row), none; found != none; ++found) {
        const std::string cell = (*found)[1];
        for (std::sregex_iterator word(cell.begin(), cell.end(), name); word != none; ++word)
            if ((*word)[1] != "end")
                ++names[(*word)[1]];
    }
    return names;
}

TEST(TheManual, NamesEveryStepInItsTablesAndNoOther)
{
    std::map<std::string, int> told = TimesNamedInTables(Manual());
    for (const StepRow& row : Steps()) {
        const bool ofEntriesToo = row.step == "doubleclick";
        EXPECT_EQ(told[std::string(row.step)], ofEntriesToo ? 2 : 1) << row.step;
        told.erase(std::string(row.step));
    }
    for (const auto& [name, times] : told)
        ADD_FAILURE() << "there is no step " << name;
}

TEST(TheManual, GivesExamplesThatStandAtTheirLines)
{
    const std::vector<std::string> examples =
        ExamplesOf("text\n```scenario\nstart\n```\n```\nquit\n```\n```scenario\nkill\n");
    ASSERT_EQ(examples.size(), 2U);
    EXPECT_EQ(examples[0], "\n\nstart\n");
    EXPECT_EQ(examples[1], "\n\n\n\n\n\n\n\nkill\n");
    EXPECT_FALSE(ExamplesOf(Manual()).empty());
}

} // namespace
} // namespace quillmere::scenario
