#pragma once

#include "frame/LibraryInUse.h"

#include <string>

namespace quillmere {

/// A PDF file with a lock: AES with 256 bits, opened with the password (UTF-8, of which 127 bytes count), which then
/// allows everything. The same file gives other bytes each time.
std::string Protected(const std::string& pdf, const std::string& password);

/// The library that does it.
LibraryInUse ProtectionLibrary();

} // namespace quillmere
