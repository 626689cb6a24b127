#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <string>

namespace quillmere::endure {

/// What the required tables of a client database hold: each field that is not null, by table, record and field.
struct ClientState {
    std::map<std::string, std::string> fields;

    friend bool operator==(const ClientState&, const ClientState&) = default;
};

/// Reads the database with the engine alone; a journal that a broken process has left is played back first. An empty
/// state if there is no such file. Throws std::runtime_error for a file that cannot be read or is not whole.
ClientState ReadClientState(const std::filesystem::path& file);

/// A number that tells states apart.
std::uint64_t DigestOf(const ClientState& state);

/// The first few differences in words; empty if there is none.
std::string DifferenceOf(const ClientState& expected, const ClientState& found);

} // namespace quillmere::endure
