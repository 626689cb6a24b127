#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <stdexcept>
#include <string>
#include <string_view>

namespace quillmere::test {

/// A fresh folder that goes with the test.
class TemporaryFolder {
public:
    TemporaryFolder()
    {
        std::string name = (std::filesystem::temp_directory_path() / "quillmere-XXXXXX").string();
        if (::mkdtemp(name.data()) == nullptr)
            throw std::runtime_error("no temporary folder");
        path = name;
        std::filesystem::permissions(path, std::filesystem::perms(0755));
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder()
    {
        std::error_code ignored;
        std::filesystem::remove_all(path, ignored);
    }

    const std::filesystem::path& Path() const { return path; }
    std::filesystem::path operator/(std::string_view name) const { return path / name; }

private:
    std::filesystem::path path;
};

/// The names of everything in a folder.
inline std::set<std::string> NamesIn(const std::filesystem::path& folder)
{
    std::set<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder))
        names.insert(entry.path().filename().string());
    return names;
}

inline void Store(const std::filesystem::path& file, std::string_view content)
{
    std::ofstream out(file, std::ios::binary);
    out << content;
    if (!out.flush())
        throw std::runtime_error("cannot write " + file.string());
}

inline std::string Content(const std::filesystem::path& file)
{
    std::ifstream in(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

} // namespace quillmere::test
