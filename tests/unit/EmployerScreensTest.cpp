// The lists of employers and employees and the screens that make, rename and delete them: what a scenario on the
// windows cannot see, such as icons and the pointer, and a store that fails between two steps.
#include "clientdb/EmployerScreens.h"

#include "clientdb/store/StoreFaults.h"
#include "support/ProgramFixture.h"

#include <algorithm>
#include <fmt/format.h>
#include <utility>
#include <vector>

namespace quillmere::test {
namespace {

constexpr int DiskError = 10;
constexpr std::string_view DiskText = "disk I/O error";

class EmployerScreens : public ProgramFixture {
protected:
    ~EmployerScreens() override { SetStoreFaultHook({}); }

    /// Opens "New File" by the second option and fills it in.
    void FillNewEmployer()
    {
        Menu("New");
        Click("NewFileCheck", "Option2");
        Click("NewFileCheck", "NewFileOk");
        At("NewFile", "EmployerName").SetText("Acme Ltd");
        At("NewFile", "PAYE").SetText("123/A456");
        FillNames();
    }

    /// Opens "New File" for the employer at that place of the list and fills it in.
    void FillNewEmployee(int position)
    {
        Menu("New");
        Click("NewFileCheck", "Option1");
        Click("NewFileCheck", "NewFileOk");
        Mark("EmployerList", "EmployerList", position);
        Click("EmployerList", "EmpOpen2");
        FillNames();
    }

    void FillNames()
    {
        At("NewFile", "EmployeeName").SetText("John");
        At("NewFile", "EmployeeSurname").SetText("Brown");
    }

    /// Runs `work` once when the store is asked the first thing after the next commit.
    template<typename Work>
    static void AfterTheCommit(Work work)
    {
        SetStoreFaultHook([work, committed = false, done = false](std::string_view statement) mutable {
            if (statement == "COMMIT")
                committed = true;
            else if (committed && !std::exchange(done, true))
                return work();
            return 0;
        });
    }

    /// Every statement that begins so fails, from the n-th on.
    static void FailFrom(std::string_view beginning, int number = 1)
    {
        SetStoreFaultHook([beginning, number, count = 0](std::string_view statement) mutable {
            return statement.starts_with(beginning) && ++count >= number ? DiskError : 0;
        });
    }

    int Count(std::string_view table)
    {
        SetStoreFaultHook({});
        Database database = Clients();
        Recordset records = database.OpenRecordset(table);
        int count = 0;
        for (records.MoveFirst(); !records.AtEnd(); records.MoveNext())
            ++count;
        return count;
    }
};

// ---- a new employer or employee -------------------------------------------------------------------

TEST_F(EmployerScreens, ANewEmployeeWhomSomebodyDeletesAtOnceIsNotFoundUnderATitleOfHisOwn)
{
    FillNewEmployer();
    AfterTheCommit([this] {
        Database database = Clients();
        DeleteEmployee(database, "Acme Ltd", "John Brown");
        return 0;
    });
    Click("NewFile", "OkEmp");
    const Message message = TakeMessage();
    EXPECT_EQ(message.title, "Add New Record");
    EXPECT_EQ(message.text, "Employee not found");
    EXPECT_EQ(message.icon, Icon::Exclamation);
    EXPECT_TRUE(Shows("Form3"));
    EXPECT_EQ(At("Form3", "EmployeeNameBox").Text(), "");
}

TEST_F(EmployerScreens, AStoreThatFailsAfterTheCreationOpensNoPage)
{
    for (const bool existing : {false, true}) {
        SCOPED_TRACE(existing);
        if (existing) {
            Create("Bolt Ltd", "Ann", "Other");
            FillNewEmployee(1);
        } else {
            FillNewEmployer();
        }
        AfterTheCommit([] { return DiskError; });
        Click("NewFile", existing ? "OkEmp2" : "OkEmp");
        SetStoreFaultHook({});
        const Message message = TakeMessage();
        EXPECT_EQ(message.title, "P11D - Form 1");
        EXPECT_NE(message.text.find(DiskText), std::string::npos) << message.text;
        EXPECT_TRUE(door.messages.empty());
        EXPECT_FALSE(Shows("Form3"));
        EXPECT_FALSE(At("MDIForm1", "mnuPrint").Enabled());
        EXPECT_FALSE(At("MDIForm1", "FileP11DB").Enabled());
        EXPECT_EQ(Now().screens.Find("MDIForm1")->Caption(), edition::AppTitle);
        EXPECT_FALSE(Now().EmployeeOpenFlag);
        Menu("FileDeleteEmployer");
        Click("EmployerList", "EmpCancel");
    }
}

TEST_F(EmployerScreens, AStoreThatFailsHalfwayThroughTheCreationNamesWhatItHasMadeAndLeavesTheScreenOpen)
{
    constexpr int Failing = 14; // the record of ONotepad4
    FillNewEmployer();
    FailFrom("INSERT", Failing);
    Click("NewFile", "OkEmp");
    SetStoreFaultHook({});
    const Message message = TakeMessage();
    EXPECT_EQ(message.title, edition::AppTitle);
    EXPECT_EQ(message.icon, Icon::Critical);
    EXPECT_TRUE(message.text.starts_with("Procedure: NewFile - OkEmp - Click\nError 10:  ")) << message.text;
    EXPECT_NE(message.text.find(DiskText), std::string::npos) << message.text;
    EXPECT_NE(message.text.find("(table ONotepad4)"), std::string::npos) << message.text;
    EXPECT_TRUE(message.text.ends_with("\nRecords already made: P11D, ANotepad, BNotepad, CNotepad, DNotepad, "
                                       "FNotepad, GNotepad, INotepad, KNotepad, LNotepad, ONotepad1, ONotepad2, "
                                       "ONotepad3"))
        << message.text;
    EXPECT_TRUE(door.messages.empty());
    EXPECT_TRUE(Shows("NewFile"));
    EXPECT_EQ(At("NewFile", "EmployeeSurname").Text(), "Brown");
    EXPECT_FALSE(Shows("Form3"));
    EXPECT_EQ(Count("P11D"), 1);
    EXPECT_EQ(Count("ONotepad4"), 0);
}

TEST_F(EmployerScreens, TheNamesAreCurrentBeforeTheyAreLookedFor)
{
    Create("Acme Ltd", "John", "Brown");
    Create("Bolt Ltd", "Ann", "Other");
    FillNewEmployer();
    Click("NewFile", "OkEmp");
    EXPECT_EQ(TakeMessage().text, "This Employer already exists.");
    EXPECT_EQ(Now().CurrentEmployer, "Acme Ltd");
    EXPECT_EQ(Now().CurrentEmployee, "John Brown");
    EXPECT_TRUE(Shows("NewFile"));
}

TEST_F(EmployerScreens, PageOneHasItsOwnCaptionForANewEmployer)
{
    FillNewEmployer();
    Click("NewFile", "OkEmp");
    EXPECT_TRUE(door.messages.empty());
    EXPECT_EQ(Now().screens.Find("Form3")->Caption(), "P11D - Form 1");
}

// ---- the employer list in its modes ---------------------------------------------------------------

struct ModeCase {
    std::string_view command; ///< entry of the main window that opens the list
    EmployerListPurpose mode;
    std::string_view caption;
    std::vector<std::string_view> buttons; ///< those that show, but for Cancel
    std::string_view next;                 ///< where they lead with an employer chosen
};

std::vector<ModeCase> Modes()
{
    return {
        {"Open", EmployerListPurpose::Open, "Select Employer", {"EmpSelect", "EmpOpen"}, "EmployeeList"},
        {"FileRename", EmployerListPurpose::RenameEmployee, "Select Employer", {"EmpSelect2"}, "RenameEmp"},
        {"FileDeleteEmployee",
         EmployerListPurpose::DeleteEmployee,
         "Select the Employee's Employer",
         {"EmpSelect"},
         "EmployeeList"},
        {"New", EmployerListPurpose::NewEmployee, "Select Employer", {"EmpOpen2"}, "NewFile"},
        {"FileDeleteEmployer", EmployerListPurpose::DeleteEmployer, "Select Employer to delete", {"EmpDelete"}, {}},
    };
}

TEST_F(EmployerScreens, TheListShowsTheButtonsOfItsModeAndEachLeadsOn)
{
    Create("Acme Ltd", "Jane", "Smith");
    for (const ModeCase& expected : Modes()) {
        for (const std::string_view pressed : expected.buttons) {
            SCOPED_TRACE(std::string(expected.command) + " " + std::string(pressed));
            Menu(expected.command);
            if (expected.mode == EmployerListPurpose::NewEmployee) {
                Click("NewFileCheck", "Option1");
                Click("NewFileCheck", "NewFileOk");
            }
            Screen& list = *Now().screens.Find("EmployerList");
            EXPECT_EQ(Now().EmployerListMode, expected.mode);
            EXPECT_EQ(list.Caption(), expected.caption);
            for (const std::string_view button :
                 {"EmpSelect", "EmpOpen", "EmpOpen2", "EmpSelect2", "EmpDelete", "EmpCancel"})
                EXPECT_EQ(list.box(button).Visible(),
                          button == "EmpCancel" ||
                              std::ranges::find(expected.buttons, button) != expected.buttons.end())
                    << button;
            EXPECT_EQ(list.DefaultButton(), &list.box(expected.buttons.front()));
            // With nothing chosen each says so.
            Click("EmployerList", pressed);
            EXPECT_EQ(TakeMessage().text, expected.mode == EmployerListPurpose::DeleteEmployer
                                              ? "You must select an Employer to delete."
                                              : "You must choose an Employer");
            EXPECT_TRUE(Shows("EmployerList"));
            Mark("EmployerList", "EmployerList");
            Click("EmployerList", pressed);
            EXPECT_EQ(Now().CurrentEmployer, "Acme Ltd");
            if (expected.next.empty()) {
                EXPECT_EQ(TakeMessage().title, "Delete Acme Ltd?");
                EXPECT_TRUE(Shows("EmployerList"));
            } else {
                EXPECT_TRUE(Shows(expected.next));
                EXPECT_EQ(Shows("EmployerList"), expected.mode != EmployerListPurpose::RenameEmployee);
            }
            EXPECT_TRUE(door.messages.empty());
        }
    }
}

TEST_F(EmployerScreens, OneEmployerMoreThanAListHoldsIsAFaultThatOpensNoList)
{
    {
        Database database = Clients();
        const WriteBatch batch(database);
        Recordset records = database.OpenRecordset("P11D");
        for (std::size_t employer = 0; employer <= EmployerNameSlots; ++employer) {
            records.AddNew();
            records.SetField("EmployerName", fmt::format("Employer {}", employer));
            records.SetField("EmployeeName", "Jane Smith");
            records.SetField("Name", fmt::format("Employer {} Jane Smith", employer));
            records.Update();
        }
    }
    struct {
        std::string_view command, screen;
    } const cases[] = {{"Open", "EmployerList"},
                       {"FileRenameEmp", "RenameEmp"},
                       {"FileRename", "EmployerList"},
                       {"FileDeleteEmployee", "EmployerList"},
                       {"FileDeleteEmployer", "EmployerList"},
                       {"mnuBatch", "PrePrint"}};
    for (const auto& [command, screen] : cases) {
        SCOPED_TRACE(std::string(command));
        Menu(command);
        const Message message = TakeMessage();
        EXPECT_EQ(message.title, edition::AppTitle);
        EXPECT_EQ(message.text, fmt::format("Procedure: MDIForm1 - {} - Click\nError 0:  "
                                            "There are more than 751 employers",
                                            command));
        EXPECT_EQ(message.icon, Icon::Critical);
        EXPECT_EQ(Now().screens.Find(screen), nullptr);
        EXPECT_FALSE(door.busy);
    }
    // A new employee of an employer who is there is held up with the options still open.
    Menu("New");
    Click("NewFileCheck", "Option1");
    Click("NewFileCheck", "NewFileOk");
    EXPECT_TRUE(TakeMessage().text.ends_with("There are more than 751 employers"));
    EXPECT_TRUE(Shows("NewFileCheck"));
    EXPECT_TRUE(door.messages.empty());
}

// ---- questions, failures, the pointer -------------------------------------------------------------

TEST_F(EmployerScreens, DeletingIsAskedWithTheQuestionIconAndNoAsTheWayOut)
{
    Create("Acme Ltd", "Jane", "Smith");
    Menu("FileDeleteEmployer");
    Mark("EmployerList", "EmployerList");
    Click("EmployerList", "EmpDelete");
    Menu("FileDeleteEmployee");
    Mark("EmployerList", "EmployerList");
    Click("EmployerList", "EmpSelect");
    Mark("EmployeeList", "EmployeeList");
    Click("EmployeeList", "EmpeDelete");
    ASSERT_EQ(door.messages.size(), 2U);
    for (const Message& question : door.messages) {
        EXPECT_EQ(question.icon, Icon::Question);
        EXPECT_EQ(question.buttons, Buttons::YesNo);
        EXPECT_EQ(question.defaultAnswer, Answer::No);
    }
    EXPECT_EQ(Count("P11D"), 1);
}

TEST_F(EmployerScreens, AnEmployeeWhoIsNotFoundIsAWarning)
{
    Create("Acme Ltd", "Jane", "Smith");
    Menu("Open");
    Mark("EmployerList", "EmployerList");
    Click("EmployerList", "EmpOpen");
    Mark("EmployeeList", "EmployeeList");
    {
        Database database = Clients();
        DeleteEmployee(database, "Acme Ltd", "Jane Smith");
    }
    Click("EmployeeList", "EmployeeOpen");
    const Message message = TakeMessage();
    EXPECT_EQ(message.title, "P11D Page 1 - loading error");
    EXPECT_EQ(message.text, "Employee not found");
    EXPECT_EQ(message.icon, Icon::Exclamation);
}

TEST_F(EmployerScreens, ADeletionOrARenameThatTheStoreStopsHalfwayIsToldAndTheScreenStays)
{
    Create("Acme Ltd", "Jane", "Smith");
    struct {
        std::string_view command, screen, list, button, procedure;
        std::string_view statement;
    } const cases[] = {
        {"FileDeleteEmployer", "EmployerList", "EmployerList", "EmpDelete", "EmployerList - EmpDelete - Click",
         "DELETE"},
        {"FileDeleteEmployee", "EmployeeList", "EmployeeList", "EmpeDelete", "EmployeeList - EmpeDelete - Click",
         "DELETE"},
        {"FileRenameEmp", "RenameEmp", "RenameE", "Rename", "RenameEmp - Rename - Click", "UPDATE"},
        {"FileRename", "RenameEmp", "RenameEmployee", "Rename2", "RenameEmp - Rename2 - Click", "UPDATE"},
    };
    for (const auto& [command, screen, list, button, procedure, statement] : cases) {
        SCOPED_TRACE(std::string(command));
        const std::string_view writes = statement;
        Menu(command);
        if (list != "EmployerList" && list != "RenameE") {
            Mark("EmployerList", "EmployerList");
            Click("EmployerList", command == "FileRename" ? "EmpSelect2" : "EmpSelect");
        }
        Mark(screen, list);
        if (screen == "RenameEmp")
            At("RenameEmp", "NewEmployer").SetText("New name");
        door.answers = {Answer::Yes};
        bool busy = true;
        SetStoreFaultHook([&, count = 0](std::string_view run) mutable {
            if (!run.starts_with(writes))
                return 0;
            busy = busy && door.busy;
            return ++count >= 3 ? DiskError : 0;
        });
        Click(screen, button);
        SetStoreFaultHook({});
        if (command.starts_with("FileDelete")) {
            EXPECT_EQ(TakeMessage().buttons, Buttons::YesNo);
        }
        door.answers.clear();
        const Message message = TakeMessage();
        EXPECT_EQ(message.title, edition::AppTitle);
        EXPECT_EQ(message.text, fmt::format("Procedure: {}\nError 10:  {}", procedure, DiskText)) << message.text;
        EXPECT_EQ(message.icon, Icon::Critical);
        EXPECT_TRUE(door.messages.empty());
        EXPECT_TRUE(Shows(screen));
        EXPECT_TRUE(busy) << "the pointer is busy while the tables are gone through";
        EXPECT_FALSE(door.busy);
        // What had been done before the failure stays; the next case starts anew.
        Database database = Clients();
        for (const std::string_view employer : {"Acme Ltd", "New name"})
            DeleteEmployer(database, employer);
        CreateEmployee(database, {"Acme Ltd", "Jane", "Smith", "123/A456"});
    }
}

TEST_F(EmployerScreens, ThePointerIsBusyWhileAListIsMade)
{
    Create("Acme Ltd", "Jane", "Smith");
    bool allBusy = true;
    int reads = 0;
    SetStoreFaultHook([&](std::string_view statement) {
        if (statement.starts_with("SELECT")) {
            ++reads;
            allBusy = allBusy && door.busy;
        }
        return 0;
    });
    const auto saw = [&] {
        const bool seen = reads > 0 && allBusy && !door.busy;
        reads = 0;
        allBusy = true;
        return seen;
    };
    Menu("Open");
    EXPECT_TRUE(saw());
    Mark("EmployerList", "EmployerList");
    Click("EmployerList", "EmpOpen");
    EXPECT_TRUE(saw());
    Menu("FileRenameEmp");
    EXPECT_TRUE(saw());
    Menu("FileRename");
    EXPECT_TRUE(saw());
    Mark("EmployerList", "EmployerList");
    Click("EmployerList", "EmpSelect2");
    EXPECT_TRUE(saw());
    Menu("mnuBatch");
    EXPECT_TRUE(saw());
}

} // namespace
} // namespace quillmere::test
