#pragma once

#include <filesystem>

namespace quillmere::sample {

/// Makes a client database of last year with two employers and their employees, whose schedules, vans, loans and cars
/// show the usual cases of the transfer (what runs on, what ended, what moves up), and with the sample's own employer,
/// who is never transferred. Throws StoreError, also if there is a file of that name.
void CreateLastYear(const std::filesystem::path& path);

} // namespace quillmere::sample
