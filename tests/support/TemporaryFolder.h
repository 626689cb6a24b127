#pragma once

#include <filesystem>
#include <set>
#include <string>
#include <string_view>

namespace quillmere::test {

/// A fresh folder that goes with its owner, with all that lies in it.
class TemporaryFolder {
public:
    explicit TemporaryFolder(const std::filesystem::path& in = std::filesystem::temp_directory_path());
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder();

    std::filesystem::path operator/(std::string_view name) const { return path / name; }

    const std::filesystem::path path;
};

/// Where files are written in memory, for tests that write much or need their writes to be quick; where there is no
/// such place, or the environment names another (TMPDIR), the common folder of temporary files.
std::filesystem::path QuickFolder();

/// The names of everything in a folder.
std::set<std::string> NamesIn(const std::filesystem::path& folder);

void Store(const std::filesystem::path& file, std::string_view content);

std::string Content(const std::filesystem::path& file);

} // namespace quillmere::test
