#pragma once

#include "Clerk.h"

#include <filesystem>

namespace quillmere::office {

/// Puts the clients into the empty tables of a server that a file names.
void MakeClients(const std::filesystem::path& file, const Clients& clients);

} // namespace quillmere::office
