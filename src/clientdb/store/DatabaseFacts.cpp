#include "clientdb/store/DatabaseFacts.h"

#include "clientdb/store/FileEngine.h"
#include "clientdb/store/ServerEngine.h"

#include <fmt/format.h>
#include <system_error>

namespace quillmere {
namespace {

std::string FormatInWords(const std::filesystem::path& path)
{
    try {
        if (const std::optional<ServerService> service = ReadService(path)) {
            OpenServer(*service, OpenMode::ReadOnly, nullptr)->Close();
            return fmt::format("PostgreSQL, tables of layout {}, schema {}", LayoutVersion, service->schema);
        }
        // Whether it is a client database is looked at where it is opened.
        static_cast<void>(Database::OpenDatabase(path, OpenMode::ReadOnly));
        FileConnection connection(path, SQLITE_OPEN_READONLY);
        Run encoding(connection.Prepare("PRAGMA encoding"));
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
    const int server = PQlibVersion();
    return {{"SQLite", sqlite3_libversion()}, {"libpq", fmt::format("{}.{}", server / 10000, server % 10000)}};
}

} // namespace quillmere
