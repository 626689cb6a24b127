#pragma once

#include <filesystem>

namespace quillmere {

/// Holds the place of the one running instance, as a lock on a file of the given folder. The system takes the lock away
/// with the process, however it ends, so that nothing has to be cleared up after a crash.
class SingleInstance {
public:
    /// Tries to take the place. Where no lock file can be made or locked at all, the place counts as taken by this
    /// instance: a folder that cannot be written is no reason to refuse to start.
    explicit SingleInstance(const std::filesystem::path& folder);
    SingleInstance(const SingleInstance&) = delete;
    SingleInstance& operator=(const SingleInstance&) = delete;
    ~SingleInstance();

    /// False if another instance is already running.
    bool IsFirst() const { return isFirst; }

private:
    int descriptor;
    bool isFirst;
};

} // namespace quillmere
