#include "ClientState.h"

#include "clientdb/store/TableLayouts.h"

#include <sqlite3.h>

#include <fmt/format.h>
#include <functional>
#include <memory>
#include <stdexcept>
#include <string_view>
#include <utility>

namespace quillmere::endure {
namespace {

using Connection = std::unique_ptr<sqlite3, decltype(&sqlite3_close)>;
using Statement = std::unique_ptr<sqlite3_stmt, decltype(&sqlite3_finalize)>;

void ForEachRow(sqlite3* connection, const std::string& text, const std::function<void(sqlite3_stmt*)>& row)
{
    sqlite3_stmt* made = nullptr;
    if (sqlite3_prepare_v2(connection, text.c_str(), -1, &made, nullptr) != SQLITE_OK)
        throw std::runtime_error(sqlite3_errmsg(connection));
    const Statement statement(made, sqlite3_finalize);
    int result = SQLITE_OK;
    while ((result = sqlite3_step(made)) == SQLITE_ROW)
        row(made);
    if (result != SQLITE_DONE)
        throw std::runtime_error(sqlite3_errmsg(connection));
}

const char* TextAt(sqlite3_stmt* row, int column)
{
    return reinterpret_cast<const char*>(sqlite3_column_text(row, column));
}

} // namespace

ClientState ReadClientState(const std::filesystem::path& file)
{
    ClientState state;
    if (!std::filesystem::exists(file))
        return state;
    sqlite3* opened = nullptr;
    const int result = sqlite3_open_v2(file.c_str(), &opened, SQLITE_OPEN_READWRITE, nullptr);
    const Connection connection(opened, sqlite3_close);
    if (result != SQLITE_OK)
        throw std::runtime_error(sqlite3_errmsg(opened));
    ForEachRow(opened, "PRAGMA integrity_check", [](sqlite3_stmt* row) {
        if (const std::string_view found = TextAt(row, 0); found != "ok")
            throw std::runtime_error("the database is not whole: " + std::string(found));
    });
    for (const TableLayout& table : ClientTables())
        ForEachRow(opened, fmt::format("SELECT rowid,* FROM [{}]", table.name), [&](sqlite3_stmt* row) {
            for (int column = 1; column < sqlite3_column_count(row); ++column)
                if (const char* text = TextAt(row, column); text != nullptr)
                    state.fields.emplace(fmt::format("{} {} {}", table.name, sqlite3_column_int64(row, 0),
                                                     sqlite3_column_name(row, column)),
                                         text);
        });
    return state;
}

std::uint64_t DigestOf(const ClientState& state)
{
    std::uint64_t digest = 0xcbf29ce484222325;
    const auto add = [&](std::string_view text) {
        for (const char byte : text)
            digest = (digest ^ static_cast<unsigned char>(byte)) * 0x100000001b3;
        digest = (digest ^ 0x1ff) * 0x100000001b3;
    };
    for (const auto& [field, text] : state.fields) {
        add(field);
        add(text);
    }
    return digest;
}

std::string DifferenceOf(const ClientState& expected, const ClientState& found)
{
    constexpr int MostTold = 4;
    std::string told;
    int differences = 0;
    const auto tell = [&](const std::string& field, std::string_view was, std::string_view is) {
        if (++differences <= MostTold)
            told += fmt::format("{}: expected \"{}\", found \"{}\"; ", field, was, is);
    };
    for (const auto& [field, text] : expected.fields) {
        const auto other = found.fields.find(field);
        if (other == found.fields.end() || other->second != text)
            tell(field, text, other == found.fields.end() ? "nothing" : std::string_view(other->second));
    }
    for (const auto& [field, text] : found.fields)
        if (!expected.fields.contains(field))
            tell(field, "nothing", text);
    return differences == 0 ? std::string() : fmt::format("{}{} fields in all", told, differences);
}

} // namespace quillmere::endure
