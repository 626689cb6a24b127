#include "desktop/ProgramFolder.h"

#include "edition/Edition.h"

#include <QStandardPaths>

#include <unistd.h>

namespace quillmere {

ProgramPlaces FindPlaces(const std::filesystem::path& executableFolder, int screenHeight, int screenWidth)
{
    ProgramPlaces places{.programFolder = executableFolder,
                         .resourceFolder = executableFolder,
                         .screenHeight = screenHeight,
                         .screenWidth = screenWidth};
    if (access(places.programFolder.c_str(), W_OK) == 0)
        return places;
    const QString data = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    places.programFolder = std::filesystem::path(data.toStdString()) / edition::ProductFolder;
    std::error_code failure;
    std::filesystem::create_directories(places.programFolder, failure);
    return places;
}

} // namespace quillmere
