#include "app/MDIForm1.h"

#include "app/DeskCommands.h"
#include "app/Version.h"
#include "clientdb/DamagedDatabase.h"
#include "clientdb/FolderScreens.h"
#include "clientdb/RecentEmployees.h"
#include "clientdb/TypedJournal.h"
#include "clientdb/store/Backup.h"
#include "edition/Edition.h"
#include "frame/CheckedFile.h"
#include "frame/CloseAll.h"
#include "frame/Folders.h"
#include "frame/Settings.h"
#include "screens/P11DPage.h"

#include <algorithm>
#include <array>
#include <fmt/format.h>
#include <string>

namespace quillmere {

namespace {

/// Entries of the menus, and the parts of the window that are shown and hidden or read.
constexpr auto Rows = std::to_array<BoxRow>({
    {.name = "New", .kind = BoxKind::Menu, .text = "New", .letter = 'N'},
    {.name = "Open", .kind = BoxKind::Menu, .text = "Open", .letter = 'O'},
    {.name = "mnuTransfer", .kind = BoxKind::Menu, .text = "Transfer", .letter = 'T'},
    {.name = "FileP11DB", .kind = BoxKind::Menu, .text = "P11D(b)", .letter = 'B', .ofEmployee = true},
    {.name = "FileDeleteEmployer", .kind = BoxKind::Menu, .text = "Delete Employer", .letter = 'D'},
    {.name = "FileDeleteEmployee", .kind = BoxKind::Menu, .text = "Delete Employee", .letter = 'Y'},
    {.name = "FileRenameEmp", .kind = BoxKind::Menu, .text = "Rename Employer/PAYE", .letter = 'R'},
    {.name = "FileRename", .kind = BoxKind::Menu, .text = "Rename Employee", .letter = 'M'},
    {.name = "mnuPrint", .kind = BoxKind::Menu, .text = "Print ", .letter = 'P', .ofEmployee = true},
    {.name = "mnuBatch", .kind = BoxKind::Menu, .text = "Employer Batch Print", .letter = 'H'},
    {.name = "mnuPrintSetup", .kind = BoxKind::Menu, .text = "Print Setup...", .letter = 'S'},
    {.name = "ExitOpt", .kind = BoxKind::Menu, .text = "Exit", .letter = 'X'},
    {.name = "mnuAltFolder", .kind = BoxKind::Menu, .first = 1, .last = FolderSlots},
    {.name = "mnuFolderManager", .kind = BoxKind::Menu, .text = "Manager...", .letter = 'M'},
    {.name = "ToolbarOpt", .kind = BoxKind::Menu, .text = "Toolbar", .letter = 'T'},
    {.name = "mnuSettingsReports", .kind = BoxKind::Menu, .text = "Reports", .letter = 'R'},
    {.name = "picToolbar", .kind = BoxKind::Label},
    {.name = "StatusBar1", .kind = BoxKind::Label, .first = 1, .last = 2},
    {.name = "mnuRecent", .kind = BoxKind::Menu, .first = 1, .last = RecentSlots, .hidden = true},
    {.name = "Start", .kind = BoxKind::Frame},
    {.name = "StartWords", .kind = BoxKind::Label},
    {.name = "StartWithEmployers", .kind = BoxKind::Frame},
    {.name = "StartWithNone", .kind = BoxKind::Frame, .hidden = true},
    {.name = "StatusWho", .kind = BoxKind::Label},
    {.name = "StatusAlso", .kind = BoxKind::Label, .hidden = true},
    {.name = "StatusBox", .kind = BoxKind::Label},
    {.name = "StatusNote", .kind = BoxKind::Label},
});

/// The toolbar's buttons: the array cmdFile, and those beside it. Most of the family's buttons have no action in this
/// program; they are part of the window but do not show.
struct ToolRow {
    std::string_view box;
    int index;
    std::string_view tip;
    bool shown = false;
    char letter = 0; ///< of those that no menu has
    bool ofEmployee = false;
};
constexpr auto Tools = std::to_array<ToolRow>({
    {"cmdFile", 0, "New File", true},
    {"cmdFile", 1, "Transfer File"},
    {"cmdFile", 2, "Copy File"},
    {"cmdFile", 3, "Open File", true},
    {"cmdFile", 4, "Close File", true, 'C', true},
    {"cmdFile", 5, "Save File"},
    {"cmdFile", 6, "Rename File"},
    {"cmdFile", 7, "Delete File"},
    {"cmdFile", 8, "Backup database", true, 'K'},
    {"cmdFile", 9, "Print", true, 0, true},
    {"cmdFile", 10, "Print Preview"},
    {"cmdFile", 11, "Tax Return"},
    {"cmdFile", 12, "Supplement Manager"},
    {"cmdELS", Box::NoIndex, ""},
    {"cmdSummary", Box::NoIndex, ""},
    {"cmdValidate", Box::NoIndex, ""},
    {"cmdExit", Box::NoIndex, "Exit", true, 'X'},
});

/// The two sides of the form, in the order of closing.
constexpr auto Pages = std::to_array<std::string_view>({"Side2Form1", "Form3"});

constexpr auto Menus = std::to_array<MenuRow>({
    {.menu = "File", .box = "New", .key = "Ctrl+N"},
    {.menu = "File", .box = "Open", .key = "Ctrl+O"},
    {.menu = "File", .box = "mnuTransfer"},
    {.menu = "File", .box = "FileP11DB"},
    {.menu = "File", .box = "FileDeleteEmployer", .separatorBefore = true},
    {.menu = "File", .box = "FileDeleteEmployee"},
    {.menu = "File", .box = "FileRenameEmp"},
    {.menu = "File", .box = "FileRename"},
    {.menu = "File", .box = "mnuPrint", .key = "Ctrl+P", .separatorBefore = true},
    {.menu = "File", .box = "mnuBatch"},
    {.menu = "File", .box = "mnuPrintSetup"},
    {.menu = "File", .box = "ExitOpt", .separatorBefore = true},
    {.menu = "Folder", .box = "mnuAltFolder", .index = 1},
    {.menu = "Folder", .box = "mnuAltFolder", .index = 2},
    {.menu = "Folder", .box = "mnuAltFolder", .index = 3},
    {.menu = "Folder", .box = "mnuAltFolder", .index = 4},
    {.menu = "Folder", .box = "mnuFolderManager", .separatorBefore = true},
    {.menu = "View", .box = "ToolbarOpt"},
    {.menu = "Settings", .box = "mnuSettingsReports"},
});

constexpr auto Starts = std::to_array<StartRow>({
    {"mnuRecent", 1},
    {"mnuRecent", 2},
    {"mnuRecent", 3},
    {"mnuRecent", 4},
    {"mnuRecent", 5},
    {"mnuRecent", 6},
    {"mnuRecent", 7},
    {"mnuRecent", 8},
    {.box = "Open", .where = "StartWithEmployers"},
    {.box = "mnuFind", .where = "StartWithEmployers"},
    {.box = "New"},
    {.box = "mnuTransfer"},
    {.box = "mnuImport", .where = "StartWithNone"},
    {.box = "mnuSample", .text = "Look Round With Sample Clients", .where = "StartWithNone"},
});

} // namespace

std::vector<MenuRow> MenuRows()
{
    // What stands beside the form comes behind what belongs to it: in its menu, and in menus of its own.
    std::vector<MenuRow> rows(Menus.begin(), Menus.end());
    for (const DeskCommand& added : DeskCommands()) {
        const auto behind =
            std::find_if(rows.rbegin(), rows.rend(), [&added](const MenuRow& row) { return row.menu == added.menu; });
        rows.insert(behind == rows.rend() ? rows.end() : behind.base(), {.menu = added.menu,
                                                                         .box = added.name,
                                                                         .key = added.key,
                                                                         .otherKey = added.otherKey,
                                                                         .separatorBefore = added.separatorBefore});
    }
    // Who was open last stands at the foot of the menu that opens files.
    const auto file =
        std::find_if(rows.rbegin(), rows.rend(), [](const MenuRow& row) { return row.menu == Menus.front().menu; });
    std::vector<MenuRow> recent;
    for (int slot = 1; slot <= RecentSlots; ++slot)
        recent.push_back({.menu = Menus.front().menu, .box = "mnuRecent", .index = slot, .separatorBefore = slot == 1});
    rows.insert(file.base(), recent.begin(), recent.end());
    return rows;
}

std::span<const StartRow> StartRows()
{
    return Starts;
}

char LetterOfMenu(std::string_view menu)
{
    // F is the first letter of two menus, and opens the one that is used all day.
    return menu == "Folder" ? 'O' : menu.front();
}

MDIForm1::MDIForm1(Session& session) : Screen(session, "MDIForm1", ShowMode::Main, edition::AppTitle)
{
    AddBoxes(Rows);
    for (const ToolRow& tool : Tools)
        AddBox({.kind = BoxKind::Button,
                .tip = tool.tip,
                .letter = tool.letter,
                .hidden = !tool.shown,
                .ofEmployee = tool.ofEmployee},
               std::string(tool.box), tool.index);
    for (const DeskCommand& added : DeskCommands()) {
        AddBox({.kind = BoxKind::Menu, .text = added.text, .letter = added.letter, .ofEmployee = added.ofEmployee},
               std::string(added.name));
        OnClick(added.name, [this, run = added.run](Box&) { run(this->session); });
    }

    const auto command = [this](std::string_view menuEntry, auto operation) {
        OnClick(menuEntry, [operation](Box&) { operation(); });
    };
    const auto newFile = [this] { CommandNew(); };
    const auto open = [this] { CommandEmployerList(EmployerListPurpose::Open, "Select Employer"); };
    const auto print = [this] { CommandPrint(); };
    command("New", newFile);
    command("Open", open);
    command("mnuTransfer", [this] { CommandOpenScreen("TransferList"); });
    command("FileP11DB", [this] { this->session.screens.Show("P11DDeclaration"); });
    command("FileDeleteEmployer",
            [this] { CommandEmployerList(EmployerListPurpose::DeleteEmployer, "Select Employer to delete"); });
    command("FileDeleteEmployee",
            [this] { CommandEmployerList(EmployerListPurpose::DeleteEmployee, "Select the Employee's Employer"); });
    command("FileRenameEmp", [this] { CommandRename(); });
    command("FileRename", [this] { CommandEmployerList(EmployerListPurpose::RenameEmployee, "Select Employer"); });
    command("mnuPrint", print);
    command("mnuBatch", [this] { CommandOpenScreen("PrePrint"); });
    command("mnuPrintSetup", [this] { this->session.platform.ShowPrinterSetup(); });
    command("ExitOpt", [this] { End(); });
    command("mnuFolderManager", [this] { this->session.screens.Show("frmFolderManager"); });
    command("ToolbarOpt", [this] { ToggleToolbar(); });
    command("mnuSettingsReports", [this] { this->session.screens.Show("frmVSPrintSettings"); });
    command("cmdExit", [this] { CommandExit(); });
    OnClick("mnuRecent", [this](Box& entry) { OpenRecent(this->session, entry.Index()); });
    OnClick("mnuAltFolder", [this](Box& entry) { ChooseFolder(entry.Index()); });
    OnClick("cmdFile", [this, newFile, open, print](Box& button) {
        switch (button.Index()) {
        case 0:
            return newFile();
        case 3:
            return open();
        case 4:
            return static_cast<void>(CloseAllScreens(this->session));
        case 8:
            return CommandOpenScreen("frmBackup");
        case 9:
            return print();
        default:
            return; // the family's other buttons have no action here
        }
    });
}

bool MDIForm1::Load()
{
    ReadSettings();
    BeginWithFolderNamed();
    const Settings& settings = session.settings;
    SetPlacement({.maximised = settings.applicationMaximised,
                  .top = settings.applicationTop,
                  .left = settings.applicationLeft,
                  .height = settings.applicationHeight,
                  .width = settings.applicationWidth});
    RebuildFolderMenu(session);
    box("ToolbarOpt").SetTicked(settings.viewPicToolbar);
    box("picToolbar").SetVisible(settings.viewPicToolbar);
    EnableEmployeeCommands(session, false);
    box("StatusBar1", 1).SetText(edition::ProductVersionLabel.substr(0, 5));
    box("StatusBar1", 2)
        .SetText(std::to_string(VersionMajor) + "." + std::to_string(VersionMinor) + "." +
                 std::to_string(VersionRevision));
    const std::string& clientFolder = settings.path.at(static_cast<std::size_t>(settings.selectedFolder));
    RemoveForgottenCopies(clientFolder);
    if (!CreateUserFile(session.resourceFolder, edition::TemplateDatabaseName, clientFolder,
                        edition::ClientDatabaseName))
        session.messages.Tell(edition::AppTitle,
                              "The following client database could not be created:\n\n" +
                                  session.ClientDatabasePath().string(),
                              Icon::Critical);
    RebuildRecent(session);
    LookAfterDatabaseSoon(session);
    return true;
}

void MDIForm1::MenuOpens(std::string_view menu)
{
    for (const DeskCommand& added : DeskCommands())
        if (added.menu == menu && added.words != nullptr)
            box(added.name).SetText(added.words(session));
}

void MDIForm1::ReadSettings()
{
    const SettingsSurroundings surroundings{.programFolder = session.programFolder,
                                            .rootFolder = session.RootFolder,
                                            .userName = session.platform.UserName(),
                                            .screenHeight = session.screenHeight,
                                            .screenWidth = session.screenWidth};
    try {
        ReadConfiguration(session.settings, surroundings);
    } catch (const std::exception& error) {
        ReportError("ReadConfiguration", error);
    }
}

void MDIForm1::BeginWithFolderNamed()
{
    const std::filesystem::path& named = session.databaseNamed;
    if (named.empty())
        return;
    std::error_code unreadable;
    if (named.filename() != edition::ClientDatabaseName || !std::filesystem::is_regular_file(named, unreadable))
        SetStatusNote(session, fmt::format("{} is not a client database of this edition", named.string()));
    else if (!SelectFolderOf(session.settings, named))
        SetStatusNote(session, fmt::format("{} is in none of the {} client folders: Folder, Manager makes room for it",
                                           named.string(), FolderSlots));
}

bool MDIForm1::CreateUserFile(const std::filesystem::path& templateFolder, std::string_view templateName,
                              const std::filesystem::path& clientFolder, std::string_view databaseName)
{
    const std::filesystem::path target = InFolder(clientFolder, databaseName);
    std::error_code unreadable;
    if (std::filesystem::exists(target, unreadable))
        return true;
    try {
        CopyFileChecked(InFolder(templateFolder, templateName), target);
        return true;
    } catch (const std::exception&) {
        return false;
    }
}

void MDIForm1::ChooseFolder(int slot)
{
    if (slot == session.settings.selectedFolder)
        return;
    // What is open is stored in the folder that it was opened from: the open record keeps to its own.
    if (!CloseAllScreens(session))
        return;
    session.settings.selectedFolder = slot;
    RebuildFolderMenu(session);
    session.messages.Tell("Quillmere Program Closing - Please restart from the desktop",
                          "The Database folder has been updated.  The program will now exit to save changes",
                          Icon::Critical);
    session.screens.Unload(Name());
}

void MDIForm1::ToggleToolbar()
{
    bool& shown = session.settings.viewPicToolbar;
    shown = !shown;
    box("ToolbarOpt").SetTicked(shown);
    box("picToolbar").SetVisible(shown);
}

void MDIForm1::CommandNew()
{
    if (!CloseAllScreens(session))
        return;
    session.screens.Show("NewFileCheck");
}

void MDIForm1::CommandEmployerList(EmployerListPurpose mode, std::string_view caption)
{
    if (!CloseAllScreens(session))
        return;
    session.EmployerListMode = mode;
    if (Screen* list = session.screens.Load("EmployerList")) {
        list->SetCaption(caption);
        session.screens.Show("EmployerList");
    }
}

void MDIForm1::CommandRename()
{
    if (!CloseAllScreens(session))
        return;
    session.EmployerListMode = EmployerListPurpose::Open;
    session.screens.Show("RenameEmp");
}

void MDIForm1::CommandOpenScreen(std::string_view screen)
{
    if (!CloseAllScreens(session))
        return;
    session.screens.Show(screen);
}

void MDIForm1::CommandPrint()
{
    for (const std::string_view page : Pages) {
        if (!session.screens.IsShown(page))
            continue;
        auto& shown = *session.screens.Find<P11DPage>(page);
        // What the store has not taken would be missing on the paper.
        if (shown.StoreAndShow(shown.RefreshErrorTitle()) == BoundScreen::Sought::Failed)
            return;
    }
    session.printJob(PrintedDocument::Employee);
    session.screens.WhenNoneIsModal([this] { RefreshAfterPrint(); });
}

/// The page that shows is sought again once the print run is over and the preview closed. One whose record has not been
/// there before it has been told of.
void MDIForm1::RefreshAfterPrint()
{
    auto* page = session.screens.Find<P11DPage>(session.CurrentPage == 2 ? "Side2Form1" : "Form3");
    if (page != nullptr && EmployeeRecord(session).IsThere())
        static_cast<void>(page->StoreAndShow(page->RefreshErrorTitle()));
}

void MDIForm1::CommandExit()
{
    if (session.messages.Ask("End Program", "Quit " + std::string(edition::AppTitle), Icon::Critical))
        End();
}

void MDIForm1::CloseRequested()
{
    session.screens.LeaveBoxInUse();
    End();
}

void MDIForm1::End()
{
    if (MayEnd())
        session.screens.Unload(Name());
}

bool MDIForm1::MayEnd()
{
    for (const auto& record : OpenRecords(session))
        if (session.endsBySystem)
            record->StoreOrKeep();
        else if (!record->MayClose() &&
                 !session.messages.Ask(edition::AppTitle, "Close without storing?", Icon::Question, Answer::No))
            return false;
    if (session.endsBySystem && session.typedJournal != nullptr)
        session.typedJournal->LeaveForNextStart();
    // Nothing is given up before it is certain that the program ends.
    for (const auto& record : OpenRecords(session))
        record->DropChanges();
    return true;
}

void MDIForm1::Unload()
{
    UnloadAllScreens(session);
    for (Screen* screen : session.screens.Open())
        session.screens.Unload(screen->Name());
    // A window that is closed minimised keeps what was saved: its place, and whether it was large.
    if (const auto& placement = Placement(); placement && !placement->minimised) {
        Settings& settings = session.settings;
        settings.applicationMaximised = placement->maximised;
        settings.applicationTop = placement->top;
        settings.applicationLeft = placement->left;
        settings.applicationHeight = placement->height;
        settings.applicationWidth = placement->width;
    }
    // Where they cannot be written, the settings of this run are lost and nothing else suffers.
    static_cast<void>(WriteConfiguration(session.settings, session.programFolder));
}

} // namespace quillmere
