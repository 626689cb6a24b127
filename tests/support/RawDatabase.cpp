#include "support/RawDatabase.h"

#include "clientdb/store/ServerLink.h"
#include "clientdb/store/ServerWords.h"

#include <sqlite3.h>

#include <fmt/format.h>
#include <memory>
#include <optional>
#include <stdexcept>
#include <utility>

namespace quillmere::test {
namespace {

std::string InQuotes(std::string_view text)
{
    return fmt::format("'{}'", text);
}

RawTable RowsOf(sqlite3* handle, const std::string& query)
{
    sqlite3_stmt* statement = nullptr;
    RawTable rows;
    int result = sqlite3_prepare_v2(handle, query.c_str(), -1, &statement, nullptr);
    while (result == SQLITE_OK && (result = sqlite3_step(statement)) == SQLITE_ROW) {
        auto& row = rows.emplace_back();
        for (int column = 0; column < sqlite3_column_count(statement); ++column) {
            const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(statement, column));
            row.push_back(text == nullptr ? "null" : InQuotes(text));
        }
        result = SQLITE_OK;
    }
    const std::string words = sqlite3_errmsg(handle);
    sqlite3_finalize(statement);
    if (result != SQLITE_DONE)
        throw std::runtime_error(query + ": " + words);
    return rows;
}

std::string ValueOf(const PGresult* result, int row, int column)
{
    if (PQgetisnull(result, row, column) == 1)
        return "null";
    const std::string_view bytes(PQgetvalue(result, row, column),
                                 static_cast<std::size_t>(PQgetlength(result, row, column)));
    constexpr Oid Int8 = 20, Int4 = 23;
    if (const Oid type = PQftype(result, column); type == Int8 || type == Int4) {
        std::uint64_t number = 0;
        for (const char byte : bytes)
            number = number << 8 | static_cast<unsigned char>(byte);
        return InQuotes(fmt::format("{}", static_cast<std::int64_t>(number)));
    }
    return InQuotes(UncarriedText(bytes).value_or(std::string(bytes)));
}

RawTable RowsOf(ServerLink& link, const std::string& query)
{
    const ServerLink::Result result = link.Wait(link.Send(ServerStatement(query), query, {}, true));
    RawTable rows(static_cast<std::size_t>(PQntuples(result.get())));
    for (std::size_t row = 0; row < rows.size(); ++row)
        for (int column = 0; column < PQnfields(result.get()); ++column)
            rows[row].push_back(ValueOf(result.get(), static_cast<int>(row), column));
    return rows;
}

} // namespace

std::vector<RawTable> RawRows(const std::filesystem::path& file, std::span<const std::string> queries)
{
    std::vector<RawTable> tables;
    if (const std::optional<ServerService> service = ReadService(file)) {
        ServerLink link(*service);
        for (const std::string& query : queries)
            tables.push_back(RowsOf(link, query));
        return tables;
    }
    sqlite3* opened = nullptr;
    sqlite3_open_v2(file.c_str(), &opened, SQLITE_OPEN_READWRITE, nullptr);
    const std::unique_ptr<sqlite3, decltype(&sqlite3_close)> handle(opened, &sqlite3_close);
    for (const std::string& query : queries)
        tables.push_back(RowsOf(handle.get(), query));
    return tables;
}

RawTable RawRows(const std::filesystem::path& file, const std::string& query)
{
    return std::move(RawRows(file, std::span(&query, 1)).front());
}

void ExecuteRaw(const std::filesystem::path& file, const std::string& statement)
{
    if (ReadService(file)) {
        static_cast<void>(RawRows(file, statement));
        return;
    }
    sqlite3* handle = nullptr;
    sqlite3_open_v2(file.c_str(), &handle, SQLITE_OPEN_READWRITE, nullptr);
    const int result = sqlite3_exec(handle, statement.c_str(), nullptr, nullptr, nullptr);
    const std::string words = sqlite3_errmsg(handle);
    sqlite3_close(handle);
    if (result != SQLITE_OK)
        throw std::runtime_error(statement + ": " + words);
}

} // namespace quillmere::test
