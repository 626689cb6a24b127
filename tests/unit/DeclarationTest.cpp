// The employer's total, the values of a batch's declaration, and what of the screen a scenario cannot see.
#include "declaration/Declaration.h"

#include "clientdb/store/StoreFaults.h"
#include "declaration/AdjustmentNotepad.h"
#include "declaration/Class1A.h"
#include "declaration/P11DDeclaration.h"
#include "edition/Edition.h"
#include "support/ScriptedDoor.h"
#include "support/StoreFixture.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <vector>

namespace quillmere {
namespace {

class DeclarationTest : public test::StoreFixture {
protected:
    DeclarationTest()
    {
        file = folder.path / edition::ClientDatabaseName;
        std::filesystem::rename(folder.path / "clients", file);
        session.settings.path[1] = folder.path.string();
        session.settings.selectedFolder = 1;
        session.CurrentEmployer = "Acme Ltd";
        session.CurrentEmployee = "Jane Smith";
        session.screens.Register("P11DDeclaration",
                                 [](Session& with) { return std::make_unique<P11DDeclaration>(with); });
        for (const AdjustmentSchedule& schedule : AdjustmentSchedules)
            session.screens.Register(schedule.name, [&schedule](Session& with) {
                return std::make_unique<AdjustmentNotepad>(with, schedule);
            });
    }

    using Fields = std::vector<std::pair<std::string_view, std::string_view>>;
    static void Set(Database& database, std::string_view table, const Fields& fields)
    {
        Recordset records = database.OpenRecordset(table);
        records.AddNew();
        for (const auto& [field, text] : fields)
            records.SetField(field, text);
        records.Update();
    }
    static void AddEmployee(Database& database, std::string_view employer, std::string_view employee, Fields fields)
    {
        const std::string name = std::string(employer) + " " + std::string(employee);
        fields.insert(fields.end(), {{"EmployerName", employer}, {"EmployeeName", employee}, {"Name", name}});
        Set(database, "P11D", fields);
    }

    test::ScriptedDoor door;
    Session session{door};
};

TEST_F(DeclarationTest, TheTotalIsOfTheEmployersOwnEmployees)
{
    Database database = Open();
    EXPECT_EQ(EmployerTotal(database, "Acme Ltd"), Amount());
    AddEmployee(database, "Acme Ltd", "Jane Smith", {{"ACashEqu", "    100.00"}, {"GVan", "   3000.00"}});
    AddEmployee(database, "Other Ltd", "Jane Smith", {{"ACashEqu", "   7000.00"}});
    AddEmployee(database, "acme ltd", "Jane Smith", {{"ACashEqu", "   8000.00"}});
    AddEmployee(database, "Acme Ltd", "John Brown", {{"ACashEqu", "    100.00"}, {"GVan", "   3000.00"}});
    EXPECT_EQ(EmployerTotal(database, "Acme Ltd"), Amount::WholePounds(6200));
    EXPECT_EQ(EmployerTotal(database, "Acme"), Amount());
}

TEST_F(DeclarationTest, TheTotalIsNotRounded)
{
    Database database = Open();
    AddEmployee(database, "Acme Ltd", "Jane Smith", {{"ACashEqu", "0.0004"}});
    AddEmployee(database, "Acme Ltd", "John Brown", {{"ACashEqu", "0.0004"}});
    EXPECT_EQ(EmployerTotal(database, "Acme Ltd"), Amount::FromUnits(8));
}

RC_GTEST_FIXTURE_PROP(DeclarationTest, AnyEmployeesAddUpToTheSumOfTheirFields, ())
{
    Database database = Open();
    Amount expected;
    {
        const WriteBatch batch(database);
        const int employees = *rc::gen::inRange(0, 30);
        for (int number = 0; number < employees; ++number) {
            const Amount amount = Amount::FromUnits(100LL * *rc::gen::inRange(-99999, 9999999));
            const auto field = *rc::gen::inRange<std::size_t>(0, Class1AFields.size());
            const std::string text = AmountText(amount, edition::FormatMoneyBlankZero);
            const bool counts = *rc::gen::arbitrary<bool>();
            AddEmployee(database, counts ? "Acme Ltd" : "Other Ltd", std::to_string(number),
                        {{Class1AFields[field], text}, {"BNotTax", "1"}});
            if (counts)
                expected += amount;
        }
    }
    RC_ASSERT(EmployerTotal(database, "Acme Ltd") == expected);
}

TEST_F(DeclarationTest, AStoreThatFailsIsTold)
{
    Database database = Open();
    AddEmployee(database, "Acme Ltd", "Jane Smith", {{"ACashEqu", "1"}});
    SetStoreFaultHook([](std::string_view) { return 10; });
    EXPECT_THROW(static_cast<void>(EmployerTotal(database, "Acme Ltd")), StoreError);
    SetStoreFaultHook({});
}

TEST_F(DeclarationTest, ABatchTakesBoxAFromTheTotalWhateverIsStored)
{
    Database database = Open();
    AddEmployee(database, "Acme Ltd", "Jane Smith", {{"LCashEqu", "   1000.00"}});
    Set(database, "P11DB",
        {{"EmployerName", "Other Ltd"}, {"EmployerReference", "9"}, {"Section1Tick", "1"}, {"SentToBox", "York"}});
    Set(database, "P11DB",
        {{"EmployerName", "Acme Ltd"},
         {"EmployerReference", "123/A456"},
         {"AccountsOffReference", "PA"},
         {"EmployerAdd1", "Acme Ltd"},
         {"EmployerAdd6", "ZZ1 1ZZ"},
         {"ReturnAdd1", "HMRC"},
         {"ReturnAdd6", "R6"},
         {"SentToBox", "Exeter"},
         {"SentToDate", "01/07/2011"},
         {"Section1ABox", "      5.00"},
         {"Section1CBox", "      6.00"},
         {"Section2Tick1", "0"},
         {"Section2Tick2", "1"},
         {"Section2Tick3", "True"},
         {"Section4BBox", "    100.00"},
         {"Section4BDesc", "stale"}});
    const DeclarationTotals totals = ComputeDeclarationTotals(database, "Acme Ltd");
    DeclarationTotals expected{.employerReference = "123/A456", .accountsOffReference = "PA"};
    expected.employerAdd[0] = "Acme Ltd";
    expected.employerAdd[5] = "ZZ1 1ZZ";
    expected.returnAdd[0] = "HMRC";
    expected.returnAdd[5] = "R6";
    expected.section1ABox = "   1000.00";
    expected.section1CBox = "    128.00";
    expected.section2Tick2 = true;
    expected.section2Tick3 = true;
    expected.sentToBox = "Exeter";
    expected.sentToDate = "01/07/2011";
    EXPECT_EQ(totals, expected); // nothing of section 4 while the tick is clear
}

TEST_F(DeclarationTest, ABatchWithAdjustmentsWorksOutSectionFour)
{
    Database database = Open();
    AddEmployee(database, "Acme Ltd", "Jane Smith", {{"LCashEqu", "   1000.00"}});
    Set(database, "P11DB",
        {{"EmployerName", "Acme Ltd"},
         {"Section1Tick", "1"},
         {"Section1CBox", "      6.00"},
         {"Section4ABox", "      7.00"},
         {"Section4BBox", "    100.00"},
         {"Section4BDesc", "As per attached"},
         {"Section4CBox", "    300.00"},
         {"Section4CDesc", "Twice"},
         {"Section4DBox", "      8.00"},
         {"Section4FBox", "      9.00"}});
    const DeclarationTotals totals = ComputeDeclarationTotals(database, "Acme Ltd");
    EXPECT_TRUE(totals.section1Tick);
    EXPECT_EQ(totals.section1ABox, "   1000.00");
    EXPECT_EQ(totals.section1CBox, "");
    EXPECT_EQ(totals.section4ABox, "   1000.00");
    EXPECT_EQ(totals.section4BBox, "    100.00");
    EXPECT_EQ(totals.section4BDesc, "As per attached");
    EXPECT_EQ(totals.section4CBox, "    300.00");
    EXPECT_EQ(totals.section4CDesc, "Twice");
    EXPECT_EQ(totals.section4DBox, "    800.00");
    EXPECT_EQ(totals.section4FBox, "    102.40");
}

TEST_F(DeclarationTest, ABatchWithAdjustmentsAndNoBenefitsHasNoResult)
{
    Database database = Open();
    Set(database, "P11DB", {{"EmployerName", "Acme Ltd"}, {"Section1Tick", "1"}, {"Section4BBox", "    100.00"}});
    const DeclarationTotals totals = ComputeDeclarationTotals(database, "Acme Ltd");
    EXPECT_EQ(totals.section1ABox, "");
    EXPECT_EQ(totals.section4ABox, "");
    EXPECT_EQ(totals.section4BBox, "    100.00");
    EXPECT_EQ(totals.section4DBox, "");
    EXPECT_EQ(totals.section4FBox, "");
}

TEST_F(DeclarationTest, AnEmployerWithNoRecordHasTheTotalsAlone)
{
    Database database = Open();
    AddEmployee(database, "Acme Ltd", "Jane Smith", {{"DCashEqu", " 156500.00"}});
    DeclarationTotals expected;
    expected.section1ABox = " 156500.00";
    expected.section1CBox = "  20032.00";
    EXPECT_EQ(ComputeDeclarationTotals(database, "Acme Ltd"), expected);
}

// ---- the screen
// -------------------------------------------------------------------------------------------------------

TEST_F(DeclarationTest, IsNotShownWhenTheStoreCannotBeRead)
{
    SetStoreFaultHook([](std::string_view) { return 5; });
    EXPECT_EQ(session.screens.Show("P11DDeclaration"), nullptr);
    SetStoreFaultHook({});
    EXPECT_EQ(door.messages.size(), 1U);
}

TEST_F(DeclarationTest, TheTotalIsWorkedOutOnceTheWindowsAreUp)
{
    Database database = Open();
    Set(database, "P11DB", {{"EmployerName", "Acme Ltd"}, {"Section1ABox", "      5.00"}});
    AddEmployee(database, "Acme Ltd", "Jane Smith", {{"LCashEqu", "   1000.00"}});
    Screen* screen = session.screens.Show("P11DDeclaration");
    EXPECT_EQ(screen->box("Section1BoxA").Text(), "      5.00");
    session.screens.RunDeferred();
    EXPECT_EQ(screen->box("Section1BoxA").Text(), "   1000.00");
    EXPECT_FALSE(door.busy);
}

TEST_F(DeclarationTest, AStoredTickIsBoundInSilence)
{
    Database database = Open();
    Set(database, "P11DB", {{"EmployerName", "Acme Ltd"}, {"Section1Tick", "1"}, {"Section4BBox", "    100.00"}});
    Screen* screen = session.screens.Show("P11DDeclaration");
    EXPECT_TRUE(door.messages.empty());
    EXPECT_FALSE(screen->box("Section4BoxB").ReadOnly());
    EXPECT_TRUE(screen->box("Image2").Enabled());
    EXPECT_EQ(screen->box("Section4BoxB").Text(), "    100.00");
}

TEST_F(DeclarationTest, PrintingStoresTheBoxesFirst)
{
    Database database = Open();
    Set(database, "P11DB", {{"EmployerName", "Acme Ltd"}});
    std::vector<std::string> printed;
    session.printJob = [&](PrintedDocument document) {
        EXPECT_EQ(document, PrintedDocument::Declaration);
        Recordset records = database.OpenRecordset("P11DB");
        records.Index("PrimaryKey");
        records.Seek("Acme Ltd");
        printed.emplace_back(records.NoMatch() ? "nothing" : records.Field("AccountsOffReference"));
    };
    Screen* screen = session.screens.Show("P11DDeclaration");
    session.screens.RunDeferred();
    ASSERT_TRUE(screen->box("Print").Enabled());
    screen->box("AccOfficeRef").SetText("123PA");
    screen->Click(screen->box("Print"));
    EXPECT_EQ(printed, std::vector<std::string>{"123PA"});

    // What the store refuses is not printed.
    screen->box("AccOfficeRef").SetText("456PA");
    SetStoreFaultHook([](std::string_view statement) { return statement.starts_with("UPDATE") ? 5 : 0; });
    screen->Click(screen->box("Print"));
    SetStoreFaultHook({});
    EXPECT_EQ(printed.size(), 1U);
    ASSERT_EQ(door.messages.size(), 1U);
    EXPECT_EQ(door.messages[0].title, "P11D(b)");
    door.messages.clear();

    // A record that is gone is told of, and the job goes on as the main window's does.
    Recordset records = database.OpenRecordset("P11DB");
    records.MoveFirst();
    records.Delete();
    screen->Click(screen->box("Print"));
    ASSERT_EQ(door.messages.size(), 1U);
    EXPECT_EQ(door.messages[0].title, "P11D(B) - Refresh error");
    EXPECT_EQ(door.messages[0].text, "Employee not found");
    EXPECT_EQ(printed.size(), 2U);
}

TEST_F(DeclarationTest, WithoutAPrintJobThereIsNothingToPress)
{
    Screen* screen = session.screens.Show("P11DDeclaration");
    EXPECT_FALSE(screen->box("Print").Enabled());
    EXPECT_FALSE(screen->box("Print").Tip().empty());
}

TEST_F(DeclarationTest, TheTotalIsPutInFormWhenItIsLeftWhateverTheTick)
{
    struct Case {
        const char *tick, *typed, *shown, *ofSection4;
    };
    Database database = Open();
    for (const Case& c : {Case{"0", "2000.555", "   2000.56", ""}, Case{"1", "2000.555", "   2000.56", "   2000.56"},
                          Case{"0", "0", "", ""}, Case{"1", "0", "", ""}, Case{"1", " 5 ", "      5.00", "      5.00"},
                          Case{"1", "", "", ""}}) {
        SCOPED_TRACE(std::string(c.tick) + ": " + c.typed);
        Recordset records = database.OpenRecordset("P11DB");
        records.AddNew();
        records.SetField("EmployerName", "Acme Ltd");
        records.SetField("Section1Tick", c.tick);
        records.SetField("Section4BBox", "7.5");
        records.Update();
        Screen* screen = session.screens.Show("P11DDeclaration");
        session.screens.RunDeferred();
        Box& total = screen->box("Section1BoxA");
        total.SetText(c.typed);
        screen->Leave(total);
        EXPECT_EQ(total.Text(), c.shown);
        EXPECT_EQ(screen->box("Section4BoxA").Text(), c.ofSection4);
        EXPECT_EQ(screen->box("Section4BoxB").Text(), *c.tick == '1' ? "      7.50" : "");
        screen->Click(screen->box("Cancel"));
        records.MoveFirst();
        EXPECT_EQ(records.Field("Section1ABox"), c.shown);
        records.Delete();
    }
}

TEST_F(DeclarationTest, TheDateSentIsADate)
{
    struct Case {
        const char *typed, *left;
        bool told;
    };
    Screen* screen = session.screens.Show("P11DDeclaration");
    session.screens.RunDeferred();
    door.messages.clear();
    Box& date = screen->box("SentDate");
    for (const Case& c : {Case{"", "", false}, Case{"   ", "", false}, Case{" 1/7/11 ", "01/07/2011", false},
                          Case{"1/1/2", "01/01/2002", false}, Case{"05/04/1916", "05/04/1916", false},
                          Case{"31/06/2011", "", true}, Case{"July", "", true}, Case{"29/02/1900", "", true}}) {
        SCOPED_TRACE(c.typed);
        date.SetText(c.typed);
        screen->Leave(date);
        EXPECT_EQ(date.Text(), c.left);
        ASSERT_EQ(door.messages.size(), c.told ? 1U : 0U);
        if (c.told) {
            EXPECT_EQ(door.messages[0].title, edition::AppTitle);
            EXPECT_EQ(door.messages[0].text, "Invalid Date Format - Please Re-enter");
            EXPECT_EQ(door.messages[0].icon, Icon::Exclamation);
            door.messages.clear();
        }
    }
    EXPECT_EQ(screen->Key(date, U'.'), U'/');
    EXPECT_EQ(screen->Key(date, U'7'), U'7');
    EXPECT_EQ(door.beeps, 0);
    EXPECT_EQ(screen->Key(date, U'x'), 0U);
    EXPECT_EQ(door.beeps, 1);
}

TEST_F(DeclarationTest, WhereTheTotalCannotBeReadTheRestFollowsFromWhatStands)
{
    Database database = Open();
    Set(database, "P11DB", {{"EmployerName", "Acme Ltd"}, {"Section1Tick", "1"}});
    AddEmployee(database, "Acme Ltd", "Jane Smith", {{"LCashEqu", "   1000.00"}});
    auto* screen = dynamic_cast<P11DDeclaration*>(session.screens.Show("P11DDeclaration"));
    session.screens.RunDeferred();
    EXPECT_EQ(screen->box("Section4BoxD").Text(), "   1000.00");
    screen->box("Section4BoxB").SetText("    250.00");
    screen->StartP11DBTimer();
    SetStoreFaultHook([](std::string_view statement) { return statement.starts_with("SELECT") ? 10 : 0; });
    session.screens.RunDeferred();
    SetStoreFaultHook({});
    ASSERT_EQ(door.messages.size(), 1U);
    EXPECT_EQ(door.messages[0].title, "P11D(b)");
    EXPECT_FALSE(door.busy);
    EXPECT_EQ(screen->box("Section1BoxA").Text(), "   1000.00");
    EXPECT_EQ(screen->box("Section4BoxD").Text(), "   1250.00");
    EXPECT_EQ(screen->box("Section4BoxF").Text(), "    160.00");
}

TEST_F(DeclarationTest, TheUntickIsAskedForWithAQuestionMark)
{
    Database database = Open();
    Set(database, "P11DB", {{"EmployerName", "Acme Ltd"}, {"Section1Tick", "1"}, {"Section4BBox", "    100.00"}});
    AddEmployee(database, "Acme Ltd", "Jane Smith", {{"LCashEqu", "   1000.00"}});
    Screen* screen = session.screens.Show("P11DDeclaration");
    session.screens.RunDeferred();
    door.answers = {Answer::No, Answer::Yes};
    Box& tick = screen->box("AdjustTick");
    screen->Click(tick);
    ASSERT_EQ(door.messages.size(), 1U);
    EXPECT_EQ(door.messages[0].icon, Icon::Question);
    EXPECT_EQ(door.messages[0].buttons, Buttons::YesNo);
    EXPECT_EQ(door.messages[0].text, "Untick this box?  Entries in boxes B + C will be removed.");
    EXPECT_TRUE(tick.Ticked());
    EXPECT_EQ(screen->box("Section4BoxB").Text(), "    100.00");
    screen->Click(tick);
    EXPECT_FALSE(tick.Ticked());
    EXPECT_EQ(screen->box("Section4BoxB").Text(), "");
    EXPECT_TRUE(screen->box("Section4BoxB").ReadOnly());
    EXPECT_EQ(screen->box("Section1BoxC").Text(), "    128.00");
    screen->Click(tick);
    EXPECT_TRUE(tick.Ticked());
    EXPECT_EQ(door.messages.size(), 2U) << "a tick that is set asks nothing";
}

TEST_F(DeclarationTest, AnUntickRefreshesTwice)
{
    // What is longer than a box is cut, and the second time read as it was cut.
    Database database = Open();
    Set(database, "P11DB", {{"EmployerName", "Acme Ltd"}, {"Section1Tick", "1"}});
    AddEmployee(database, "Acme Ltd", "Jane Smith", {{"LCashEqu", "(1234567.00)"}});
    Screen* screen = session.screens.Show("P11DDeclaration");
    session.screens.RunDeferred();
    screen->box("Section1BoxA").SetText("-1234567");
    screen->Click(screen->box("AdjustTick"));
    EXPECT_EQ(screen->box("Section1BoxA").Text(), "");
    EXPECT_EQ(screen->box("Section1BoxC").Text(), "");
}

TEST_F(DeclarationTest, ASchedulesMissingRecordIsToldWithAnExclamationMark)
{
    for (const AdjustmentSchedule& schedule : AdjustmentSchedules) {
        Screen* notepad = session.screens.Show(schedule.name);
        ASSERT_EQ(door.messages.size(), 1U);
        EXPECT_EQ(door.messages[0].title, schedule.loadingError);
        EXPECT_EQ(door.messages[0].text, "Employee not found");
        EXPECT_EQ(door.messages[0].icon, Icon::Exclamation);
        door.messages.clear();
        notepad->Click(notepad->box("Cancel"));
    }
}

TEST_F(DeclarationTest, WhatASchedulesOkHasWrittenBeforeAFailureStays)
{
    Database database = Open();
    Set(database, "P11DBNotepad1", {{"EmployerName", "Acme Ltd"}, {"Description1", "old"}, {"Description2", "old"}});
    Screen* notepad = session.screens.Show("P11DBNotepad1");
    notepad->box("Description", 1).SetText("new");
    notepad->box("Description", 2).SetText("new");
    SetStoreFaultHook([](std::string_view statement) {
        return statement.starts_with("UPDATE") && statement.find("[Description2]") != std::string_view::npos ? 10 : 0;
    });
    notepad->Click(notepad->box("Ok"));
    SetStoreFaultHook({});
    ASSERT_EQ(door.messages.size(), 1U);
    EXPECT_EQ(door.messages[0].title, "P11D (B) Notepad 1");
    EXPECT_EQ(door.messages[0].text, "Unable to update database");
    EXPECT_EQ(door.messages[0].icon, Icon::Exclamation);
    EXPECT_NE(session.screens.Find("P11DBNotepad1"), nullptr);
    Recordset records = database.OpenRecordset("P11DBNotepad1");
    records.MoveFirst();
    EXPECT_EQ(records.Field("Description1"), "new");
    EXPECT_EQ(records.Field("Description2"), "old");
}

} // namespace
} // namespace quillmere
