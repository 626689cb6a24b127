// Functions of the C library that stand before the real ones: the linker finds these first, for the program and for
// every library that it loads.
#include "SystemCalls.h"

#include <array>
#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <dlfcn.h>
#include <fcntl.h>
#include <mutex>
#include <string>
#include <sys/stat.h>
#include <sys/uio.h>
#include <unistd.h>
#include <utility>
#include <vector>

namespace quillmere::endure {
namespace {

constexpr std::size_t MostFiles = 4096;

struct Watched {
    std::recursive_mutex turn; ///< of the thread whose call it is; the others wait, also while the watcher looks
    CallWatcher* watcher = nullptr;
    std::string folder;
    std::array<std::string, MostFiles> files; ///< by descriptor; empty for one that is not watched
    int paused = 0;
};

// A function of the C library has no object to belong to.
Watched& Now()
{
    static Watched now;
    return now;
}

using Turn = std::lock_guard<std::recursive_mutex>;

/// True while the calls of this moment are to be seen.
bool Watching()
{
    const Turn turn(Now().turn);
    return Now().watcher != nullptr && Now().paused == 0;
}

bool IsBelow(std::string_view path)
{
    return !path.empty() && path.starts_with(Now().folder);
}

std::string FileOf(int descriptor)
{
    const Turn turn(Now().turn);
    const auto place = static_cast<std::size_t>(descriptor);
    return Watching() && descriptor >= 0 && place < MostFiles ? Now().files[place] : std::string();
}

void Remember(int descriptor, std::string file)
{
    const Turn turn(Now().turn);
    if (const auto place = static_cast<std::size_t>(descriptor); descriptor >= 0 && place < MostFiles)
        Now().files[place] = std::move(file);
}

/// The real function behind one of those below.
template<typename Function>
Function* Real(const char* name)
{
    return reinterpret_cast<Function*>(::dlsym(RTLD_NEXT, name));
}

/// Makes a call that the watcher may refuse. What the watcher itself does is not seen.
template<typename Result, typename Real>
Result Make(const Call& call, Result failed, Real real)
{
    const Turn turn(Now().turn);
    int refused = 0;
    {
        const Watch::Pause pause;
        refused = Now().watcher->Before(call);
    }
    if (refused != 0) {
        errno = refused;
        return failed;
    }
    const Result result = real();
    const int error = errno;
    if (result != failed) {
        const Watch::Pause pause;
        Now().watcher->After(call);
    }
    errno = error;
    return result;
}

template<typename Real>
int Open(const char* path, int flags, Real real)
{
    if (!Watching() || !IsBelow(path) || (flags & O_ACCMODE) == O_RDONLY)
        return real();
    const bool makes = (flags & O_CREAT) != 0 && ::access(path, F_OK) != 0;
    const Call call{
        .kind = Call::Kind::Open, .file = path, .makes = makes, .empties = !makes && (flags & O_TRUNC) != 0};
    const int descriptor = Make(call, -1, real);
    Remember(descriptor, path);
    return descriptor;
}

template<typename Real>
std::FILE* OpenStream(const char* path, const char* mode, Real real)
{
    if (!Watching() || !IsBelow(path) || *mode == 'r')
        return real();
    const bool makes = ::access(path, F_OK) != 0;
    const Call call{.kind = Call::Kind::Open, .file = path, .makes = makes, .empties = !makes && *mode == 'w'};
    std::FILE* const stream = Make(call, static_cast<std::FILE*>(nullptr), real);
    if (stream != nullptr)
        Remember(::fileno(stream), path);
    return stream;
}

/// A piece may go to the disk alone: a watcher that refuses a write sees all that the caller handed over.
template<typename Real>
ssize_t Write(int descriptor, std::int64_t at, std::string_view data, Real real)
{
    const std::string file = FileOf(descriptor);
    if (file.empty())
        return real();
    return Make(Call{.kind = Call::Kind::Write, .file = file, .at = at, .data = data}, ssize_t{-1}, real);
}

template<typename Real>
int Simple(Call::Kind kind, std::string_view file, Real real, std::int64_t at = 0)
{
    if (!Watching() || !IsBelow(file))
        return real();
    return Make(Call{.kind = kind, .file = file, .at = at}, -1, real);
}

std::int64_t PlaceIn(int descriptor)
{
    const int flags = ::fcntl(descriptor, F_GETFL);
    return ::lseek(descriptor, 0, (flags & O_APPEND) != 0 ? SEEK_END : SEEK_CUR);
}

/// A copied path, since a name may lie in memory that the call gives back.
std::string Whole(int folder, const char* path)
{
    if (folder == AT_FDCWD || *path == '/')
        return path;
    std::array<char, 4096> found{};
    const ssize_t size =
        ::readlink(("/proc/self/fd/" + std::to_string(folder)).c_str(), found.data(), found.size() - 1);
    return (size > 0 ? std::string(found.data(), static_cast<std::size_t>(size)) : std::string()) + "/" + path;
}

/// What a descriptor stands for. A folder is opened for reading, and not remembered.
std::string SyncedBy(int descriptor)
{
    if (!Watching() || !FileOf(descriptor).empty())
        return FileOf(descriptor);
    std::string folder = Whole(descriptor, "");
    folder.pop_back();
    return folder;
}

} // namespace

Watch::Watch(std::filesystem::path folder, CallWatcher& watcher)
{
    Now().folder = folder.string();
    Now().files.fill({});
    Now().watcher = &watcher;
}

Watch::~Watch()
{
    Now().watcher = nullptr;
}

Watch::Pause::Pause()
{
    ++Now().paused;
}

Watch::Pause::~Pause()
{
    --Now().paused;
}

} // namespace quillmere::endure

using namespace quillmere::endure;
using Kind = Call::Kind;

// NOLINTBEGIN: the names and parameters are the C library's
extern "C" {

int open(const char* path, int flags, ...)
{
    std::va_list rest;
    va_start(rest, flags);
    const mode_t mode = va_arg(rest, mode_t);
    va_end(rest);
    return Open(path, flags, [=] { return Real<int(const char*, int, ...)>("open")(path, flags, mode); });
}

int open64(const char* path, int flags, ...)
{
    std::va_list rest;
    va_start(rest, flags);
    const mode_t mode = va_arg(rest, mode_t);
    va_end(rest);
    return Open(path, flags, [=] { return Real<int(const char*, int, ...)>("open64")(path, flags, mode); });
}

std::FILE* fopen(const char* path, const char* mode)
{
    return OpenStream(path, mode, [=] { return Real<std::FILE*(const char*, const char*)>("fopen")(path, mode); });
}

std::FILE* fopen64(const char* path, const char* mode)
{
    return OpenStream(path, mode, [=] { return Real<std::FILE*(const char*, const char*)>("fopen64")(path, mode); });
}

ssize_t write(int descriptor, const void* data, size_t size)
{
    const auto real = [=] { return Real<ssize_t(int, const void*, size_t)>("write")(descriptor, data, size); };
    if (FileOf(descriptor).empty())
        return real();
    return Write(descriptor, PlaceIn(descriptor), {static_cast<const char*>(data), size}, real);
}

ssize_t writev(int descriptor, const iovec* pieces, int count)
{
    const auto real = [=] { return Real<ssize_t(int, const iovec*, int)>("writev")(descriptor, pieces, count); };
    if (FileOf(descriptor).empty())
        return real();
    std::string all;
    for (int piece = 0; piece < count; ++piece)
        all.append(static_cast<const char*>(pieces[piece].iov_base), pieces[piece].iov_len);
    return Write(descriptor, PlaceIn(descriptor), all, real);
}

ssize_t pwrite64(int descriptor, const void* data, size_t size, off64_t at)
{
    return Write(descriptor, at, {static_cast<const char*>(data), size}, [=] {
        return Real<ssize_t(int, const void*, size_t, off64_t)>("pwrite64")(descriptor, data, size, at);
    });
}

int fsync(int descriptor)
{
    return Simple(Kind::Sync, SyncedBy(descriptor), [=] { return Real<int(int)>("fsync")(descriptor); });
}

int syncfs(int descriptor)
{
    return Simple(Kind::SyncAll, SyncedBy(descriptor), [=] { return Real<int(int)>("syncfs")(descriptor); });
}

int fdatasync(int descriptor)
{
    return Simple(Kind::Sync, SyncedBy(descriptor), [=] { return Real<int(int)>("fdatasync")(descriptor); });
}

int ftruncate64(int descriptor, off64_t size)
{
    return Simple(
        Kind::Truncate, FileOf(descriptor), [=] { return Real<int(int, off64_t)>("ftruncate64")(descriptor, size); },
        size);
}

int ftruncate(int descriptor, off_t size)
{
    return ftruncate64(descriptor, size);
}

int rename(const char* from, const char* to)
{
    const auto real = [=] { return Real<int(const char*, const char*)>("rename")(from, to); };
    if (!Watching() || !IsBelow(from))
        return real();
    return Make(Call{.kind = Kind::Rename, .file = from, .target = to}, -1, real);
}

int unlink(const char* path)
{
    return Simple(Kind::Remove, path, [=] { return Real<int(const char*)>("unlink")(path); });
}

int unlinkat(int folder, const char* path, int flags)
{
    const std::string whole = Watching() ? Whole(folder, path) : std::string();
    return Simple(Kind::Remove, whole,
                  [=] { return Real<int(int, const char*, int)>("unlinkat")(folder, path, flags); });
}

int remove(const char* path)
{
    return Simple(Kind::Remove, path, [=] { return Real<int(const char*)>("remove")(path); });
}

int mkdir(const char* path, mode_t mode)
{
    return Simple(Kind::MakeFolder, path, [=] { return Real<int(const char*, mode_t)>("mkdir")(path, mode); });
}

int close(int descriptor)
{
    const std::string file = FileOf(descriptor);
    Remember(descriptor, {});
    const auto real = [=] { return Real<int(int)>("close")(descriptor); };
    const int closed = Simple(Kind::Close, file, real);
    // A close that was made to fail has closed all the same, as the system's own does.
    if (closed != 0 && !file.empty())
        real();
    return closed;
}

int fclose(std::FILE* stream)
{
    const int descriptor = ::fileno(stream);
    const std::string file = FileOf(descriptor);
    Remember(descriptor, {});
    const auto real = [=] { return Real<int(std::FILE*)>("fclose")(stream); };
    const int closed = Simple(Kind::Close, file, real);
    if (closed != 0 && !file.empty())
        real();
    return closed;
}

} // extern "C"
// NOLINTEND
