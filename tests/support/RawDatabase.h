#pragma once

#include <filesystem>
#include <span>
#include <string>
#include <vector>

/// A client database of either engine past the record store.
namespace quillmere::test {

/// Runs a statement. Throws std::runtime_error.
void ExecuteRaw(const std::filesystem::path& file, const std::string& statement);

using RawTable = std::vector<std::vector<std::string>>;

/// The rows of a query, whose names stand in square brackets: each text in quotes, null as the word.
RawTable RawRows(const std::filesystem::path& file, const std::string& query);
/// Those of each of the queries, all of one connection: to open one reads the layouts of all tables.
std::vector<RawTable> RawRows(const std::filesystem::path& file, std::span<const std::string> queries);

} // namespace quillmere::test
