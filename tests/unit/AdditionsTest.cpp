// The rule of what stands beside the form: with all of it used, what is stored, kept as settings and printed is byte
// for byte what it is with none of it used.
#include "app/Program.h"
#include "clientdb/store/FormMarks.h"
#include "clientdb/store/TableLayouts.h"
#include "edition/Edition.h"
#include "frame/Settings.h"
#include "support/ScriptedDoor.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <string>
#include <vector>

namespace quillmere::test {
namespace {

/// What a session leaves behind.
struct Left {
    std::map<std::string, std::string> tables; ///< every text, by table, record and field
    std::string settings, pdf;
};

/// The session of the sample: a new employer and employee, page 1 filled in, closed, opened again and printed as PDF.
class Sample {
public:
    explicit Sample(bool usesAdditions)
        : usesAdditions(usesAdditions),
          programFolder(folder.path / edition::ProductFolder),
          program(door, nullptr, {.programFolder = Prepared(), .resourceFolder = Resources()})
    {
    }

    Left Play()
    {
        EXPECT_TRUE(program.Main());
        Use({"mnuAbout", "mnuHelp", "mnuCalculatorCheck", "mnuFind"});
        Menu("New");
        Click("NewFileCheck", "Option2");
        Click("NewFileCheck", "NewFileOk");
        Enter("NewFile", "EmployerName", "Acme Ltd");
        Enter("NewFile", "PAYE", "123/A456");
        Enter("NewFile", "EmployeeName", "Jane");
        Enter("NewFile", "EmployeeSurname", "Smith");
        Click("NewFile", "OkEmp");
        Enter("Form3", "DateofBirth", "5/4/61");
        Enter("Form3", "NatIns", "AB123456C");
        Use({"mnuOverview", "mnuCheck", "mnuExplain", "mnuHistory", "mnuReviewed"});
        Enter("Form3", "ADescriptionAsset", "Laptop computer");
        Enter("Form3", "ACostMarketBox", "800");
        Enter("Form3", "AAmountGood", "150");
        Enter("Form3", "FMakeModel1", "Estate");
        Enter("Form3", "FRegDate1", "1/2/08");
        Enter("Form3", "FC021", "152");
        Enter("Form3", "FFuel1", "H");
        Enter("Form3", "FListPrice1", "20000");
        Click("Form3", "FuelTick1");
        Use({"mnuOverview", "mnuReviewed", "mnuLastYear", "mnuExplain", "mnuLastEmployee", "mnuNextEmployee"});
        Menu("mnuCloseFile");
        Use({"mnuOverview", "mnuFind", "mnuLastEmployee"});
        Menu("Open");
        Screens& screens = program.TheSession().screens;
        screens.Find("EmployerList")->Choose(At("EmployerList", "EmployerList"), 0);
        screens.Find("EmployeeList")->Choose(At("EmployeeList", "EmployeeList"), 0);
        Click("EmployeeList", "EmployeeOpen");
        Use({"mnuCheck"});
        if (usesAdditions)
            MarkPrinted();
        Menu("mnuPrint");
        Left left{.tables = Tables(), .settings = {}, .pdf = Content(folder.path / "Docs" / "Preview.pdf")};
        program.Close();
        EXPECT_TRUE(program.Ended());
        left.settings = Content(programFolder / SettingsFileName);
        // The two sessions differ in where they took place.
        for (std::size_t at = 0; (at = left.settings.find(folder.path.string(), at)) != std::string::npos;)
            left.settings.replace(at, folder.path.string().size(), "ROOT");
        return left;
    }

private:
    std::filesystem::path Prepared() const
    {
        std::filesystem::create_directories(programFolder);
        std::ofstream(programFolder / SettingsFileName) << "REPORT PREVIEW=1\n";
        return programFolder;
    }
    static std::filesystem::path Resources() { return std::filesystem::path(BINARY_DIR) / edition::ProductFolder; }

    Box& At(std::string_view screen, std::string_view box)
    {
        return program.TheSession().screens.Find(screen)->box(box);
    }
    void Click(std::string_view screen, std::string_view box)
    {
        program.TheSession().screens.Find(screen)->Click(At(screen, box));
    }
    void Menu(std::string_view entry) { Click("MDIForm1", entry); }
    void Enter(std::string_view screenName, std::string_view boxName, std::string_view text)
    {
        Screen& screen = *program.TheSession().screens.Find(screenName);
        Box& box = screen.box(boxName);
        screen.Enter(box);
        box.AcceptTyped(text);
        screen.Typed(box);
        screen.Leave(box);
    }
    /// Chooses commands that stand beside the form, lets them work, and closes what they have opened.
    void Use(std::initializer_list<std::string_view> commands)
    {
        if (!usesAdditions)
            return;
        Screens& screens = program.TheSession().screens;
        for (const std::string_view command : commands) {
            std::vector<std::string> before;
            for (const Screen* screen : screens.Open())
                before.push_back(screen->Name());
            Menu(command);
            while (screens.HasDeferred())
                screens.RunDeferred();
            for (Screen* screen : screens.Open())
                if (std::ranges::find(before, screen->Name()) == before.end())
                    screens.Unload(screen->Name());
        }
    }
    void MarkPrinted()
    {
        Database database = Database::OpenDatabase(program.TheSession().ClientDatabasePath());
        EXPECT_TRUE(FormMarks(database).Set(FormMark::Printed, "Acme Ltd", "Jane Smith", "30/06/2011"));
        EXPECT_TRUE(FormMarks(database).Of("Acme Ltd", "Jane Smith").contains(FormMark::Reviewed));
    }
    std::map<std::string, std::string> Tables()
    {
        std::map<std::string, std::string> texts;
        Database database = Database::OpenDatabase(program.TheSession().ClientDatabasePath());
        for (const TableLayout& table : ClientTables()) {
            Recordset records = database.OpenRecordset(table.name);
            int number = 0;
            for (records.MoveFirst(); !records.AtEnd(); records.MoveNext(), ++number)
                for (const Field& field : FieldsOf(table).All())
                    texts.emplace(std::string(table.name) + "/" + std::to_string(number) + "/" + field.name,
                                  records.IsNull(field.name) ? "null" : "'" + std::string(records.Field(field.name)));
        }
        return texts;
    }

    bool usesAdditions;
    TemporaryFolder folder;
    std::filesystem::path programFolder;
    ScriptedDoor door;
    Program program;
};

TEST(Additions, ChangeNothingOfWhatIsStoredKeptAndPrinted)
{
    const Left without = Sample(false).Play(), with = Sample(true).Play();
    ASSERT_GT(without.tables.size(), 1000U);
    EXPECT_EQ(without.tables.at("P11D/0/FCashEqu1"), "'   3200.00");
    ASSERT_TRUE(without.pdf.starts_with("%PDF"));
    for (const auto& [field, text] : without.tables)
        EXPECT_EQ(with.tables.contains(field) ? with.tables.at(field) : "missing", text) << field;
    EXPECT_EQ(with.tables.size(), without.tables.size());
    EXPECT_EQ(with.settings, without.settings);
    EXPECT_TRUE(with.pdf == without.pdf) << "the printed pages differ";
}

} // namespace
} // namespace quillmere::test
