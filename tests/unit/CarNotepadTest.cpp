// The car notepad and its dialog, driven without windows: the sheet's rules beside the columns', what a scenario cannot
// see of the opening and of Ok, and the reference database as it goes with the program.
#include "cars/CarReference.h"
#include "cars/FNotepad.h"
#include "cars/Form1.h"
#include "clientdb/CurrentRecord.h"
#include "clientdb/Employees.h"
#include "clientdb/store/StoreFaults.h"
#include "clientdb/store/TableLayouts.h"
#include "edition/Edition.h"
#include "frame/CheckedFile.h"
#include "frame/Text.h"
#include "screens/Form3.h"
#include "support/Enter.h"
#include "support/ScriptedDoor.h"
#include "support/StoreFixture.h"
#include "support/SyncCounter.h"

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <algorithm>
#include <cctype>
#include <map>
#include <optional>
#include <utility>

namespace quillmere {
namespace {

using test::Enter;

using FigureRow = std::map<std::string_view, std::string>;

class CarNotepadTest : public test::StoreFixture {
protected:
    CarNotepadTest()
    {
        file = folder.path / edition::ClientDatabaseName;
        std::filesystem::rename(folder.path / "clients", file);
        session.settings.path[1] = folder.path.string();
        session.settings.selectedFolder = 1;
        session.programFolder = folder.path;
        session.resourceFolder = folder.path;
        session.CurrentEmployer = "Acme Ltd";
        session.CurrentEmployee = "Jane Smith";
        Database database = Open();
        CreateEmployee(database, {"Acme Ltd", "Jane", "Smith", "123/A456"});
        CreateReferenceTables(Reference());
        session.screens.Register("FNotepad", [](Session& with) { return std::make_unique<FNotepad>(with); });
        session.screens.Register("Form1", [](Session& with) { return std::make_unique<Form1>(with); });
        session.screens.Register("Form3", [](Session& with) { return std::make_unique<Form3>(with); });
    }
    ~CarNotepadTest() override { SetStoreFaultHook({}); }

    std::filesystem::path Reference() const { return folder.path / CarReferenceName; }

    void AddFigures(const std::vector<FigureRow>& rows) const
    {
        Database database = Database::OpenReferenceDatabase(Reference(), OpenMode::ReadWrite);
        const WriteBatch batch(database);
        Recordset manufacturers = database.OpenRecordset("Manufacturers");
        Recordset figures = database.OpenRecordset("Figures");
        for (const FigureRow& row : rows) {
            manufacturers.AddNew();
            manufacturers.SetField("Manufacturer", row.contains("Manufacturer") ? row.at("Manufacturer") : "");
            manufacturers.Update();
            figures.AddNew();
            for (const auto& [column, text] : row)
                figures.SetField(column, text);
            figures.Update();
        }
    }

    static void Choose(Screen& screen, std::string_view list, std::string_view entry)
    {
        Box& box = screen.box(list);
        const auto found = std::ranges::find(box.Entries(), entry);
        ASSERT_NE(found, box.Entries().end()) << entry;
        screen.Choose(box, static_cast<int>(found - box.Entries().begin()));
    }

    std::string Stored(std::string_view table, std::string_view field)
    {
        Database database = Open();
        Recordset records = database.OpenRecordset(table);
        records.Index("IndKey");
        records.Seek(session.CurrentEmployer, session.CurrentEmployee);
        return std::string(records.Field(field));
    }

    test::ScriptedDoor door;
    Session session{door};
};

// ---- the sheet's rules and the columns', for the same car

/// A point in which the sheet differs from the columns: facts by the sheet's boxes, and what box of each shows what.
struct Difference {
    std::string_view point;
    std::vector<std::pair<std::string_view, std::string_view>> facts; ///< beside those of a plain car
    std::string_view box, sheet;
    std::string_view columnBox, column;
    std::string_view message = {}; ///< on the sheet
};

const std::vector<Difference>& Differences()
{
    static const std::vector<Difference> table = {
        {"the fuel multiplier is 14400", {}, "VBox", "   2160.00", "VBox1", "   2700.00"},
        {"the fuel deduction is divided by 366, and not rounded up",
         {{"First", "01/06/2010"}, {"Last", "30/06/2010"}},
         "YBox",
         "    177.05",
         "YBox1",
         "    222.00"},
        {"the car deduction is divided by 365, and not rounded up",
         {{"First", "01/06/2010"}, {"Last", "30/06/2010"}},
         "RBox",
         "    246.58",
         "RBox1",
         "    247.00"},
        {"the full-year benefit keeps its pence",
         {{"ListPriceBox", "20001.01"}},
         "PBox",
         "   3000.15",
         "PBox1",
         "   3000.00"},
        {"letter G is refused", {{"Fuel", "g"}}, "Fuel", "", "FFuel1", "G", "Invalid Fuel Character"},
        {"an older electric car goes by its engine",
         {{"DateReg", "31/12/1997"}, {"Fuel", "E"}, {"C02Level", ""}, {"EngineSize", "1401"}},
         "NBox",
         "22",
         "NBox1",
         ""},
        {"without a figure letter E has 15 less 6",
         {{"Fuel", "E"}, {"C02Level", ""}, {"EngineSize", "1401"}},
         "NBox",
         "9",
         "NBox1",
         ""},
        {"without a figure letter H has 2 off",
         {{"Fuel", "H"}, {"C02Level", ""}, {"EngineSize", "1401"}},
         "NBox",
         "23",
         "NBox1",
         "22"},
        {"without a figure letter C has 1 off",
         {{"Fuel", "C"}, {"C02Level", ""}, {"EngineSize", "1401"}},
         "NBox",
         "24",
         "NBox1",
         "25"},
        {"without a figure letter B is rated, and has 1 off",
         {{"Fuel", "B"}, {"C02Level", ""}, {"EngineSize", "2001"}},
         "NBox",
         "34",
         "NBox1",
         "-2"},
        {"the figure is rounded by its last digit", {{"C02Level", "98"}}, "GBox", "985", "GBox1", "95"},
        {"below 165 the rate is 15", {{"C02Level", "160"}}, "HBox", "15", "HBox1", "21"},
        {"below 165 the rate of diesel is 18", {{"C02Level", "160"}, {"Fuel", "D"}}, "HBox", "18", "HBox1", "24"},
        {"from 165 to 265 the rate is the reference database's", {{"C02Level", "203"}}, "HBox", "22", "HBox1", "29"},
        {"and of diesel that of its second column", {{"C02Level", "203"}, {"Fuel", "D"}}, "HBox", "25", "HBox1", "32"},
        {"letter L reads the first column",
         {{"C02Level", "203"}, {"Fuel", "L"}, {"DateReg", "01/02/2007"}},
         "HBox",
         "22",
         "HBox1",
         "32"},
        {"letter H has 2 off with a figure", {{"C02Level", "150"}, {"Fuel", "H"}}, "JBox", "2", "JBox1", "3"},
        {"letter C has 1 off with a figure", {{"C02Level", "150"}, {"Fuel", "C"}}, "JBox", "1", "JBox1", "0"},
        {"the full discount comes off, too", {{"C02Level", "104"}, {"Fuel", "B"}}, "NBox", "12", "NBox1", "10"},
        // What is as on the columns.
        {"the price is limited to 80000", {{"AccessoriesBox", "61000"}}, "EBox", "  80000.00", "EBox1", "  80000.00"},
        {"contributions above 5000 are emptied",
         {{"DBox", "5000.01"}},
         "DBox",
         "",
         "FCaptContr1",
         "",
         "Capital Contribution cannot be over £5000"},
        {"a car without dates was there all year", {}, "QBox", "", "QBox1", ""},
    };
    return table;
}

/// The column's box for a box of the sheet, in the order in which they are filled in.
constexpr auto ColumnBoxes = std::to_array<std::pair<std::string_view, std::string_view>>({
    {"DateReg", "FRegDate1"},
    {"Fuel", "FFuel1"},
    {"C02Level", "FC021"},
    {"EngineSize", "FEngine1"},
    {"ListPriceBox", "FListPrice1"},
    {"AccessoriesBox", "FAccessories1"},
    {"DBox", "FCaptContr1"},
});

class SheetBesideColumn : public CarNotepadTest, public ::testing::WithParamInterface<Difference> {};

TEST_P(SheetBesideColumn, ShowsWhatItsRuleGives)
{
    const Difference& row = GetParam();
    AddFigures({{{"C02", "200"}, {"Column 1", "22"}, {"Column 2", "25"}}});
    std::map<std::string_view, std::string_view> facts = {
        {"DateReg", "01/02/2008"}, {"Fuel", "P"}, {"C02Level", "130"}, {"EngineSize", ""}, {"ListPriceBox", "20000"}};
    for (const auto& [name, text] : row.facts)
        facts[name] = text;
    Screen& sheet = *session.screens.Show("FNotepad");
    Screen& page = *session.screens.Load("Form3");
    sheet.Click(sheet.box("Check1"));
    page.Click(page.box("FuelTick1"));
    for (const auto& [onSheet, inColumn] : ColumnBoxes)
        if (const auto fact = facts.find(onSheet); fact != facts.end()) {
            Enter(sheet, onSheet, fact->second);
            Enter(page, inColumn, fact->second);
        }
    for (const std::string_view end : {"First", "Last"})
        if (const auto fact = facts.find(end); fact != facts.end()) {
            Enter(sheet, "txtUnavailable" + std::string(end), fact->second, 1);
            Enter(page, "txtUnavailable" + std::string(end) + "1", fact->second, 1);
        }
    if (facts["C02Level"].empty() && page.box("FNoC021").Enabled())
        page.Click(page.box("FNoC021"));
    EXPECT_EQ(sheet.box(row.box).Text(), row.sheet);
    EXPECT_EQ(page.box(row.columnBox).Text(), row.column);
    if (!row.message.empty()) {
        ASSERT_FALSE(door.messages.empty());
        EXPECT_EQ(door.messages.front().text, row.message);
    }
}

INSTANTIATE_TEST_SUITE_P(Rules, SheetBesideColumn, ::testing::ValuesIn(Differences()), [](const auto& tested) {
    std::string name;
    bool upper = true;
    for (const char c : tested.param.point) {
        if (std::isalnum(static_cast<unsigned char>(c)) == 0)
            upper = true;
        else
            name += std::exchange(upper, false) ? static_cast<char>(std::toupper(static_cast<unsigned char>(c))) : c;
    }
    return name;
});

TEST_F(CarNotepadTest, AnEntryThatIsRefusedLeavesNoStaleWorking)
{
    struct Case {
        std::string_view box, refused, worked, text;
    };
    for (const Case& c : {Case{"Fuel", "G", "PBox", ""}, Case{"DateReg", "1/13/2008", "PBox", ""},
                          Case{"DateReg", "6/4/2011", "PBox", ""}, Case{"DBox", "5000.01", "EBox", "  20000.00"}}) {
        Screen& sheet = *session.screens.Show("FNotepad");
        Enter(sheet, "DateReg", "01/02/2008");
        Enter(sheet, "Fuel", "P");
        Enter(sheet, "C02Level", "130");
        Enter(sheet, "ListPriceBox", "20000");
        Enter(sheet, "DBox", "4000");
        EXPECT_EQ(sheet.box("EBox").Text(), "  16000.00");
        EXPECT_EQ(sheet.box("PBox").Text(), "   2400.00");
        Enter(sheet, c.box, c.refused);
        EXPECT_EQ(door.messages.size(), 1U);
        door.messages.clear();
        EXPECT_EQ(sheet.box(c.box).Text(), "");
        EXPECT_EQ(sheet.box(c.worked).Text(), c.text) << c.box;
        session.screens.Unload("FNotepad");
    }
}

// ---- opening and Ok

TEST_F(CarNotepadTest, AStoreThatFailsAtTheOpeningIsToldUnderItsTitleAndTheSheetStaysClosed)
{
    SetStoreFaultHook([](std::string_view) { return SQLITE_IOERR; });
    EXPECT_EQ(session.screens.Show("FNotepad"), nullptr);
    SetStoreFaultHook({});
    ASSERT_EQ(door.messages.size(), 1U);
    EXPECT_EQ(door.messages[0].title, "Notepad F Error");
}

class OkOfTheSheet : public CarNotepadTest {
protected:
    bool IsNull(std::string_view table, std::string_view field)
    {
        Database database = Open();
        return OpenCurrent(database, table, session).IsNull(field);
    }
    /// Fields of the three records that are not null: what Ok writes for an empty box is an empty text.
    std::size_t Written()
    {
        Database database = Open();
        std::size_t written = 0;
        for (const std::string_view table : {"FNotepad", "P11D", "ExtraCars"}) {
            const Recordset records = OpenCurrent(database, table, session);
            for (const Field& field : FieldsOf(FindTable(table)).All())
                if (!std::string_view(field.name).ends_with("Name") && !records.IsNull(field.name))
                    ++written;
        }
        return written;
    }
    /// Without a mark every field becomes null, which reads as it did before.
    void MarkAll(std::optional<std::string_view> mark)
    {
        Database database = Open();
        const WriteBatch batch(database);
        for (const std::string_view table : {"FNotepad", "P11D", "ExtraCars"}) {
            Recordset records = database.OpenRecordset(table);
            records.Index("IndKey");
            records.Seek(session.CurrentEmployer, session.CurrentEmployee);
            records.Edit();
            for (const Field& field : FieldsOf(FindTable(table)).All())
                if (!std::string_view(field.name).ends_with("Name")) {
                    if (mark)
                        records.SetField(field.name, *mark);
                    else
                        records.SetNull(field.name);
                }
            records.Update();
        }
    }
    void PressOk()
    {
        Screen* sheet = session.screens.Find("FNotepad");
        sheet->Click(sheet->box("Ok"));
    }
    /// Its own 35 fields of each of five cars, 23 facts of each and the two totals.
    static constexpr std::size_t Writes = 5 * 35 + 5 * 23 + 2;
};

TEST_F(OkOfTheSheet, WritesEveryFieldOfFiveCarsAndLeavesTheRestAlone)
{
    session.screens.Show("FNotepad");
    MarkAll({});
    PressOk();
    EXPECT_EQ(Written(), Writes);
    EXPECT_TRUE(IsNull("FNotepad", "Make6"));
    EXPECT_TRUE(IsNull("P11D", "FFuelTick1"));
    EXPECT_TRUE(IsNull("P11D", "FNBox1"));
    EXPECT_TRUE(IsNull("P11D", "GVan"));
    EXPECT_TRUE(IsNull("ExtraCars", "FCashEqu6"));
    EXPECT_FALSE(IsNull("ExtraCars", "FCashEqu5"));
}

TEST_F(OkOfTheSheet, KeepsWhatWasWrittenBeforeAFailure)
{
    session.screens.Show("FNotepad");
    for (std::size_t failing = 1; failing <= Writes; failing += 7) {
        MarkAll({});
        std::size_t updates = 0;
        SetStoreFaultHook([&](std::string_view statement) {
            return statement.starts_with("UPDATE") && ++updates == failing ? SQLITE_FULL : SQLITE_OK;
        });
        PressOk();
        SetStoreFaultHook({});
        EXPECT_EQ(Written(), failing - 1);
        ASSERT_EQ(door.messages.size(), 1U);
        EXPECT_EQ(door.messages[0].title, "Notepad F 'Ok' Error");
        EXPECT_EQ(door.TakeText(), "Unable to update database");
        EXPECT_TRUE(session.screens.IsShown("FNotepad"));
    }
    PressOk();
    EXPECT_FALSE(session.screens.IsShown("FNotepad"));
}

TEST_F(OkOfTheSheet, AllItsWritesCostOneTransaction)
{
    session.screens.Show("FNotepad");
    const test::SyncCounter syncs;
    PressOk();
    EXPECT_LE(syncs.Count(), 5);
    EXPECT_GT(syncs.Count(), 0);
}

TEST_F(OkOfTheSheet, LeavesNothingForThePageToWriteAgain)
{
    auto& page = static_cast<BoundScreen&>(*session.screens.Load("Form3"));
    ASSERT_EQ(page.StoreAndShow("loading error"), BoundScreen::Sought::Found);
    session.screens.Show("Form3");
    Screen& sheet = *session.screens.Show("FNotepad");
    Enter(sheet, "EngineSize", "1600");
    Enter(sheet, "txtUnavailableFirst", "1/6/10", 2);
    Enter(sheet, "DateWithdrawn", "1/1/2011");
    sheet.Click(sheet.box("WithdrawnTick"));
    PressOk();
    EXPECT_EQ(page.box("FEngine1").Text(), "1600");
    EXPECT_EQ(page.box("txtUnavailableFirst1", 2).Text(), "01/06/2010");
    EXPECT_EQ(page.box("FDateWithdrawn1").Text(), "01/01/2011");
    EXPECT_TRUE(page.box("FWithdrawnTick1").Ticked());
    EXPECT_EQ(Stored("P11D", "FDateWithdrawnTick1"), "1");
    MarkAll("0");
    session.screens.Unload("Form3");
    for (const std::string_view field : {"FEngine1", "FDateWithdrawn1", "FDateWithdrawnTick1", "FMakeModel2"})
        EXPECT_EQ(Stored("P11D", field), "0") << field;
}

TEST_F(OkOfTheSheet, TakesTheLongMakesShort)
{
    Screen& sheet = *session.screens.Show("FNotepad");
    Enter(sheet, "Make", "ROLLS-ROYCE AND BENTLEY MOTOR CARS");
    Enter(sheet, "Model", "ARNAGE");
    sheet.Click(sheet.box("lblCar5"));
    Enter(sheet, "Make", "MORGAN MOTOR COMPANY");
    sheet.Click(sheet.box("lblCar2"));
    Enter(sheet, "Model", "NO MAKE");
    PressOk();
    EXPECT_EQ(Stored("P11D", "FMakeModel1"), "R-ROYCE & BENTLEY ARNAGE");
    EXPECT_EQ(Stored("FNotepad", "Make1"), "ROLLS-ROYCE AND BENTLEY MOTOR CARS");
    EXPECT_EQ(Stored("P11D", "FMakeModel2"), " NO MAKE");
    EXPECT_EQ(Stored("ExtraCars", "FMakeModel5"), "MORGAN ");
    EXPECT_EQ(Stored("ExtraCars", "FMakeModel4"), "");
}

// ---- the dialog

class CarDialogTest : public CarNotepadTest {
protected:
    Screen& Dialog()
    {
        Screen* screen = session.screens.Show("Form1");
        screen->box("CarReg").SetText("01/02/2008");
        return *screen;
    }
};

TEST_F(CarDialogTest, ABlankDateIsNoneAtAll)
{
    AddFigures({{{"Manufacturer", "ALPHA"}}});
    Screen& dialog = Dialog();
    dialog.box("CarReg").SetText("   ");
    Choose(dialog, "Manufacture", "ALPHA");
    ASSERT_EQ(door.messages.size(), 1U);
    EXPECT_EQ(door.messages[0].title, edition::AppTitle);
    EXPECT_EQ(door.messages[0].text, "No Registration Date Entered");
    EXPECT_EQ(dialog.box("CarReg").Text(), "");
    EXPECT_EQ(dialog.box("Manufacture").Selected(), -1);
}

TEST_F(CarDialogTest, AListStopsGrowingAt501Values)
{
    std::vector<FigureRow> rows;
    for (int model = 1; model <= 510; ++model)
        rows.push_back({{"Manufacturer", "ALPHA"}, {"Model", "M" + std::to_string(model)}});
    rows.push_back({{"Manufacturer", "ALPHA"}, {"Model", "M7"}});
    AddFigures(rows);
    Screen& dialog = Dialog();
    Choose(dialog, "Manufacture", "ALPHA");
    const auto& models = dialog.box("Model").Entries();
    ASSERT_EQ(models.size(), 501U);
    EXPECT_EQ(models.front(), "M1");
    EXPECT_EQ(models.back(), "M501");
    // The manufacturers have no such limit, and no value is left out among them.
    EXPECT_EQ(dialog.box("Manufacture").Entries().size(), 511U);
}

TEST_F(CarDialogTest, TheListsBeginAfreshWithEachChoice)
{
    std::vector<FigureRow> rows;
    for (int model = 1; model <= 400; ++model)
        for (const char* maker : {"ALPHA", "BETA"})
            rows.push_back({{"Manufacturer", maker}, {"Model", maker + std::to_string(model)}});
    AddFigures(rows);
    Screen& dialog = Dialog();
    Choose(dialog, "Manufacture", "ALPHA");
    Choose(dialog, "Manufacture", "BETA");
    EXPECT_EQ(dialog.box("Model").Entries().size(), 400U);
    EXPECT_EQ(dialog.box("Model").Entries().front(), "BETA1");
}

TEST_F(CarDialogTest, AFileWithoutItsTablesIsToldOfAndTheDialogStaysEmpty)
{
    std::filesystem::copy_file(file, Reference(), std::filesystem::copy_options::overwrite_existing);
    Screen& dialog = Dialog();
    ASSERT_EQ(door.messages.size(), 1U);
    EXPECT_EQ(door.messages[0].title, "CO2 Calculator");
    EXPECT_TRUE(dialog.box("Manufacture").Entries().empty());
    dialog.Click(dialog.box("Delete"));
    EXPECT_EQ(door.messages.size(), 1U);
}

TEST_F(CarDialogTest, AFileCutShortIsToldOfAndTheDialogStaysEmpty)
{
    std::vector<FigureRow> rows;
    for (int model = 1; model <= 500; ++model)
        rows.push_back({{"Manufacturer", "MAKER " + std::to_string(model)}, {"Model", "M"}});
    AddFigures(rows);
    std::filesystem::resize_file(Reference(), std::filesystem::file_size(Reference()) / 3);
    Screen& dialog = Dialog();
    ASSERT_FALSE(door.messages.empty());
    EXPECT_EQ(door.messages[0].title, "CO2 Calculator");
    EXPECT_TRUE(dialog.box("Manufacture").Entries().empty());
}

TEST_F(CarDialogTest, AStoreThatFailsWhileTheListsAreReadIsToldOf)
{
    AddFigures({{{"Manufacturer", "ALPHA"}, {"Model", "ONE"}}});
    Screen& dialog = Dialog();
    SetStoreFaultHook([](std::string_view) { return SQLITE_IOERR; });
    Choose(dialog, "Manufacture", "ALPHA");
    SetStoreFaultHook({});
    ASSERT_EQ(door.messages.size(), 1U);
    EXPECT_EQ(door.messages[0].title, "CO2 Calculator");
    EXPECT_TRUE(dialog.box("Model").Entries().empty());
}

TEST_F(CarDialogTest, TheReferenceDatabaseIsOnlyRead)
{
    AddFigures({{{"Manufacturer", "ALPHA"}, {"Model", "ONE"}, {"C02", "200"}, {"Column 1", "22"}}});
    const std::string before = ReadFile(Reference());
    Screen& dialog = Dialog();
    Choose(dialog, "Manufacture", "ALPHA");
    EXPECT_EQ(CarReferenceRate(Reference(), 200, SheetColumn::Column1), "22");
    EXPECT_EQ(CarReferenceRate(Reference(), 200, SheetColumn::Column2), "");
    EXPECT_EQ(CarReferenceRate(Reference(), 205, SheetColumn::Column1), "");
    dialog.Click(dialog.box("Ok"));
    EXPECT_EQ(ReadFile(Reference()), before);
    EXPECT_EQ(ReadFile(folder.path / "Report.txt"), "*** Getting Car Details ***\n");
    // Nothing lies beside it that a reader with more rights would have made.
    for (const auto& entry : std::filesystem::directory_iterator(folder.path))
        EXPECT_FALSE(entry.path().filename().string().starts_with("CarC02-")) << entry.path();
}

TEST(ListedValues, TakesEachValueOnce)
{
    ListedValues values;
    EXPECT_TRUE(values.Add("a"));
    EXPECT_TRUE(values.Add(""));
    EXPECT_TRUE(values.Add("A"));
    EXPECT_FALSE(values.Add("a"));
    EXPECT_FALSE(values.Add(""));
    values.Clear();
    EXPECT_TRUE(values.Add("a"));
}

} // namespace
} // namespace quillmere
