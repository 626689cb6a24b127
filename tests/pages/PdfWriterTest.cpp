#include "printing/paper/PdfWriter.h"

#include "PdfReadBack.h"
#include "frame/CheckedFile.h"
#include "printing/paper/PdfContent.h"
#include "support/PrintRoom.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <array>
#include <functional>
#include <limits>
#include <set>
#include <sstream>
#include <string>

namespace quillmere::pages {
namespace {

using test::PrintRoom;

class PdfWriterTest : public ::testing::Test {
protected:
    std::filesystem::path Written(const Document& document, std::span<const int> pages = {})
    {
        const std::filesystem::path file = folder / "document.pdf";
        WriteFileChecked(file, pages.empty() ? writer.Write(document) : writer.Write(document, pages));
        return file;
    }
    static Document WithTexts(const std::vector<std::string>& texts, Face face = Face::SansRegular)
    {
        Document document;
        document.name = "Document";
        for (const std::string& text : texts) {
            document.AddPage();
            document.AddText({.face = face, .size = 10}, Alignment::Left, 1000, 1000, text);
        }
        return document;
    }
    static std::string TextOf(const std::filesystem::path& file)
    {
        return RunProgram({"pdftotext", "-raw", file.string(), "-"}).output;
    }

    /// True if the first page, as a picture, has anything dark on it.
    bool HasInk(const std::filesystem::path& file)
    {
        RunProgram({"pdftoppm", "-r", "150", "-gray", "-f", "1", "-l", "1", "-singlefile", file.string(),
                    (folder / "picture").string()});
        const std::string picture = ReadFile(folder / "picture.pgm");
        constexpr std::size_t Header = 20;
        return std::any_of(picture.begin() + Header, picture.end(),
                           [](char level) { return static_cast<unsigned char>(level) < 0x80; });
    }

    PdfWriter writer;
    const test::TemporaryFolder folder;
};

TEST_F(PdfWriterTest, MakesTheSameBytesWhateverWasWrittenBefore)
{
    const Document document = WithTexts({"Plain text, £12.50"});
    const std::string first = writer.Write(document);
    writer.Write(WithTexts({"Ωμέγα Ж ğ"}));
    writer.Write(WithTexts({"bold"}, Face::SansBold));
    EXPECT_EQ(writer.Write(document), first);
    EXPECT_EQ(PdfWriter().Write(document), first);
    EXPECT_NE(writer.Write(WithTexts({"Other text, £12.50"})), first);
}

TEST_F(PdfWriterTest, TellsFixedPartsApartThatDifferInOneThing)
{
    struct Fixed {
        ShapeStyle shape{.pen = Black, .brush = White, .filled = true, .width = 10};
        TextStyle text{.face = Face::SansRegular, .colour = Black, .size = 8};
        std::string words = "Gross amount";
        std::vector<double> corners = {100, 100, 200, 100, 150, 200};
        double left = 400;
        bool isRead = true;
    };
    const auto documentOf = [](const Fixed& fixed) {
        Document document;
        document.AddPage();
        const ElementNumber first = document.AddElement({.role = Role::Heading});
        const ElementNumber second = document.AddElement({.role = Role::Paragraph});
        document.BeginPart(true);
        document.AddPolygon(fixed.shape, fixed.corners);
        document.AddLine(fixed.shape, fixed.left, 300, 900, 300);
        document.BelongsTo(fixed.isRead ? first : second);
        document.AddText(fixed.text, Alignment::Left, 400, 400, fixed.words);
        document.BeginPart(false);
        document.BelongsTo(second);
        document.AddText(fixed.text, Alignment::Left, 400, 900, "12.50");
        return document;
    };
    std::vector<Fixed> all(11);
    all[1].words = "Gross amounts";
    all[2].words = "Gross Amount";
    all[3].text.size = 9;
    all[4].text.colour = Grey(80);
    all[5].text.face = Face::SansBold;
    all[6].shape.width = 12;
    all[7].shape.filled = false;
    all[8].corners.back() = 210;
    all[9].left = 410;
    all[10].isRead = false;
    std::set<std::string> different;
    for (const Fixed& fixed : all) {
        const Document document = documentOf(fixed);
        const std::string alone = PdfWriter().Write(document);
        EXPECT_EQ(writer.Write(document), alone) << "after the others";
        EXPECT_EQ(writer.Write(document), alone) << "after itself";
        different.insert(alone);
    }
    EXPECT_EQ(different.size(), all.size());
}

TEST_F(PdfWriterTest, GivesEveryCharacterBackToAReader)
{
    const std::string text = "Ærøskøbing Łódź Ğ naïve £5 €7 Ωμέγα Добрый (a\\b) \"q\" 中文";
    EXPECT_EQ(TextOf(Written(WithTexts({text}))), text + "\n\f");
    for (const Face face : {Face::SerifItalic, Face::MonoBold})
        EXPECT_EQ(TextOf(Written(WithTexts({"Żółć Ψ £"}, face))), "Żółć Ψ £\n\f");
}

TEST_F(PdfWriterTest, DrawsTheMissingGlyphBoxForACharacterThatTheFontLacks)
{
    const std::filesystem::path file = Written(WithTexts({"中"}));
    const std::string trace = RunProgram({"mutool", "trace", file.string(), "1"}).output;
    EXPECT_NE(trace.find("unicode=\"中\" glyph=\"0\""), std::string::npos) << trace;
    // Ink where the box stands, so the box is a box and not a blank.
    EXPECT_TRUE(HasInk(file));
}

TEST_F(PdfWriterTest, ShowsALineOfNoLengthAsADot)
{
    Document document;
    document.AddPage();
    document.AddLine({.pen = Black, .width = 20}, 5000, 5000, 5000, 5000);
    EXPECT_TRUE(HasInk(Written(document)));
    document = {};
    document.AddPage();
    EXPECT_FALSE(HasInk(Written(document)));
}

TEST_F(PdfWriterTest, WritesTheChosenPagesInTheGivenOrder)
{
    const Document document = WithTexts({"one", "two", "three"});
    EXPECT_EQ(TextOf(Written(document)), "one\n\ftwo\n\fthree\n\f");
    EXPECT_EQ(TextOf(Written(document, std::array{3, 1, 3})), "three\n\fone\n\fthree\n\f");
    EXPECT_THROW(writer.Write(document, std::array{4}), std::out_of_range);
    EXPECT_EQ(RunProgram({"qpdf", "--check", Written(document, std::array{2, 2}).string()}).status, 0);
}

/// So few documents have a font of their own, and no font has much that is not drawn.
TEST_F(PdfWriterTest, EmbedsTheFormsOwnCharactersAndTheGroupsOfWhatIsEntered)
{
    const auto fontOf = [this](const std::string& text, bool isFixed) {
        Document document;
        document.AddPage();
        document.BeginPart(isFixed);
        document.AddText({.size = 10}, Alignment::Left, 1000, 1000, text);
        const std::filesystem::path file = Written(document);
        EXPECT_EQ(TextOf(file), text + "\n\f");
        const std::string fonts = RunProgram({"pdffonts", file.string()}).output;
        const std::size_t name = fonts.find("+LiberationSans");
        EXPECT_NE(name, std::string::npos) << fonts;
        return std::pair(fonts.substr(name - 6, 6), std::filesystem::file_size(file));
    };
    const auto [dear, dearSize] = fontOf("dear", true);
    const auto [food, foodSize] = fontOf("food", true);
    EXPECT_NE(dear, food);
    const auto [entered, enteredSize] = fontOf("dear", false);
    EXPECT_EQ(entered, fontOf("food", false).first) << "of the same thirds of the alphabet";
    EXPECT_NE(entered, fontOf("wood", false).first);
    EXPECT_LT(dearSize + 500, enteredSize);
}

TEST_F(PdfWriterTest, HoldsWhatIsFixedOnceForAllPages)
{
    const auto form = [](int pages, const std::function<std::string(int)>& label) {
        Document document;
        for (int page = 1; page <= pages; ++page) {
            document.AddPage();
            document.AddText({.size = 8}, Alignment::Left, 1000, 1000, "value " + std::to_string(page));
            document.BeginPart(true);
            for (int line = 1; line <= 100; ++line)
                document.AddText({.face = Face::SansBold, .size = 9}, Alignment::Left, 1000, 1000 + line * 100,
                                 label(page) + std::to_string(line * line * 7919));
            document.BeginPart(false);
            document.AddText({.size = 8}, Alignment::Left, 1000, 12000, "end " + std::to_string(page));
        }
        return document;
    };
    const auto same = [](int) { return std::string("label "); };
    const std::size_t one = writer.Write(form(1, same)).size();
    const std::size_t twenty = writer.Write(form(20, same)).size();
    EXPECT_LT(twenty - one, 19 * 600U);
    const auto other = [](int page) { return "label of " + std::to_string(page) + " "; };
    EXPECT_GT(writer.Write(form(20, other)).size(), twenty + 19 * 600U) << "what differs is not shared";

    const std::filesystem::path file = Written(form(3, other));
    EXPECT_EQ(RunProgram({"qpdf", "--check", file.string()}).status, 0);
    const std::string text = TextOf(file);
    for (const char* piece : {"value 1\nlabel of 1 7919\n", "value 3\nlabel of 3 7919\n", "\nend 3\n"})
        EXPECT_NE(text.find(piece), std::string::npos) << piece;
}

TEST_F(PdfWriterTest, SaysInLittleRoomWhereItsObjectsAre)
{
    Document document;
    document.AddPage();
    for (int line = 1; line <= 300; ++line) {
        document.BelongsTo(document.AddElement({}));
        document.AddText({.size = 8}, Alignment::Left, 1000, line * 10, "text");
    }
    const std::filesystem::path file = Written(document);
    const std::string bytes = ReadFile(file);
    const auto numberAfter = [&](std::string_view word, std::size_t from) {
        return std::stoul(bytes.substr(bytes.find(word, from) + word.size()));
    };
    const std::size_t references = numberAfter("startxref\n", 0);
    EXPECT_LT(numberAfter("/Length ", references), numberAfter("/Size ", references)) << "a byte an object";
    EXPECT_EQ(RunProgram({"qpdf", "--check", file.string()}).status, 0);
}

TEST_F(PdfWriterTest, HangsBookmarksOfSectionsUnderTheirPage)
{
    Document document = WithTexts({"one", "two"});
    document.bookmarks = {{"First – page", 1, 1, 0}, {"A", 1, 2, 4000}, {"B", 1, 2, 8000}, {"Second", 2, 1, 0}};
    EXPECT_EQ(RunProgram({"qpdf", "--check", Written(document).string()}).status, 0);
    const std::string outline = RunProgram({"mutool", "show", Written(document).string(), "outline"}).output;
    const std::size_t first = outline.find("\"First – page\"");
    const std::size_t a = outline.find("\t\"A\"");
    const std::size_t b = outline.find("\t\"B\"");
    const std::size_t second = outline.find("\"Second\"");
    EXPECT_LT(first, a) << outline;
    EXPECT_LT(a, b) << outline;
    EXPECT_LT(b, second) << outline;
    EXPECT_NE(second, std::string::npos) << outline;

    const std::string ofSecond =
        RunProgram({"mutool", "show", Written(document, std::array{2}).string(), "outline"}).output;
    EXPECT_EQ(ofSecond.find("First"), std::string::npos) << "only bookmarks of the pages in the file";
    EXPECT_NE(ofSecond.find("\"Second\""), std::string::npos);
}

TEST_F(PdfWriterTest, HangsPagesUnderTheirChapterAndBeginsClosed)
{
    Document document = WithTexts({"one", "two"});
    document.bookmarks = {
        {"Smith", 1, 1, 0}, {"Page", 1, 2, 0}, {"A", 1, 3, 4000}, {"Jones", 2, 1, 0}, {"Paper", 2, 2, 0}};
    const std::filesystem::path file = Written(document);
    EXPECT_EQ(RunProgram({"qpdf", "--check", file.string()}).status, 0);
    const std::string outline = RunProgram({"mutool", "show", file.string(), "outline"}).output;
    std::string lines; // a mark for closed or open, a tab a level, the title
    std::istringstream all(outline);
    for (std::string line; std::getline(all, line);)
        lines += line.substr(0, line.rfind('"') + 1) + '\n';
    EXPECT_EQ(lines, "+\t\"Smith\"\n+\t\t\"Page\"\n|\t\t\t\"A\"\n+\t\"Jones\"\n|\t\t\"Paper\"\n");
}

TEST_F(PdfWriterTest, SaysWhatTheDocumentIs)
{
    Document document = WithTexts({"one"});
    document.name = "Ærø & Søn – P11D(b)";
    document.subject = "A subject";
    document.author = "Lärk & Co";
    const std::filesystem::path file = Written(document);
    const std::string info = RunProgram({"pdfinfo", file.string()}).output;
    EXPECT_NE(info.find("Title:           Ærø & Søn – P11D(b)\n"), std::string::npos) << info;
    EXPECT_NE(info.find("Subject:         A subject\n"), std::string::npos) << info;
    EXPECT_NE(info.find("Author:          Lärk & Co\n"), std::string::npos) << info;
    EXPECT_NE(RunProgram({"mutool", "show", file.string(), "trailer/Root/ViewerPreferences"})
                  .output.find("/DisplayDocTitle true"),
              std::string::npos);
    EXPECT_NE(RunProgram({"mutool", "show", file.string(), "trailer/Root/Lang"}).output.find("en-GB"),
              std::string::npos);
}

TEST_F(PdfWriterTest, NamesNobodyWhereNoAuthorIsKnown)
{
    EXPECT_EQ(RunProgram({"pdfinfo", Written(WithTexts({"one"})).string()}).output.find("Author"), std::string::npos);
}

TEST_F(PdfWriterTest, OpensAProtectedFileWithItsPasswordOnly)
{
    const std::string password = "Zoë 1970";
    const std::filesystem::path file = folder / "protected.pdf";
    WriteFileChecked(file, writer.Write(WithTexts({"for you alone"}), {.password = password}));
    const auto check = [&](const std::string& tried) {
        return RunProgram({"qpdf", "--check", "--password=" + tried, file.string()});
    };
    const ProgramRun opened = check(password);
    EXPECT_EQ(opened.status, 0) << opened.output;
    for (const char* word : {"R = 6\n", "file encryption method: AESv3\n", "extract for accessibility: allowed\n",
                             "print high resolution: allowed\n", "modify anything: allowed\n"})
        EXPECT_NE(opened.output.find(word), std::string::npos) << word << opened.output;
    for (const char* wrong : {"", "Zoë 197", "zoë 1970"})
        EXPECT_NE(check(wrong).output.find("invalid password"), std::string::npos) << wrong;
    EXPECT_EQ(RunProgram({"pdftotext", "-upw", password, file.string(), "-"}).output, "for you alone\n\n\f");
    EXPECT_EQ(ReadFile(file).find("Document"), std::string::npos) << "its title is as secret";
}

TEST_F(PdfWriterTest, MakesAFileOfADocumentWithoutAnything)
{
    Document document;
    document.AddPage();
    EXPECT_EQ(RunProgram({"qpdf", "--check", Written(document).string()}).status, 0);
    document.AddText({.size = 0}, Alignment::Left, 0, 0, "nothing");
    document.AddText({.size = 10}, Alignment::Left, 1e300, -1e300, "far away");
    document.AddPolygon({.filled = true}, {});
    const ProgramRun check = RunProgram({"qpdf", "--check", Written(document).string()});
    EXPECT_EQ(check.status, 0) << check.output;
    EXPECT_EQ(RunProgram({"mutool", "trace", Written(document).string(), "1"}).output.find("error"), std::string::npos);
}

RC_GTEST_PROP(PdfWriterProperty, AnyTextGivesASoundFile, (const std::string& text))
{
    Document document;
    document.name = text;
    document.AddPage();
    document.AddText({.face = Face::SerifBold, .size = 9}, Alignment::Left, 10, 10, text);
    RC_ASSERT(PdfWriter().Write(document).find("%%EOF") != std::string::npos);
}

TEST_F(PdfWriterTest, TakesPlacesThatAreNoNumbers)
{
    constexpr double Infinite = std::numeric_limits<double>::infinity();
    constexpr double NoNumber = std::numeric_limits<double>::quiet_NaN();
    for (const double place : {NoNumber, Infinite, -Infinite, 1e308, -1e308}) {
        Document document = WithTexts({"One"});
        document.AddLine({.width = place}, place, place, place, place);
        document.AddRectangle({.filled = true, .width = 1}, place, 0, 0, place);
        document.AddCircle({.filled = true}, place, place, place);
        document.AddText({.size = place}, Alignment::Left, place, place, "Two");
        document.bookmarks.push_back({.title = "Place", .level = 1, .y = place});
        const std::filesystem::path file = Written(document);
        const auto check = RunProgram({"qpdf", "--check", file.string()});
        EXPECT_EQ(check.status, 0) << place << check.output;
        const std::string content = PdfContent(document, document.Page(1));
        for (const std::string_view word : {"nan", "inf", "9223372036854775808", "922337203685477"})
            EXPECT_EQ(content.find(word), std::string::npos) << place << '\n' << content;
    }
}

} // namespace
} // namespace quillmere::pages
