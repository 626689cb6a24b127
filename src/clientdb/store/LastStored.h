#pragma once

#include <filesystem>
#include <string>

namespace quillmere {

/// What tells, compared with what it was before, whether anybody has stored something in a client database: when its
/// file was written last, or the last change in the history of a shared folder. Empty where nobody can say.
std::string LastStored(const std::filesystem::path& database);

} // namespace quillmere
