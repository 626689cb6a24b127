// The columns of the cars on their screens, driven without windows: when the routine runs, what a run that stops leaves
// behind, and how the totals follow.
#include "cars/ExtraCarsScreen.h"
#include "clientdb/Employees.h"
#include "clientdb/EmployerScreens.h"
#include "clientdb/store/StoreFaults.h"
#include "clientdb/store/TableLayouts.h"
#include "declaration/P11DDeclaration.h"
#include "edition/Edition.h"
#include "frame/Text.h"
#include "screens/Form3.h"
#include "support/Enter.h"
#include "support/ScriptedDoor.h"
#include "support/StoreFixture.h"

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <functional>
#include <utility>
#include <vector>

namespace quillmere {
namespace {

using test::Enter;

using FieldTexts = std::vector<std::pair<std::string, std::string>>;

class CarColumnTest : public test::StoreFixture {
protected:
    CarColumnTest()
    {
        file = folder.path / edition::ClientDatabaseName;
        std::filesystem::rename(folder.path / "clients", file);
        session.settings.path[1] = folder.path.string();
        session.settings.selectedFolder = 1;
        session.programFolder = folder.path;
        session.CurrentEmployer = "Acme Ltd";
        session.CurrentEmployee = "Jane Smith";
        Database database = Open();
        CreateEmployee(database, {"Acme Ltd", "Jane", "Smith", "123/A456"});
        session.screens.Register("Form3", [](Session& with) { return std::make_unique<Form3>(with); });
        session.screens.Register("P11DDeclaration",
                                 [](Session& with) { return std::make_unique<P11DDeclaration>(with); });
        for (const ExtraCars& which : ExtraCarsScreens)
            session.screens.Register(
                which.name, [&which](Session& with) { return std::make_unique<ExtraCarsScreen>(with, which); });
    }
    ~CarColumnTest() override { SetStoreFaultHook({}); }

    void Store(std::string_view table, const FieldTexts& fields)
    {
        Database database = Open();
        Recordset records = OpenedAtEmployee(database, table);
        records.Edit();
        for (const auto& [field, text] : fields)
            records.SetField(field, text);
        records.Update();
    }
    std::string Stored(std::string_view table, std::string_view field)
    {
        Database database = Open();
        return std::string(OpenedAtEmployee(database, table).Field(field));
    }
    Recordset OpenedAtEmployee(Database& database, std::string_view table) const
    {
        Recordset records = database.OpenRecordset(table);
        records.Index("IndKey");
        records.Seek(session.CurrentEmployer, session.CurrentEmployee);
        return records;
    }

    /// A petrol car of 20000 pounds with a figure of 130: 3000 pounds, and 2700 of fuel.
    static FieldTexts PlainCar(int car)
    {
        return {{Numbered("FRegDate", car), "01/02/2008"},
                {Numbered("FFuel", car), "P"},
                {Numbered("FC02", car), "130"},
                {Numbered("FListPrice", car), "20000"}};
    }

    /// Opens the employee as the list does.
    Screen& Page()
    {
        EXPECT_TRUE(OpenPage1(session, "loading error"));
        return *session.screens.Find("Form3");
    }
    Screen& PageWithCar(int car)
    {
        Store("P11D", PlainCar(car));
        return Page();
    }
    static std::string Text(Screen& screen, std::string_view name) { return screen.box(name).Text(); }
    void TurnToDeclarationAndBack()
    {
        Screen& page = *session.screens.Find("Form3");
        page.Click(page.box("lblP11DB"));
        session.screens.RunDeferred();
        Screen* declaration = session.screens.Find("P11DDeclaration");
        ASSERT_NE(declaration, nullptr);
        declaration->Click(declaration->box("Cancel"));
    }

    test::ScriptedDoor door;
    Session session{door};
};

// ---- the totals, whatever the second car comes to

/// What of the second car's record makes its routine stop, and what is said then.
struct StoppedCar {
    const char* name;
    FieldTexts fields;
    std::string_view message;
};

class SecondCarStops : public CarColumnTest, public ::testing::WithParamInterface<StoppedCar> {
protected:
    SecondCarStops()
    {
        Store("P11D", PlainCar(1));
        Store("P11D", {{"FFuelTick1", "1"}});
        // Where the second car can be worked out after all it comes to nothing.
        Store("P11D", {{"FRegDate2", "01/02/2008"}, {"FFuel2", "P"}, {"FC022", "130"}});
        Store("P11D", GetParam().fields);
    }
};

TEST_P(SecondCarStops, TheTotalsAreThoseOfTheFirstCarWhenThePageOpens)
{
    Screen& page = Page();
    ASSERT_FALSE(door.messages.empty());
    EXPECT_TRUE(door.messages.front().text.starts_with(GetParam().message)) << door.messages.front().text;
    EXPECT_EQ(Text(page, "FTotalCashCars"), "   3000.00");
    EXPECT_EQ(Text(page, "FTotalCashFuel"), "   2700.00");
}

TEST_P(SecondCarStops, TheTotalsAreWorkedOutOnTheWayToTheDeclaration)
{
    Screen& page = Page();
    page.box("FListPrice1").SetText("40000");
    // A first date that had to go is there once more.
    for (const auto& [field, text] : GetParam().fields)
        page.box(field).SetText(text);
    page.Click(page.box("lblP11DB"));
    EXPECT_EQ(Stored("P11D", "FTotalCashCars"), "   6000.00");
    EXPECT_EQ(Stored("P11D", "FTotalCashFuel"), "   2700.00");
}

INSTANTIATE_TEST_SUITE_P(Totals, SecondCarStops,
                         ::testing::Values(StoppedCar{"AvailableBeforeRegistered",
                                                      {{"FDateFrom2", "01/01/2008"}},
                                                      "Car availability 'Date From' is default 06/04/2003"},
                                           StoppedCar{"FigureBeyond16Bits",
                                                      {{"FC022", "32768"}},
                                                      "Procedure: Car Benefit - Compute\nError 6:  Overflow"},
                                           StoppedCar{"DateThatIsNone",
                                                      {{"FRegDate2", "spring"}},
                                                      "Procedure: Car Benefit - Compute\nError 13:  Type mismatch"}),
                         [](const auto& tested) { return tested.param.name; });

TEST_F(CarColumnTest, BothCarsTogetherTakeOneLookAtTheFurtherCars)
{
    Screen& page = PageWithCar(1);
    Store("P11D", PlainCar(2));
    int looks = 0;
    SetStoreFaultHook([&](std::string_view statement) {
        if (statement.starts_with("SELECT") && statement.find("ExtraCars") != std::string_view::npos)
            ++looks;
        return SQLITE_OK;
    });
    Enter(page, "FListPrice1", "30000");
    const int ofOneCar = std::exchange(looks, 0);
    page.Click(page.box("lblP11DB"));
    EXPECT_GT(ofOneCar, 0);
    EXPECT_EQ(looks, ofOneCar);
}

TEST_F(CarColumnTest, ATotalThatTheStoreRefusesIsToldOfOnce)
{
    Screen& page = PageWithCar(1);
    page.box("FC022").SetText("40000");
    page.box("FRegDate2").SetText("01/02/2008");
    page.box("FFuel2").SetText("P");
    SetStoreFaultHook([](std::string_view) { return SQLITE_IOERR; });
    page.Click(page.box("lblP11DB"));
    SetStoreFaultHook({});
    std::size_t reports = 0;
    for (const Message& message : door.messages)
        reports += message.text.starts_with("Procedure: Car Benefit - Compute") ? 1 : 0;
    EXPECT_EQ(reports, 2U) << "the figure of car 2, and the totals";
}

TEST_F(CarColumnTest, AMissingRecordOfFurtherCarsIsAWarning)
{
    Screen& page = PageWithCar(1);
    {
        Database database = Open();
        Recordset records = OpenedAtEmployee(database, "ExtraCars");
        records.Delete();
    }
    Enter(page, "FListPrice1", "30000");
    ASSERT_EQ(door.messages.size(), 2U);
    EXPECT_EQ(door.messages[0].title, "Compute Cash error");
    EXPECT_EQ(door.messages[1].title, "Compute Fuel error");
    for (const Message& message : door.messages) {
        EXPECT_EQ(message.text, "Employee not found");
        EXPECT_EQ(message.icon, Icon::Exclamation);
    }
    EXPECT_EQ(Text(page, "FTotalCashCars"), "   4500.00");
}

TEST_F(CarColumnTest, ANegativeFuelFigureEntersTheTotalAsItStands)
{
    Store("P11D", {{"FRegDate1", "01/06/2005"}, {"FFuel1", "B"}, {"FNoC021", "1"}, {"FFuelTick1", "1"}});
    Screen& page = PageWithCar(2);
    EXPECT_EQ(Text(page, "VBox1"), "  (360.00)");
    EXPECT_EQ(Text(page, "FFuelEqu1"), "  (360.00)");
    EXPECT_EQ(Text(page, "FCashEqu1"), "      0.00");
    EXPECT_EQ(Text(page, "FTotalCashFuel"), "  (360.00)");
    page.Click(page.box("FuelTick2"));
    EXPECT_EQ(Text(page, "FTotalCashFuel"), "   2340.00");
}

TEST_F(CarColumnTest, AStaleFuelFigureStaysWhileTheTickIsClearAndCounts)
{
    Store("P11D", {{"FFuelEqu1", "    500.00"}});
    Screen& page = PageWithCar(1);
    Enter(page, "FListPrice1", "30000");
    EXPECT_FALSE(page.box("FuelTick1").Ticked());
    EXPECT_EQ(Text(page, "FFuelEqu1"), "    500.00");
    EXPECT_EQ(Text(page, "FTotalCashFuel"), "    500.00");
}

// ---- one car

class EitherCar : public CarColumnTest, public ::testing::WithParamInterface<int> {
protected:
    std::string Of(std::string_view stem) const { return Numbered(stem, GetParam()); }
};

INSTANTIATE_TEST_SUITE_P(Cars, EitherCar, ::testing::Values(1, 2), ::testing::PrintToStringParamName());

TEST_P(EitherCar, AResultOfNoughtThatIsTypedGoesBlank)
{
    Screen& page = PageWithCar(GetParam());
    for (const std::string_view result : {"FCashEqu", "FFuelEqu"}) {
        for (const std::string_view nought : {"0", "0.00", "0.004"}) {
            Enter(page, Of(result), nought);
            EXPECT_EQ(Text(page, Of(result)), "") << result << nought;
        }
        Enter(page, Of(result), "12.5");
        EXPECT_EQ(Text(page, Of(result)), "     12.50");
        Enter(page, Of(result), "");
        EXPECT_EQ(Text(page, Of(result)), "");
    }
}

TEST_P(EitherCar, AResultOfNoughtThatWasWorkedOutStaysWhenItIsPassed)
{
    Store("P11D", {{Of("FFuelTick"), "1"}});
    Screen& page = PageWithCar(GetParam());
    Enter(page, Of("FPrivateUse"), "5000");
    Enter(page, Of("FDateTo"), "6/4/10");
    for (const std::string_view result : {"FCashEqu", "FFuelEqu"}) {
        const std::string shown = Text(page, Of(result));
        page.Leave(page.box(Of(result)));
        EXPECT_EQ(Text(page, Of(result)), shown) << result;
    }
    EXPECT_EQ(Text(page, Of("FCashEqu")), "      0.00");
}

TEST_P(EitherCar, WithoutTheFuelTickTheChargeIsWorkedOutAndNotShown)
{
    Screen& page = PageWithCar(GetParam());
    Enter(page, Of("txtUnavailableFirst"), "1/5/10", 1);
    Enter(page, Of("txtUnavailableLast"), "30/5/10", 1);
    EXPECT_EQ(Text(page, Of("QBox")), "30");
    EXPECT_EQ(Text(page, Of("VBox")), "   2700.00");
    EXPECT_EQ(Text(page, Of("XBox")), "30");
    EXPECT_EQ(Text(page, Of("YBox")), "    222.00");
    EXPECT_EQ(Text(page, Of("FFuelEqu")), "");
    EXPECT_EQ(Text(page, "FTotalCashFuel"), "");
}

TEST_P(EitherCar, AFailureIsReportedUnderTheProcedureAndEndsTheRun)
{
    struct Case {
        std::string_view stem, text, report;
    };
    for (const Case& c : {Case{"FC02", "32768", "Procedure: Car Benefit - Compute\nError 6:  Overflow"},
                          Case{"FRegDate", "spring", "Procedure: Car Benefit - Compute\nError 13:  Type mismatch"}}) {
        Screen& page = PageWithCar(GetParam());
        page.box(Of(c.stem)).SetText(c.text);
        page.box(Of("CBox")).SetText("stale");
        page.box("FTotalCashCars").SetText("stale");
        Enter(page, Of("FListPrice"), "30000");
        ASSERT_EQ(door.messages.size(), 1U);
        EXPECT_EQ(door.messages[0].title, edition::AppTitle);
        EXPECT_EQ(door.messages[0].icon, Icon::Critical);
        EXPECT_EQ(door.TakeText(), c.report);
        EXPECT_EQ(Text(page, Of("FListPrice")), "30000") << "nothing is rewritten";
        EXPECT_EQ(Text(page, Of("CBox")), "stale");
        EXPECT_EQ(Text(page, "FTotalCashCars"), "stale");
        session.screens.Unload("Form3");
    }
}

TEST_P(EitherCar, ABoxThatIsLeftEmptyDoesNotStartTheRoutine)
{
    Screen& page = PageWithCar(GetParam());
    for (const std::string_view stem : {"FRegDate", "FCaptContr"}) {
        page.box(Of("CBox")).SetText("stale");
        Enter(page, Of(stem), "");
        EXPECT_EQ(Text(page, Of("CBox")), "stale") << stem;
    }
    Enter(page, Of("FCaptContr"), "1");
    EXPECT_EQ(Text(page, Of("CBox")), "  20000.00");
    EXPECT_TRUE(door.messages.empty());
}

TEST_P(EitherCar, ClearingTheFuelTickAddsTheFuelUpAndNothingElse)
{
    Store("P11D", {{Of("FFuelTick"), "1"}});
    Screen& page = PageWithCar(GetParam());
    EXPECT_EQ(Text(page, "FTotalCashFuel"), "   2700.00");
    page.box(Of("CBox")).SetText("stale");
    page.box("FTotalCashCars").SetText("stale");
    page.Click(page.box(Of("FuelTick")));
    EXPECT_EQ(Text(page, "FTotalCashFuel"), "");
    EXPECT_EQ(Text(page, "FTotalCashCars"), "stale");
    EXPECT_EQ(Text(page, Of("CBox")), "stale");
    page.Click(page.box(Of("FuelTick")));
    EXPECT_EQ(Text(page, Of("CBox")), "  20000.00");
}

// ---- the tick of fuel that was reinstated, with no date beside it

class ReinstatedTick : public EitherCar {
protected:
    Screen& PageWithTick()
    {
        Store("P11D", {{Of("FFuelTick"), "1"}, {Of("FDateWithdrawnTick"), "1"}});
        return PageWithCar(GetParam());
    }
};

INSTANTIATE_TEST_SUITE_P(Cars, ReinstatedTick, ::testing::Values(1, 2), ::testing::PrintToStringParamName());

TEST_P(ReinstatedTick, StandsWhenTheEmployeeIsOpenedFromTheListAndGoesWithTheNextRun)
{
    Screen& page = PageWithTick();
    EXPECT_TRUE(page.box(Of("FWithdrawnTick")).Ticked());
    EXPECT_TRUE(page.box(Of("FWithdrawnTick")).Enabled());
    EXPECT_FALSE(session.EmployeeOpenFlag);
    Enter(page, Of("FListPrice"), "30000");
    EXPECT_FALSE(page.box(Of("FWithdrawnTick")).Ticked());
    EXPECT_FALSE(page.box(Of("FWithdrawnTick")).Enabled());
}

TEST_P(ReinstatedTick, StandsOnTheWayToTheDeclarationAndBack)
{
    Screen& page = PageWithTick();
    TurnToDeclarationAndBack();
    EXPECT_TRUE(page.box(Of("FWithdrawnTick")).Ticked());
    EXPECT_EQ(Stored("P11D", Of("FDateWithdrawnTick")), "1");
    EXPECT_FALSE(session.DeclarationOpen);
    // Any other run resets it.
    Enter(page, Of("FListPrice"), "30000");
    EXPECT_FALSE(page.box(Of("FWithdrawnTick")).Ticked());
}

TEST_F(CarColumnTest, TheDeclarationIsOpenUntilThePageIsInFrontAgain)
{
    Screen& page = PageWithCar(1);
    page.Click(page.box("lblP11DB"));
    EXPECT_TRUE(session.DeclarationOpen);
    session.screens.Unload("P11DDeclaration");
    EXPECT_FALSE(session.DeclarationOpen);
}

TEST_F(CarColumnTest, ADeclarationThatCannotBeReachedIsNotOpen)
{
    Screen& page = PageWithCar(1);
    page.box("DCashEqu").SetText("1");
    SetStoreFaultHook([](std::string_view) { return SQLITE_IOERR; });
    page.Click(page.box("lblP11DB"));
    SetStoreFaultHook({});
    EXPECT_EQ(session.screens.Find("P11DDeclaration"), nullptr);
    EXPECT_FALSE(session.DeclarationOpen);
}

// ---- what is carried, and what Delete takes

TEST_F(CarColumnTest, TheFullDiscountOfThePageIsCarried)
{
    Store("P11D", {{"FFullDisc1", "1"}});
    Screen& page = PageWithCar(1);
    Enter(page, "FListPrice1", "30000");
    session.screens.Unload("Form3");
    EXPECT_EQ(Stored("P11D", "FListPrice1"), "  30000.00");
    EXPECT_EQ(Stored("P11D", "FFullDisc1"), "1");
    EXPECT_NE(Stored("P11D", "FFullDisc2"), "1");
}

class FurtherCars : public CarColumnTest, public ::testing::WithParamInterface<ExtraCars> {
protected:
    Screen& Cars()
    {
        Page();
        return *session.screens.Show(GetParam().name);
    }
    /// The number at the end of a field's name is the car's.
    static int CarOf(std::string_view field) { return field.empty() ? 0 : field.back() - '0'; }
    bool IsHere(std::string_view field) const
    {
        return CarOf(field) == GetParam().cars[0] || CarOf(field) == GetParam().cars[1];
    }
    static std::vector<std::string> CarFields()
    {
        std::vector<std::string> names;
        for (const Field& field : FieldsOf(FindTable("ExtraCars")).All())
            if (CarOf(field.name) >= 3 && CarOf(field.name) <= 6)
                names.emplace_back(field.name);
        return names;
    }
};

INSTANTIATE_TEST_SUITE_P(Screens, FurtherCars, ::testing::ValuesIn(ExtraCarsScreens),
                         [](const auto& tested) { return std::string(tested.param.name); });

TEST_P(FurtherCars, TheFullDiscountIsCarriedThroughOk)
{
    const int car = GetParam().cars[1];
    Store("ExtraCars", PlainCar(car));
    Store("ExtraCars", {{Numbered("FFullDisc", car), "1"}});
    Screen& cars = Cars();
    Enter(cars, Numbered("FListPrice", car), "30000");
    EXPECT_EQ(Text(cars, Numbered("FCashEqu", car)), "   4500.00") << "it counts nothing";
    cars.Click(cars.box("Ok"));
    EXPECT_EQ(Stored("ExtraCars", Numbered("FListPrice", car)), "  30000.00");
    EXPECT_EQ(Stored("ExtraCars", Numbered("FFullDisc", car)), "1");
    EXPECT_EQ(Stored("ExtraCars", Numbered("FFullDisc", GetParam().cars[0])), "0");
}

TEST_P(FurtherCars, DeleteAndOkLeaveNothingOfBothCarsAndTheOthersAlone)
{
    FieldTexts marked;
    for (const std::string& field : CarFields())
        marked.emplace_back(field, "1");
    ASSERT_EQ(marked.size(), 4U * 42U);
    Store("ExtraCars", marked);
    Screen& cars = Cars();
    EXPECT_EQ(Text(*session.screens.Find("Form3"), "FTotalCashCars"), "      4.00");
    cars.Click(cars.box("Delete"));
    cars.Click(cars.box("Ok"));
    EXPECT_EQ(session.screens.Find(GetParam().name), nullptr);
    for (const std::string& field : CarFields()) {
        const bool tick = field.starts_with("FFuelTick") || field.starts_with("FNoC02") ||
                          field.starts_with("FWithdrawnTick") || field.starts_with("FFullDisc");
        EXPECT_EQ(Stored("ExtraCars", field), !IsHere(field) ? "1" : tick ? "0" : "") << field;
    }
    EXPECT_EQ(Text(*session.screens.Find("Form3"), "FTotalCashCars"), "      2.00");
    EXPECT_EQ(Text(*session.screens.Find("Form3"), "FTotalCashFuel"), "      2.00");
}

/// Page 1 takes what the Ok has read of the further cars, and that once.
TEST_P(FurtherCars, AnOkReadsThemAlongAndWhoComesToTheFrontLaterLooksAnew)
{
    const int here = GetParam().cars[0], elsewhere = here == 3 ? 5 : 3;
    Store("ExtraCars", PlainCar(here));
    Store("ExtraCars", {{Numbered("FCashEqu", elsewhere), "500.00"}});
    Screen& cars = Cars();
    Enter(cars, Numbered("FListPrice", here), "30000");
    int looks = 0;
    SetStoreFaultHook([&](std::string_view statement) {
        if (session.screens.Find(GetParam().name) == nullptr && statement.find("ExtraCars") != std::string_view::npos)
            ++looks;
        return SQLITE_OK;
    });
    cars.Click(cars.box("Ok"));
    SetStoreFaultHook({});
    EXPECT_EQ(Text(*session.screens.Find("Form3"), "FTotalCashCars"), "   5000.00");
    EXPECT_EQ(looks, 0);
    Store("ExtraCars", {{Numbered("FCashEqu", elsewhere), "700.00"}});
    Screen& again = *session.screens.Show(GetParam().name);
    again.Click(again.box("Cancel"));
    EXPECT_EQ(Text(*session.screens.Find("Form3"), "FTotalCashCars"), "   5200.00");
}

} // namespace
} // namespace quillmere
