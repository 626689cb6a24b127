#pragma once

#include <chrono>
#include <filesystem>

namespace quillmere {

/// Keeps other processes out that lock the same file or folder. The lock belongs to what is opened here, not to the
/// process, and is not handed on to programs that this one starts. The system takes it away with the process, however
/// that ends, so that nothing has to be cleared up after a crash.
class FileLock {
public:
    /// Locks the file or folder, or tries to as long as the patience lasts. What cannot be locked at all counts as
    /// locked: it is no reason to refuse the work.
    explicit FileLock(const std::filesystem::path& file, std::chrono::milliseconds patience = {});
    FileLock(const FileLock&) = delete;
    FileLock& operator=(const FileLock&) = delete;
    ~FileLock();

    /// False if somebody else holds it.
    bool IsHeld() const { return isHeld; }

private:
    int descriptor;
    bool isHeld;
};

} // namespace quillmere
