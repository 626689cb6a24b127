// The guide: its chapters and sections, which is about what, and that nothing in it has aged or leads nowhere.
#include "app/Guide.h"

#include "ChecksPage.h"
#include "KeysPage.h"
#include "app/DeskCommands.h"
#include "app/GuideHtml.h"
#include "app/MDIForm1.h"
#include "edition/Edition.h"
#include "support/ProgramFixture.h"

#include <algorithm>
#include <filesystem>
#include <regex>
#include <set>

namespace quillmere::test {
namespace {

namespace fs = std::filesystem;

const fs::path Documents = fs::path(SOURCE_DIR) / "docs";

const GuideSection* Find(const std::vector<GuideSection>& sections, std::string_view title)
{
    const auto found = std::ranges::find(sections, title, &GuideSection::title);
    return found == sections.end() ? nullptr : &*found;
}

/// What stands between round brackets behind every "](" of a text.
std::vector<std::string> LinksOf(const std::string& text)
{
    static const std::regex Link(R"(\]\(([^)\s]+)\))");
    std::vector<std::string> links;
    for (std::sregex_iterator match(text.begin(), text.end(), Link), end; match != end; ++match)
        links.push_back((*match)[1]);
    return links;
}

/// Why a link of a file leads nowhere; empty if it leads somewhere.
std::string WhyBroken(const fs::path& file, const std::string& link)
{
    if (link.find("://") != std::string::npos)
        return {};
    const std::size_t mark = std::min(link.find('#'), link.size());
    const fs::path target = mark == 0 ? file : file.parent_path() / link.substr(0, mark);
    if (!fs::exists(target))
        return "no such file";
    if (mark == link.size())
        return {};
    const std::string text = Content(target);
    const auto sections = SectionsOf({.file = "", .text = text});
    return std::ranges::any_of(sections,
                               [&](const auto& section) { return AnchorOf(section.title) == link.substr(mark + 1); })
               ? ""
               : "no such section";
}

TEST(Guide, ASectionHasThoseWithin)
{
    const auto sections =
        SectionsOf({.file = "a.md", .text = "# Title\nlead\n## One\na\n### Within\nb\n### Other\nc\n## Two\nd\n"});
    ASSERT_EQ(sections.size(), 5U);
    EXPECT_EQ(sections[0].markdown, "# Title\nlead\n## One\na\n### Within\nb\n### Other\nc\n## Two\nd\n");
    EXPECT_EQ(sections[1].markdown, "## One\na\n### Within\nb\n### Other\nc\n");
    EXPECT_EQ(sections[2].markdown, "### Within\nb\n");
    EXPECT_EQ(sections[3].markdown, "### Other\nc\n");
    EXPECT_EQ(sections[4].markdown, "## Two\nd\n");
    EXPECT_EQ(sections[4].file, "a.md");
}

TEST(Guide, WordsAreFoundWhateverTheirCase)
{
    const GuideSection section{
        .title = "Cars", .level = 2, .file = {}, .markdown = "## Cars\nThe fuel letter and its price.\n"};
    EXPECT_TRUE(HasWords(section, ""));
    EXPECT_TRUE(HasWords(section, "FUEL pri"));
    EXPECT_FALSE(HasWords(section, "fuel van"));
}

std::string Html(std::string_view markdown)
{
    return HtmlOf(markdown,
                  {.link = [](std::string_view target) { return target == "x.md" ? "" : "to:" + std::string(target); },
                   .picture = [](std::string_view name) { return "at/" + std::string(name); }});
}

TEST(GuideHtml, Paragraphs)
{
    EXPECT_EQ(Html("One **bold** and\n*slanted* `a < b`, 2 * 3 * 4.\n\nTwo & \"three\"\n"),
              "<p>One <b>bold</b> and <i>slanted</i> <code>a &lt; b</code>, 2 * 3 * 4.</p>\n"
              "<p>Two &amp; &quot;three&quot;</p>\n");
}

TEST(GuideHtml, HeadingsLinksAndPictures)
{
    EXPECT_EQ(Html("## What is this\n"), "<h2 id=\"what-is-this\"><a name=\"what-is-this\"></a>What is this</h2>\n");
    EXPECT_EQ(Html("See [the *cars*](cars.md#fuel), [x](x.md).\n"),
              "<p>See <a href=\"to:cars.md#fuel\">the <i>cars</i></a>, x.</p>\n");
    EXPECT_EQ(Html("![A page](../pictures/page1.png)\n"),
              "<p class=\"picture\"><img src=\"at/page1.png\" alt=\"A page\"></p>\n");
}

TEST(GuideHtml, ListsTablesAndLinesAsTheyAre)
{
    EXPECT_EQ(Html("Lead:\n- one\n  goes on\n- two\n\nend\n"),
              "<p>Lead:</p>\n<ul>\n<li>one goes on</li>\n<li>two</li>\n</ul>\n<p>end</p>\n");
    EXPECT_EQ(Html("1. one\n\n   | A | B |\n   |---|---|\n   | 1 | *2* |\n\n2. two:\n\n       as it is\n"),
              "<ol>\n<li><p>one</p>\n<table border=\"1\" cellspacing=\"0\" cellpadding=\"4\">\n"
              "<tr><th>A</th><th>B</th></tr>\n<tr><td>1</td><td><i>2</i></td></tr>\n</table>\n</li>\n"
              "<li><p>two:</p>\n<pre>as it is\n</pre>\n</li>\n</ol>\n");
}

TEST(GuideHtml, AnAddressIsWhatAPathNeeds)
{
    EXPECT_EQ(UrlOf("/home/a b/100%#1/ü.png"), "/home/a%20b/100%25%231/%C3%BC.png");
}

TEST(GuideBook, EveryFileOfTheFolderIsAChapter)
{
    std::set<std::string> listed{"README.md"};
    for (const GuideChapter& chapter : GuideChapters()) {
        EXPECT_TRUE(listed.insert(std::string(chapter.file)).second) << chapter.file << " stands in the list twice";
        EXPECT_EQ(chapter.text, Content(Documents / "guide" / chapter.file)) << chapter.file;
    }
    for (const auto& entry : fs::directory_iterator(Documents / "guide"))
        EXPECT_TRUE(listed.contains(entry.path().filename().string()))
            << entry.path() << " is not in the list of docs/guide/README.md";
}

TEST(GuideBook, EveryChapterHasOneTitleAndEverySectionSaysSomething)
{
    std::set<std::string> titles;
    for (const GuideChapter& chapter : GuideChapters()) {
        const auto sections = SectionsOf(chapter);
        ASSERT_FALSE(sections.empty()) << chapter.file;
        EXPECT_TRUE(chapter.text.starts_with("# ")) << chapter.file;
        for (const GuideSection& section : sections) {
            EXPECT_EQ(section.level == 1, &section == sections.data()) << chapter.file << ": " << section.title;
            EXPECT_GT(section.markdown.size(), section.title.size() + 20) << section.title;
            EXPECT_TRUE(titles.insert(section.title).second) << section.title << " is the title of two sections";
        }
    }
}

TEST(GuideBook, NoLinkOfADocumentIsBroken)
{
    std::vector<fs::path> files;
    for (const auto& entry : fs::recursive_directory_iterator(Documents))
        files.push_back(entry.path());
    for (const auto& entry : fs::directory_iterator(SOURCE_DIR))
        files.push_back(entry.path());
    int links = 0;
    for (const fs::path& file : files) {
        if (file.extension() != ".md")
            continue;
        for (const std::string& link : LinksOf(Content(file))) {
            ++links;
            EXPECT_EQ(WhyBroken(file, link), "") << file << ": " << link;
        }
    }
    EXPECT_GT(links, 60);
}

TEST(GuideBook, ABrokenLinkIsFound)
{
    const fs::path file = Documents / "guide" / "README.md";
    EXPECT_EQ(WhyBroken(file, "no-such-chapter.md"), "no such file");
    EXPECT_EQ(WhyBroken(file, "cars.md#no-such-section"), "no such section");
    EXPECT_EQ(WhyBroken(file, "cars.md#further-cars"), "");
}

TEST(GuideBook, EveryPictureLiesBesideTheProgram)
{
    const fs::path beside = fs::path(BINARY_DIR) / edition::ProductFolder / "guide";
    int pictures = 0;
    for (const GuideChapter& chapter : GuideChapters())
        for (const std::string& link : LinksOf(std::string(chapter.text)))
            if (link.ends_with(".png")) {
                ++pictures;
                EXPECT_TRUE(fs::exists(beside / fs::path(link).filename())) << link;
            }
    EXPECT_GT(pictures, 40);
}

TEST(GuideBook, EveryCommandBesideTheFormIsNamedWithItsMenu)
{
    std::string all;
    for (const GuideChapter& chapter : GuideChapters())
        if (chapter.file != "keys.md")
            all.append(chapter.text);
    std::ranges::replace(all, '\n', ' ');
    for (const DeskCommand& command : DeskCommands()) {
        std::string text(command.text);
        if (text.ends_with("..."))
            text.erase(text.size() - 3);
        EXPECT_NE(all.find("**" + std::string(command.menu) + ", " + text + "**"), std::string::npos)
            << command.menu << ", " << text;
    }
}

class GuideOfTheProgram : public ProgramFixture {};

TEST_F(GuideOfTheProgram, EveryScreenHasASectionWithItsPicture)
{
    const auto sections = ReadGuide();
    constexpr std::string_view NothingLeadsTo = "FNotepad Form1 GNotepad2";
    for (const std::string& name : Now().screens.Registered()) {
        const GuideSection* section = Find(sections, SectionAbout(name, ""));
        ASSERT_NE(section, nullptr) << name << ": " << SectionAbout(name, "");
        if (NothingLeadsTo.find(name) == std::string_view::npos) {
            EXPECT_NE(section->markdown.find("!["), std::string::npos) << name << ": " << section->title;
        }
    }
    EXPECT_EQ(SectionAbout("Form3", "FListPrice1"), "Cars");
    EXPECT_EQ(SectionAbout("Form3", "NatIns"), "Page 1");
    EXPECT_EQ(SectionAbout("Form3_4", "Ok"), "Further cars");
    EXPECT_EQ(SectionAbout("HNotepad", "ABox"), "Loans");
}

TEST_F(GuideOfTheProgram, TheChaptersThatAreMadeAreThoseOfTheProgram)
{
    EXPECT_EQ(Content(Documents / "guide/keys.md"), KeysPage(Now())) << "scripts/guide --write";
    EXPECT_EQ(Content(Documents / "guide/checks.md"), ChecksPage()) << "scripts/guide --write";
}

TEST_F(GuideOfTheProgram, TheKeysAreAllThoseOfTheMenus)
{
    const std::string keys = KeysPage(Now());
    int withKey = 0;
    for (const MenuRow& row : MenuRows())
        if (!row.key.empty()) {
            ++withKey;
            EXPECT_NE(keys.find("- **" + std::string(row.key) + ", or Alt+"), std::string::npos) << row.key;
        }
    EXPECT_GE(withKey, 5);
    EXPECT_NE(keys.find("- **Alt+1**"), std::string::npos);
    EXPECT_EQ(keys.find('&'), std::string::npos);
}

TEST_F(GuideOfTheProgram, OpensAtTheSectionAboutTheBoxInUse)
{
    Create("Acme Ltd", "Jane", "Smith");
    OpenEmployee();
    Screen& page = *Now().screens.Find("Form3");
    page.Enter(page.box("FListPrice1"));
    Now().screens.Show("HelpBook");
    Screen& help = *Now().screens.Find("HelpBook");
    const auto shows = [&](std::string_view title) {
        return At("HelpBook", "HelpText").Text().find("</a>" + std::string(title) + "</h") != std::string::npos;
    };
    EXPECT_EQ(At("HelpBook", "HelpContents").Text(), "Cars");
    EXPECT_TRUE(shows("Cars"));
    EXPECT_EQ(help.Mode(), ShowMode::Above);
    // A link leads to its section, a picture to the one beside the program.
    const std::string cars = At("HelpBook", "HelpText").Text();
    EXPECT_NE(cars.find("/guide/cars.png\""), std::string::npos);
    const std::size_t link = cars.find("<a href=\"");
    ASSERT_NE(link, std::string::npos);
    help.Choose(help.box("HelpText"), std::stoi(cars.substr(link + 9)));
    EXPECT_EQ(At("HelpBook", "HelpContents").Text(), "    Explain");
    EXPECT_TRUE(shows("Explain"));
    // A word leaves the sections that have it; a link out of them leads to its section nonetheless.
    At("HelpBook", "HelpSought").AcceptTyped("spooler-of-nobody");
    help.Typed(At("HelpBook", "HelpSought"));
    EXPECT_TRUE(At("HelpBook", "HelpContents").Entries().empty());
    EXPECT_EQ(At("HelpBook", "HelpText").Text(), "<p>No section has these words.</p>");
    help.Choose(help.box("HelpText"), 0);
    EXPECT_EQ(At("HelpBook", "HelpContents").Text(), "The desk");
    EXPECT_TRUE(shows("The desk"));
    Click("HelpBook", "HelpClose");
    EXPECT_EQ(page.InUse()->Name(), "FListPrice1");
}

} // namespace
} // namespace quillmere::test
