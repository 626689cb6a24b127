#pragma once

#include "clientdb/store/DatabaseState.h"

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

/// What can be read of a damaged client database.
namespace quillmere {

/// Something of a table that could not be read.
struct NotRead {
    std::string table;
    std::string record; ///< whose, or which numbers
    std::string why;
};

struct Salvaged {
    DatabaseState state;      ///< of the new database
    std::int64_t records = 0; ///< so many were read, in all tables
    std::vector<NotRead> lost;
};

/// Makes a new, whole database of every record that can be read of a damaged one, which is only looked at: row by row,
/// from the first one up and from the last one down over what cannot be read, and then whomever else an index names.
/// Where the description of the tables itself is damaged, that of the empty template takes its place. Throws StoreError
/// if nothing can be read, and FileError.
Salvaged SalvageDatabase(const std::filesystem::path& damaged, const std::filesystem::path& emptyTemplate,
                         const std::filesystem::path& target);

} // namespace quillmere
