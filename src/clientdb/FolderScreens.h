#pragma once

#include "frame/Screen.h"
#include "frame/Settings.h"

#include <filesystem>
#include <optional>

namespace quillmere {

/// So many client folders can be named.
inline constexpr int FolderSlots = 4;

/// Selects the folder of a client database: its slot, or the first free one, which then has the folder's own name.
/// False, with nothing changed, if all slots are taken by others.
[[nodiscard]] bool SelectFolderOf(Settings& settings, const std::filesystem::path& database);

/// Fills the main window's Folder menu from the four folder slots.
void RebuildFolderMenu(Session& session);

/// "Folder Manager": names and paths of the four client folders.
class frmFolderManager : public Screen {
public:
    explicit frmFolderManager(Session& session);
    bool Load() override;
    void Activate() override;

private:
    void Accept();
};

/// "Backup": a copy of the client database.
class frmBackup : public Screen {
public:
    explicit frmBackup(Session& session);
    bool Load() override;

private:
    void Save();
    /// Asks where to and copies. Where the copy is; nothing if there is none, which Save then tells.
    [[nodiscard]] std::optional<std::filesystem::path> SaveCopy();
    void TellDamaged(std::string_view whatFollows);
    void TellNotSaved();
};

} // namespace quillmere
