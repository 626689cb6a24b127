#pragma once

#include <string>

namespace quillmere {

/// A library of others that the program runs with.
struct LibraryInUse {
    std::string name;
    std::string version; ///< as the library itself says while the program runs, where it does
};

/// For a library that cannot be asked: the version that the program was built against.
inline std::string AsBuilt(const std::string& version)
{
    return version + " (as built)";
}

} // namespace quillmere
