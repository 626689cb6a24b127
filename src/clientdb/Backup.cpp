#include "clientdb/Backup.h"

#include "clientdb/Connection.h"
#include "frame/CheckedFile.h"
#include "frame/Text.h"

#include <fmt/format.h>

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
    Database::Connection connection;
};

} // namespace

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

void BackUpDatabase(const std::filesystem::path& database, const std::filesystem::path& copy)
{
    // Opening puts right what a crash has left half written, so that the one file is the whole database.
    Database::OpenDatabase(database, OpenMode::ReadOnly).Close();
    const Hold hold(database);
    CopyFileChecked(database, copy, [&copy](const std::filesystem::path& complete) {
        Database::OpenDatabase(complete, OpenMode::ReadOnly).Close();
        // The journal of the copy that is about to be replaced would be taken for the new one's: it goes first, so that
        // a crash between the two steps leaves no copy beside a journal that is not its own.
        std::error_code thereIsNone;
        std::filesystem::remove(std::filesystem::path(copy) += "-journal", thereIsNone);
    });
}

} // namespace quillmere
