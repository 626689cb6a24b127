#include "clientdb/store/Backup.h"

#include "clientdb/store/DatabaseState.h"
#include "clientdb/store/FileEngine.h"
#include "clientdb/store/OnlineCopy.h"
#include "clientdb/store/ServerService.h"
#include "frame/CheckedFile.h"
#include "frame/Text.h"

#include <array>
#include <fmt/format.h>
#include <fstream>
#include <memory>

namespace quillmere {

namespace {

/// Keeps everybody from writing to a database.
class Hold {
public:
    explicit Hold(const std::filesystem::path& database) : connection(database, SQLITE_OPEN_READWRITE)
    {
        connection.Execute("BEGIN");
        connection.Pragma("PRAGMA schema_version"); // the first look takes the lock
    }

private:
    FileConnection connection;
};

/// Holds a database whose last change is whole. Nothing of a file that is none or cannot be read as one.
std::unique_ptr<const Hold> HoldUnlessDamaged(const std::filesystem::path& database)
{
    try {
        // Opening puts right what a crash has left half written, so that the one file is the whole database.
        Database::OpenDatabase(database, OpenMode::ReadOnly).Close();
        return std::make_unique<const Hold>(database);
    } catch (const StoreError& failure) {
        if (!failure.IsDamage())
            throw;
        return nullptr;
    }
}

} // namespace

OlderCopyKept::OlderCopyKept(const std::filesystem::path& copy)
    : StoreError(SQLITE_CORRUPT, fmt::format("{} is whole and the database is damaged", copy.string()), {})
{
}

std::string ProposedBackupName(const std::filesystem::path& database, Day today)
{
    constexpr std::size_t ending = 4;
    const std::string path = database.string();
    const std::size_t length = Length(path);
    const std::string day = TodayStamp(today);
    return fmt::format("{}-{}-{}-{}", Left(path, length > ending ? length - ending : 0), day.substr(0, 4),
                       day.substr(4, 2), day.substr(6));
}

bool NameIsTaken(const std::filesystem::path& file)
{
    std::error_code error;
    if (std::filesystem::exists(std::filesystem::symlink_status(file, error)))
        return true;
    const std::string name = UpperCase(file.filename().string());
    std::filesystem::directory_iterator entry(file.parent_path(), error);
    for (; !error && entry != std::filesystem::directory_iterator(); entry.increment(error))
        if (UpperCase(entry->path().filename().string()) == name)
            return true;
    return false;
}

bool IsSameFile(const std::filesystem::path& first, const std::filesystem::path& second)
{
    std::error_code error;
    return first == second || std::filesystem::equivalent(first, second, error);
}

bool BackUpDatabase(const std::filesystem::path& database, const std::filesystem::path& copy)
{
    RemoveForgottenCopies(copy.parent_path());
    if (ReadService(database))
        return CopyDatabase(database, copy).IsWhole();
    const std::unique_ptr<const Hold> hold = HoldUnlessDamaged(database);
    bool isWhole = false;
    CopyFileChecked(database, copy, [&](const std::filesystem::path& complete) {
        isWhole = LookAtDatabase(complete).IsWhole();
        if (!isWhole && std::filesystem::exists(copy) && LookAtDatabase(copy).IsWhole())
            throw OlderCopyKept(copy);
        // The journal of the copy that is about to be replaced would be taken for the new one's: it goes first, so that
        // a crash between the two steps leaves no copy beside a journal that is not its own.
        std::error_code thereIsNone;
        std::filesystem::remove(std::filesystem::path(copy) += "-journal", thereIsNone);
    });
    return isWhole;
}

bool BeginsAsClientDatabase(const std::filesystem::path& file)
{
    constexpr std::size_t placeOfMark = 68;
    std::array<char, placeOfMark + 4> head{};
    std::ifstream in(file, std::ios::binary);
    in.read(head.data(), head.size());
    const std::string_view read(head.data(), static_cast<std::size_t>(in.gcount()));
    return read.size() == head.size() && read.starts_with("SQLite format 3") && read.ends_with("Qmre");
}

void RemoveForgottenCopies(const std::filesystem::path& folder)
{
    for (const std::filesystem::path& leftOver : ForgottenTemporaries(folder)) {
        std::error_code gone;
        const bool isFile = std::filesystem::is_regular_file(std::filesystem::symlink_status(leftOver, gone));
        if (isFile && BeginsAsClientDatabase(leftOver))
            std::filesystem::remove(leftOver, gone);
    }
}

} // namespace quillmere
