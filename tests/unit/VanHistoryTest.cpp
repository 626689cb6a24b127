// The history of a van: days of use and what a row is held to.
#include "calculators/GNotepad2.h"
#include "clientdb/Employees.h"
#include "clientdb/store/StoreFaults.h"
#include "clientdb/store/TableLayouts.h"
#include "edition/Edition.h"
#include "support/ScriptedDoor.h"
#include "support/StoreFixture.h"
#include "support/SyncCounter.h"

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <map>

namespace quillmere {
namespace {

using Uses = std::vector<VanUse>;
using Texts = std::vector<std::string>;

TEST(VanHistory, EachUseRunsToTheNextAndTheLastToTheEndOfTheYear)
{
    const VanUseDays days =
        DaysOfUse({{"", "1"}, {"01/07/2009", "2"}, {"", ""}, {"01/08/2009", "1"}, {"01/09/2009", ""}});
    EXPECT_EQ(days.rows, (Texts{"86", "31", "", "", ""}));
    EXPECT_EQ(days.last, "247");
}

TEST(VanHistory, TheFirstRowRunsFromTheBeginningOfTheYearWhateverItsDate)
{
    EXPECT_EQ(DaysOfUse({{"01/06/2009", "1"}, {"01/07/2009", "2"}}).rows[0], "86");
    EXPECT_EQ(DaysOfUse({{"01/06/2009", "1"}}).last, "364");
}

TEST(VanHistory, AnEmptyHistoryHasNoDays)
{
    const VanUseDays days = DaysOfUse(Uses(9));
    EXPECT_EQ(days.rows, Texts(9));
    EXPECT_EQ(days.last, "");
}

TEST(VanHistory, ARowThatIsChangedIsLookedAt)
{
    struct Case {
        Uses uses;
        std::size_t row;
        VanUseFault fault;
    };
    using enum VanUseFault;
    const std::vector<Case> cases = {
        {{{"", ""}}, 0, None},
        {{{"31/06/2009", "1"}}, 0, BadDate},
        {{{"05/04/2009", ""}}, 0, BadDate},
        {{{"06/04/2009", ""}}, 0, None},
        {{{"05/04/2010", ""}}, 0, None},
        {{{"06/04/2010", ""}}, 0, BadDate},
        {{{"", "3"}, {"20/04/2009", "4"}}, 1, Successive},
        {{{"", "4"}, {"20/06/2009", "4"}}, 0, Successive},
        {{{"", "3"}, {"", ""}, {"20/04/2009", "3"}}, 2, Successive},
        {{{"", "3"}, {"05/05/2009", "1"}}, 1, None},
        {{{"", "3"}, {"06/05/2009", "1"}}, 1, TooLong},
        {{{"", "3"}, {"06/05/2009", "1"}}, 0, TooLong},
        {{{"", "4"}, {"05/05/2009", "1"}}, 1, TooShort},
        {{{"", "4"}, {"06/05/2009", "1"}}, 1, None},
        {{{"", "1"}, {"01/06/2009", "3"}, {"01/07/2009", "1"}}, 1, TooLong},
        {{{"", "1"}, {"01/06/2009", "4"}, {"30/06/2009", "1"}}, 2, TooShort},
        // A row without a type is not in use, and the one that runs to the end of the year ends nowhere yet.
        {{{"", "3"}, {"06/06/2009", ""}}, 1, None},
        {{{"", "3"}}, 0, None},
        {{{"", "1"}, {"01/03/2010", "3"}}, 1, None},
        {{{"", "1"}, {"01/04/2010", "4"}}, 1, None},
    };
    for (std::size_t number = 0; number < cases.size(); ++number)
        EXPECT_EQ(CheckUse(cases[number].uses, cases[number].row), cases[number].fault) << "case " << number;
}

class VanHistoryScreen : public test::StoreFixture, public ::testing::WithParamInterface<int> {
protected:
    VanHistoryScreen()
    {
        file = folder.path / edition::ClientDatabaseName;
        std::filesystem::rename(folder.path / "clients", file);
        session.settings.path[1] = folder.path.string();
        session.settings.selectedFolder = 1;
        session.CurrentEmployer = "Acme Ltd";
        session.CurrentEmployee = "Jane Smith";
        session.VanOfHistory = GetParam();
        Database database = Open();
        CreateEmployee(database, {"Acme Ltd", "Jane", "Smith", "123/A456"});
        session.screens.Register("GNotepad2", [](Session& with) { return std::make_unique<GNotepad2>(with); });
    }
    ~VanHistoryScreen() override { SetStoreFaultHook({}); }

    void PressOk()
    {
        Screen* screen = session.screens.Find("GNotepad2");
        for (const std::string_view ok : {"Ok", "OK2", "OK3"})
            if (screen->box(ok).Visible())
                return screen->Click(screen->box(ok));
        ADD_FAILURE() << "no button shows";
    }

    /// Texts of the record that are not null, by field.
    std::map<std::string, std::string> Stored()
    {
        Database database = Open();
        Recordset records = database.OpenRecordset("GNotepad");
        records.MoveFirst();
        std::map<std::string, std::string> stored;
        for (const Field& field : FieldsOf(FindTable("GNotepad")).All())
            if (!records.IsNull(field.name) && !field.name.ends_with("Name"))
                stored[field.name] = records.Field(field.name);
        return stored;
    }

    test::ScriptedDoor door;
    Session session{door};
};

TEST_P(VanHistoryScreen, ItsOkWritesEveryFieldOfItsVanAndNoOther)
{
    Screen& screen = *session.screens.Show("GNotepad2");
    for (int row = 1; row <= 9; ++row) {
        screen.box("ChangeUse", row).SetText("0" + std::to_string(row) + "/06/2009");
        screen.box("TypeUse", row).SetText(row % 2 == 0 ? "2" : "1");
    }
    screen.Leave(screen.box("TypeUse", 9));
    PressOk();
    EXPECT_EQ(session.screens.Find("GNotepad2"), nullptr);
    const std::string van = GetParam() == 1 ? "" : std::to_string(GetParam());
    const auto stored = Stored();
    EXPECT_EQ(stored.size(), 29U);
    EXPECT_EQ(stored.at("ChangeUse" + van + "9"), "09/06/2009");
    EXPECT_EQ(stored.at("TypeUse" + van + "8"), "2");
    EXPECT_EQ(stored.at("Days" + van + "1"), "57");
    EXPECT_EQ(stored.at("Days" + van + "8"), "1");
    EXPECT_EQ(stored.at("Days" + van + "9"), "");
    EXPECT_EQ(stored.at("Days" + van + "10"), "");
    EXPECT_EQ(stored.at("TotalDays" + std::to_string(GetParam())), "300");
}

TEST_P(VanHistoryScreen, KeepsWhatWasWrittenBeforeAFailureAndCostsOneTransaction)
{
    session.screens.Show("GNotepad2");
    int updates = 0;
    SetStoreFaultHook([&](std::string_view statement) {
        return statement.starts_with("UPDATE") && ++updates == 11 ? SQLITE_FULL : SQLITE_OK;
    });
    PressOk();
    SetStoreFaultHook({});
    EXPECT_EQ(Stored().size(), 10U);
    ASSERT_EQ(door.messages.size(), 1U);
    EXPECT_EQ(door.messages[0].title, "Notepad G2 'Ok' Error");
    EXPECT_EQ(door.messages[0].text, GetParam() == 3 ? "Unable to update van history" : "Unable to update database");
    EXPECT_TRUE(session.screens.IsShown("GNotepad2"));
    const test::SyncCounter syncs;
    PressOk();
    EXPECT_LE(syncs.Count(), 5);
    EXPECT_EQ(Stored().size(), 29U);
}

TEST_P(VanHistoryScreen, AStoreThatFailsAtTheOpeningIsToldAndTheScreenStaysClosed)
{
    SetStoreFaultHook([](std::string_view) { return SQLITE_IOERR; });
    EXPECT_EQ(session.screens.Show("GNotepad2"), nullptr);
    SetStoreFaultHook({});
    ASSERT_EQ(door.messages.size(), 1U);
    EXPECT_EQ(door.messages[0].title, "Van Record 2009-2010");
}

INSTANTIATE_TEST_SUITE_P(Vans, VanHistoryScreen, ::testing::Values(1, 2, 3));

} // namespace
} // namespace quillmere
