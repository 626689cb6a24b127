// What a notepad's Ok leaves behind when the store fails in the middle of it, and how often it waits for the disk.
#include "clientdb/Employees.h"
#include "clientdb/store/StoreFaults.h"
#include "edition/Edition.h"
#include "frame/Text.h"
#include "screens/Form3.h"
#include "screens/ScheduleNotepad.h"
#include "screens/Side2Form1.h"
#include "support/ScriptedDoor.h"
#include "support/StoreFixture.h"
#include "support/SyncCounter.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

namespace quillmere {
namespace {

constexpr int DiskError = 10;
constexpr std::string_view Employer = "Acme Ltd", Employee = "Jane Smith";

/// One write of an Ok.
struct Write {
    std::string table, field, text;
};

class NotepadFaultTest : public test::StoreFixture, public ::testing::WithParamInterface<const NotepadMember*> {
protected:
    NotepadFaultTest()
    {
        file = folder.path / edition::ClientDatabaseName;
        std::filesystem::rename(folder.path / "clients", file);
        session.settings.path[1] = folder.path.string();
        session.settings.selectedFolder = 1;
        session.CurrentEmployer = Employer;
        session.CurrentEmployee = Employee;
        {
            Database database = Open();
            CreateEmployee(
                database,
                {.employer = std::string(Employer), .firstName = "Jane", .surname = "Smith", .payeReference = "1"});
        }
        session.screens.Register("Form3", [](Session& with) { return std::make_unique<Form3>(with); });
        session.screens.Register("Side2Form1", [](Session& with) { return std::make_unique<Side2Form1>(with); });
        for (const NotepadMember& member : Notepads())
            session.screens.Register(
                member.name, [&member](Session& with) { return std::make_unique<ScheduleNotepad>(with, member); });
    }
    ~NotepadFaultTest() override { SetStoreFaultHook({}); }

    const NotepadMember& Member() const { return *GetParam(); }

    /// The page that shows the totals.
    BoundScreen& Page()
    {
        for (const std::string_view name : {"Form3", "Side2Form1"}) {
            auto& page = dynamic_cast<BoundScreen&>(*session.screens.Load(name));
            if (page.FindBox(Member().totalFields[1]) != nullptr)
                return page;
        }
        throw std::logic_error("no page shows the totals");
    }

    /// The page, and the notepad in front of it, with so many lines filled in.
    Screen& OpenNotepad(int lines)
    {
        EXPECT_EQ(Page().StoreAndShow("not found"), BoundScreen::Sought::Found);
        Screen& notepad = *session.screens.Show(Member().name);
        for (int line = 1; line <= lines; ++line) {
            notepad.box("Description", line).SetText("Item " + std::to_string(line));
            const ScheduleColumn& amount = Member().Cost().Exists() ? Member().Cost() : Member().Tax();
            notepad.box(amount.box, line).SetText(std::to_string(line * 10));
            notepad.Leave(notepad.box(amount.box, line));
        }
        return notepad;
    }

    /// The writes of an Ok in their order, with what the notepad shows now.
    std::vector<Write> WritesOf(const Screen& notepad) const
    {
        std::vector<Write> writes;
        for (int line = 1; line <= LinesOfASchedule; ++line)
            for (const ScheduleColumn& column : Member().columns)
                if (column.Exists())
                    writes.push_back({std::string(Member().name), Numbered(column.field, line),
                                      notepad.box(column.box, line).Text()});
        for (std::size_t which = 0; which < Member().totalFields.size(); ++which)
            if (const std::string_view field = Member().totalFields[which]; !field.empty())
                writes.push_back({"P11D", std::string(field), notepad.box(Member().columns[which + 1].total).Text()});
        return writes;
    }

    /// What the store holds in the fields of the writes.
    std::vector<std::string> Stored(const std::vector<Write>& writes) const
    {
        std::vector<std::string> texts(writes.size());
        Database database = Open(OpenMode::ReadOnly);
        for (const std::string_view table : {Member().name, std::string_view("P11D")}) {
            Recordset records = database.OpenRecordset(table);
            records.Index("IndKey");
            records.Seek(Employer, Employee);
            for (std::size_t write = 0; write < writes.size(); ++write)
                if (writes[write].table == table)
                    texts[write] = records.Field(writes[write].field);
        }
        return texts;
    }

    /// A clean record, as a new employee's is.
    void Empty(const std::vector<Write>& writes) const
    {
        Database database = Open();
        for (const std::string_view table : {Member().name, std::string_view("P11D")}) {
            Recordset records = database.OpenRecordset(table);
            records.Index("IndKey");
            records.Seek(Employer, Employee);
            records.Edit();
            for (const Write& write : writes)
                if (write.table == table)
                    records.SetNull(write.field);
            records.Update();
        }
    }

    bool IsOpen() const { return session.screens.Find(Member().name) != nullptr; }

    /// Lets the n-th statement that begins so fail, and none other.
    static void FailAt(std::string_view beginning, int number)
    {
        SetStoreFaultHook([beginning, number, count = 0](std::string_view statement) mutable {
            return statement.starts_with(beginning) && ++count == number ? DiskError : 0;
        });
    }

    test::ScriptedDoor door;
    Session session{door};
};

TEST_P(NotepadFaultTest, KeepsWhatWasWrittenBeforeAFailureAndStaysOpen)
{
    Screen* notepad = &OpenNotepad(LinesOfASchedule);
    const std::vector<Write> writes = WritesOf(*notepad);
    door.messages.clear();
    // Every write of one member of each kind, every seventh of the others.
    const bool firstOfItsKind =
        std::ranges::find(Notepads(), Member().kind, &NotepadMember::kind)->name == Member().name;
    const int step = firstOfItsKind ? 1 : 7;
    for (int failing = 1; failing <= static_cast<int>(writes.size()); failing += step) {
        SCOPED_TRACE("at write " + std::to_string(failing));
        Empty(writes);
        FailAt("UPDATE", failing);
        notepad->Click(notepad->box("cmdOK"));
        SetStoreFaultHook({});
        ASSERT_TRUE(IsOpen());
        ASSERT_EQ(door.messages.size(), 1U);
        EXPECT_EQ(door.messages.back().title, Member().okTitle);
        EXPECT_EQ(door.TakeText(), "Unable to update database");
        const std::vector<std::string> stored = Stored(writes);
        for (std::size_t write = 0; write < writes.size(); ++write)
            ASSERT_EQ(stored[write], write + 1 < static_cast<std::size_t>(failing) ? writes[write].text : "")
                << writes[write].table << '.' << writes[write].field;
    }
    notepad->Click(notepad->box("cmdOK"));
    EXPECT_FALSE(IsOpen());
    EXPECT_TRUE(door.messages.empty());
    const std::vector<std::string> stored = Stored(writes);
    for (std::size_t write = 0; write < writes.size(); ++write)
        EXPECT_EQ(stored[write], writes[write].text) << writes[write].field;
}

TEST_P(NotepadFaultTest, StaysOpenAndLeavesThePageWhenTheStoreCannotBeginOrEnd)
{
    for (const std::string_view statement : {"BEGIN", "COMMIT"}) {
        Screen& notepad = OpenNotepad(3);
        const std::vector<Write> writes = WritesOf(notepad);
        Screen& page = Page();
        for (const std::string_view total : Member().totalFields)
            if (!total.empty())
                page.box(total).SetText("as it was");
        FailAt(statement, 1);
        notepad.Click(notepad.box("cmdOK"));
        SetStoreFaultHook({});
        ASSERT_TRUE(IsOpen()) << statement;
        ASSERT_FALSE(door.messages.empty()) << statement;
        EXPECT_EQ(door.messages.back().title, Member().okTitle);
        EXPECT_EQ(door.TakeText(), "Unable to update database");
        EXPECT_EQ(Stored(writes), std::vector<std::string>(writes.size())) << statement;
        for (const std::string_view total : Member().totalFields)
            if (!total.empty()) {
                EXPECT_EQ(page.box(total).Text(), "as it was") << statement << ' ' << total;
                page.box(total).Clear();
            }
        session.screens.Unload(Member().name);
    }
}

TEST_P(NotepadFaultTest, WaitsForTheDiskAFewTimesHoweverManyLines)
{
    test::SyncCounter counter;
    std::vector<int> counts;
    for (const int lines : {1, LinesOfASchedule}) {
        Screen& notepad = OpenNotepad(lines);
        counter.Reset();
        notepad.Click(notepad.box("cmdOK"));
        counts.push_back(counter.Count());
        EXPECT_FALSE(IsOpen());
    }
    EXPECT_GE(counts[0], 1);
    EXPECT_LE(counts[0], 5);
    EXPECT_EQ(counts[0], counts[1]);
}

std::vector<const NotepadMember*> AllNotepads()
{
    std::vector<const NotepadMember*> members;
    for (const NotepadMember& member : Notepads())
        members.push_back(&member);
    return members;
}

INSTANTIATE_TEST_SUITE_P(Notepads, NotepadFaultTest, ::testing::ValuesIn(AllNotepads()),
                         [](const auto& parameter) { return std::string(parameter.param->name); });

} // namespace
} // namespace quillmere
