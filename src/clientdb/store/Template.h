#pragma once

#include <filesystem>

/// Makes new database files. Only the tools of the build and the tests do; the program itself copies the template.
namespace quillmere {

/// Makes a client database with every table, index and field, empty but for the list of currencies. The same bytes each
/// time. Throws StoreError, also if there is a file of that name.
void CreateTables(const std::filesystem::path& path);

/// Makes a reference database with its tables, all empty. Throws StoreError likewise.
void CreateReferenceTables(const std::filesystem::path& path);

} // namespace quillmere
