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

std::filesystem::path LockFile(const std::filesystem::path& folder)
{
    return folder / fmt::format(".{}.lock", edition::ProductFolder);
}

} // namespace

// The lock belongs to the opened file, not to the process, and is not handed on to programs that this one starts. The
// file stays when the lock goes: removing it would let two instances lock two files of the same name.
SingleInstance::SingleInstance(const std::filesystem::path& folder)
    : descriptor(::open(LockFile(folder).c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0666)),
      isFirst(descriptor < 0 || Lock(descriptor))
{
}

SingleInstance::~SingleInstance()
{
    if (descriptor >= 0)
        ::close(descriptor);
}

} // namespace quillmere
