#include "desktop/ProgramFolder.h"

#include "edition/Edition.h"

#include <QStandardPaths>

#include <string_view>
#include <unistd.h>

namespace quillmere {

namespace {

/// The system's own tree, which belongs to its packages: nothing is written there, by the superuser neither.
constexpr std::string_view SystemTree = "/usr/";

bool IsForTheProgramToWrite(const std::filesystem::path& folder)
{
    return !folder.native().starts_with(SystemTree) && access(folder.c_str(), W_OK) == 0;
}

} // namespace

ProgramPlaces FindPlaces(const std::filesystem::path& executableFolder, int screenHeight, int screenWidth)
{
    ProgramPlaces places{.programFolder = executableFolder,
                         .resourceFolder = executableFolder,
                         .screenHeight = screenHeight,
                         .screenWidth = screenWidth};
    if (IsForTheProgramToWrite(executableFolder))
        return places;
    const QString data = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    places.programFolder = std::filesystem::path(data.toStdString()) / edition::ProductFolder;
    std::error_code failure;
    std::filesystem::create_directories(places.programFolder, failure);
    return places;
}

} // namespace quillmere
