#pragma once

#include <filesystem>

namespace quillmere {

/// Removes a file. False if it is still there: held by another program, which a lock on it shows, or not removable.
/// True if there was none.
[[nodiscard]] bool RemoveUnlessHeld(const std::filesystem::path& file);

} // namespace quillmere
