#pragma once

#include <filesystem>

/// Makes new database files. The tools of the build and the tests do; the program itself copies the template, and fills
/// a file of its own only with what a server holds.
namespace quillmere {

/// Makes a client database with every table, index and field, empty but for the list of currencies. The same bytes each
/// time. Throws StoreError, also if there is a file of that name.
void CreateTables(const std::filesystem::path& path);

/// Makes an empty file, or none, such a client database. Throws StoreError.
void FillWithTables(const std::filesystem::path& path);

/// Makes a reference database with its tables, all empty. Throws StoreError likewise.
void CreateReferenceTables(const std::filesystem::path& path);

} // namespace quillmere
