#include "frame/Folders.h"

#include "edition/Edition.h"
#include "frame/Text.h"

#include <cstdlib>
#include <string>
#include <system_error>

namespace quillmere {

namespace {

/// The user's folder for what can be made again; empty if the environment names none.
std::filesystem::path CacheFolder()
{
    if (const char* cache = std::getenv("XDG_CACHE_HOME"); cache != nullptr && *cache == '/')
        return cache;
    if (const char* home = std::getenv("HOME"); home != nullptr && *home == '/')
        return std::filesystem::path(home) / ".cache";
    return {};
}

} // namespace

std::filesystem::path InFolder(const std::filesystem::path& folder, std::string_view name)
{
    std::filesystem::path::string_type path = folder.native();
    path += std::filesystem::path::preferred_separator;
    path += name;
    return path;
}

std::filesystem::path RootFolderOf(const std::filesystem::path& programFolder)
{
    // Kept: lengths alone decide, so a program folder of another name gives a wrong root and no message.
    const std::string path = programFolder.string();
    const std::size_t length = Length(path);
    const std::size_t dropped = edition::ProductFolder.size() + 1;
    return length > dropped ? Left(path, length - dropped) : std::string();
}

std::filesystem::path PriorProgramFolderOf(const std::filesystem::path& programFolder)
{
    return InFolder(RootFolderOf(programFolder), edition::PriorProductFolder);
}

std::filesystem::path WindowsFolder()
{
    std::error_code error;
    std::filesystem::path temporary = std::filesystem::temp_directory_path(error);
    if (error)
        return "/";
    if (!temporary.has_filename())
        temporary = temporary.parent_path();
    return temporary.parent_path();
}

std::filesystem::path TempFolder(const std::filesystem::path& windowsFolder)
{
    const std::filesystem::path cache = CacheFolder();
    return (cache.empty() ? windowsFolder : cache) / "TEMP";
}

void MakeTempFolder(const std::filesystem::path& windowsFolder)
{
    std::error_code ignored;
    std::filesystem::create_directory(TempFolder(windowsFolder), ignored);
}

} // namespace quillmere
