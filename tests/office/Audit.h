#pragma once

#include "Book.h"

#include <filesystem>
#include <string>
#include <vector>

namespace quillmere::office {

/// Looks whether everything that the clerks have been told is stored is there: in the tables, or in the change history
/// as stored over by something later; whether what was stored over has stayed so; and whether everybody is there whole
/// or not at all. What is not so, in words.
std::vector<std::string> FaultsIn(const std::filesystem::path& clients, const std::vector<Written>& books);

/// Does the folder a harm each of the ways that FaultsIn looks for, one after the other, and says which were not found.
std::vector<std::string> HarmsNotFound(const std::filesystem::path& clients, const std::vector<Written>& books);

} // namespace quillmere::office
