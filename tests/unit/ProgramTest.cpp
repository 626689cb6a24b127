// The program from its start to its end, without windows: what it says and in which box, what it makes and in which
// order, and what it leaves alone.
#include "app/Program.h"

#include "app/MDIForm1.h"
#include "edition/Edition.h"
#include "frame/CloseAll.h"
#include "support/ScriptedDoor.h"
#include "support/StoreFixture.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <functional>
#include <optional>
#include <set>

namespace quillmere {
namespace {

using test::Content;
using test::NamesIn;
using test::ScriptedDoor;
using test::Store;
using test::TemporaryFolder;

constexpr std::string_view CouldNotBeCreated = "The following client database could not be created:\n\n";

/// Looks at what there is at the moment at which the first window is put up.
class WatchingHost : public ScreenHost {
public:
    void Show(Screen& screen) override
    {
        if (screen.Name() == "MDIForm1" && whenShown)
            whenShown(screen);
    }
    void Hide(Screen&) override {}
    void Close(Screen&) override {}
    void WorkWaiting() override {}

    std::function<void(Screen&)> whenShown;
};

class ProgramTest : public ::testing::Test {
protected:
    ProgramTest() { std::filesystem::create_directories(programFolder); }

    /// Starts the program anew; what was up is gone without a close-down.
    Session& Start()
    {
        program.reset();
        door.messages.clear();
        program.emplace(door, &host,
                        ProgramPlaces{.programFolder = programFolder, .resourceFolder = resources, .database = named});
        EXPECT_TRUE(program->Main());
        return program->TheSession();
    }

    Screen& Main() { return *program->TheSession().screens.Find("MDIForm1"); }
    void Click(std::string_view box, int index = Box::NoIndex) { Main().Click(Main().box(box, index)); }
    std::filesystem::path Database() const { return programFolder / edition::ClientDatabaseName; }

    TemporaryFolder root;
    std::filesystem::path programFolder = root / edition::ProductFolder;
    std::filesystem::path resources = std::filesystem::path(BINARY_DIR) / edition::ProductFolder;
    std::filesystem::path named; ///< at the start
    ScriptedDoor door;
    WatchingHost host;
    std::optional<Program> program;
};

TEST_F(ProgramTest, ReadsTheSettingsThenFillsTheFolderMenuThenMakesTheDatabaseThenShowsTheWindow)
{
    Store(programFolder / SettingsFileName, "FOLDER 1=Mine\nPATH 1=" + programFolder.string() + "\nREPORT PAGE=x\n");
    bool shown = false;
    host.whenShown = [&](Screen& main) {
        shown = true;
        EXPECT_EQ(main.box("mnuAltFolder", 1).Text(), "&1 Mine");
        EXPECT_TRUE(main.box("mnuAltFolder", 1).Ticked());
        EXPECT_TRUE(std::filesystem::exists(Database()));
        EXPECT_EQ(main.box("StatusBar1", 1).Text(), "Q1111");
        EXPECT_EQ(door.messages.size(), 1u) << "the bad setting";
    };
    Start();
    EXPECT_TRUE(shown);
    ASSERT_EQ(door.messages.size(), 1u);
    EXPECT_EQ(door.messages[0].icon, Icon::Critical);
    EXPECT_TRUE(door.messages[0].text.starts_with("Procedure: ReadConfiguration\nError 13:  Type mismatch: line 3 "))
        << door.messages[0].text;
}

TEST_F(ProgramTest, TellsOfABadSettingBeforeItTellsOfTheDatabase)
{
    resources = root / "nowhere";
    Store(programFolder / SettingsFileName, "FOLDER 1=Mine\nPATH 1=" + programFolder.string() + "\nREPORT PAGE=x\n");
    host.whenShown = [&](Screen& main) {
        EXPECT_EQ(main.box("mnuAltFolder", 1).Text(), "&1 Mine");
        EXPECT_EQ(door.messages.size(), 2u) << "both before the window is up";
    };
    Start();
    ASSERT_EQ(door.messages.size(), 2u);
    EXPECT_TRUE(door.messages[0].text.starts_with("Procedure: ReadConfiguration")) << door.messages[0].text;
    EXPECT_EQ(door.messages[1].text, std::string(CouldNotBeCreated) + Database().string());
    EXPECT_EQ(door.messages[1].title, "2011 Quillmere");
    EXPECT_EQ(door.messages[1].icon, Icon::Critical);
    EXPECT_EQ(door.messages[1].buttons, Buttons::Ok);
}

TEST_F(ProgramTest, NamesTheDatabaseOfAnEmptyFolderAtTheTop)
{
    resources = root / "nowhere";
    Store(programFolder / SettingsFileName, "FOLDER 1=Mine\nPATH 1=\n");
    Start();
    ASSERT_EQ(door.messages.size(), 1u);
    EXPECT_EQ(door.messages[0].text, std::string(CouldNotBeCreated) + "/ClientQuillmere11.mdb");
}

TEST_F(ProgramTest, AsksInACriticalBoxWhetherToQuit)
{
    Start();
    door.answers = {Answer::No};
    Click("cmdExit");
    EXPECT_FALSE(program->Ended());
    ASSERT_EQ(door.messages.size(), 1u);
    EXPECT_EQ(door.messages[0].title, "End Program");
    EXPECT_EQ(door.messages[0].text, "Quit 2011 Quillmere");
    EXPECT_EQ(door.messages[0].icon, Icon::Critical);
    EXPECT_EQ(door.messages[0].buttons, Buttons::YesNo);
    door.answers = {Answer::Yes};
    Click("cmdExit");
    EXPECT_TRUE(program->Ended());
}

TEST_F(ProgramTest, TellsOfAChangeOfFolderInACriticalBoxAndEnds)
{
    Store(programFolder / SettingsFileName, "FOLDER 1=One\nPATH 1=" + programFolder.string() + "\nFOLDER 2=Two\n");
    Start();
    Click("mnuAltFolder", 2);
    ASSERT_EQ(door.messages.size(), 1u);
    EXPECT_EQ(door.messages[0].title, "Quillmere Program Closing - Please restart from the desktop");
    EXPECT_EQ(door.messages[0].text,
              "The Database folder has been updated.  The program will now exit to save changes");
    EXPECT_EQ(door.messages[0].icon, Icon::Critical);
    EXPECT_EQ(door.messages[0].buttons, Buttons::Ok);
    EXPECT_TRUE(program->Ended());
}

TEST_F(ProgramTest, BeginsWithTheFolderOfTheDatabaseThatIsNamed)
{
    Store(programFolder / SettingsFileName,
          "FOLDER 1=One\nPATH 1=" + programFolder.string() + "\nFOLDER 2=Two\nPATH 2=" + root.path.string() + "\n");
    Store(root / edition::ClientDatabaseName, "");
    named = root / edition::ClientDatabaseName;
    Start();
    EXPECT_EQ(program->TheSession().settings.selectedFolder, 2);
    EXPECT_TRUE(Main().box("mnuAltFolder", 2).Ticked());
    EXPECT_TRUE(Main().box("StatusNote").Text().empty());
}

TEST_F(ProgramTest, TakesTheFirstFreePlaceForAFolderThatIsNew)
{
    std::filesystem::create_directory(root / "Acme");
    Store(root / "Acme" / edition::ClientDatabaseName, "");
    Store(programFolder / SettingsFileName,
          "FOLDER 1=One\nPATH 1=" + programFolder.string() + "\nFOLDER 3=Three\nPATH 3=/\n");
    named = root / "Acme" / edition::ClientDatabaseName;
    Start();
    EXPECT_EQ(program->TheSession().ClientDatabasePath(), named);
    EXPECT_EQ(Main().box("mnuAltFolder", 2).Text(), "&2 Acme");
    program->Close();
    EXPECT_NE(Content(programFolder / SettingsFileName).find("FOLDER 2=Acme\n"), std::string::npos);
    EXPECT_NE(Content(programFolder / SettingsFileName).find("SELECTED FOLDER=2\n"), std::string::npos);
}

TEST_F(ProgramTest, BeginsAsEverWhereThereIsNoPlaceForTheFolder)
{
    Store(root / edition::ClientDatabaseName, "");
    Store(programFolder / SettingsFileName,
          "FOLDER 1=One\nPATH 1=" + programFolder.string() + "\nFOLDER 2=Two\nFOLDER 3=Three\nFOLDER 4=Four\n");
    named = root / edition::ClientDatabaseName;
    Start();
    EXPECT_EQ(program->TheSession().settings.selectedFolder, 1);
    EXPECT_EQ(Main().box("StatusNote").Text(), named.string() + " is in none of the 4 client folders: Folder, Manager "
                                                                "makes room for it");
}

TEST_F(ProgramTest, BeginsAsEverWithAFileThatIsNoClientDatabase)
{
    Store(programFolder / SettingsFileName, "FOLDER 1=One\nPATH 1=" + programFolder.string() + "\n");
    for (const char* name : {"letter.txt", edition::ClientDatabaseName.data()}) { // the second is not there
        named = root / name;
        Start();
        EXPECT_EQ(program->TheSession().settings.selectedFolder, 1);
        EXPECT_EQ(Main().box("StatusNote").Text(), named.string() + " is not a client database of this edition");
        program->Close();
        EXPECT_FALSE(std::filesystem::exists(named));
    }
}

TEST_F(ProgramTest, LeavesADatabaseThatIsThereAlone)
{
    Start();
    program->Close();
    const std::string before = Content(Database());
    const auto written = std::filesystem::last_write_time(Database());
    Start();
    program->Close();
    EXPECT_TRUE(Content(Database()) == before);
    EXPECT_EQ(std::filesystem::last_write_time(Database()), written);
    Store(Database(), "not even a database");
    Start();
    program->Close();
    EXPECT_EQ(Content(Database()), "not even a database");
}

TEST_F(ProgramTest, StartsWithJunkForSettingsAndWritesThemAnew)
{
    constexpr char head[] = "\x7F"
                            "ELF\0\1\xFF\xFE=\n\r\n=x\nFOLDER 1=\xC3\x28\nSELECTED FOLDER=";
    std::string junk(head, sizeof head - 1);
    junk += std::string(70'000, '\xF0') + "\nPATH 1";
    Store(programFolder / SettingsFileName, junk);
    Session& session = Start();
    EXPECT_LE(door.messages.size(), 1u);
    EXPECT_FALSE(program->Ended());
    EXPECT_EQ(session.settings.selectedFolder, 1);
    program->Close();
    EXPECT_TRUE(program->Ended());
    const std::string written = Content(programFolder / SettingsFileName);
    EXPECT_TRUE(written.starts_with("USER=Marlowby User\nFOLDER 1=")) << written.substr(0, 80);
    EXPECT_NE(written.find("\nSELECTED FOLDER=1\n"), std::string::npos);
    Start();
    EXPECT_TRUE(door.messages.empty()) << door.messages[0].text;
}

TEST_F(ProgramTest, TakesAFolderInThePlaceOfTheDatabaseForAStoreThatCannotBeOpened)
{
    std::filesystem::create_directory(Database());
    Session& session = Start();
    EXPECT_TRUE(door.messages.empty()) << "the name is taken: nothing is made";
    EXPECT_TRUE(std::filesystem::is_empty(Database()));
    Click("Open");
    ASSERT_EQ(door.messages.size(), 1u);
    EXPECT_NE(door.messages[0].text, "");
    EXPECT_NE(door.messages[0].text, "There are no Employers to display");
    EXPECT_EQ(session.screens.Find("EmployerList"), nullptr);
    EXPECT_FALSE(program->Ended());
    program->Close();
    EXPECT_TRUE(program->Ended());
    EXPECT_TRUE(std::filesystem::is_empty(Database()));
}

TEST_F(ProgramTest, ASecondInstanceSaysSoAndTouchesNothing)
{
    Start();
    std::filesystem::remove(Database());
    const std::set<std::string> before = NamesIn(programFolder);
    const int beeps = door.beeps;
    ScriptedDoor second;
    {
        Program another(second, &host, {.programFolder = programFolder, .resourceFolder = resources});
        host.whenShown = [](Screen&) { ADD_FAILURE() << "a second window"; };
        EXPECT_FALSE(another.Main());
        EXPECT_TRUE(another.TheSession().screens.Open().empty());
        EXPECT_TRUE(another.TheSession().WindowsFolder.empty()) << "it ends before it looks for its folders";
    }
    EXPECT_EQ(second.beeps, 1);
    ASSERT_EQ(second.messages.size(), 1u);
    EXPECT_EQ(second.messages[0].title, "2011 Quillmere");
    EXPECT_EQ(second.messages[0].text, "2011 Quillmere is already running");
    EXPECT_EQ(second.messages[0].buttons, Buttons::Ok);
    EXPECT_EQ(NamesIn(programFolder), before) << "no database, no settings file";
    EXPECT_EQ(door.beeps, beeps);
    EXPECT_TRUE(door.messages.empty());
    EXPECT_FALSE(program->Ended());
}

TEST_F(ProgramTest, CloseFileWithNothingOpenDoesNothing)
{
    Session& session = Start();
    EXPECT_FALSE(Main().box("cmdFile", 4).Enabled());
    const auto before = session.screens.Open();
    Click("cmdFile", 4);
    EXPECT_EQ(session.screens.Open(), before);
    EXPECT_TRUE(door.messages.empty());
    EXPECT_EQ(door.beeps, 0);
    EXPECT_EQ(Main().Caption(), "2011 Quillmere");
}

TEST_F(ProgramTest, HasItsMenusInOrderAndOnlyWhatNeedsNoEmployeeInUseAtTheStart)
{
    struct Entry {
        std::string_view menu, box, caption;
        bool enabled = true;
        int index = Box::NoIndex;
        bool visible = true;
    };
    const Entry expected[] = {
        {"File", "New", "New"},
        {"File", "Open", "Open"},
        {"File", "mnuTransfer", "Transfer"},
        {"File", "FileP11DB", "P11D(b)", false},
        {"File", "FileDeleteEmployer", "Delete Employer"},
        {"File", "FileDeleteEmployee", "Delete Employee"},
        {"File", "FileRenameEmp", "Rename Employer/PAYE"},
        {"File", "FileRename", "Rename Employee"},
        {"File", "mnuPrint", "Print ", false},
        {"File", "mnuBatch", "Employer Batch Print"},
        {"File", "mnuPrintSetup", "Print Setup..."},
        {"File", "ExitOpt", "Exit"},
        {"File", "mnuFind", "Find Employee..."},
        {"File", "mnuLastBatch", "Last Batch..."},
        {"File", "mnuImport", "Import..."},
        {"File", "mnuExport", "Export..."},
        {"File", "mnuRecent", "", true, 1, false},
        {"File", "mnuRecent", "", true, 2, false},
        {"File", "mnuRecent", "", true, 3, false},
        {"File", "mnuRecent", "", true, 4, false},
        {"File", "mnuRecent", "", true, 5, false},
        {"File", "mnuRecent", "", true, 6, false},
        {"File", "mnuRecent", "", true, 7, false},
        {"File", "mnuRecent", "", true, 8, false},
        {"Folder", "mnuAltFolder", "&1 Default client folder", true, 1},
        {"Folder", "mnuAltFolder", "", true, 2, false},
        {"Folder", "mnuAltFolder", "", true, 3, false},
        {"Folder", "mnuAltFolder", "", true, 4, false},
        {"Folder", "mnuFolderManager", "Manager..."},
        {"Folder", "mnuSafetyCopies", "Safety Copies..."},
        {"Folder", "mnuShare", "Share This Folder..."},
        {"View", "ToolbarOpt", "Toolbar"},
        {"View", "mnuOverview", "Overview..."},
        {"View", "mnuCheck", "Check..."},
        {"View", "mnuExplain", "Explain...", false},
        {"View", "mnuHistory", "History..."},
        {"View", "mnuLastYear", "Compare With Last Year...", false},
        {"View", "mnuReviewed", "Reviewed", false},
        {"View", "mnuZoomIn", "Zoom In", true},
        {"View", "mnuZoomOut", "Zoom Out", true},
        {"View", "mnuZoomUsual", "Usual Size", true},
        {"Settings", "mnuSettingsReports", "Reports"},
        {"Edit", "mnuUndo", "Undo"},
        {"Edit", "mnuTyped", "Typed and Not Stored...", false},
        {"Go", "mnuPage1", "Page 1", false},
        {"Go", "mnuPage2", "Page 2", false},
        {"Go", "mnuCars3And4", "Cars 3 + 4", false},
        {"Go", "mnuCars5And6", "Cars 5 + 6", false},
        {"Go", "mnuDeclaration", "P11D(b)", false},
        {"Go", "mnuPreviousEmployee", "Previous Employee", false},
        {"Go", "mnuNextEmployee", "Next Employee", false},
        {"Go", "mnuLastEmployee", "Last Employee Open"},
        {"Go", "mnuCloseFile", "Close File", false},
        {"Help", "mnuHelp", "Guide..."},
        {"Help", "mnuCalculatorCheck", "Check the Calculators..."},
        {"Help", "mnuSample", "Add Sample Clients"},
        {"Help", "mnuAbout", "About..."},
    };
    Start();
    const std::vector<MenuRow> rows = MenuRows();
    ASSERT_EQ(rows.size(), std::size(expected));
    for (std::size_t place = 0; place < rows.size(); ++place) {
        const Entry& entry = expected[place];
        EXPECT_EQ(rows[place].menu, entry.menu) << place;
        EXPECT_EQ(rows[place].box, entry.box) << place;
        EXPECT_EQ(rows[place].index, entry.index) << place;
        const Box& box = Main().box(entry.box, entry.index);
        EXPECT_EQ(box.Text(), entry.caption) << entry.box;
        EXPECT_EQ(box.Enabled(), entry.enabled) << entry.box;
        EXPECT_EQ(box.Visible(), entry.visible) << entry.box;
    }
    const std::set<int> disabled{4, 9}, shown{0, 3, 4, 8, 9};
    for (int button = 0; button <= 12; ++button) {
        EXPECT_EQ(Main().box("cmdFile", button).Enabled(), !disabled.contains(button)) << button;
        EXPECT_EQ(Main().box("cmdFile", button).Visible(), shown.contains(button)) << button;
    }
    EXPECT_TRUE(Main().box("ToolbarOpt").Ticked());
}

/// A screen that notes its end.
class Mortal : public Screen {
public:
    Mortal(Session& session, std::string_view name, std::vector<std::string>& ends)
        : Screen(session, name, ShowMode::Child, name), ends(ends)
    {
    }
    void Unload() override { ends.push_back(Name()); }

private:
    std::vector<std::string>& ends;
};

/// Every screen that is closed by either routine, opened in another order, and some that are not.
class CloseAllTest : public ::testing::Test {
protected:
    CloseAllTest()
    {
        RegisterScreens(session.screens, printing);
        std::set<std::string> names(all.begin(), all.end());
        names.insert(others.begin(), others.end());
        for (const std::string& name : names) {
            session.screens.Register(
                name, [name, this](Session& with) { return std::make_unique<Mortal>(with, name, ends); });
            session.screens.Show(name);
        }
    }

    std::vector<std::string> Left() const
    {
        std::vector<std::string> left;
        for (const Screen* screen : session.screens.Open())
            left.push_back(screen->Name());
        return left;
    }

    const std::vector<std::string> all{
        "Side2Form1",    "Form3",     "ANotepad",    "BNotepad",     "CNotepad",  "DNotepad",        "D2Notepad",
        "D2InfoNotepad", "ENotepad",  "FNotepad",    "GNotepad",     "GNotepad2", "HNotepad",        "HNotepad2",
        "INotepad",      "JNotepad",  "KNotepad",    "LNotepad",     "NNotepad1", "NNotepad2",       "NNotepad3",
        "ONotepad1",     "ONotepad2", "ONotepad3",   "ONotepad4",    "ONotepad5", "ONotepad6",       "EmployeeList",
        "EmployerList",  "Form1",     "NewFile",     "NewFileCheck", "RenameEmp", "P11DDeclaration", "P11DBNotepad1",
        "P11DBNotepad2", "PrePrint",  "TransferList"};
    const std::vector<std::string> others{"Form3_4", "MDIForm1", "frmBackup"};
    std::vector<std::string> ends;
    ScriptedDoor door;
    Session session{door};
    PrintSystem printing{session};
};

TEST_F(CloseAllTest, UnloadsInTheFixedOrder)
{
    UnloadAllScreens(session);
    EXPECT_EQ(ends, all);
    EXPECT_EQ(Left(), others);
    UnloadAllScreens(session);
    EXPECT_EQ(ends, all) << "nothing is unloaded twice";
}

TEST_F(CloseAllTest, UnloadsPage2AndTheNotepadsWhenAnEmployeeHasBeenOpened)
{
    std::vector<std::string> expected{"Side2Form1"};
    for (auto name = all.begin() + 2; name != all.begin() + 27; ++name)
        if (*name != "D2InfoNotepad")
            expected.push_back(*name);
    ASSERT_EQ(expected.back(), "ONotepad6");
    UnloadNotepads(session);
    EXPECT_EQ(ends, expected);
    EXPECT_TRUE(session.screens.IsShown("Form3"));
    EXPECT_TRUE(session.screens.IsShown("D2InfoNotepad"));
    EXPECT_TRUE(session.screens.IsShown("EmployeeList"));
}

} // namespace
} // namespace quillmere
