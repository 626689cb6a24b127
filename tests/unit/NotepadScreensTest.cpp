// The schedule notepads as screens: their captions over the columns, their twenty lines, their warnings, and that they
// leave nothing behind when they are not confirmed.
#include "frame/Text.h"
#include "screens/ScheduleNotepad.h"
#include "support/ProgramFixture.h"

#include <array>

namespace quillmere::test {
namespace {

struct CaptionCase {
    std::string_view notepad, cost, tax, cash;
};
constexpr auto Captions = std::to_array<CaptionCase>({
    {"ANotepad", "Cost/Market Val", "Amount good/Tax", "Cash Equ"},
    {"BNotepad", "Payment", "Tax ", ""},
    {"CNotepad", "Gross Amount", "Amount good/Tax", "Cash Equ"},
    {"INotepad", "Cost", "Amount Good", "Cash Equivalent"},
    {"KNotepad", "Cost", "Amount Good", "Cash Equivalent"},
    {"LNotepad", "Annual Val + Exp", "Amount good/Tax", "Cash Equ"},
    {"ONotepad1", "Cost", "Amount Good", "Cash Equivalent"},
    {"ONotepad2", "Cost", "Amount Good", "Cash Equivalent"},
    {"ONotepad3", "Cost", "Amount Good", "Cash Equivalent"},
    {"ONotepad4", "Cost", "Amount Good", "Cash Equivalent"},
    {"ONotepad5", "Cost", "Amount Good", "Cash Equivalent"},
    {"ONotepad6", "Cost ", "Amount good/Tax", "Cash Equ"},
    {"NNotepad1", "Cost ", "Amount good/Tax", "Cash Equ"},
    {"NNotepad2", "Cost ", "Amount good/Tax", "Cash Equ"},
    {"NNotepad3", "", "Tax ", ""},
});

const NotepadMember& MemberOf(std::string_view name)
{
    for (const NotepadMember& member : Notepads())
        if (member.name == name)
            return member;
    throw std::logic_error("no notepad " + std::string(name));
}

TEST(NotepadColumns, HaveTheCaptionsOfTheirMember)
{
    EXPECT_EQ(Notepads().size(), Captions.size());
    for (const CaptionCase& expected : Captions) {
        SCOPED_TRACE(std::string(expected.notepad));
        const NotepadMember& member = MemberOf(expected.notepad);
        EXPECT_EQ(member.columns[0].caption, "Description");
        EXPECT_EQ(member.Cost().caption, expected.cost);
        EXPECT_EQ(member.Tax().caption, expected.tax);
        EXPECT_EQ(member.Cash().caption, expected.cash);
    }
}

class NotepadScreens : public ProgramFixture {
protected:
    NotepadScreens()
    {
        Create("Acme Ltd", "Jane", "Smith");
        Now().CurrentEmployer = "Acme Ltd";
        Now().CurrentEmployee = "Jane Smith";
    }

    std::string Stored(std::string_view table, std::string_view field)
    {
        Database database = Clients();
        Recordset records = database.OpenRecordset(table);
        records.Index("IndKey");
        records.Seek("Acme Ltd", "Jane Smith");
        return records.NoMatch() ? "no record" : std::string(records.Field(field));
    }

    /// Leaves the last box of a line, so that it is worked out.
    void Leave(const NotepadMember& member, const ScheduleColumn& column, int line)
    {
        Screen& notepad = *Now().screens.Find(member.name);
        notepad.Leave(notepad.box(column.box, line));
    }
};

TEST_F(NotepadScreens, HaveTwentyLinesAndNoTwentyFirst)
{
    for (const NotepadMember& member : Notepads()) {
        const auto notepad = Now().screens.Make(member.name);
        for (const ScheduleColumn& column : member.columns) {
            if (!column.Exists())
                continue;
            SCOPED_TRACE(std::string(member.name) + " " + std::string(column.box));
            EXPECT_EQ(notepad->FindBox(column.box, 0), nullptr);
            EXPECT_NE(notepad->FindBox(column.box, 1), nullptr);
            EXPECT_NE(notepad->FindBox(column.box, 20), nullptr);
            EXPECT_EQ(notepad->FindBox(column.box, 21), nullptr);
        }
    }
}

TEST_F(NotepadScreens, WarnOfAMissingRecordAndOpenBlank)
{
    for (const NotepadMember& member : Notepads()) {
        SCOPED_TRACE(std::string(member.name));
        Now().CurrentEmployee = "Nobody Here";
        EXPECT_NE(Now().screens.Show(member.name), nullptr);
        ASSERT_EQ(door.messages.size(), 2U); // of its own table, and of the employee's
        for (int both = 0; both < 2; ++both) {
            const Message message = TakeMessage();
            EXPECT_EQ(message.title, member.loadingTitle);
            EXPECT_EQ(message.text, "Employee not found");
            EXPECT_EQ(message.icon, Icon::Exclamation);
        }
        Click(member.name, "cmdOK");
        const Message message = TakeMessage();
        EXPECT_EQ(message.title, member.okTitle);
        EXPECT_EQ(message.text, "Unable to update database");
        EXPECT_EQ(message.icon, Icon::Exclamation);
        EXPECT_TRUE(Shows(member.name));
        Click(member.name, "cmdCancel");
    }
}

TEST_F(NotepadScreens, WarnOfATaxAboveTheCost)
{
    for (const NotepadMember& member : Notepads()) {
        if (member.inputTitle.empty())
            continue;
        SCOPED_TRACE(std::string(member.name));
        Now().screens.Show(member.name);
        At(member.name, member.Cost().box, 20).SetText("5");
        At(member.name, member.Tax().box, 20).SetText("7");
        Click(member.name, "cmdOK");
        const Message message = TakeMessage();
        EXPECT_EQ(message.title, member.inputTitle);
        EXPECT_EQ(message.text, "Tax is greater than the Cost on line: 20");
        EXPECT_EQ(message.icon, Icon::Exclamation);
        EXPECT_TRUE(Shows(member.name));
        EXPECT_EQ(Stored(member.name, Numbered(member.Cost().field, 20)), "");
        Click(member.name, "cmdCancel");
    }
}

TEST_F(NotepadScreens, OfATaxWithNoCostStoreNothingButTheDescription)
{
    for (const NotepadMember& member : Notepads()) {
        if (!member.Cost().Exists())
            continue;
        SCOPED_TRACE(std::string(member.name));
        Now().screens.Show(member.name);
        At(member.name, "Description", 3).SetText("A thing");
        At(member.name, member.Tax().box, 3).SetText("7");
        Leave(member, member.Tax(), 3);
        EXPECT_EQ(At(member.name, member.Tax().box, 3).Text(), "");
        Click(member.name, "cmdOK");
        EXPECT_TRUE(door.messages.empty());
        EXPECT_FALSE(Shows(member.name));
        EXPECT_EQ(Stored(member.name, "Description3"), "A thing");
        for (std::size_t column = 1; column < member.columns.size(); ++column) {
            if (member.columns[column].Exists()) {
                EXPECT_EQ(Stored(member.name, Numbered(member.columns[column].field, 3)), "");
            }
        }
        for (const std::string_view total : member.totalFields) {
            if (!total.empty()) {
                EXPECT_EQ(Stored("P11D", total), "") << total;
            }
        }
    }
}

TEST_F(NotepadScreens, LeaveNoTraceWhenTheirWindowIsClosed)
{
    for (const NotepadMember& member : Notepads()) {
        SCOPED_TRACE(std::string(member.name));
        Now().screens.Show(member.name);
        At(member.name, "Description", 1).SetText("A thing");
        At(member.name, member.Tax().box, 1).SetText("7");
        Now().screens.Find(member.name)->RequestClose();
        EXPECT_EQ(Now().screens.Find(member.name), nullptr);
        EXPECT_EQ(Stored(member.name, "Description1"), "");
        Now().screens.Show(member.name);
        EXPECT_EQ(At(member.name, "Description", 1).Text(), "");
        Click(member.name, "cmdCancel");
        EXPECT_TRUE(door.messages.empty());
    }
}

} // namespace
} // namespace quillmere::test
