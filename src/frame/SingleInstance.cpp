#include "frame/SingleInstance.h"

#include "edition/Edition.h"

#include <cerrno>
#include <fcntl.h>
#include <fmt/format.h>
#include <sys/file.h>
#include <unistd.h>

namespace quillmere {

namespace {

/// False only if somebody else holds the lock.
bool Lock(int descriptor)
{
    int result = 0;
    do
        result = ::flock(descriptor, LOCK_EX | LOCK_NB);
    while (result != 0 && errno == EINTR);
    return result == 0 || errno != EWOULDBLOCK;
}

/// The lock file, made if need be. One that another user has made may only be read, which is enough to lock it.
int Open(const std::filesystem::path& file)
{
    const int made = ::open(file.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0666);
    return made < 0 && errno == EACCES ? ::open(file.c_str(), O_RDONLY | O_CLOEXEC) : made;
}

std::filesystem::path LockFile(const std::filesystem::path& folder)
{
    return folder / fmt::format(".{}.lock", edition::ProductFolder);
}

} // namespace

// The lock belongs to the opened file, not to the process, and is not handed on to programs that this one starts. The
// file stays when the lock goes: removing it would let two instances lock two files of the same name.
SingleInstance::SingleInstance(const std::filesystem::path& folder)
    : descriptor(Open(LockFile(folder))), isFirst(descriptor < 0 || Lock(descriptor))
{
}

SingleInstance::~SingleInstance()
{
    if (descriptor >= 0)
        ::close(descriptor);
}

} // namespace quillmere
