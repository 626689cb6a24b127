#pragma once

#include "frame/FileLock.h"

namespace quillmere {

/// Holds the place of the one running instance, as a lock on a file of the given folder.
class SingleInstance {
public:
    /// Tries to take the place. Where no lock file can be made or locked at all, the place counts as taken by this
    /// instance: a folder that cannot be written is no reason to refuse to start.
    explicit SingleInstance(const std::filesystem::path& folder);

    /// False if another instance is already running.
    bool IsFirst() const { return lock.IsHeld(); }

private:
    FileLock lock;
};

} // namespace quillmere
