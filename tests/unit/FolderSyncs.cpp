#include "FolderSyncs.h"

#include <cerrno>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>
#include <utility>

namespace quillmere::test {
namespace {

bool nextFails = false;

} // namespace

void FailNextFolderSync()
{
    nextFails = true;
}

bool AwaitsFolderSync()
{
    return std::exchange(nextFails, false);
}

} // namespace quillmere::test

extern "C" int fsync(int file)
{
    struct stat found {};
    if (quillmere::test::nextFails && ::fstat(file, &found) == 0 && S_ISDIR(found.st_mode)) {
        quillmere::test::nextFails = false;
        errno = EIO;
        return -1;
    }
    return static_cast<int>(::syscall(SYS_fsync, file));
}
