#pragma once

#include <filesystem>

namespace quillmere::sample {

/// Makes a client database of last year with two employers and their employees, whose schedules, vans, loans and cars
/// meet every case of the transfer, and with the sample's own employer, who is never transferred. Throws StoreError,
/// also if there is a file of that name.
void CreateLastYear(const std::filesystem::path& path);

} // namespace quillmere::sample
