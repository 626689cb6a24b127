// The open record: boxes bound to its fields, and what becomes of what is typed into them.
#include "clientdb/BoundScreen.h"
#include "clientdb/store/StoreFaults.h"
#include "edition/Edition.h"
#include "support/ScriptedDoor.h"
#include "support/StoreFixture.h"

#include <gtest/gtest.h>

namespace quillmere {
namespace {

constexpr int BusyError = 5;

class Sheet : public BoundScreen {
public:
    explicit Sheet(Session& session)
        : BoundScreen(session, "Sheet", ShowMode::Child, "The sheet", EmployerRecord(session))
    {
        static constexpr auto Rows = std::to_array<BoxRow>({
            {.name = "Reference", .field = "EmployerReference"},
            {.name = "Adjusted", .kind = BoxKind::Tick, .field = "Section1Tick"},
        });
        AddBoxes(Rows);
    }
};

class OpenRecordTest : public test::StoreFixture {
protected:
    OpenRecordTest()
    {
        file = folder.path / edition::ClientDatabaseName;
        std::filesystem::rename(folder.path / "clients", file);
        session.settings.path[1] = folder.path.string();
        session.settings.selectedFolder = 1;
        session.CurrentEmployer = "Acme Ltd";
        for (const std::string_view employer : {"Acme Ltd", "Other Ltd"}) {
            Database database = Open();
            Recordset records = database.OpenRecordset("P11DB");
            records.AddNew();
            records.SetField("EmployerName", employer);
            records.SetField("EmployerReference", "123/A");
            records.Update();
        }
    }
    ~OpenRecordTest() override { SetStoreFaultHook({}); }

    std::string Stored(std::string_view employer)
    {
        Database database = Open();
        Recordset records = database.OpenRecordset("P11DB");
        records.Index("PrimaryKey");
        records.Seek(employer);
        return records.NoMatch() ? "no record" : std::string(records.Field("EmployerReference"));
    }

    void StoreElsewhere(std::string_view employer, std::string_view text)
    {
        Database database = Open();
        Recordset records = database.OpenRecordset("P11DB");
        records.Index("PrimaryKey");
        records.Seek(employer);
        records.Edit();
        records.SetField("EmployerReference", text);
        records.Update();
    }

    void DeleteRecord(std::string_view employer)
    {
        Database database = Open();
        Recordset records = database.OpenRecordset("P11DB");
        records.Index("PrimaryKey");
        records.Seek(employer);
        records.Delete();
    }

    test::ScriptedDoor door;
    Session session{door};
    OpenRecord& record = EmployerRecord(session);
    Sheet sheet{session};
    using Sought = BoundScreen::Sought;
};

TEST_F(OpenRecordTest, AChangedBoxIsStoredWhenAnotherIsShownAndWhenTheScreenMayClose)
{
    ASSERT_EQ(sheet.StoreAndShow("Loading"), Sought::Found);
    sheet.box("Reference").SetText("456/B");
    EXPECT_EQ(Stored("Acme Ltd"), "123/A");
    session.CurrentEmployer = "Other Ltd";
    ASSERT_EQ(sheet.StoreAndShow("Loading"), Sought::Found);
    EXPECT_EQ(Stored("Acme Ltd"), "456/B");
    EXPECT_EQ(sheet.box("Reference").Text(), "123/A");
    sheet.box("Reference").SetText("789/C");
    EXPECT_TRUE(sheet.MayClose());
    EXPECT_EQ(Stored("Other Ltd"), "789/C");
    EXPECT_TRUE(door.messages.empty());
}

TEST_F(OpenRecordTest, ARecordThatIsGoneIsNotFoundByItsOwnSeek)
{
    ASSERT_EQ(sheet.StoreAndShow("Loading"), Sought::Found);
    sheet.box("Reference").SetText("456/B");
    DeleteRecord("Acme Ltd");
    EXPECT_EQ(sheet.StoreAndShow("Again"), Sought::NotFound);
    ASSERT_EQ(door.messages.size(), 1U);
    EXPECT_EQ(door.messages[0].title, "Again");
    EXPECT_EQ(door.messages[0].text, "Employee not found");
    EXPECT_EQ(sheet.box("Reference").Text(), "456/B");
    EXPECT_FALSE(record.IsThere());
}

TEST_F(OpenRecordTest, ARecordThatIsGoneIsToldOfOnceByMovingOn)
{
    ASSERT_EQ(sheet.StoreAndShow("Loading"), Sought::Found);
    sheet.box("Reference").SetText("456/B");
    DeleteRecord("Acme Ltd");
    session.CurrentEmployer = "Other Ltd";
    EXPECT_EQ(sheet.StoreAndShow("Again"), Sought::Failed);
    EXPECT_EQ(door.TakeText(), "No current record.");
    EXPECT_EQ(sheet.StoreAndShow("Again"), Sought::Found);
    EXPECT_TRUE(door.messages.empty());
}

TEST_F(OpenRecordTest, ARecordThatIsGoneIsToldOfByClosing)
{
    ASSERT_EQ(sheet.StoreAndShow("Loading"), Sought::Found);
    sheet.box("Adjusted").SetTicked(true);
    DeleteRecord("Acme Ltd");
    EXPECT_TRUE(sheet.MayClose());
    ASSERT_EQ(door.messages.size(), 1U);
    EXPECT_EQ(door.messages[0].title, "The sheet");
    EXPECT_EQ(door.messages[0].text, "No current record.");
}

TEST_F(OpenRecordTest, WhatIsTypedWhileTheStoreIsHeldIsStoredLater)
{
    ASSERT_EQ(sheet.StoreAndShow("Loading"), Sought::Found);
    // Nothing has changed yet, so it is the reading that fails.
    SetStoreFaultHook([](std::string_view) { return BusyError; });
    EXPECT_EQ(sheet.StoreAndShow("Again"), Sought::Failed);
    EXPECT_NE(door.TakeText(), "Employee not found");
    SetStoreFaultHook({});
    sheet.box("Reference").SetText("456/B");
    EXPECT_EQ(sheet.StoreAndShow("Again"), Sought::Found);
    EXPECT_EQ(Stored("Acme Ltd"), "456/B");
    EXPECT_EQ(sheet.box("Reference").Text(), "456/B");
}

TEST_F(OpenRecordTest, WhatTheSystemsEndCannotStoreIsKept)
{
    const TypedEntries kept(file);
    ASSERT_EQ(sheet.StoreAndShow("Loading"), Sought::Found);
    sheet.box("Reference").AcceptTyped("456/B");
    sheet.box("Adjusted").SetTicked(true);
    SetStoreFaultHook([](std::string_view) { return BusyError; });
    record.StoreOrKeep();
    SetStoreFaultHook({});
    EXPECT_TRUE(door.messages.empty());
    EXPECT_EQ(Stored("Acme Ltd"), "123/A");
    const std::vector<TypedEntries::Line> expected{
        {.record = {.table = "P11DB", .employer = "Acme Ltd", .employee = {}},
         .entry = {
             .field = "EmployerReference", .stored = "123/A", .typed = "456/B", .moment = "2011-06-30 12:00:00"}}};
    EXPECT_EQ(kept.All(), expected) << "what the user has typed, and not what a rule has made";
}

TEST_F(OpenRecordTest, TellsWhatIsTypedUntilItIsStoredOrGivenUp)
{
    ASSERT_EQ(sheet.StoreAndShow("Loading"), Sought::Found);
    EXPECT_TRUE(record.Typed().empty());
    sheet.box("Reference").AcceptTyped("456/B");
    sheet.Click(sheet.box("Adjusted"));
    ASSERT_EQ(record.Typed().size(), 2U);
    EXPECT_EQ(record.Typed()[0].entry.typed, "456/B");
    EXPECT_TRUE(record.Store());
    EXPECT_TRUE(record.Typed().empty());
    sheet.box("Reference").AcceptTyped("789/C");
    EXPECT_EQ(record.Typed().size(), 1U);
    sheet.box("Reference").AcceptTyped("456/B");
    EXPECT_TRUE(record.Typed().empty()) << "as stored";
    sheet.box("Reference").AcceptTyped("789/C");
    record.DropChanges();
    EXPECT_TRUE(record.Typed().empty());
}

TEST_F(OpenRecordTest, WhatCannotEvenBeKeptIsTold)
{
    ASSERT_EQ(sheet.StoreAndShow("Loading"), Sought::Found);
    sheet.box("Reference").AcceptTyped("456/B");
    std::filesystem::create_directory(folder.path / "ClientQuillmere11.typed");
    SetStoreFaultHook([](std::string_view) { return BusyError; });
    record.StoreOrKeep();
    SetStoreFaultHook({});
    ASSERT_EQ(door.messages.size(), 1U);
    EXPECT_EQ(door.messages[0].title, "The sheet");
}

TEST_F(OpenRecordTest, WhatTheStoreRefusesWaitsInItsBox)
{
    ASSERT_EQ(sheet.StoreAndShow("Loading"), Sought::Found);
    sheet.box("Reference").SetText("456/B");
    SetStoreFaultHook([](std::string_view statement) { return statement.starts_with("UPDATE") ? BusyError : 0; });
    EXPECT_FALSE(sheet.MayClose());
    SetStoreFaultHook({});
    EXPECT_EQ(Stored("Acme Ltd"), "123/A");
    EXPECT_TRUE(sheet.MayClose());
    EXPECT_EQ(Stored("Acme Ltd"), "456/B");
}

TEST_F(OpenRecordTest, TellsBothTextsWhereAnotherDeskHasStoredAnother)
{
    ASSERT_EQ(sheet.StoreAndShow("Loading"), Sought::Found);
    sheet.box("Reference").AcceptTyped("456/B");
    StoreElsewhere("Acme Ltd", "789/C");
    EXPECT_TRUE(record.Store());
    EXPECT_EQ(Stored("Acme Ltd"), "456/B");
    ASSERT_EQ(door.messages.size(), 1U);
    EXPECT_EQ(door.messages[0].title, "The sheet");
    EXPECT_NE(door.messages[0].text.find("Reference: \"789/C\" there, \"456/B\" here"), std::string::npos)
        << door.messages[0].text;
}

TEST_F(OpenRecordTest, TellsNothingOfATextThatReadsTheSame)
{
    ASSERT_EQ(sheet.StoreAndShow("Loading"), Sought::Found);
    sheet.box("Reference").AcceptTyped("456/B ");
    StoreElsewhere("Acme Ltd", "456/B");
    EXPECT_TRUE(record.Store());
    EXPECT_TRUE(door.messages.empty()) << door.messages[0].text;
}

TEST_F(OpenRecordTest, ShowsOnOneScreenAtATime)
{
    ASSERT_EQ(sheet.StoreAndShow("Loading"), Sought::Found);
    {
        Sheet other(session);
        ASSERT_EQ(other.StoreAndShow("Loading"), Sought::Found);
        record.HandOver("EmployerReference", "456/B", {});
        EXPECT_EQ(other.box("Reference").Text(), "456/B");
        EXPECT_EQ(record.Reads("EmployerReference"), "456/B");
        EXPECT_EQ(sheet.box("Reference").Text(), "123/A");
        sheet.box("Reference").SetText("789/C");
        EXPECT_TRUE(sheet.MayClose());
        sheet.Unload();
        EXPECT_TRUE(record.IsOn(other));
        EXPECT_EQ(Stored("Acme Ltd"), "123/A");
    }
    EXPECT_EQ(record.Reads("EmployerReference"), std::nullopt);
    EXPECT_TRUE(record.Store());
    EXPECT_EQ(Stored("Acme Ltd"), "123/A") << "its screen went with nothing written";
}

TEST_F(OpenRecordTest, WritesWhatIsHandedOverUnlessItHasBeenWritten)
{
    ASSERT_EQ(sheet.StoreAndShow("Loading"), Sought::Found);
    record.HandOver("EmployerReference", "456/B", "456/B");
    EXPECT_TRUE(record.Store());
    EXPECT_EQ(Stored("Acme Ltd"), "123/A");
    record.HandOver("EmployerReference", "789/C", {});
    EXPECT_TRUE(record.Store());
    EXPECT_EQ(Stored("Acme Ltd"), "789/C");
    record.HandOver("EmployerReference", "   1/D", "1/D");
    EXPECT_TRUE(record.Store());
    EXPECT_EQ(Stored("Acme Ltd"), "   1/D");
}

} // namespace
} // namespace quillmere
