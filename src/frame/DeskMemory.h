#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace quillmere {

/// What the desk remembers from one run to the next, a line KEY=TEXT each in a file beside the settings. A file that
/// cannot be read remembers nothing, and one that cannot be written costs nothing else.
class DeskMemory {
public:
    explicit DeskMemory(const std::filesystem::path& programFolder);

    /// Empty for what is not remembered.
    std::string Recall(std::string_view key) const;
    void Remember(std::string_view key, std::string_view text) const;

private:
    std::filesystem::path file;
};

} // namespace quillmere
