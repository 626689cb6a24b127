#pragma once

#include "clientdb/store/ServerService.h"

#include <filesystem>
#include <memory>
#include <optional>
#include <vector>

struct sqlite3;

namespace quillmere {
class ServerLink;
}

namespace quillmere::scenario {

/// Files made unusable as another program or the file system would. A database is locked by an exclusive transaction of
/// a second connection, and so are the tables of a shared folder, whose service says where it cannot be written that
/// nobody may write. Any other file loses its right to be written, and its folder too, since it is the folder that
/// lets a file be removed. While such a fault stands, a process of the system's administrator gives up the privilege
/// that would let it pass over those rights, so that the faults work in a container as they do for any user.
class Faults {
public:
    /// In `keptFolder` alone files can be made and removed although one of them is locked.
    explicit Faults(std::filesystem::path keptFolder);
    Faults(const Faults&) = delete;
    Faults& operator=(const Faults&) = delete;
    ~Faults();

    /// Throws std::runtime_error if it cannot be done.
    void Lock(const std::filesystem::path& file);
    void MakeReadOnly(const std::filesystem::path& file);
    /// Ends either fault of the file. Throws std::runtime_error if there is none.
    void Unlock(const std::filesystem::path& file);

    /// Held while the scenario itself reads or writes: locked databases are free as long.
    class Pause {
    public:
        explicit Pause(Faults& paused);
        ~Pause();
        Pause(const Pause&) = delete;
        Pause& operator=(const Pause&) = delete;

    private:
        Faults& faults;
    };

private:
    struct Fault {
        std::filesystem::path file;
        sqlite3* connection = nullptr;
        std::unique_ptr<ServerLink> link;          ///< that holds the tables on a server
        std::optional<ServerService> mayBeWritten; ///< as it was, where nobody may write on the server
        std::vector<std::pair<std::filesystem::path, std::filesystem::perms>> rights; ///< as they were
    };
    static void LockAgain(Fault& fault);
    static void Free(Fault& fault);
    static void TakeRights(Fault& fault, const std::filesystem::path& file);
    static void End(Fault& fault);

    std::filesystem::path keptFolder;
    std::vector<Fault> faults;
    int paused = 0;
};

/// Lets the store's wait for a lock pass at once: who holds one here never gives it up meanwhile.
void DoNotWaitForLocks();

} // namespace quillmere::scenario
