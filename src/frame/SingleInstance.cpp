#include "frame/SingleInstance.h"

#include "edition/Edition.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <unistd.h>

namespace quillmere {

namespace {

/// The lock file, made if need be. It stays when the lock goes: removing it would let two instances lock two files of
/// the same name.
std::filesystem::path LockFile(const std::filesystem::path& folder)
{
    std::filesystem::path file = folder / fmt::format(".{}.lock", edition::ProductFolder);
    if (const int made = ::open(file.c_str(), O_RDONLY | O_CREAT | O_CLOEXEC, 0666); made >= 0)
        ::close(made);
    return file;
}

} // namespace

SingleInstance::SingleInstance(const std::filesystem::path& folder) : lock(LockFile(folder))
{
}

} // namespace quillmere
