#pragma once

#include <filesystem>
#include <string>
#include <vector>

/// A client database of either engine past the record store.
namespace quillmere::test {

/// Runs a statement. Throws std::runtime_error.
void ExecuteRaw(const std::filesystem::path& file, const std::string& statement);

/// The rows of a query, whose names stand in square brackets: each text in quotes, null as the word.
std::vector<std::vector<std::string>> RawRows(const std::filesystem::path& file, const std::string& query);

} // namespace quillmere::test
