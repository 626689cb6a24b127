#pragma once

#include "support/TemporaryFolder.h"

#include <cerrno>
#include <fmt/format.h>
#include <sched.h>
#include <string>
#include <sys/mount.h>
#include <system_error>
#include <unistd.h>

namespace quillmere::test {

/// A disk in memory with little room, which nobody but the test's process sees: what it has no room for fails as on any
/// full disk. Not everybody may have one.
class SmallDisk {
public:
    explicit SmallDisk(long bytes)
    {
        // The administrator needs no names of his own for it, anybody else does.
        const bool isApart = unshare(CLONE_NEWNS) == 0 || unshare(CLONE_NEWUSER | CLONE_NEWNS) == 0;
        if (!isApart || mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0 ||
            mount("none", folder.path.c_str(), "tmpfs", 0, Options(bytes).c_str()) != 0)
            missing = std::generic_category().message(errno);
    }
    SmallDisk(const SmallDisk&) = delete;
    SmallDisk& operator=(const SmallDisk&) = delete;
    ~SmallDisk()
    {
        if (missing.empty())
            umount2(folder.path.c_str(), MNT_DETACH);
    }

    /// Why it could not be had; empty if it is there.
    const std::string& Missing() const { return missing; }
    const std::filesystem::path& Path() const { return folder.path; }
    void Enlarge(long bytes) const { mount("none", folder.path.c_str(), "tmpfs", MS_REMOUNT, Options(bytes).c_str()); }

private:
    static std::string Options(long bytes) { return fmt::format("size={}", bytes); }

    TemporaryFolder folder;
    std::string missing;
};

} // namespace quillmere::test
