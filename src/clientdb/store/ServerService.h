#pragma once

#include "clientdb/store/StoreErrors.h"

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace quillmere {

/// Where the tables of a shared client folder are: what the file says that stands in the folder in the place of the
/// database. It has the form of a connection service file: a name in square brackets, then settings of the server's
/// library, one a line, and the schema. A password never stands in it: that is for the library's own ways.
struct ServerService {
    using Setting = std::pair<std::string, std::string>;
    std::filesystem::path file;
    std::vector<Setting> settings;
    std::string schema;
    /// Who keeps the safety copies of the folder. A whole one takes too long where very many are in it: then the line
    /// `copies=server` says that the server's own programs make them.
    enum class Copies { ByDesks, ByServer };
    Copies copies = Copies::ByDesks;

    /// What tells connections apart that can stand in for each other.
    std::string Key() const;
};

/// True for a name that a schema can have: small letters, digits and lines.
bool IsSchemaName(std::string_view name);

/// The service that a file names; nothing if it is no such file. Throws StoreError for one that is not to be used.
std::optional<ServerService> ReadService(const std::filesystem::path& file);

/// True for a shared folder of which no desk makes safety copies. Throws StoreError.
bool LeavesCopiesToServer(const std::filesystem::path& database);

/// True if a database is shared and the failure says that its server lets the user look and not write.
bool MayOnlyLook(const std::filesystem::path& database, const StoreError& failure);

/// Writes such a file. Throws FileError.
void WriteService(const ServerService& service);

} // namespace quillmere
