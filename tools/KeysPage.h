#pragma once

#include <string>

namespace quillmere {

struct Session;

/// The chapter of all keys: those of the menus, the toolbar and the pages as the program has them.
std::string KeysPage(const Session& session);

} // namespace quillmere
