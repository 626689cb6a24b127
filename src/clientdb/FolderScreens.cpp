#include "clientdb/FolderScreens.h"

#include "clientdb/store/Backup.h"
#include "clientdb/store/StoreErrors.h"
#include "edition/Edition.h"
#include "frame/BusyPointer.h"
#include "frame/Session.h"

#include <fmt/format.h>

namespace quillmere {

namespace {

std::size_t Slot(int number)
{
    return static_cast<std::size_t>(number);
}

bool IsSameFolder(const std::filesystem::path& one, const std::filesystem::path& other)
{
    std::error_code unreadable;
    return std::filesystem::equivalent(one, other, unreadable);
}

} // namespace

bool SelectFolderOf(Settings& settings, const std::filesystem::path& database)
{
    std::error_code unreadable;
    const std::filesystem::path folder = std::filesystem::absolute(database, unreadable).parent_path();
    int freeSlot = 0;
    for (int slot = FolderSlots; slot >= 1; --slot) {
        const bool isFree = settings.folder[Slot(slot)].empty();
        if (isFree)
            freeSlot = slot;
        else if (IsSameFolder(settings.path[Slot(slot)], folder)) {
            settings.selectedFolder = slot;
            return true;
        }
    }
    if (freeSlot == 0)
        return false;
    settings.folder[Slot(freeSlot)] = folder.filename().string();
    settings.path[Slot(freeSlot)] = folder.string();
    settings.selectedFolder = freeSlot;
    return true;
}

void RebuildFolderMenu(Session& session)
{
    Screen* const main = session.screens.Find("MDIForm1");
    if (main == nullptr)
        return;
    int digit = 1;
    for (int slot = 1; slot <= FolderSlots; ++slot) {
        const std::string& name = session.settings.folder[Slot(slot)];
        Box& entry = main->box("mnuAltFolder", slot);
        entry.SetVisible(!name.empty());
        if (name.empty())
            continue;
        entry.SetText("&" + std::to_string(digit++) + " " + name);
        entry.SetTicked(slot == session.settings.selectedFolder);
    }
}

// ---- frmFolderManager -----------------------------------------------------------------------------

frmFolderManager::frmFolderManager(Session& session)
    : Screen(session, "frmFolderManager", ShowMode::Modal, "Folder Manager")
{
    for (int slot = 1; slot <= FolderSlots; ++slot) {
        const std::string number = std::to_string(slot);
        AddBox({.spoken = "Folder Name " + number}, "txtName", slot);
        AddBox({.filter = PathKeyFilter, .spoken = "Directory Path " + number}, "txtPath", slot);
    }
    AddBox({.kind = BoxKind::Button, .text = "&OK"}, "cmdOK");
    AddBox({.kind = BoxKind::Button, .text = "&Cancel"}, "cmdCancel");
    SetButtons("cmdCancel", "cmdOK");
    OnClick("cmdOK", [this](Box&) { Accept(); });
}

bool frmFolderManager::Load()
{
    for (int slot = 1; slot <= FolderSlots; ++slot) {
        box("txtName", slot).SetText(session.settings.folder[Slot(slot)]);
        box("txtPath", slot).SetText(session.settings.path[Slot(slot)]);
    }
    return true;
}

void frmFolderManager::Activate()
{
    if (Box* name = FindBox("txtName", session.settings.selectedFolder))
        Focus(*name);
}

void frmFolderManager::Accept()
{
    for (int slot = 1; slot <= FolderSlots; ++slot) {
        session.settings.folder[Slot(slot)] = box("txtName", slot).Text();
        session.settings.path[Slot(slot)] = box("txtPath", slot).Text();
    }
    RebuildFolderMenu(session);
    if (!WriteConfiguration(session.settings, session.programFolder))
        session.messages.Tell(edition::AppTitle,
                              "The client folders could not be saved. They hold until the program ends.");
    session.screens.Unload(Name());
}

// ---- frmBackup ------------------------------------------------------------------------------------

frmBackup::frmBackup(Session& session) : Screen(session, "frmBackup", ShowMode::Modal, "Backup")
{
    AddBox({.kind = BoxKind::Label}, "lblSource");
    AddBox({.kind = BoxKind::Button, .text = "&Save"}, "cmdSave");
    AddBox({.kind = BoxKind::Button, .text = "&Cancel"}, "cmdCancel");
    SetButtons("cmdCancel", "cmdSave");
    OnClick("cmdSave", [this](Box&) { Save(); });
    OnClick("cmdCancel", [this](Box&) {
        TellNotSaved();
        this->session.screens.Unload(Name());
    });
}

bool frmBackup::Load()
{
    box("lblSource").SetText(session.ClientDatabasePath().string());
    return true;
}

void frmBackup::Save()
{
    const std::optional<std::filesystem::path> copy = SaveCopy();
    if (!copy) {
        TellNotSaved();
        return;
    }
    session.messages.Tell(
        edition::AppTitle,
        fmt::format("A backup copy of your client database has been saved in the following file:\n\n{}",
                    copy->string()),
        Icon::Information);
    session.screens.Unload(Name());
}

std::optional<std::filesystem::path> frmBackup::SaveCopy()
{
    const std::filesystem::path source = session.ClientDatabasePath();
    const SaveFileQuestion question{.title = "Backup client database",
                                    .proposedPath = ProposedBackupName(source, session.platform.Today()),
                                    .filterName = "Marlbase databases",
                                    .filterPattern = "*.mdb",
                                    .defaultExtension = "mdb"};
    const std::optional<std::string> chosen = session.platform.AskSaveFile(question);
    if (!chosen)
        return std::nullopt;
    std::filesystem::path target = *chosen;
    if (!target.has_extension())
        target += "." + question.defaultExtension;
    if (IsSameFile(source, target))
        return std::nullopt;
    if (NameIsTaken(target) &&
        !session.messages.Ask(
            edition::AppTitle,
            fmt::format("The file:\n\n{}\n\nalready exits. Do you wish to replace it?", target.string())))
        return std::nullopt;
    const auto backUp = [&] {
        const BusyPointer busy(session.platform);
        return BackUpDatabase(source, target);
    };
    try {
        if (!backUp())
            TellDamaged("It is copied as it is. Keep your older backups.");
        return target;
    } catch (const OlderCopyKept&) {
        TellDamaged("The older backup is whole and stays. Choose another name for a copy of the damaged database.");
        return std::nullopt;
    } catch (const Failure&) {
        return std::nullopt;
    }
}

void frmBackup::TellDamaged(std::string_view whatFollows)
{
    session.messages.Tell(edition::AppTitle, fmt::format("Your client database is damaged.\n\n{}", whatFollows));
}

void frmBackup::TellNotSaved()
{
    session.messages.Tell(edition::AppTitle, "The client database backup file was not saved", Icon::Information);
}

} // namespace quillmere
