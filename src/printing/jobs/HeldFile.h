#pragma once

#include <filesystem>

namespace quillmere {

/// True if a new file may take the place of what has the name, or of nothing. False if that is held by another program,
/// which a lock on it shows, or may not be written or removed.
[[nodiscard]] bool MayBeReplaced(const std::filesystem::path& file);

} // namespace quillmere
