#pragma once

#include "app/Program.h"

namespace quillmere {

/// The folder of the executable, where it can be written and is not the system's, as all below /usr is; else the folder
/// of the product's name in the user's own data folder, made at the first start, with template and reference database
/// still beside the executable.
ProgramPlaces FindPlaces(const std::filesystem::path& executableFolder, int screenHeight, int screenWidth);

} // namespace quillmere
