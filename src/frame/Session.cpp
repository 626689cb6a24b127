#include "frame/Session.h"

#include "edition/Edition.h"

namespace quillmere {

std::filesystem::path Session::ClientDatabasePath() const
{
    const std::string& folder = settings.path.at(static_cast<std::size_t>(settings.selectedFolder));
    return std::filesystem::path(folder) / edition::ClientDatabaseName;
}

} // namespace quillmere
