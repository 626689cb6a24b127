#pragma once

#include <sqlite3.h>

#include <cstddef>
#include <stdexcept>

namespace quillmere::test {

/// While it lives, counts how often the record store has a file or folder brought to the disk. Only databases opened
/// meanwhile count, and they must be closed before its end. One at a time.
class SyncCounter {
public:
    SyncCounter() : real(sqlite3_vfs_find(nullptr))
    {
        if (real == nullptr || counted != nullptr)
            throw std::logic_error("There is a sync counter already");
        counted = this;
        shim = *real;
        shim.szOsFile = static_cast<int>(sizeof(File)) + real->szOsFile;
        shim.zName = "sync-counter";
        shim.pNext = nullptr;
        shim.xOpen = [](sqlite3_vfs*, const char* name, sqlite3_file* file, int flags, int* out) {
            File* const mine = reinterpret_cast<File*>(file);
            mine->methods = nullptr;
            const int result = counted->real->xOpen(counted->real, name, Inner(file), flags, out);
            if (result == SQLITE_OK)
                mine->methods = &Methods();
            return result;
        };
        shim.xDelete = [](sqlite3_vfs*, const char* name, int syncFolder) {
            counted->syncs += syncFolder != 0;
            return counted->real->xDelete(counted->real, name, syncFolder);
        };
        sqlite3_vfs_register(&shim, 1);
    }
    ~SyncCounter()
    {
        sqlite3_vfs_unregister(&shim);
        sqlite3_vfs_register(real, 1);
        counted = nullptr;
    }
    SyncCounter(const SyncCounter&) = delete;
    SyncCounter& operator=(const SyncCounter&) = delete;

    int Count() const { return syncs; }
    void Reset() { syncs = 0; }

private:
    struct File {
        const sqlite3_io_methods* methods;
    };

    static sqlite3_file* Inner(sqlite3_file* file)
    {
        return reinterpret_cast<sqlite3_file*>(reinterpret_cast<std::byte*>(file) + sizeof(File));
    }

    static const sqlite3_io_methods& Methods()
    {
        using Offset = sqlite3_int64;
        static const sqlite3_io_methods methods = {
            .iVersion = 1,
            .xClose = [](sqlite3_file* f) { return Inner(f)->pMethods->xClose(Inner(f)); },
            .xRead = [](sqlite3_file* f, void* to, int n,
                        Offset at) { return Inner(f)->pMethods->xRead(Inner(f), to, n, at); },
            .xWrite = [](sqlite3_file* f, const void* from, int n,
                         Offset at) { return Inner(f)->pMethods->xWrite(Inner(f), from, n, at); },
            .xTruncate = [](sqlite3_file* f, Offset size) { return Inner(f)->pMethods->xTruncate(Inner(f), size); },
            .xSync =
                [](sqlite3_file* f, int flags) {
                    ++counted->syncs;
                    return Inner(f)->pMethods->xSync(Inner(f), flags);
                },
            .xFileSize = [](sqlite3_file* f, Offset* size) { return Inner(f)->pMethods->xFileSize(Inner(f), size); },
            .xLock = [](sqlite3_file* f, int lock) { return Inner(f)->pMethods->xLock(Inner(f), lock); },
            .xUnlock = [](sqlite3_file* f, int lock) { return Inner(f)->pMethods->xUnlock(Inner(f), lock); },
            .xCheckReservedLock = [](sqlite3_file* f,
                                     int* out) { return Inner(f)->pMethods->xCheckReservedLock(Inner(f), out); },
            .xFileControl = [](sqlite3_file* f, int op,
                               void* arg) { return Inner(f)->pMethods->xFileControl(Inner(f), op, arg); },
            .xSectorSize = [](sqlite3_file* f) { return Inner(f)->pMethods->xSectorSize(Inner(f)); },
            .xDeviceCharacteristics =
                [](sqlite3_file* f) { return Inner(f)->pMethods->xDeviceCharacteristics(Inner(f)); },
        };
        return methods;
    }

    inline static SyncCounter* counted = nullptr;
    sqlite3_vfs* real;
    sqlite3_vfs shim{};
    int syncs = 0;
};

} // namespace quillmere::test
