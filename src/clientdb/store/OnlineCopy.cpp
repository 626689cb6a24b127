#include "clientdb/store/OnlineCopy.h"

#include "clientdb/store/FileEngine.h"
#include "clientdb/store/ServerCopy.h"
#include "frame/CheckedFile.h"

namespace quillmere {

namespace {

constexpr int AllPages = -1;

/// Copies every page while the lock of one look keeps writers out. Throws StoreError.
void CopyPages(FileConnection& from, FileConnection& into)
{
    sqlite3_backup* const copying = sqlite3_backup_init(into.handle, "main", from.handle, "main");
    if (copying == nullptr)
        throw StoreError(sqlite3_extended_errcode(into.handle), sqlite3_errmsg(into.handle), "online copy");
    const int stepped = sqlite3_backup_step(copying, AllPages);
    const int ended = sqlite3_backup_finish(copying);
    if (stepped != SQLITE_DONE || ended != SQLITE_OK) {
        const int number = ended != SQLITE_OK ? ended : stepped;
        throw StoreError(number, sqlite3_errstr(number), "online copy");
    }
}

/// Who was in the database at the moment that was copied.
DatabaseState CopyIntoNewFile(const std::filesystem::path& database, const std::filesystem::path& empty)
{
    // Opening puts right what a crash has left half written.
    Database::OpenDatabase(database, OpenMode::ReadOnly).Close();
    FileConnection from(database, SQLITE_OPEN_READWRITE), into(empty, SQLITE_OPEN_READWRITE);
    // A file that vanishes if anything fails has nothing to go back to; it is synced once, when it is complete.
    into.Pragma("PRAGMA journal_mode=MEMORY");
    into.Pragma("PRAGMA synchronous=OFF");
    from.Execute("BEGIN");
    DatabaseState counted = CountIn(from);
    CopyPages(from, into);
    return counted;
}

DatabaseState LookAtWhole(const std::filesystem::path& file)
{
    DatabaseState state = LookAtDatabase(file);
    if (!state.IsWhole())
        throw StoreError(SQLITE_CORRUPT, state.faults.front(), {});
    return state;
}

enum class Found { Readable, BeyondReading };

void WriteOver(const std::filesystem::path& copy, const std::filesystem::path& database, Found found)
{
    FileConnection from(copy, SQLITE_OPEN_READWRITE), into(database, SQLITE_OPEN_READWRITE);
    // The store then takes what is in the file for nothing; the journal holds it all the same.
    sqlite3_db_config(into.handle, SQLITE_DBCONFIG_RESET_DATABASE, found == Found::BeyondReading ? 1 : 0, nullptr);
    into.Pragma("PRAGMA journal_mode=DELETE");
    into.Pragma("PRAGMA synchronous=EXTRA");
    CopyPages(from, into);
}

void MakeDatabase(const std::filesystem::path& copy, const std::filesystem::path& database)
{
    try {
        CopyFileChecked(copy, database);
    } catch (const NameNotSynced& failure) {
        throw PutBackUnconfirmed(failure);
    }
}

} // namespace

DatabaseState CopyDatabase(const std::filesystem::path& database, const std::filesystem::path& copy)
{
    DatabaseState state;
    MakeFileChecked(
        copy,
        [&](const std::filesystem::path& empty) {
            const std::optional<ServerService> service = ReadService(database);
            state = service ? CopyServerIntoFile(*service, empty) : CopyIntoNewFile(database, empty);
        },
        [&](const std::filesystem::path& complete) {
            if (LookAtWhole(complete) != state)
                throw StoreError(SQLITE_CORRUPT, "not everybody is in the copy", {});
        });
    return state;
}

void PutBackDatabase(const std::filesystem::path& copy, const std::filesystem::path& database)
{
    static_cast<void>(LookAtWhole(copy));
    if (const std::optional<ServerService> service = ReadService(database))
        return PutFileOnServer(copy, *service);
    if (!std::filesystem::exists(database))
        return MakeDatabase(copy, database);
    try {
        WriteOver(copy, database, Found::Readable);
    } catch (const StoreError& failure) {
        // The head of a damaged file may also call it one that is not to be written.
        if (!failure.IsDamage() && (failure.Number() & 0xff) != SQLITE_READONLY)
            throw;
        WriteOver(copy, database, Found::BeyondReading);
    }
    try {
        static_cast<void>(LookAtWhole(database));
    } catch (const StoreError& failure) {
        throw PutBackUnconfirmed(failure);
    }
}

} // namespace quillmere
