// The notepads of vans, loans, accommodation, mileage and relocation, driven without windows.
#include "calculators/AccommodationBenefit.h"
#include "calculators/D2Notepad.h"
#include "calculators/DNotepad.h"
#include "calculators/ENotepad.h"
#include "calculators/GNotepad.h"
#include "calculators/HNotepad.h"
#include "calculators/HNotepad2.h"
#include "calculators/JNotepad.h"
#include "calculators/MileageBenefit.h"
#include "calculators/RelocationBenefit.h"
#include "clientdb/Employees.h"
#include "clientdb/store/StoreFaults.h"
#include "edition/Edition.h"
#include "frame/Text.h"
#include "screens/Form3.h"
#include "screens/Side2Form1.h"
#include "support/Enter.h"
#include "support/ScriptedDoor.h"
#include "support/StoreFixture.h"
#include "support/SyncCounter.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>
#include <sqlite3.h>

#include <algorithm>

namespace quillmere {
namespace {

using test::Enter;

constexpr std::string_view Employer = "Acme Ltd", Employee = "Jane Smith";

/// A figure that somebody may type: mostly a plain amount, now and then nothing or something odd.
std::string AnyFigure(std::int64_t most)
{
    const auto pence = *rc::gen::inRange<std::int64_t>(0, most * 100);
    const std::string plain = PlainNumber(static_cast<double>(pence) / 100);
    return *rc::gen::weightedElement<std::string>({{8, plain},
                                                   {2, ""},
                                                   {1, "0"},
                                                   {1, "(" + plain + ")"},
                                                   {1, PlainNumber(static_cast<double>(pence / 100))},
                                                   {1, "x"}});
}

/// A day of the year as its box would read, or nothing.
std::string AnyDate()
{
    const Day day = *ReadDate(edition::TaxYearStart) + std::chrono::days(*rc::gen::inRange(0, 365));
    return *rc::gen::weightedElement<std::string>({{3, FormatDate(day)}, {1, ""}});
}

/// What a box is to show.
template<typename Number>
using Figure = std::pair<std::string_view, Number>;

class CalculatorNotepads : public test::StoreFixture {
protected:
    CalculatorNotepads()
    {
        file = folder.path / edition::ClientDatabaseName;
        std::filesystem::rename(folder.path / "clients", file);
        session.settings.path[1] = folder.path.string();
        session.settings.selectedFolder = 1;
        session.CurrentEmployer = Employer;
        session.CurrentEmployee = Employee;
        Database database = Open();
        CreateEmployee(database, {"Acme Ltd", "Jane", "Smith", "123/A456"});
        Register<GNotepad>("GNotepad");
        Register<HNotepad>("HNotepad");
        Register<HNotepad2>("HNotepad2");
        Register<DNotepad>("DNotepad");
        Register<D2Notepad>("D2Notepad");
        Register<D2InfoNotepad>("D2InfoNotepad");
        Register<ENotepad>("ENotepad");
        Register<JNotepad>("JNotepad");
        Register<Form3>("Form3");
        Register<Side2Form1>("Side2Form1");
    }
    ~CalculatorNotepads() override { SetStoreFaultHook({}); }

    template<typename ScreenClass>
    void Register(std::string_view name)
    {
        session.screens.Register(name, [](Session& shared) { return std::make_unique<ScreenClass>(shared); });
    }

    /// Opens a notepad and lets its timer run.
    Screen& Show(std::string_view name)
    {
        Screen* screen = session.screens.Show(name);
        EXPECT_NE(screen, nullptr) << name;
        session.screens.RunDeferred();
        return *screen;
    }

    /// A page with the employee's record.
    Screen& OpenPage(std::string_view name)
    {
        auto* page = session.screens.Load<BoundScreen>(name);
        EXPECT_EQ(page->StoreAndShow("Loading"), BoundScreen::Sought::Found);
        return *page;
    }

    void Click(std::string_view screen, std::string_view button)
    {
        Screen* open = session.screens.Find(screen);
        ASSERT_NE(open, nullptr) << screen;
        open->Click(open->box(button));
    }

    std::string Stored(std::string_view table, std::string_view field)
    {
        Database database = Open();
        Recordset records = Seek(database, table);
        return std::string(records.Field(field));
    }

    void Put(std::string_view table, const std::vector<std::string>& fields, std::string_view text)
    {
        Database database = Open();
        WriteBatch batch(database);
        Recordset records = Seek(database, table);
        records.Edit();
        for (const std::string& field : fields)
            records.SetField(field, text);
        records.Update();
        batch.Commit();
    }

    static Recordset Seek(Database& database, std::string_view table)
    {
        Recordset records = database.OpenRecordset(table);
        if (table == "HNotepad2") {
            records.MoveFirst();
            return records;
        }
        records.Index("IndKey");
        records.Seek(Employer, Employee);
        return records;
    }

    test::ScriptedDoor door;
    Session session{door};
};

// ---- what is stored and what is shown

TEST_F(CalculatorNotepads, VanOneAloneDecidesWhetherTheTotalsAreStored)
{
    Screen& page = OpenPage("Side2Form1");
    Screen& vans = Show("GNotepad");
    vans.Click(vans.box("Van2"));
    Enter(vans, "VanRegNumber", "b2");
    Click("GNotepad", "Ok");
    EXPECT_EQ(page.box("GVan").Text(), "   3000.00");
    EXPECT_EQ(Stored("P11D", "GVan"), "");
    Screen& again = Show("GNotepad");
    Enter(again, "VanRegNumber", "a1");
    Click("GNotepad", "Ok");
    EXPECT_EQ(page.box("GVan").Text(), "   6000.00");
    EXPECT_EQ(Stored("P11D", "GVan"), "   6000.00");
    EXPECT_TRUE(door.messages.empty());
}

TEST_F(CalculatorNotepads, VehicleOneAloneDecidesWhetherTheTaxableAmountIsStored)
{
    Screen& page = OpenPage("Form3");
    Screen& mileage = Show("ENotepad");
    mileage.Click(mileage.box("Bicycle"));
    Enter(mileage, "ABox", "12.5");
    Click("ENotepad", "Ok");
    EXPECT_EQ(page.box("ETaxAmount").Text(), "     12.50");
    EXPECT_EQ(Stored("P11D", "ETaxAmount"), "");
    Screen& again = Show("ENotepad");
    Enter(again, "ABox", "1");
    Click("ENotepad", "Ok");
    EXPECT_EQ(page.box("ETaxAmount").Text(), "     13.50");
    EXPECT_EQ(Stored("P11D", "ETaxAmount"), "13.50") << "stored without padding";
}

TEST_F(CalculatorNotepads, ThePageStoresATotalThatItShowsAlready)
{
    auto& page = static_cast<Form3&>(*session.screens.Load("Form3"));
    ASSERT_EQ(page.StoreAndShow("Loading"), BoundScreen::Sought::Found);
    for (const std::string_view round : {"first", "second"}) {
        Screen& mileage = Show("ENotepad");
        mileage.Click(mileage.box("Bicycle"));
        Enter(mileage, "ABox", "12.5");
        Click("ENotepad", "Ok");
        EXPECT_EQ(Stored("P11D", "ETaxAmount"), "") << round;
        ASSERT_EQ(page.StoreAndShow("Again"), BoundScreen::Sought::Found);
        EXPECT_EQ(Stored("P11D", "ETaxAmount"), "     12.50") << round;
    }
}

TEST_F(CalculatorNotepads, TheRecordTakesTheBasicChargeAlone)
{
    Screen& page = OpenPage("Form3");
    Put("DNotepad", {"AddChargeQ"}, "   1000.00");
    Screen& basic = Show("DNotepad");
    Enter(basic, "BasicChargeA", "5000");
    Click("DNotepad", "Ok");
    EXPECT_EQ(page.box("DCashEqu").Text(), "   6000.00");
    EXPECT_EQ(Stored("P11D", "DCashEqu"), "   5000.00");
}

TEST_F(CalculatorNotepads, AnAmountMadeGoodAboveTheChargeLeavesTheWholeChargeUntilTheNextRun)
{
    Screen& basic = Show("DNotepad");
    Enter(basic, "BasicChargeA", "5000");
    Enter(basic, "BasicChargeD", "6000");
    EXPECT_EQ(basic.box("BasicChargeD").Text(), "   5000.00");
    EXPECT_EQ(basic.box("BasicChargeE").Text(), "   5000.00");
    basic.Activate();
    EXPECT_EQ(basic.box("BasicChargeE").Text(), "");
}

TEST_F(CalculatorNotepads, TheDaysOfAPartOfTheYearAreDividedBy366)
{
    Screen& additional = Show("D2Notepad");
    Enter(additional, "FBox", "100000");
    Enter(additional, "AddChargeDays", "365");
    EXPECT_EQ(additional.box("LBox").Text(), "    997.27");
    Enter(additional, "AddChargeDays", "366");
    EXPECT_EQ(additional.box("LBox").Text(), "   1000.00");
    EXPECT_TRUE(door.messages.empty());
}

TEST_F(CalculatorNotepads, TheAdditionalChargeTakesTheStoredBasicChargeWhereItsNotepadIsNotOpen)
{
    Put("DNotepad", {"BasicChargeE"}, "    700.00");
    Put("DNotepad", {"BasicChargeD"}, "     30.00");
    Put("DNotepad", {"AddChargeN"}, "     99.00");
    Screen& additional = Show("D2Notepad");
    EXPECT_EQ(additional.box("EBox").Text(), "    700.00");
    EXPECT_EQ(additional.box("NBox").Text(), "     30.00");
}

TEST_F(CalculatorNotepads, AThirdLoanPutsTheTotalOnThePageAndLeavesEverythingElse)
{
    Screen& page = OpenPage("Side2Form1");
    page.box("HOutstand1").SetText("as it was");
    Screen& loans = Show("HNotepad");
    for (const int loan : {1, 2, 3}) {
        Enter(loans, "ABox", "1000", loan);
        Enter(loans, "BBox", "1000", loan);
    }
    Click("HNotepad", "Ok");
    EXPECT_EQ(page.box("HLoanCashEqu1").Text(), "    120.00");
    EXPECT_EQ(page.box("HLoanCashEqu2").Text(), "See Attach");
    EXPECT_EQ(page.box("HOutstand1").Text(), "as it was");
    EXPECT_EQ(Stored("P11D", "HLoanCashEqu2"), "See Attach");
    EXPECT_EQ(Stored("P11D", "HOutstand1"), "");
}

TEST_F(CalculatorNotepads, AMissingRecordIsToldOfWithTheExclamationIcon)
{
    struct Case {
        std::string_view screen, table, ownTitle, pageTitle;
    };
    constexpr auto Cases = std::to_array<Case>({
        {"GNotepad", "GNotepad", "Notepad G - loading error", "Notepad G - loading error"},
        {"HNotepad", "HNotepad", "Notepad H - loading error", "Notepad H - Data 2 loading error"},
        {"DNotepad", "DNotepad", "Notepad D - loading error", "Notepad D - loading error"},
        {"D2Notepad", "DNotepad", "Notepad D2 - loading error", "Notepad D2 - loading error"},
        {"ENotepad", "ENotepad", "Notepad D - loading error", "Notepad D - loading error"},
        {"JNotepad", "JNotepad", "Notepad J - loading error", "Notepad J - loading error"},
    });
    const auto remove = [this](std::string_view table) {
        Database database = Open();
        if (Recordset records = Seek(database, table); !records.NoMatch())
            records.Delete();
    };
    const auto opensWith = [this](std::string_view screen, const std::vector<std::string_view>& titles) {
        door.messages.clear();
        Show(screen);
        ASSERT_EQ(door.messages.size(), titles.size()) << screen;
        for (std::size_t place = 0; place < titles.size(); ++place) {
            EXPECT_EQ(door.messages[place].title, titles[place]) << screen;
            EXPECT_EQ(door.messages[place].text, "Employee not found") << screen;
            EXPECT_EQ(door.messages[place].icon, Icon::Exclamation) << screen;
        }
        Click(screen, "Cancel");
    };
    for (const Case& missing : Cases) {
        remove(missing.table);
        opensWith(missing.screen, {missing.ownTitle});
    }
    remove("P11D");
    for (const Case& missing : Cases) {
        const bool pageFirst = missing.ownTitle != missing.pageTitle;
        opensWith(missing.screen,
                  {pageFirst ? missing.pageTitle : missing.ownTitle, pageFirst ? missing.ownTitle : missing.pageTitle});
    }
}

TEST_F(CalculatorNotepads, DeleteClearsATickAndLeavesItsWords)
{
    Screen& basic = Show("DNotepad");
    basic.Click(basic.box("AccommodationNTick"));
    Click("DNotepad", "Delete");
    EXPECT_FALSE(basic.box("AccommodationNTick").Ticked());
    EXPECT_EQ(basic.box("AccommodationNTick").Text(), "No");
    EXPECT_EQ(basic.box("AccommodationYTick").Text(), "Yes");
    Screen& vans = Show("GNotepad");
    vans.Click(vans.box("VanFuelTick"));
    Click("GNotepad", "Delete");
    EXPECT_FALSE(vans.box("VanFuelTick").Ticked());
    EXPECT_EQ(vans.box("VanFuelTick").Text(), "Fuel Benefit Required?");
}

TEST_F(CalculatorNotepads, OkOfTheLoansDoesNotRecalculate)
{
    Screen& page = OpenPage("Side2Form1");
    Screen& loans = Show("HNotepad");
    Enter(loans, "ABox", "1000", 1);
    loans.box("BBox", 1).SetText("1000");
    Click("HNotepad", "Ok");
    EXPECT_EQ(page.box("HOutsand20031").Text(), "1000");
    EXPECT_EQ(page.box("HLoanCashEqu1").Text(), "");
}

TEST_F(CalculatorNotepads, AStoredPositionBeyondTheListChoosesNoCurrency)
{
    Put("HNotepad", {"Currency2"}, "Lost");
    Put("HNotepad", {"Index2"}, "9");
    Screen& loans = Show("HNotepad");
    EXPECT_EQ(loans.box("Currency", 2).Selected(), -1);
    EXPECT_EQ(loans.box("Currency", 1).Text(), "Sterling");
    Enter(loans, "ABox", "1", 2);
    ASSERT_EQ(door.messages.size(), 1U);
    EXPECT_EQ(door.messages[0].title, "No currency selected");
}

TEST_F(CalculatorNotepads, TheGuidanceOnlyShowsAndCloses)
{
    Show("D2Notepad");
    Click("D2Notepad", "Info");
    EXPECT_TRUE(session.screens.IsShown("D2InfoNotepad"));
    Click("D2InfoNotepad", "Close");
    EXPECT_FALSE(session.screens.IsShown("D2InfoNotepad"));
    EXPECT_TRUE(session.screens.IsShown("D2Notepad"));
}

TEST_F(CalculatorNotepads, TheVanRecalculatesOnceAfterItIsShown)
{
    Put("GNotepad", {"RegNumber1"}, "A1");
    Screen* vans = session.screens.Show("GNotepad");
    EXPECT_EQ(vans->box("MBox").Text(), "");
    session.screens.RunDeferred();
    EXPECT_EQ(vans->box("MBox").Text(), "   3000.00");
}

TEST_F(CalculatorNotepads, TheFuelFlagIsShownAndStoredAsATick)
{
    Put("GNotepad", {"FuelVanTick1", "FuelVanTick2"}, "-1");
    Put("GNotepad", {"RegNumber1"}, "A1");
    Screen& vans = Show("GNotepad");
    EXPECT_TRUE(vans.box("VanFuelTick").Ticked());
    EXPECT_FALSE(vans.box("DateWithdrawn").ReadOnly());
    Click("GNotepad", "Ok");
    EXPECT_EQ(Stored("GNotepad", "FuelVanTick1"), "1");
    EXPECT_EQ(Stored("GNotepad", "FuelVanTick2"), "1");
    EXPECT_EQ(Stored("GNotepad", "FuelVanTick3"), "0");
}

// ---- the screen's result is the rule's

TEST_F(CalculatorNotepads, VansShowWhatTheRuleSays)
{
    constexpr auto Dates = std::to_array<std::string_view>(
        {"DateFrom1", "DateTo1", "DateFrom2", "DateTo2", "DateFrom3", "DateTo3", "DateWithdrawn"});
    Screen& vans = Show("GNotepad");
    EXPECT_TRUE(rc::check("for any facts", [&] {
        VanFacts facts{.registrationNumber = *rc::gen::element<std::string>("A1", "A1", "A1", ""),
                       .percentage = AnyFigure(120),
                       .payments = AnyFigure(4000),
                       .fuelTick = *rc::gen::arbitrary<bool>()};
        vans.box("VanRegNumber").SetText(facts.registrationNumber);
        vans.box("HBox").SetText(facts.percentage);
        vans.box("LBox").SetText(facts.payments);
        vans.box("VanFuelTick").SetTicked(facts.fuelTick);
        for (std::size_t place = 0; place < Dates.size(); ++place) {
            facts.dates.texts[place] = AnyDate();
            vans.box(Dates[place]).SetText(facts.dates.texts[place]);
        }
        vans.Leave(vans.box("HBox"));
        const VanWorking working = VanBenefit(facts);
        const auto shows = [&](std::string_view box, const std::string& text) {
            RC_ASSERT(vans.box(box).Text() == text);
        };
        for (const auto& [box, amount] : std::to_array<Figure<Amount>>({{"ABox", working.A},
                                                                        {"FBox", working.F},
                                                                        {"GBox", working.G},
                                                                        {"JBox", working.J},
                                                                        {"KBox", working.K},
                                                                        {"LBox", working.L},
                                                                        {"MBox", working.M},
                                                                        {"PBox", working.P},
                                                                        {"TBox", working.T},
                                                                        {"VBox", working.V},
                                                                        {"WBox", working.W},
                                                                        {"XBox", working.X}}))
            shows(box, AmountText(amount, edition::FormatMoneyBlankZero));
        for (const auto& [box, days] : std::to_array<Figure<int>>({{"BBox", working.B},
                                                                   {"CBox", working.C},
                                                                   {"DBox", working.D},
                                                                   {"EBox", working.E},
                                                                   {"RBox", working.R},
                                                                   {"SBox", working.S}}))
            shows(box, PlainNumberBlankZero(days));
        shows("HBox", PlainNumberBlankZero(working.H.Pounds()));
        for (std::size_t place = 0; place < Dates.size(); ++place)
            shows(Dates[place], working.dates.texts[place]);
        RC_ASSERT(!working.M.IsNegative());
        RC_ASSERT(working.B + working.C + working.D == working.E);
    }));
}

TEST_F(CalculatorNotepads, LoansShowWhatTheRuleSays)
{
    Screen& loans = Show("HNotepad");
    EXPECT_TRUE(rc::check("for any facts", [&] {
        const int loan = *rc::gen::inRange(1, HNotepad::Loans + 1);
        const auto put = [&](std::string_view box, const std::string& text) {
            loans.box(box, loan).SetText(text);
            return text;
        };
        const LoanFacts facts{.ABox = put("ABox", AnyFigure(50000)),
                              .BBox = put("BBox", AnyFigure(50000)),
                              .interestRate = put("GBox", AnyFigure(9)),
                              .interestPaid = put("JBox", AnyFigure(500)),
                              .maxAmount = put("MaxAmount", AnyFigure(60000)),
                              .dateFrom = put("DateFrom", AnyDate()),
                              .dateTo = put("DateTo", AnyDate())};
        loans.Leave(loans.box("JBox", loan));
        const LoanWorking working = LoanBenefit(facts);
        const auto shows = [&](std::string_view box, const std::string& text) {
            RC_ASSERT(loans.box(box, loan).Text() == text);
        };
        if (!working.computed) {
            for (const std::string_view box : {"MaxAmount", "CBox", "DBox", "CashEq"})
                shows(box, "");
            shows("JBox", facts.interestPaid);
            return;
        }
        for (const auto& [box, amount] : std::to_array<Figure<Amount>>({{"ABox", working.A},
                                                                        {"BBox", working.B},
                                                                        {"CBox", working.C},
                                                                        {"DBox", working.D},
                                                                        {"JBox", working.J},
                                                                        {"MaxAmount", working.maxAmount}}))
            shows(box, AmountText(amount, edition::FormatMoneyBlankZero));
        shows("EBox", PlainNumberBlankZero(working.E));
        shows("GBox", PlainNumberBlankZero(working.G));
        shows("CashEq", AmountText(working.cashEquivalent, edition::FormatMoneyZero));
        shows("DateFrom", facts.dateFrom);
        RC_ASSERT(!working.cashEquivalent.IsNegative());
    }));
}

TEST_F(CalculatorNotepads, AccommodationShowsWhatTheRulesSay)
{
    Screen& basic = Show("DNotepad");
    Screen& additional = Show("D2Notepad");
    EXPECT_TRUE(rc::check("for any facts", [&] {
        const auto put = [](Screen& screen, std::string_view box, const std::string& text) {
            screen.box(box).SetText(text);
            return text;
        };
        const auto shows = [](Screen& screen, std::string_view box, Amount amount) {
            RC_ASSERT(screen.box(box).Text() == AmountText(amount, edition::FormatMoneyBlankZero));
        };
        const BasicChargeFacts facts{.BasicChargeA = put(basic, "BasicChargeA", AnyFigure(9000)),
                                     .BasicChargeB = put(basic, "BasicChargeB", AnyFigure(9000)),
                                     .BasicChargeD = put(basic, "BasicChargeD", AnyFigure(9000))};
        basic.Leave(basic.box("BasicChargeB"));
        const BasicChargeWorking charge = BasicCharge(facts);
        for (const auto& [box, amount] : std::to_array<Figure<Amount>>(
                 {{"BasicChargeC", charge.C}, {"BasicChargeD", charge.D}, {"BasicChargeE", charge.E}}))
            shows(basic, box, amount);
        RC_ASSERT(!charge.E.IsNegative());

        const AdditionalChargeFacts more{
            .FBox = put(additional, "FBox", AnyFigure(300000)),
            .GBox = put(additional, "GBox", AnyFigure(90000)),
            .AddChargeDays = put(additional, "AddChargeDays", std::to_string(*rc::gen::inRange(0, 367))),
            .MBox = put(additional, "MBox", AnyFigure(9000)),
            .NBox = put(additional, "NBox", AnyFigure(9000)),
            .EBox = put(additional, "EBox", AnyFigure(9000))};
        additional.Leave(additional.box("MBox"));
        const AdditionalChargeWorking working = AdditionalCharge(more);
        for (const auto& [box, amount] : std::to_array<Figure<Amount>>({{"HBox", working.H},
                                                                        {"JBox", working.J},
                                                                        {"KBox", working.K},
                                                                        {"LBox", working.L},
                                                                        {"PBox", working.P},
                                                                        {"QBox", working.Q},
                                                                        {"RBox", working.R}}))
            shows(additional, box, amount);
        if (working.computed) {
            for (const auto& [box, amount] : std::to_array<Figure<Amount>>({{"FBox", working.F},
                                                                            {"GBox", working.G},
                                                                            {"MBox", working.M},
                                                                            {"NBox", working.N},
                                                                            {"EBox", working.E}}))
                shows(additional, box, amount);
            RC_ASSERT(additional.box("AddChargeDays").Text() == PlainNumberBlankZero(working.days));
        } else {
            RC_ASSERT(additional.box("MBox").Text() == more.MBox);
        }
        RC_ASSERT(!working.H.IsNegative() && !working.Q.IsNegative());
    }));
}

TEST_F(CalculatorNotepads, MileageShowsWhatTheRuleSays)
{
    constexpr auto Tabs = std::to_array<std::string_view>({"CarVan", "Motorcycle", "Bicycle"});
    Screen& mileage = Show("ENotepad");
    EXPECT_TRUE(rc::check("for any facts", [&] {
        const auto vehicle = *rc::gen::inRange<std::size_t>(0, Tabs.size());
        mileage.Click(mileage.box(Tabs[vehicle]));
        const auto put = [&](std::string_view box, const std::string& text) {
            mileage.box(box).SetText(text);
            return text;
        };
        const MileageFacts facts{.vehicle = static_cast<Vehicle>(vehicle),
                                 .ABox = put("ABox", AnyFigure(9000)),
                                 .BBox = put("BBox", AnyFigure(9000)),
                                 .DBox = put("DBox", AnyFigure(30000)),
                                 .KBox = put("KBox", AnyFigure(900)),
                                 .LBox = put("LBox", AnyFigure(20000))};
        mileage.Leave(mileage.box("KBox"));
        const MileageWorking working = MileageBenefit(facts);
        for (const auto& [box, amount] : std::to_array<Figure<Amount>>({{"ABox", working.A},
                                                                        {"BBox", working.B},
                                                                        {"CBox", working.C},
                                                                        {"JBox", working.J},
                                                                        {"KBox", working.K},
                                                                        {"MBox", working.M},
                                                                        {"QBox", working.Q}}))
            RC_ASSERT(mileage.box(box).Text() == AmountText(amount, edition::FormatMoneyBlankZero));
        RC_ASSERT(mileage.box("DBox").Text() == PlainNumberBlankZero(working.D));
        RC_ASSERT(mileage.box("LBox").Text() == PlainNumberBlankZero(working.L));
        RC_ASSERT(!working.C.IsNegative() && !working.Q.IsNegative());
    }));
}

TEST_F(CalculatorNotepads, RelocationShowsWhatTheRuleSays)
{
    Screen& relocation = Show("JNotepad");
    EXPECT_TRUE(rc::check("for any facts", [&] {
        const auto put = [&](std::string_view box, const std::string& text) {
            relocation.box(box).SetText(text);
            return text;
        };
        const std::string before = relocation.box("FBox").Text();
        const RelocationFacts facts{.ABox = put("ABox", AnyFigure(20000)),
                                    .EmployerCost = put("EmployerCost", AnyFigure(9000)),
                                    .EmployeeCost = put("EmployeeCost", AnyFigure(9000)),
                                    .CBox = put("CBox", AnyFigure(9000)),
                                    .QualExp = put("QualExp", AnyFigure(9000))};
        relocation.Leave(relocation.box("CBox"));
        const RelocationWorking working = RelocationBenefit(facts);
        if (!working.computed) {
            RC_ASSERT(relocation.box("FBox").Text() == before);
            return;
        }
        for (const auto& [box, amount] : std::to_array<Figure<Amount>>({{"ABox", working.A},
                                                                        {"EmployerCost", working.employerCost},
                                                                        {"EmployeeCost", working.employeeCost},
                                                                        {"BBox", working.B},
                                                                        {"CBox", working.C},
                                                                        {"DBox", working.D},
                                                                        {"QualExp", working.qualExp}}))
            RC_ASSERT(relocation.box(box).Text() == AmountText(amount, edition::FormatMoneyBlankZero));
        RC_ASSERT(relocation.box("EBox").Text() == working.EText());
        RC_ASSERT(relocation.box("FBox").Text() == working.FText());
    }));
}

// ---- a store that fails during Ok

/// What a notepad's Ok writes, in the order of writing.
struct OkCase {
    std::string screen, title, text;
    std::string table;
    std::vector<std::string> fields;     ///< of that table
    std::vector<std::string> pageFields; ///< of P11D, written after them

    friend void PrintTo(const OkCase& shown, std::ostream* out) { *out << shown.screen; }
};

std::vector<std::string> EachNumbered(const std::vector<std::string>& stems, int last)
{
    std::vector<std::string> fields;
    for (int number = 1; number <= last; ++number)
        for (const std::string& stem : stems)
            fields.push_back(Numbered(stem, number));
    return fields;
}

std::vector<std::string> Joined(std::vector<std::string> first, const std::vector<std::string>& second)
{
    first.insert(first.end(), second.begin(), second.end());
    return first;
}

const std::string UnableToUpdate = "Unable to update database";

std::vector<OkCase> OkCases()
{
    return {
        {"GNotepad",
         "Notepad G 'Ok' Error",
         UnableToUpdate,
         "GNotepad",
         EachNumbered({"FuelVanTick", "ABox",      "BBox",
                       "CBox",        "DBox",      "EBox",
                       "FBox",        "GBox",      "HBox",
                       "JBox",        "LBox",      "MBox",
                       "KBox",        "RegNumber", "DateFrom1",
                       "DateTo1",     "DateFrom2", "DateTo2",
                       "DateFrom3",   "DateTo3",   "RBox",
                       "SBox",        "TBox",      "VBox",
                       "WBox",        "XBox",      "DateFuelWithdrawn"},
                      3),
         {"GVan", "GVanFuel"}},
        {"ENotepad",
         "Notepad E Error",
         UnableToUpdate,
         "ENotepad",
         EachNumbered({"ABox", "BBox", "CBox", "DBox", "JBox", "KBox", "LBox", "MBox", "QBox"}, 3),
         {"ETaxAmount"}},
        {"JNotepad",
         "Notepad J 'Ok' Error",
         UnableToUpdate,
         "JNotepad",
         {"ABox", "EmployerCost", "EmployeeCost", "CBox", "DBox", "EBox", "QualExp"},
         {"JRelocationExp"}},
        {"HNotepad", "Notepad H Error", UnableToUpdate, "HNotepad",
         EachNumbered({"Currency", "Index", "MaxBalanceLater", "MaxBalanceEarlier", "TotalBalance", "Divide2",
                       "TaxMonths", "InterestRate", "InterestPaid", "CashEq", "MaxBox", "DateFrom", "DateTo"},
                      5),
         EachNumbered(
             {"HOutstand", "HOutsand2003", "HMaxLoan", "HLoanInterest", "HLoanCashEqu", "HLoanDate", "HLoanDischarge"},
             2)},
        {"HNotepad2",
         "Notepad H2 'Ok' Error",
         "Unable to update currency",
         "HNotepad2",
         Joined(EachNumbered({"Currency"}, 15), EachNumbered({"Rate"}, 15)),
         {}},
        {"DNotepad",
         "Notepad D 'Ok' Error",
         UnableToUpdate,
         "DNotepad",
         {"Address1", "Address2", "Address3", "Address4", "Address5", "Postcode", "AccommodationYTick",
          "AccommodationNTick", "BasicChargeA", "BasicChargeB", "BasicChargeC", "BasicChargeD", "BasicChargeE"},
         {"DCashEqu"}},
        {"D2Notepad",
         "Notepad D 'Ok' Error",
         UnableToUpdate,
         "DNotepad",
         {"AddChargeF", "AddChargeG", "AddChargeH", "AddChargeJ", "AddChargeK", "AddChargeL", "AddChargeM",
          "AddChargeN", "AddChargeP", "AddChargeQ", "AddChargeR", "AddChargeDays"},
         {}},
    };
}

class OkOfACalculator : public CalculatorNotepads, public ::testing::WithParamInterface<OkCase> {
protected:
    static constexpr auto Pages = std::to_array<std::string_view>({"Form3", "Side2Form1"});

    const OkCase& Case() const { return GetParam(); }
    std::size_t Writes() const { return Case().fields.size() + Case().pageFields.size(); }

    /// Marks every field that Ok writes, behind the notepad's back: null reads as an empty text does, and an empty
    /// text is what a box without one writes.
    void MarkAll()
    {
        Mark(Case().table, Case().fields);
        if (!Case().pageFields.empty())
            Mark("P11D", Case().pageFields);
    }

    void Mark(std::string_view table, const std::vector<std::string>& fields)
    {
        Database database = Open();
        Recordset records = Seek(database, table);
        records.Edit();
        for (const std::string& field : fields)
            records.SetNull(field);
        records.Update();
    }

    /// For each field in the order of writing: has it been written?
    std::vector<bool> Written()
    {
        std::vector<bool> written;
        Database database = Open();
        const Recordset own = Seek(database, Case().table);
        for (const std::string& field : Case().fields)
            written.push_back(!own.IsNull(field));
        const Recordset page = Seek(database, "P11D");
        for (const std::string& field : Case().pageFields)
            written.push_back(!page.IsNull(field));
        return written;
    }

    std::vector<bool> First(std::size_t count) const
    {
        std::vector<bool> written(Writes(), false);
        std::fill_n(written.begin(), count, true);
        return written;
    }

    void PressOk() { Click(Case().screen, "Ok"); }

    void ExpectToldAndOpen()
    {
        ASSERT_EQ(door.messages.size(), 1U);
        EXPECT_EQ(door.messages[0].title, Case().title);
        EXPECT_EQ(door.messages[0].text, Case().text);
        EXPECT_EQ(door.messages[0].icon, Icon::Critical);
        EXPECT_TRUE(session.screens.IsShown(Case().screen));
        door.messages.clear();
    }
};

TEST_P(OkOfACalculator, AFailureAtAnyWriteKeepsWhatWasWrittenBeforeAndLeavesTheNotepadOpen)
{
    Show(Case().screen);
    for (std::size_t failing = 1; failing <= Writes(); ++failing) {
        MarkAll();
        std::size_t updates = 0;
        SetStoreFaultHook([&](std::string_view statement) {
            return statement.starts_with("UPDATE") && ++updates == failing ? SQLITE_FULL : SQLITE_OK;
        });
        PressOk();
        SetStoreFaultHook({});
        EXPECT_EQ(Written(), First(failing - 1)) << failing;
        ExpectToldAndOpen();
    }
    MarkAll();
    PressOk();
    EXPECT_EQ(Written(), First(Writes()));
    EXPECT_FALSE(session.screens.IsShown(Case().screen));
    EXPECT_TRUE(door.messages.empty());
}

TEST_P(OkOfACalculator, AFailingCommitStoresNothingAndLeavesThePageAsItWas)
{
    Show(Case().screen);
    MarkAll();
    for (const std::string_view page : Pages)
        for (const auto& box : session.screens.Load(page)->Boxes())
            if (box->Kind() == BoxKind::Text)
                box->SetText("as it was");
    SetStoreFaultHook([](std::string_view statement) { return statement == "COMMIT" ? SQLITE_IOERR : SQLITE_OK; });
    PressOk();
    SetStoreFaultHook({});
    EXPECT_EQ(Written(), First(0));
    ExpectToldAndOpen();
    for (const std::string_view page : Pages)
        for (const auto& box : session.screens.Find(page)->Boxes())
            if (box->Kind() == BoxKind::Text) {
                EXPECT_EQ(box->Text(), "as it was") << page << '.' << box->FullName();
            }
}

TEST_P(OkOfACalculator, AllItsWritesCostOneTransaction)
{
    Show(Case().screen);
    const test::SyncCounter syncs;
    PressOk();
    EXPECT_LE(syncs.Count(), 5);
    EXPECT_GT(syncs.Count(), 0);
}

INSTANTIATE_TEST_SUITE_P(Calculators, OkOfACalculator, ::testing::ValuesIn(OkCases()),
                         [](const auto& member) { return member.param.screen; });

} // namespace
} // namespace quillmere
