// What ties the tables of the screens to the tables of the store: every box is bound to a field that is there, and
// every field is somebody's.
#include "app/Program.h"
#include "clientdb/Notepad.h"
#include "clientdb/store/TableLayouts.h"
#include "declaration/AdjustmentNotepad.h"
#include "frame/CheckedFile.h"
#include "frame/Text.h"
#include "screens/P11DPage.h"
#include "screens/ScheduleNotepad.h"
#include "support/ScriptedDoor.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <map>
#include <set>
#include <utility>

namespace quillmere {
namespace {

using test::ScriptedDoor;

/// Screens whose boxes are bound to the fields that they name, with the table that each shows.
struct BoundTo {
    std::string_view screen, table;
};
constexpr auto BoundScreens = std::to_array<BoundTo>({
    {"Form3", "P11D"},
    {"Side2Form1", "P11D"},
    {"P11DDeclaration", "P11DB"},
});

/// Fields that no box shows, on purpose.
struct LeftAlone {
    std::string_view table, field, why;
};
constexpr auto FieldsLeftAlone = std::to_array<LeftAlone>({
    {"P11D", "EmployeeName", "the key, shown in the captions"},
    {"P11D", "Name", "the joined key"},
    {"ExtraCars", "EmployerName", "the key"},
    {"ExtraCars", "EmployeeName", "the key"},
    {"ExtraCars", "Name", "the joined key"},
    {"ExtraCars", "FirstName", "written when the employee is made, carried from then on"},
    {"ExtraCars", "Surname", "written when the employee is made, carried from then on"},
    {"P11DB", "EmployerAdd1", "written with the employer; the box of that name shows the key, which says the same"},
});

/// Tables with fields that no screen shows as it is made: the sixth car of a sheet of five, the histories of the other
/// vans, and a table that nobody looks at.
constexpr auto TablesWithMore = std::to_array<std::string_view>({"FNotepad", "GNotepad", "SpareTable"});

class FormContractTest : public ::testing::Test {
protected:
    FormContractTest() : program(door, nullptr, {}) {}

    /// A screen as it is made, without being opened.
    std::unique_ptr<Screen> Make(std::string_view name) { return program.TheSession().screens.Make(name); }

    /// The page with a box that is bound to the field.
    std::string PageOf(std::string_view field)
    {
        for (const std::string_view name : {"Form3", "Side2Form1"})
            if (const auto page = Make(name);
                std::ranges::any_of(page->Boxes(), [&](const auto& box) { return box->Field() == field; }))
                return std::string(name);
        return {};
    }

    static bool HasField(std::string_view table, std::string_view field)
    {
        return FieldsOf(FindTable(table)).Find(field) != TableFields::None;
    }

    ScriptedDoor door;
    Program program;
};

TEST_F(FormContractTest, EveryScreenIsNamedInAScenario)
{
    std::set<std::string, std::less<>> words;
    const std::filesystem::path scenarios = std::filesystem::path(SOURCE_DIR) / "tests" / "scenarios";
    for (const auto& file : std::filesystem::recursive_directory_iterator(scenarios)) {
        if (file.path().extension() != ".scenario")
            continue;
        std::string word;
        for (const char letter : ReadFile(file.path()) + "\n") {
            if (std::isalnum(static_cast<unsigned char>(letter)) != 0 || letter == '_')
                word += letter;
            else
                words.insert(std::exchange(word, {}));
        }
    }
    for (const std::string& name : program.TheSession().screens.Registered())
        EXPECT_TRUE(words.contains(name)) << "no scenario opens " << name;
}

TEST_F(FormContractTest, EveryBoxIsBoundToAFieldOfItsTable)
{
    for (const BoundTo& bound : BoundScreens) {
        const auto screen = Make(bound.screen);
        std::set<std::string> fields;
        for (const auto& box : screen->Boxes()) {
            if (box->Field().empty())
                continue;
            EXPECT_TRUE(HasField(bound.table, box->Field())) << bound.screen << '.' << box->FullName();
            EXPECT_TRUE(fields.insert(box->Field()).second) << box->Field() << " has two boxes on " << bound.screen;
        }
        EXPECT_FALSE(fields.empty()) << bound.screen;
    }
}

TEST_F(FormContractTest, EveryNotepadKeepsFieldsOfItsTableAndNoOtherScreenNamesAny)
{
    for (const std::string& name : program.TheSession().screens.Registered()) {
        if (std::ranges::any_of(BoundScreens, [&](const BoundTo& bound) { return bound.screen == name; }))
            continue;
        const auto screen = Make(name);
        if (const auto* notepad = dynamic_cast<Notepad*>(screen.get())) {
            std::set<std::string> fields;
            for (const std::string& field : notepad->Fields()) {
                EXPECT_TRUE(HasField(notepad->Table(), field)) << name << " keeps " << field;
                EXPECT_TRUE(fields.insert(field).second) << name << " keeps " << field << " twice";
            }
            EXPECT_FALSE(fields.empty()) << name;
            continue;
        }
        for (const auto& box : screen->Boxes())
            EXPECT_TRUE(box->Field().empty()) << name << '.' << box->FullName() << " names a field of no known table";
    }
}

TEST_F(FormContractTest, EveryFieldIsBoundOrLeftAloneOnPurpose)
{
    std::map<std::string, std::set<std::string>, std::less<>> owned;
    for (const BoundTo& bound : BoundScreens) {
        const auto screen = Make(bound.screen);
        for (const auto& box : screen->Boxes())
            if (!box->Field().empty())
                owned[std::string(bound.table)].insert(box->Field());
    }
    for (const std::string& name : program.TheSession().screens.Registered()) {
        const auto screen = Make(name);
        if (const auto* notepad = dynamic_cast<Notepad*>(screen.get()))
            for (const std::string& field : notepad->Fields())
                owned[notepad->Table()].insert(field);
    }
    for (auto& [table, fields] : owned)
        if (table != "P11D" && table != "P11DB" && table != "ExtraCars")
            for (const std::string_view key : {"EmployerName", "EmployeeName", "Name"})
                fields.emplace(key);
    for (const LeftAlone& left : FieldsLeftAlone) {
        EXPECT_TRUE(HasField(left.table, left.field)) << left.table << '.' << left.field;
        EXPECT_TRUE(owned[std::string(left.table)].emplace(left.field).second)
            << left.table << '.' << left.field << " is not left alone";
    }
    for (const TableLayout& table : ClientTables()) {
        if (std::ranges::find(TablesWithMore, table.name) != TablesWithMore.end())
            continue;
        for (const Field& field : FieldsOf(table).All())
            EXPECT_TRUE(owned[std::string(table.name)].contains(field.name)) << table.name << '.' << field.name;
    }
}

TEST_F(FormContractTest, EverySchedulesFieldsAndTargetsExist)
{
    std::set<std::string_view> totals;
    for (const NotepadMember& member : Notepads()) {
        // The page that shows the totals shows the description, too.
        const auto shows = [&](std::string_view field) {
            return std::ranges::any_of(member.totalFields, [&](std::string_view total) {
                return !total.empty() && PageOf(total) == PageOf(field);
            });
        };
        for (const ScheduleColumn& column : member.columns)
            for (int line = 1; column.Exists() && line <= LinesOfASchedule; ++line)
                EXPECT_TRUE(HasField(member.name, Numbered(column.field, line))) << member.name << ' ' << column.field;
        for (std::size_t which = 0; which < member.totalFields.size(); ++which) {
            const std::string_view field = member.totalFields[which];
            EXPECT_EQ(field.empty(), !member.columns[which + 1].Exists()) << member.name;
            if (field.empty())
                continue;
            EXPECT_TRUE(HasField("P11D", field)) << member.name << ' ' << field;
            EXPECT_TRUE(totals.insert(field).second) << field << " has two schedules";
            EXPECT_FALSE(PageOf(field).empty()) << member.name << ' ' << field;
        }
        if (!member.describedField.empty()) {
            EXPECT_TRUE(shows(member.describedField)) << member.name;
        }
        if (!member.emptiedInstead.empty()) {
            EXPECT_TRUE(HasField("P11D", member.emptiedInstead));
        }
        EXPECT_FALSE(member.okTitle.empty());
        EXPECT_FALSE(member.loadingTitle.empty());
        EXPECT_EQ(member.inputTitle.empty(), member.kind != ScheduleKind::CostTaxAndCash) << member.name;
    }
    EXPECT_EQ(Notepads().size(), 15U);
}

TEST_F(FormContractTest, EveryAmountBoxOfThePagesHasAnAmountForAField)
{
    for (const std::string_view name : {"Form3", "Side2Form1"}) {
        const auto page = Make(name);
        for (const auto& box : page->Boxes()) {
            if (box->Field().empty() || !box->IsAmount())
                continue;
            const TableFields& fields = FieldsOf(FindTable("P11D"));
            const FieldKind kind = fields.All()[fields.Find(box->Field())].kind;
            EXPECT_EQ(kind, FieldKind::Amount) << box->FullName();
        }
    }
}

} // namespace
} // namespace quillmere
