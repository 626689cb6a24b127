#include "clientdb/EmployerScreens.h"

#include "clientdb/BoundScreen.h"
#include "clientdb/FurtherCars.h"
#include "clientdb/RecentEmployees.h"
#include "clientdb/SafetyCopies.h"
#include "clientdb/TypedJournal.h"
#include "clientdb/UserOperation.h"
#include "edition/Edition.h"
#include "frame/BusyPointer.h"
#include "frame/CloseAll.h"
#include "frame/Text.h"

#include <array>
#include <fmt/format.h>

namespace quillmere {

namespace {

constexpr std::string_view EmployerError = "Employer Error";
constexpr std::string_view EmployeeError = "Employee Error";
constexpr std::string_view LoadingPage1 = "P11D Page 1 - loading error";
constexpr std::string_view NewEmployeeError = "New Employee Error";

std::vector<std::string> EmployeesToShow(Session& session)
{
    const BusyPointer busy(session.platform);
    Database database = OpenClients(session);
    return ListEmployees(database, session.CurrentEmployer);
}

} // namespace

std::optional<std::vector<std::string>> EmployersToShow(Session& session)
{
    std::vector<std::string> employers;
    {
        const BusyPointer busy(session.platform);
        Database database = OpenClients(session);
        employers = ListEmployers(database);
    }
    if (!employers.empty())
        return employers;
    session.messages.Tell(edition::AppTitle, "There are no Employers to display");
    return std::nullopt;
}

Screen* OpenPage1(Session& session, std::string_view errorTitle)
{
    session.screens.StopTimer("Form3", "OpenTimer");
    session.EmployeeOpenFlag = true;
    auto* page = session.screens.Load<BoundScreen>("Form3");
    const FurtherCarsAlong along(session);
    const BoundScreen::Sought sought = page->StoreAndShow(errorTitle, &along);
    if (sought == BoundScreen::Sought::Failed) {
        session.EmployeeOpenFlag = false;
        return nullptr;
    }
    session.screens.Show("Form3");
    along.Forget();
    session.EmployeeOpenFlag = false;
    EnableEmployeeCommands(session, true);
    SetMainCaption(session, OpenEmployeeCaption(session));
    ShowOpenEmployee(session, true);
    if (sought == BoundScreen::Sought::Found)
        RememberOpened(session);
    else
        RebuildRecent(session);
    KeepDailyCopySoon(session);
    if (sought == BoundScreen::Sought::Found && session.offerTyped)
        session.offerTyped();
    return page;
}

bool OpenEmployee(Session& session, const std::string& employer, const std::string& employee)
{
    if (!CloseAllScreens(session))
        return false;
    session.CurrentEmployer = employer;
    session.CurrentEmployee = employee;
    Screen* page = OpenPage1(session, LoadingPage1);
    if (page != nullptr)
        page->SetCaption("P11D");
    return page != nullptr;
}

// ---- NewFileCheck

NewFileCheck::NewFileCheck(Session& session) : Screen(session, "NewFileCheck", ShowMode::Modal, "New File Options")
{
    static constexpr auto Rows = std::to_array<BoxRow>({
        {.name = "Option1",
         .kind = BoxKind::Option,
         .text = "I would like to add a new Employee to an existing Employer  ",
         .letter = 'A'},
        {.name = "Option2",
         .kind = BoxKind::Option,
         .text = "I would like to create a new Employer and Employee",
         .letter = 'N'},
        {.name = "NewFileOk", .kind = BoxKind::Button, .text = "&OK"},
        {.name = "NewFileCancel", .kind = BoxKind::Button, .text = "&Cancel"},
    });
    AddBoxes(Rows);
    SetButtons("NewFileCancel", "NewFileOk");
    OnClick("Option1", [this](Box&) { box("Option2").SetTicked(false); });
    OnClick("Option2", [this](Box&) { box("Option1").SetTicked(false); });
    OnClick("NewFileOk", [this](Box&) { Accept(); });
}

void NewFileCheck::Accept()
{
    const bool existing = box("Option1").Ticked();
    if (!existing && !box("Option2").Ticked()) {
        session.messages.Tell(edition::AppTitle, "You must choose one of the options");
        return;
    }
    session.EmployerListMode = existing ? EmployerListPurpose::NewEmployee : EmployerListPurpose::Open;
    const std::string_view next = existing ? "EmployerList" : "NewFile";
    // The options stay if the store fails while what follows them is loaded.
    const bool wanted = session.screens.Load(next) != nullptr;
    session.screens.Unload(Name());
    if (wanted)
        session.screens.Show(next);
}

// ---- NewFile

NewFile::NewFile(Session& session) : Screen(session, "NewFile", ShowMode::Window, "New File")
{
    static constexpr auto Rows = std::to_array<BoxRow>({
        {.name = "NewEmployer", .kind = BoxKind::Label, .text = "Enter New Employer Name"},
        {.name = "EmployerName", .spoken = "Employer name"},
        {.name = "PAYE", .spoken = "PAYE Reference"},
        {.name = "EmployeeName", .spoken = "Enter New Employee Firstname"},
        {.name = "EmployeeSurname", .spoken = "Enter New Employee Surname"},
        {.name = "OkEmp", .kind = BoxKind::Button, .text = "&OK"},
        {.name = "OkEmp2", .kind = BoxKind::Button, .text = "&OK", .hidden = true},
        {.name = "CancelEmp", .kind = BoxKind::Button, .text = "&Cancel"},
    });
    AddBoxes(Rows);
    OnClick("OkEmp", [this](Box&) { AddEmployer(); });
    OnClick("OkEmp2", [this](Box&) { AddEmployee(); });
    OnClick("CancelEmp", [this](Box&) { Cancel(); });
}

bool NewFile::Load()
{
    const bool existing = session.EmployerListMode == EmployerListPurpose::NewEmployee;
    SetButtons("CancelEmp", existing ? "OkEmp2" : "OkEmp");
    if (!existing)
        return true;
    Database database = OpenClients(session);
    box("NewEmployer").SetText("Employer");
    box("EmployerName").SetText(session.CurrentEmployer);
    box("EmployerName").SetReadOnly(true);
    box("PAYE").SetText(FirstPayeReference(database, session.CurrentEmployer));
    box("OkEmp").SetVisible(false);
    box("OkEmp2").SetVisible(true);
    return true;
}

bool NewFile::Missing(std::string_view boxName, std::string_view title, std::string_view message)
{
    Box& required = box(boxName);
    if (!Trim(required.Text()).empty())
        return false;
    session.messages.Tell(title, message);
    Focus(required);
    return true;
}

void NewFile::AddEmployer()
{
    Database database = OpenClients(session);
    if (Missing("EmployerName", edition::AppTitle, "You must enter an Employers Name") ||
        Missing("EmployeeName", edition::AppTitle, "You must enter an Employee Name") ||
        Missing("EmployeeSurname", edition::AppTitle, "You must enter an Employee Surname"))
        return;
    const NewEmployee employee = TakeNames();
    if (EmployerExists(database, session.CurrentEmployer)) {
        session.messages.Tell(EmployerError, "This Employer already exists.");
        return;
    }
    database.Close();
    CreateAndOpen(employee);
}

void NewFile::AddEmployee()
{
    Database database = OpenClients(session);
    if (Missing("EmployeeName", NewEmployeeError, "You must enter a new Employee") ||
        Missing("EmployeeSurname", NewEmployeeError, "You must enter an Employee Surname"))
        return;
    const NewEmployee employee = TakeNames();
    if (EmployeeExists(database, session.CurrentEmployer, session.CurrentEmployee)) {
        session.messages.Tell(EmployeeError, "This Employee name already exists.");
        return;
    }
    database.Close();
    Screen* page = CreateAndOpen(employee);
    if (page == nullptr)
        return;
    // Kept: after a new employee the two captions stand the other way round.
    page->SetCaption("P11D Form Page1 - " + OpenEmployeeInWords(session));
    SetMainCaption(session, "P11D");
}

NewEmployee NewFile::TakeNames()
{
    NewEmployee employee{.employer = box("EmployerName").Text(),
                         .firstName = box("EmployeeName").Text(),
                         .surname = box("EmployeeSurname").Text(),
                         .payeReference = box("PAYE").Text()};
    session.CurrentEmployer = employee.employer;
    session.CurrentEmployee = quillmere::EmployeeName(employee.firstName, employee.surname);
    return employee;
}

Screen* NewFile::CreateAndOpen(const NewEmployee& employee)
{
    {
        const UserOperation operation(session, "New employee " + session.CurrentEmployee);
        Database database = OpenClients(session);
        CreateEmployee(database, employee);
    }
    UnloadAllScreens(session);
    return OpenPage1(session, "Add New Record");
}

void NewFile::Cancel()
{
    session.screens.Unload(Name());
    if (session.EmployerListMode == EmployerListPurpose::NewEmployee)
        session.screens.Unload("EmployerList");
}

// ---- EmployerList

namespace {

/// A button of the employer list, shown for one purpose of the list or two.
struct ListButton {
    std::string_view box, text;
    EmployerListPurpose shownFor;
    std::optional<EmployerListPurpose> shownToo = {};
};
constexpr auto EmployerListButtons = std::to_array<ListButton>({
    {"EmpSelect", "&Select", EmployerListPurpose::Open, EmployerListPurpose::DeleteEmployee},
    {"EmpOpen", "&Open", EmployerListPurpose::Open},
    {"EmpOpen2", "&Open", EmployerListPurpose::NewEmployee},
    {"EmpSelect2", "&Select", EmployerListPurpose::RenameEmployee},
    {"EmpDelete", "&Delete", EmployerListPurpose::DeleteEmployer},
});

} // namespace

EmployerList::EmployerList(Session& session) : Screen(session, "EmployerList", ShowMode::Window, "Select Employer")
{
    AddBox({.kind = BoxKind::List, .spoken = "Employers"}, "EmployerList");
    filter.emplace(*this, "EmployerList", "employers");
    for (const ListButton& button : EmployerListButtons) {
        AddBox({.kind = BoxKind::Button, .text = button.text}, std::string(button.box));
        OnClick(button.box, [this](Box&) { Proceed(); });
    }
    AddBox({.kind = BoxKind::Button, .text = "&Cancel"}, "EmpCancel");
    OnClick("EmpDelete", [this](Box&) { DeleteChosen(); });
    OnClick("EmpCancel", [this](Box&) { this->session.screens.Unload(Name()); });
    const auto choose = [this](Box&) {
        if (this->session.EmployerListMode != EmployerListPurpose::DeleteEmployer)
            Proceed();
    };
    OnChoose("EmployerList", choose);
    OnDoubleClick("EmployerList", choose);
}

bool EmployerList::Load()
{
    const EmployerListPurpose purpose = session.EmployerListMode;
    std::string_view accept;
    for (const ListButton& button : EmployerListButtons) {
        const bool shown = button.shownFor == purpose || button.shownToo == purpose;
        box(button.box).SetVisible(shown);
        if (shown && accept.empty())
            accept = button.box;
    }
    SetButtons("EmpCancel", accept);
    auto employers = EmployersToShow(session);
    if (employers)
        filter->Fill(std::move(*employers));
    return employers.has_value();
}

void EmployerList::Proceed()
{
    const std::string& chosen = box("EmployerList").Text();
    if (chosen.empty()) {
        session.messages.Tell(edition::AppTitle, "You must choose an Employer");
        Focus(box("EmployerList"));
        return;
    }
    session.CurrentEmployer = chosen;
    switch (session.EmployerListMode) {
    case EmployerListPurpose::RenameEmployee:
        // The list stays if the store fails while its successor is loaded.
        if (session.screens.Load("RenameEmp") == nullptr)
            return;
        session.screens.Unload(Name());
        session.screens.Show("RenameEmp");
        return;
    case EmployerListPurpose::NewEmployee:
        session.screens.Unload("NewFile");
        session.screens.Show("NewFile");
        return;
    default:
        session.screens.Unload("EmployeeList");
        session.screens.Show("EmployeeList");
        return;
    }
}

void EmployerList::DeleteChosen()
{
    const std::string employer = box("EmployerList").Text();
    if (employer.empty()) {
        session.messages.Tell(EmployerError, "You must select an Employer to delete.");
        Focus(box("EmployerList"));
        return;
    }
    session.CurrentEmployer = employer;
    if (!session.messages.Ask("Delete " + employer + "?",
                              "Delete the Employer " + employer +
                                  "? This will remove all emloyee records associated with " + employer + ".",
                              Icon::Question, Answer::No))
        return;
    KeepCopy(session, CopyReason::Delete);
    {
        const BusyPointer busy(session.platform);
        const UserOperation operation(session, "Delete Employer " + employer);
        Database database = OpenClients(session);
        DeleteEmployer(database, employer);
    }
    RebuildRecent(session);
    session.screens.Unload(Name());
}

// ---- EmployeeList

EmployeeList::EmployeeList(Session& session) : Screen(session, "EmployeeList", ShowMode::Window, "Employee List")
{
    static constexpr auto Rows = std::to_array<BoxRow>({
        {.name = "EmployeeOpen", .kind = BoxKind::Button, .text = "&Open"},
        {.name = "EmpeDelete", .kind = BoxKind::Button, .text = "&Delete"},
        {.name = "EmployeeCancel", .kind = BoxKind::Button, .text = "&Cancel"},
    });
    AddBox({.kind = BoxKind::List, .spoken = "Employees"}, "EmployeeList");
    filter.emplace(*this, "EmployeeList", "employees");
    AddBoxes(Rows);
    OnClick("EmployeeOpen", [this](Box&) { OpenChosen(); });
    OnClick("EmpeDelete", [this](Box&) { DeleteChosen(); });
    OnClick("EmployeeCancel", [this](Box&) { this->session.screens.Unload(Name()); });
    OnDoubleClick("EmployeeList", [this](Box&) {
        if (this->session.EmployerListMode == EmployerListPurpose::DeleteEmployee)
            DeleteChosen();
        else
            OpenChosen();
    });
}

bool EmployeeList::Load()
{
    const bool deletes = session.EmployerListMode == EmployerListPurpose::DeleteEmployee;
    box("EmployeeOpen").SetVisible(!deletes);
    box("EmpeDelete").SetVisible(deletes);
    SetButtons("EmployeeCancel", deletes ? "EmpeDelete" : "EmployeeOpen");
    filter->Fill(EmployeesToShow(session));
    return true;
}

void EmployeeList::OpenChosen()
{
    const std::string employee = box("EmployeeList").Text();
    if (employee.empty()) {
        session.messages.Tell(EmployeeError,
                              "You must choose an Employee.  If there are no Employees for this Employer, "
                              "then add one by selecting 'New' from the File Menu.");
        Focus(box("EmployeeList"));
        return;
    }
    session.CurrentEmployee = employee;
    Screen* page = OpenPage1(session, LoadingPage1);
    if (page == nullptr)
        return;
    page->SetCaption("P11D");
    session.screens.Unload("EmployerList");
    UnloadNotepads(session);
    session.screens.Unload(Name());
}

void EmployeeList::DeleteChosen()
{
    const std::string employee = box("EmployeeList").Text();
    if (employee.empty()) {
        session.messages.Tell(edition::AppTitle, "You must select an Employee to delete");
        Focus(box("EmployeeList"));
        return;
    }
    session.CurrentEmployee = employee;
    if (!session.messages.Ask("Delete " + employee + "?", "Delete Employee " + employee + "?", Icon::Question,
                              Answer::No))
        return;
    KeepCopy(session, CopyReason::Delete);
    {
        const BusyPointer busy(session.platform);
        const UserOperation operation(session, "Delete Employee " + employee);
        Database database = OpenClients(session);
        DeleteEmployee(database, session.CurrentEmployer, employee);
    }
    RebuildRecent(session);
    session.screens.Unload("EmployerList");
    session.screens.Unload(Name());
}

// ---- RenameEmp

RenameEmp::RenameEmp(Session& session) : Screen(session, "RenameEmp", ShowMode::Window, "Rename Files")
{
    static constexpr auto Rows = std::to_array<BoxRow>({
        {.name = "RenameE", .kind = BoxKind::List, .spoken = "Employers"},
        {.name = "RenameEmployee", .kind = BoxKind::List, .spoken = "Employees"},
        {.name = "NewName", .kind = BoxKind::Label, .text = "NEW NAME"},
        {.name = "NewEmployer", .spoken = "New name"},
        {.name = "NewReference", .kind = BoxKind::Label, .text = "NEW PAYE"},
        {.name = "NewPAYE", .spoken = "New PAYE reference"},
        {.name = "Rename", .kind = BoxKind::Button, .text = "&Rename"},
        {.name = "Rename2", .kind = BoxKind::Button, .text = "&Rename"},
        {.name = "Command1", .kind = BoxKind::Button, .text = "Close", .letter = 'C'},
    });
    AddBoxes(Rows);
    OnSelect("RenameE", [this](Box&) { ChooseEmployer(); });
    OnDoubleClick("RenameE", [this](Box&) { ChooseEmployer(); });
    OnSelect("RenameEmployee", [this](Box&) { ChooseEmployee(); });
    OnDoubleClick("RenameEmployee", [this](Box&) { ChooseEmployee(); });
    OnClick("Rename", [this](Box&) { RenameChosenEmployer(); });
    OnClick("Rename2", [this](Box&) { RenameChosenEmployee(); });
    OnClick("Command1", [this](Box&) { this->session.screens.Unload(Name()); });
}

bool RenameEmp::Load()
{
    const bool employees = session.EmployerListMode == EmployerListPurpose::RenameEmployee;
    for (const std::string_view ofEmployer : {"RenameE", "Rename", "NewReference", "NewPAYE"})
        box(ofEmployer).SetVisible(!employees);
    for (const std::string_view ofEmployee : {"RenameEmployee", "Rename2"})
        box(ofEmployee).SetVisible(employees);
    SetButtons("Command1", employees ? "Rename2" : "Rename");
    return FillList();
}

void RenameEmp::ClearBoxes()
{
    filledFrom.clear();
    box("NewEmployer").Clear();
    box("NewPAYE").Clear();
}

bool RenameEmp::FillList()
{
    ClearBoxes();
    if (session.EmployerListMode == EmployerListPurpose::RenameEmployee) {
        box("RenameEmployee").SetEntries(EmployeesToShow(session));
        return true;
    }
    auto employers = EmployersToShow(session);
    if (employers)
        box("RenameE").SetEntries(std::move(*employers));
    return employers.has_value();
}

void RenameEmp::ChooseEmployer()
{
    ClearBoxes();
    const std::string& employer = box("RenameE").Text();
    Database database = OpenClients(session);
    box("NewPAYE").SetText(FirstPayeReference(database, employer));
    box("NewEmployer").SetText(employer);
    filledFrom = employer;
}

void RenameEmp::ChooseEmployee()
{
    filledFrom = box("RenameEmployee").Text();
    box("NewEmployer").SetText(filledFrom);
}

void RenameEmp::RenameChosenEmployer()
{
    const std::string employer = filledFrom;
    if (employer.empty()) {
        session.messages.Tell(edition::AppTitle, "You must select an Employer in order to rename it.");
        Focus(box("RenameE"));
        return;
    }
    const std::string& newName = box("NewEmployer").Text();
    if (Trim(newName).empty()) {
        session.messages.Tell(edition::AppTitle, "Please provide a new Employer name");
        return;
    }
    KeepCopy(session, CopyReason::Rename);
    {
        const BusyPointer busy(session.platform);
        const UserOperation operation(session, fmt::format("Rename {} to {}", employer, newName));
        Database database = OpenClients(session);
        RenameEmployer(database, employer, newName, box("NewPAYE").Text());
        CarryWaiting(session, database, {.table = {}, .employer = employer, .employee = {}},
                     {.table = {}, .employer = newName, .employee = {}});
    }
    RebuildRecent(session);
    if (!FillList())
        session.screens.Unload(Name());
}

void RenameEmp::RenameChosenEmployee()
{
    const std::string employee = filledFrom;
    if (employee.empty()) {
        session.messages.Tell(edition::AppTitle, "You must select an Employee in order to rename it.");
        Focus(box("RenameEmployee"));
        return;
    }
    // Kept: the test looks at the name that the employee has, not at the new one.
    constexpr std::size_t LongestTogether = 49;
    if (Length(Trim(session.CurrentEmployer + employee)) > LongestTogether) {
        session.messages.Tell("Entries too long",
                              "Employer Name and Employee Name must be no more than 49 characters combined");
        return;
    }
    const std::string& newName = box("NewEmployer").Text();
    if (Trim(newName).empty()) {
        session.messages.Tell(edition::AppTitle, "Please provide an new Employee name");
        return;
    }
    KeepCopy(session, CopyReason::Rename);
    {
        const BusyPointer busy(session.platform);
        const UserOperation operation(session, fmt::format("Rename {} to {}", employee, newName));
        Database database = OpenClients(session);
        RenameEmployee(database, session.CurrentEmployer, employee, newName);
        CarryWaiting(session, database, {.table = {}, .employer = session.CurrentEmployer, .employee = employee},
                     {.table = {}, .employer = session.CurrentEmployer, .employee = newName});
    }
    RebuildRecent(session);
    static_cast<void>(FillList());
}

} // namespace quillmere
