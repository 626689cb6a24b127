#include "Script.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <stdexcept>

namespace quillmere::scenario {
namespace {

std::vector<std::string> TextsOf(std::string_view line)
{
    std::vector<std::string> texts;
    for (const Word& word : ParseWords(line))
        texts.push_back(word.text);
    return texts;
}

/// The one error of a scenario, as "line: text".
std::string ErrorOf(std::string_view text)
{
    const Script script = ParseScript(text);
    if (script.errors.size() != 1)
        return std::to_string(script.errors.size()) + " errors";
    return std::to_string(script.errors[0].line) + ": " + script.errors[0].text;
}

using Texts = std::vector<std::string>;

TEST(Words, AreDividedAtBlanks)
{
    EXPECT_EQ(TextsOf("expect   Form3.NBox1\t16"), (Texts{"expect", "Form3.NBox1", "16"}));
}

TEST(Words, HoldBlanksInsideQuotes)
{
    EXPECT_EQ(TextsOf(R"(choose A.B " Acme  Ltd ")"), (Texts{"choose", "A.B", " Acme  Ltd "}));
}

TEST(Words, MayBeEmptyInsideQuotes)
{
    const std::vector<Word> words = ParseWords(R"(type A.B "")");
    ASSERT_EQ(words.size(), 3U);
    EXPECT_EQ(words[2].text, "");
    EXPECT_TRUE(words[2].quoted);
}

TEST(Words, TakeFourEscapesInsideQuotes)
{
    EXPECT_EQ(TextsOf(R"("a\"b\\c\nd\te")"), (Texts{"a\"b\\c\nd\te"}));
}

TEST(Words, RefuseOtherEscapes)
{
    EXPECT_THROW(ParseWords(R"("a\b")"), std::invalid_argument);
}

TEST(Words, RefuseAnOpenQuote)
{
    EXPECT_THROW(ParseWords(R"(expect "abc)"), std::invalid_argument);
    EXPECT_THROW(ParseWords(R"(expect "abc\)"), std::invalid_argument);
}

TEST(Words, RefuseAQuoteInsideAWord)
{
    EXPECT_THROW(ParseWords(R"(ab"c")"), std::invalid_argument);
    EXPECT_THROW(ParseWords(R"("ab"c)"), std::invalid_argument);
}

TEST(Words, EndWhereACommentBegins)
{
    EXPECT_EQ(TextsOf("start # the program"), (Texts{"start"}));
    EXPECT_EQ(TextsOf("# nothing"), Texts{});
    EXPECT_EQ(TextsOf(R"(note "# is kept in quotes")"), (Texts{"note", "# is kept in quotes"}));
}

TEST(Words, TellQuotedFromPlain)
{
    const std::vector<Word> words = ParseWords(R"(null "null")");
    EXPECT_FALSE(words[0].quoted);
    EXPECT_TRUE(words[1].quoted);
}

TEST(Words, KeepAnEqualsSignWithoutQuotes)
{
    EXPECT_EQ(TextsOf("expect-line RETURN.INI USER=x=y"), (Texts{"expect-line", "RETURN.INI", "USER=x=y"}));
}

TEST(Words, TakeAColumnBeforeAQuotedText)
{
    const std::vector<Word> words = ParseWords(R"(given-row P11D Name="a b" "Fuel Type"="P" X="")");
    ASSERT_EQ(words.size(), 5U);
    EXPECT_EQ(words[2].column, "Name");
    EXPECT_EQ(words[2].text, "a b");
    EXPECT_EQ(words[3].column, "Fuel Type");
    EXPECT_EQ(words[3].text, "P");
    EXPECT_EQ(words[4].text, "");
    for (std::size_t place = 2; place < words.size(); ++place)
        EXPECT_TRUE(words[place].isAssignment && words[place].quoted);
}

TEST(Controls, AreAScreenAndAName)
{
    EXPECT_EQ(ParseControl("Form3.NBox1"), (ControlName{"Form3", "NBox1", ControlName::NoIndex}));
}

TEST(Controls, OfAnArrayHaveAnIndex)
{
    EXPECT_EQ(ParseControl("PrePrint.SchTick(0)"), (ControlName{"PrePrint", "SchTick", 0}));
    EXPECT_EQ(ParseControl("ANotepad.Tax(20)"), (ControlName{"ANotepad", "Tax", 20}));
}

TEST(Controls, WithoutAScreenAreTheMainWindows)
{
    EXPECT_EQ(ParseControl("mnuAltFolder(2)"), (ControlName{"MDIForm1", "mnuAltFolder", 2}));
    EXPECT_EQ(ParseControl("New"), (ControlName{"MDIForm1", "New", ControlName::NoIndex}));
}

TEST(Controls, RefuseWhatIsNone)
{
    for (const std::string_view wrong :
         {"", ".", "Form3.", ".A", "A.B.C", "A.B(", "A.B()", "A.B(x)", "A.B(-1)", "A.B(1)x", "A B"})
        EXPECT_THROW(ParseControl(wrong), std::invalid_argument) << wrong;
}

TEST(Scripts, KnowTheLineOfEachStep)
{
    const Script script = ParseScript("# first\n\nstart\n  quit  \n");
    ASSERT_TRUE(script.errors.empty());
    ASSERT_EQ(script.steps.size(), 2U);
    EXPECT_EQ(script.steps[0].line, 3);
    EXPECT_EQ(script.steps[1].line, 4);
    EXPECT_EQ(script.steps[1].source, "quit");
}

TEST(Scripts, ReadLinesWithCarriageReturns)
{
    const Script script = ParseScript("start\r\ngiven-file A\r\nx=1\r\nend\r\nquit\r\n");
    ASSERT_TRUE(script.errors.empty());
    ASSERT_EQ(script.steps.size(), 3U);
    EXPECT_EQ(script.steps[1].lines, (Texts{"x=1"}));
}

TEST(Scripts, TakeTheLinesOfABlockAsTheyStand)
{
    const Script script = ParseScript("given-file RETURN.INI\n# kept\n  A=\"1\"  \n\nend\nstart\n");
    ASSERT_TRUE(script.errors.empty());
    ASSERT_EQ(script.steps.size(), 2U);
    EXPECT_EQ(script.steps[0].lines, (Texts{"# kept", "  A=\"1\"  ", ""}));
    EXPECT_EQ(script.steps[1].line, 6);
}

TEST(Scripts, RefuseWhatTheyDoNotKnow)
{
    EXPECT_EQ(ErrorOf("start\nstrat\n"), "2: unknown step \"strat\"");
    EXPECT_EQ(ErrorOf("\"start\""), "1: unknown step \"start\"");
    EXPECT_EQ(ErrorOf("given-file A\nx\n"), "1: given-file has no end");
    EXPECT_EQ(ErrorOf("start now"), "1: start takes 0 words, found 1");
    EXPECT_EQ(ErrorOf("expect A.B"), "1: expect takes 2 words, found 1");
    EXPECT_EQ(ErrorOf("expect A.B C D"), "1: expect takes 2 words, found 3");
    EXPECT_EQ(ErrorOf("expect A. x"), "1: \"A.\" is no control's name");
    EXPECT_EQ(ErrorOf("today 2011-13-01"), "1: \"2011-13-01\" is no date of the form yyyy-mm-dd");
    EXPECT_EQ(ErrorOf("expect-pages two"), "1: \"two\" is no whole number");
    EXPECT_EQ(ErrorOf("expect-colour A.B red"), "1: unknown word \"red\", it must be one of: yellow, plain");
    EXPECT_EQ(ErrorOf("expect-state A.B enabled shown"),
              "1: unknown word \"shown\", it must be one of: enabled, disabled, readonly, writable, ticked, unticked, "
              "visible, hidden");
    EXPECT_EQ(ErrorOf("answer maybe"),
              "1: unknown answer \"maybe\", it must be a path in quotes or one of: yes, no, ok, cancel");
    EXPECT_EQ(ErrorOf("given-row P11D"), "1: given-row takes at least 2 words, found 1");
    EXPECT_EQ(ErrorOf("given-row P11D Name"), "1: \"Name\" must be of the form COLUMN=\"TEXT\"");
    EXPECT_EQ(ErrorOf("expect A.B C=\"x\""), "1: C=x must stand in quotes as a whole");
}

TEST(Scripts, TellEveryErrorAndKeepTheOtherSteps)
{
    const Script script = ParseScript("strat\nstart\nquit now\n");
    EXPECT_EQ(script.errors.size(), 2U);
    ASSERT_EQ(script.steps.size(), 1U);
    EXPECT_EQ(script.steps[0].row->step, "start");
}

TEST(Scripts, AcceptEveryFormOfAStep)
{
    constexpr std::string_view All = R"(today 2011-06-30
given-employee "Acme Ltd" "Jane" "Smith" "123/A456"
given-field P11D "Acme Ltd" "Jane Smith" DCashEqu null
given-row CarC02:Figures Make="Ford" "Fuel Type"="P" Model=null
given-printers
given-printers "A" "B"
answer yes
answer "{program}/x.mdb"
menu mnuAltFolder(2)
doubleclick A.B
doubleclick A.B "x"
open-screen FNotepad
open-screen GNotepad2 3
key Tab
window Form3 minimised
expect-state A.B enabled visible
expect-list A.B
expect-list A.B "a" "b"
expect-jobs
expect-jobs "a" "b"
expect-printed 2 "1,3,5"
expect-count CarC02:Figures 0
expect-record P11D "a" "b" absent
expect-lines RETURN.INI
A=1
end
)";
    const Script script = ParseScript(All);
    for (const ScriptError& error : script.errors)
        ADD_FAILURE() << error.line << ": " << error.text;
    EXPECT_EQ(script.steps.size(), 24U);
    EXPECT_EQ(script.steps[3].words[3].column, "Model");
    EXPECT_FALSE(script.steps[3].words[3].quoted);
}

constexpr std::string_view TableOfTwo = "for-each BOX TEXT\n"
                                        "  A  \"say \\\"so\\\"\"\n"
                                        "# in between\n"
                                        "  B2 c\n"
                                        "end\n";

TEST(Tables, TellTheScenarioForEachRow)
{
    const Tellings told =
        TellingsOf(std::string("today 2011-06-30\n").append(TableOfTwo) + "type X.$BOX(1) \"$TEXT!\"\n");
    ASSERT_TRUE(told.errors.empty());
    ASSERT_EQ(told.rows.size(), 2U);
    EXPECT_EQ(told.rows[0].row, "A");
    EXPECT_EQ(told.rows[1].row, "B2");
    const Script first = ParseScript(told.rows[0].text), second = ParseScript(told.rows[1].text);
    ASSERT_EQ(first.steps.size(), 2U);
    EXPECT_EQ(first.steps[1].line, 7);
    EXPECT_EQ(first.steps[1].words[0].text, "X.A(1)");
    EXPECT_EQ(first.steps[1].words[1].text, "say \"so\"!");
    EXPECT_EQ(second.steps[1].source, "type X.B2(1) \"c!\"");
}

TEST(Tables, LeaveAScenarioWithoutOneAsItIs)
{
    const Tellings told = TellingsOf("note \"$1\"\n");
    ASSERT_EQ(told.rows.size(), 1U);
    EXPECT_EQ(told.rows[0].row, "");
    EXPECT_EQ(told.rows[0].text, "note \"$1\"\n");
}

TEST(Tables, RefuseWhatIsWrong)
{
    const auto error = [](const std::string& text) {
        const Tellings told = TellingsOf(text);
        EXPECT_TRUE(told.rows.empty());
        return told.errors.size() == 1 ? std::to_string(told.errors[0].line) + ": " + told.errors[0].text : "none";
    };
    EXPECT_EQ(error("start\nfor-each A B\n1 2\n"), "2: for-each has no end");
    EXPECT_EQ(error("for-each A B\n1 2\n1\nend\n"), "3: a row takes 2 cells, found 1");
    EXPECT_EQ(error("for-each a\n1\nend\n"), "1: \"a\" is no name of a column: it stands in capital letters");
    EXPECT_EQ(error(std::string(TableOfTwo) + "start\nquit $BOY\n"), "7: the table has no column \"BOY\"");
    EXPECT_EQ(error("for-each A\nend\nstart\n"), "1: the table has no rows");
    EXPECT_EQ(error(std::string(TableOfTwo) + "note \"$BOX\"\n"), "1: the column TEXT is used nowhere");
    EXPECT_EQ(error("for-each A\n1\nend\nfor-each A\n$A\nend\n"), "4: there is a table already");
}

TEST(Scripts, HaveEachStepOnce)
{
    std::set<std::string_view> names;
    for (const StepRow& row : Steps())
        EXPECT_TRUE(names.insert(row.step).second) << row.step;
}

} // namespace
} // namespace quillmere::scenario
