#include "support/TemporaryFolder.h"

#include <cerrno>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace quillmere::test {

namespace {

std::filesystem::path NewFolder(const std::filesystem::path& in)
{
    std::string name = (in / "quillmere-XXXXXX").string();
    if (::mkdtemp(name.data()) == nullptr)
        throw std::filesystem::filesystem_error("cannot make a folder", name,
                                                std::error_code(errno, std::generic_category()));
    // Others, too, may look into it: a print spooler gives up its rights first.
    std::filesystem::permissions(name, std::filesystem::perms(0755));
    return name;
}

} // namespace

TemporaryFolder::TemporaryFolder(const std::filesystem::path& in) : path(NewFolder(in))
{
}

TemporaryFolder::~TemporaryFolder()
{
    std::error_code ignored;
    std::filesystem::remove_all(path, ignored);
}

std::filesystem::path QuickFolder()
{
    const std::filesystem::path memory = "/dev/shm";
    if (std::getenv("TMPDIR") != nullptr || ::access(memory.c_str(), W_OK | X_OK) != 0)
        return std::filesystem::temp_directory_path();
    return memory;
}

std::set<std::string> NamesIn(const std::filesystem::path& folder)
{
    std::set<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder))
        names.insert(entry.path().filename().string());
    return names;
}

void Store(const std::filesystem::path& file, std::string_view content)
{
    std::ofstream out(file, std::ios::binary);
    out << content;
    if (!out.flush())
        throw std::runtime_error("cannot write " + file.string());
}

std::string Content(const std::filesystem::path& file)
{
    // Not a character at a time, which is most of a trial's work without the optimizer.
    std::ostringstream content;
    content << std::ifstream(file, std::ios::binary).rdbuf();
    return std::move(content).str();
}

} // namespace quillmere::test
