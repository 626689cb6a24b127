#pragma once

#include <filesystem>
#include <string_view>

namespace quillmere {

/// The path of a file or folder in a folder: the folder's text, a separator, the name. An empty folder is the topmost
/// one, never the folder that the process happens to work in.
std::filesystem::path InFolder(const std::filesystem::path& folder, std::string_view name);

/// The folder above the program's own, shared by the editions: the program folder's path less as many characters as the
/// product code and a separator have. Nothing checks that the path ends in the product code.
std::filesystem::path RootFolderOf(const std::filesystem::path& programFolder);

/// Last year's program folder, beside this year's.
std::filesystem::path PriorProgramFolderOf(const std::filesystem::path& programFolder);

/// The system's own folder: where it keeps its temporary folder.
std::filesystem::path WindowsFolder();

/// The folder "TEMP" of the program family: below the user's cache folder, or without one below the system's own.
std::filesystem::path TempFolder(const std::filesystem::path& windowsFolder);

/// Makes `TempFolder`; a failure is passed over, since the folder usually exists and nothing depends on it.
void MakeTempFolder(const std::filesystem::path& windowsFolder);

} // namespace quillmere
