#include "clientdb/store/Template.h"

#include "clientdb/store/FileEngine.h"
#include "clientdb/store/Schema.h"
#include "edition/LoanRates.h"

#include <fmt/format.h>

namespace quillmere {
namespace {

void CreateFile(const std::filesystem::path& path, std::span<const TableLayout> tables, std::int32_t applicationId)
{
    FileConnection connection(path, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE);
    connection.Pragma("PRAGMA encoding='UTF-8'");
    connection.Pragma("PRAGMA synchronous=EXTRA");
    connection.Execute("BEGIN");
    connection.Pragma(fmt::format("PRAGMA application_id={}", applicationId));
    connection.Pragma(fmt::format("PRAGMA user_version={}", LayoutVersion));
    for (const TableLayout& table : tables) {
        connection.Execute(CreateTableText(table));
        for (const TableIndex& index : table.indexes)
            connection.Execute(CreateIndexText(table, index));
    }
    connection.Execute("COMMIT");
}

void RequireNoFile(const std::filesystem::path& path)
{
    std::error_code error;
    if (std::filesystem::exists(path, error))
        throw StoreError(SQLITE_CANTOPEN, "There is already a file " + PathText(path), "");
}

} // namespace

void CreateTables(const std::filesystem::path& path)
{
    RequireNoFile(path);
    FillWithTables(path);
}

void FillWithTables(const std::filesystem::path& path)
{
    CreateFile(path, ClientTables(), ApplicationId);
    // An empty database has no history yet.
    FileConnection connection(path, SQLITE_OPEN_READWRITE);
    Run currency(connection.Own("INSERT INTO [HNotepad2]([Currency1],[Rate1]) VALUES(?,?)"));
    currency.Bind(edition::FirstCurrency).Bind(edition::OfficialRateOfInterest).Change();
}

void CreateReferenceTables(const std::filesystem::path& path)
{
    RequireNoFile(path);
    CreateFile(path, ReferenceTables(), 0);
}

} // namespace quillmere
