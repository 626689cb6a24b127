#include "clientdb/store/DatabaseFacts.h"

#include "clientdb/store/Connection.h"

#include <fmt/format.h>
#include <system_error>

namespace quillmere {
namespace {

std::string FormatInWords(const std::filesystem::path& path)
{
    try {
        // Whether it is a client database is looked at where it is opened.
        static_cast<void>(Database::OpenDatabase(path, OpenMode::ReadOnly));
        Database::Connection connection(path, SQLITE_OPEN_READONLY);
        Run encoding(connection, connection.Prepare("PRAGMA encoding"));
        encoding.Step();
        return fmt::format("SQLite 3, tables of layout {}, {} pages of {} bytes, {}",
                           connection.Pragma("PRAGMA user_version"), connection.Pragma("PRAGMA page_count"),
                           connection.Pragma("PRAGMA page_size"), encoding.Text(0));
    } catch (const StoreError& failure) {
        return failure.what();
    }
}

} // namespace

DatabaseFacts FactsOfDatabase(const std::filesystem::path& path)
{
    std::error_code error;
    const std::uintmax_t size = std::filesystem::file_size(path, error);
    return {.size = error ? error.message() : fmt::format("{} bytes", size), .format = FormatInWords(path)};
}

std::vector<LibraryInUse> StoreLibraries()
{
    return {{"SQLite", sqlite3_libversion()}};
}

} // namespace quillmere
