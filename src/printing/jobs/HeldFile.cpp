#include "printing/jobs/HeldFile.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <system_error>
#include <unistd.h>

namespace quillmere {

namespace {

/// True if another program has a lock on the open file, of the one kind or the other.
bool IsLocked(int descriptor)
{
    if (::flock(descriptor, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK)
        return true;
    struct flock lock {};
    lock.l_type = F_WRLCK;
    lock.l_whence = SEEK_SET;
    return ::fcntl(descriptor, F_GETLK, &lock) == 0 && lock.l_type != F_UNLCK;
}

} // namespace

bool MayBeReplaced(const std::filesystem::path& file)
{
    std::error_code error;
    const auto found = std::filesystem::symlink_status(file, error);
    if (found.type() == std::filesystem::file_type::not_found)
        return true;
    if (found.type() == std::filesystem::file_type::directory)
        return false;
    if (const int descriptor = ::open(file.c_str(), O_RDWR | O_CLOEXEC | O_NONBLOCK); descriptor >= 0) {
        const bool isLocked = IsLocked(descriptor);
        ::close(descriptor);
        if (isLocked)
            return false;
    } else if (errno == EACCES || errno == EROFS || errno == ETXTBSY) {
        return false; // One that may not be written is left alone, although its folder would let it go.
    }
    return ::access(file.parent_path().c_str(), W_OK | X_OK) == 0;
}

} // namespace quillmere
