#include "frame/FileLock.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <thread>
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

} // namespace

FileLock::FileLock(const std::filesystem::path& file, std::chrono::milliseconds patience)
    : descriptor(::open(file.c_str(), O_RDONLY | O_CLOEXEC)), isHeld(descriptor < 0 || Lock(descriptor))
{
    constexpr std::chrono::milliseconds Pause(5);
    for (; !isHeld && patience > Pause; patience -= Pause) {
        std::this_thread::sleep_for(Pause);
        isHeld = Lock(descriptor);
    }
}

FileLock::~FileLock()
{
    if (descriptor >= 0)
        ::close(descriptor);
}

} // namespace quillmere
