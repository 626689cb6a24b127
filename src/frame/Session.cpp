#include "frame/Session.h"

#include "edition/Edition.h"
#include "frame/Folders.h"

namespace quillmere {

std::filesystem::path Session::ClientDatabasePath() const
{
    return InFolder(settings.path.at(static_cast<std::size_t>(settings.selectedFolder)), edition::ClientDatabaseName);
}

} // namespace quillmere
