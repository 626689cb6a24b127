#include "desktop/ProgramFolder.h"

#include "edition/Edition.h"

#include <QCoreApplication>
#include <QStandardPaths>

#include <unistd.h>

namespace quillmere {

ProgramPlaces FindPlaces(int screenHeight, int screenWidth)
{
    ProgramPlaces places{.programFolder = QCoreApplication::applicationDirPath().toStdString(),
                         .resourceFolder = {},
                         .screenHeight = screenHeight,
                         .screenWidth = screenWidth};
    places.resourceFolder = places.programFolder;
    if (access(places.programFolder.c_str(), W_OK) == 0)
        return places;
    const QString data = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    places.programFolder = std::filesystem::path(data.toStdString()) / edition::ProductFolder;
    std::error_code failure;
    std::filesystem::create_directories(places.programFolder, failure);
    return places;
}

} // namespace quillmere
