#pragma once

#include "frame/Screen.h"
#include "frame/Session.h"

#include <filesystem>
#include <span>
#include <string_view>

namespace quillmere {

/// One entry of the main window's menus.
struct MenuRow {
    std::string_view menu; ///< "File"
    std::string_view box;
    int index = Box::NoIndex;
    std::string_view key = {};      ///< "Ctrl+N"
    std::string_view otherKey = {}; ///< that does it, too, and is not shown
    bool separatorBefore = false;
};

/// An entry of the menus that the empty desk offers, too.
struct StartRow {
    std::string_view box;
    int index = Box::NoIndex;
    std::string_view text = {};  ///< where it is not the entry's
    std::string_view where = {}; ///< a part of the desk, with which it shows
};

/// What the empty desk offers, from top to bottom.
std::span<const StartRow> StartRows();

/// The menu bar, entry by entry.
std::vector<MenuRow> MenuRows();
/// The letter that opens a menu together with Alt.
char LetterOfMenu(std::string_view menu);

/// The main window: menus, toolbar, status bar, and the commands that tie the subsystems together.
class MDIForm1 : public Screen {
public:
    explicit MDIForm1(Session& session);

    bool Load() override;
    void Unload() override;
    /// A menu is about to show: its entries say what they would do now.
    void MenuOpens(std::string_view menu);

    /// Makes a file from the empty template if the target does not exist. False if it cannot be made.
    [[nodiscard]] static bool CreateUserFile(const std::filesystem::path& templateFolder, std::string_view templateName,
                                             const std::filesystem::path& clientFolder, std::string_view databaseName);

private:
    void ReadSettings();
    /// Begins with the folder of the database that was named at the start, if one was.
    void BeginWithFolderNamed();
    void CloseRequested() override;
    /// Ends the program, if it may.
    void End();
    /// False if the store does not take what is open and the user does not want to lose it. At the system's wish nobody
    /// is asked: it is kept for the next start.
    [[nodiscard]] bool MayEnd();
    void CommandNew();
    void CommandEmployerList(EmployerListPurpose mode, std::string_view caption);
    void CommandRename();
    void CommandPrint();
    void RefreshAfterPrint();
    void CommandExit();
    void CommandOpenScreen(std::string_view screen);
    void ChooseFolder(int slot);
    void ToggleToolbar();
};

} // namespace quillmere
