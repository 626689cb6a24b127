#pragma once

#include "frame/LibraryInUse.h"

#include <vector>

namespace quillmere {

/// What pages are measured and written with.
std::vector<LibraryInUse> PaperLibraries();

} // namespace quillmere
