// The guide inside the program: its sections, which is about what, and the page of keys.
#include "app/Guide.h"

#include "app/KeysPage.h"
#include "app/MDIForm1.h"
#include "support/ProgramFixture.h"

#include <algorithm>

namespace quillmere::test {
namespace {

const GuideSection* Find(const std::vector<GuideSection>& sections, std::string_view title)
{
    const auto found = std::ranges::find(sections, title, &GuideSection::title);
    return found == sections.end() ? nullptr : &*found;
}

TEST(Guide, ASectionHasThoseWithinAndNoPictures)
{
    const auto sections = SectionsOf("# Title\nlead\n## One\na\n![x](y.png)\n### Within\nb\n### Other\nc\n## Two\nd\n");
    ASSERT_EQ(sections.size(), 4U);
    EXPECT_EQ(sections[0].markdown, "## One\na\n### Within\nb\n### Other\nc\n");
    EXPECT_EQ(sections[1].markdown, "### Within\nb\n");
    EXPECT_EQ(sections[2].markdown, "### Other\nc\n");
    EXPECT_EQ(sections[3].markdown, "## Two\nd\n");
}

TEST(Guide, WordsAreFoundWhateverTheirCase)
{
    const GuideSection section{.title = "Cars", .level = 2, .markdown = "## Cars\nThe fuel letter and its price.\n"};
    EXPECT_TRUE(HasWords(section, ""));
    EXPECT_TRUE(HasWords(section, "FUEL pri"));
    EXPECT_FALSE(HasWords(section, "fuel van"));
}

class GuideOfTheProgram : public ProgramFixture {};

TEST_F(GuideOfTheProgram, IsTheOneOfTheDocuments)
{
    const auto sections = ReadGuide();
    ASSERT_NE(Find(sections, "The first start"), nullptr);
    ASSERT_NE(Find(sections, "The list of car figures"), nullptr);
    for (const GuideSection& section : sections)
        EXPECT_GT(section.markdown.size(), section.title.size() + 20) << section.title;
}

TEST_F(GuideOfTheProgram, HasASectionAboutEveryScreenThatIsNamed)
{
    const auto sections = ReadGuide();
    for (const std::string& name : Now().screens.Registered()) {
        const std::string_view title = SectionAbout(name, "");
        if (!title.empty()) {
            EXPECT_NE(Find(sections, title), nullptr) << name << ": " << title;
        }
    }
    EXPECT_EQ(SectionAbout("Form3", "FListPrice1"), "Cars");
    EXPECT_EQ(SectionAbout("Form3", "NatIns"), "The two pages");
    EXPECT_EQ(SectionAbout("Form3_4", "Ok"), "Cars");
    EXPECT_EQ(SectionAbout("HNotepad", "ABox"), "Notepads");
}

TEST_F(GuideOfTheProgram, TheKeysAreAllThoseOfTheMenus)
{
    const GuideSection keys = KeysPage(Now());
    int withKey = 0;
    for (const MenuRow& row : MenuRows())
        if (!row.key.empty()) {
            ++withKey;
            EXPECT_NE(keys.markdown.find("- **" + std::string(row.key) + ", or Alt+"), std::string::npos) << row.key;
        }
    EXPECT_GE(withKey, 5);
    EXPECT_NE(keys.markdown.find("- **Alt+1**"), std::string::npos);
    EXPECT_EQ(keys.markdown.find('&'), std::string::npos);
}

TEST_F(GuideOfTheProgram, OpensAtTheSectionAboutTheBoxInUse)
{
    Create("Acme Ltd", "Jane", "Smith");
    OpenEmployee();
    Screen& page = *Now().screens.Find("Form3");
    page.Enter(page.box("FListPrice1"));
    Now().screens.Show("HelpBook");
    EXPECT_EQ(At("HelpBook", "HelpContents").Text(), "Cars");
    EXPECT_EQ(At("HelpBook", "HelpText").Text().substr(0, 8), "## Cars\n");
    EXPECT_EQ(Now().screens.Find("HelpBook")->Mode(), ShowMode::Above);
    // A word leaves the sections that have it.
    At("HelpBook", "HelpSought").AcceptTyped("spooler-of-nobody");
    Now().screens.Find("HelpBook")->Typed(At("HelpBook", "HelpSought"));
    EXPECT_TRUE(At("HelpBook", "HelpContents").Entries().empty());
    EXPECT_EQ(At("HelpBook", "HelpText").Text(), "No section has these words.");
    Click("HelpBook", "HelpClose");
    EXPECT_EQ(page.InUse()->Name(), "FListPrice1");
}

} // namespace
} // namespace quillmere::test
