#pragma once

#include "clientdb/store/DatabaseState.h"
#include "clientdb/store/ServerService.h"

namespace quillmere {

/// Makes an empty file a client database that holds what the tables of a shared folder held at one moment, the change
/// history and the marks of the forms with them: who was in it then. Others go on writing meanwhile. Throws StoreError.
DatabaseState CopyServerIntoFile(const ServerService& service, const std::filesystem::path& empty);

/// Gives the tables of a shared folder the content of a file, all of it or none. Others wait meanwhile, and then see
/// what was put back. Throws StoreError.
void PutFileOnServer(const std::filesystem::path& file, const ServerService& service);

} // namespace quillmere
