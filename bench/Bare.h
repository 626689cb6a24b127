#pragma once

#include "Require.h"

#include <sqlite3.h>

#include <filesystem>
#include <initializer_list>
#include <map>
#include <string>
#include <string_view>

namespace quillmere::bench {

/// The bare side: a connection by the C interface of SQLite with the settings of the record store. Statements are
/// prepared once.
class Bare {
public:
    explicit Bare(const std::filesystem::path& path)
    {
        Require(sqlite3_open_v2(path.c_str(), &handle, SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX, nullptr) ==
                    SQLITE_OK,
                "cannot open");
        Execute("PRAGMA synchronous=EXTRA");
    }
    ~Bare()
    {
        for (const auto& [text, statement] : statements)
            sqlite3_finalize(statement);
        sqlite3_close(handle);
    }
    Bare(const Bare&) = delete;
    Bare& operator=(const Bare&) = delete;

    void Execute(const std::string& text)
    {
        Require(sqlite3_exec(handle, text.c_str(), nullptr, nullptr, nullptr) == SQLITE_OK, text);
    }

    sqlite3_stmt* Prepared(const std::string& text)
    {
        sqlite3_stmt*& statement = statements[text];
        if (statement == nullptr)
            Require(sqlite3_prepare_v2(handle, text.c_str(), -1, &statement, nullptr) == SQLITE_OK, text);
        return statement;
    }

    static void Bind(sqlite3_stmt* statement, int parameter, std::string_view text)
    {
        sqlite3_bind_text(statement, parameter, text.data(), static_cast<int>(text.size()), SQLITE_STATIC);
    }

    /// The bytes of the row with which the statement answers, if it does.
    static std::size_t Run(sqlite3_stmt* statement)
    {
        const int result = sqlite3_step(statement);
        Require(result == SQLITE_DONE || result == SQLITE_ROW, sqlite3_errstr(result));
        std::size_t bytes = 0;
        for (int column = 0; column < sqlite3_data_count(statement); ++column)
            if (const unsigned char* text = sqlite3_column_text(statement, column))
                bytes += std::string(reinterpret_cast<const char*>(text)).size();
        sqlite3_reset(statement);
        return bytes;
    }

    std::size_t Run(const std::string& text, std::initializer_list<std::string_view> values)
    {
        sqlite3_stmt* const statement = Prepared(text);
        int parameter = 0;
        for (const std::string_view value : values)
            Bind(statement, ++parameter, value);
        return Run(statement);
    }

private:
    sqlite3* handle = nullptr;
    std::map<std::string, sqlite3_stmt*> statements;
};

} // namespace quillmere::bench
