#pragma once

#include "frame/LibraryInUse.h"

#include <filesystem>
#include <string>
#include <vector>

namespace quillmere {

/// Size and format of a client database in words, or why it cannot be opened.
struct DatabaseFacts {
    std::string size;
    std::string format;
};
DatabaseFacts FactsOfDatabase(const std::filesystem::path& path);

/// What the store is made of.
std::vector<LibraryInUse> StoreLibraries();

} // namespace quillmere
