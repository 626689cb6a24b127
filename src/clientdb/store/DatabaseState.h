#pragma once

#include "clientdb/store/Recordset.h"

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

/// The look at a whole client database: is it all there, and who is in it.
namespace quillmere {

struct DatabaseState {
    std::vector<std::string> faults; ///< what is wrong, the first of it; empty for a database that is whole
    std::int64_t employers = 0, employees = 0;

    bool IsWhole() const { return faults.empty(); }
    friend bool operator==(const DatabaseState&, const DatabaseState&) = default;
};

/// Counts who is in a database on a server, which looks after itself. Opens a file as a client database, looks through
/// all its pages, indexes and tables, and counts who is in it. Damage is what it finds; it throws StoreError where
/// nobody can look: there is no file, or somebody has locked it.
DatabaseState LookAtDatabase(const std::filesystem::path& file);

/// Counts who is in a database that nobody has looked through.
DatabaseState CountIn(Database::Connection& connection);

/// "opened, 42 employees, complete", or what is wrong.
std::string InWords(const DatabaseState& state);

} // namespace quillmere
