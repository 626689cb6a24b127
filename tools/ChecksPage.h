#pragma once

#include <string>

namespace quillmere {

/// The chapter of all checks: a line for each, as the program's own tables have it.
std::string ChecksPage();

} // namespace quillmere
