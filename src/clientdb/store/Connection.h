#pragma once

#include "clientdb/store/Recordset.h"
#include "clientdb/store/TableLayouts.h"

#include <sqlite3.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

/// What stands behind Database and Recordset: the SQLite connection and its prepared statements.
namespace quillmere {

class ChangeLog;

/// Marks a client database in its file header ("Qmre").
inline constexpr std::int32_t ApplicationId = 0x516D7265;
/// Version of the table layouts.
inline constexpr std::int32_t LayoutVersion = 1;

/// A prepared statement for the length of one run: it is reset at the end, which gives up its lock. The texts bound to
/// it must outlive the run.
class Run {
public:
    Run(Database::Connection& connection, sqlite3_stmt* statement);
    ~Run() { sqlite3_reset(statement); }
    Run(const Run&) = delete;
    Run& operator=(const Run&) = delete;

    Run& Bind(std::string_view text);
    Run& Bind(std::int64_t number);
    Run& BindBytes(std::string_view bytes);
    Run& BindNull();
    /// True if there is a row. Throws StoreError.
    bool Step();
    /// Runs a statement that has no rows: the number of records changed.
    int Change();
    std::int64_t Number(int column) const { return sqlite3_column_int64(statement, column); }
    /// The text of a column, empty for null. Throws StoreError for one that no box could hold.
    std::string_view Text(int column) const { return TextOrNull(column).value_or(std::string_view()); }
    std::optional<std::string_view> TextOrNull(int column) const
    {
        const unsigned char* text = sqlite3_column_text(statement, column);
        if (text == nullptr)
            return std::nullopt;
        const int size = sqlite3_column_bytes(statement, column);
        if (size > MostBytesOfText)
            FailOfText(column);
        return std::string_view(reinterpret_cast<const char*>(text), static_cast<std::size_t>(size));
    }
    /// The bytes of a column; they hold until the next step.
    std::string_view Bytes(int column) const
    {
        const void* bytes = sqlite3_column_blob(statement, column);
        const int size = sqlite3_column_bytes(statement, column);
        return {static_cast<const char*>(bytes), bytes == nullptr ? 0 : static_cast<std::size_t>(size)};
    }
    sqlite3_stmt* Raw() const { return statement; }

private:
    /// The longest text that a box takes, in three bytes a character.
    static constexpr int MostBytesOfText = 131'072;

    [[noreturn]] void Fail(int result);
    [[noreturn]] void FailOfText(int column) const;

    Database::Connection& connection;
    sqlite3_stmt* statement;
    int parameter = 0;
    bool started = false;
};

/// Statements of one table, prepared once for each shape.
class TableStatements {
public:
    TableStatements(Database::Connection& connection, const TableLayout& layout);

    const TableLayout& Layout() const { return layout; }
    const TableFields& Fields() const { return fields; }
    /// The places of the two parts of a record's key, TableFields::None where it has none.
    std::size_t EmployerColumn() const { return employerColumn; }
    std::size_t EmployeeColumn() const { return employeeColumn; }

    /// SELECT of the rowid and then of one field after the other, or of all, by the parts of an index.
    sqlite3_stmt* Seek(const TableIndex& index, std::span<const std::uint16_t> columns, bool all);
    /// SELECT of one field after the other by rowid; of all fields where `columns` is empty and `all` is set.
    sqlite3_stmt* Read(std::span<const std::uint16_t> columns, bool all);
    /// The same for each rowid of a list, "[1,2,...]", in its order, with the rowid in front.
    sqlite3_stmt* ReadList(std::span<const std::uint16_t> columns, bool all);
    /// The same for every record after a rowid, in the order of adding, with the rowid in front.
    sqlite3_stmt* ReadAfter(std::span<const std::uint16_t> columns, bool all);
    /// SELECT of the rowid and all fields by rowid.
    sqlite3_stmt* ReadNumbered();
    /// SELECT of the rowids in the order of the index (nullptr: as they come), of one employer or of all.
    sqlite3_stmt* Order(const TableIndex* index, bool ofEmployer);
    sqlite3_stmt* Exists();
    /// INSERT and UPDATE of the columns; the rowid is UPDATE's last parameter.
    sqlite3_stmt* Insert(std::span<const std::uint16_t> columns);
    sqlite3_stmt* Update(std::span<const std::uint16_t> columns);
    /// INSERT of the rowid and all fields.
    sqlite3_stmt* InsertWhole();
    sqlite3_stmt* Delete();
    sqlite3_stmt* Employers();

private:
    template<class MakeText>
    sqlite3_stmt* Shape(char kind, std::span<const std::uint16_t> columns, MakeText text);
    std::string Columns(std::span<const std::uint16_t> columns, bool all, std::string_view between) const;

    Database::Connection& connection;
    const TableLayout& layout;
    const TableFields& fields;
    std::size_t employerColumn, employeeColumn;
    std::string table; ///< the quoted name
    std::string key;   ///< of the shape looked for, kept for its storage
    std::unordered_map<std::string, sqlite3_stmt*> shapes;
};

struct Database::Connection {
    Connection(const std::filesystem::path& path, int flags);
    ~Connection();
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    void Close();
    /// Throws StoreError unless the connection is open.
    void RequireOpen() const;
    TableStatements& Statements(const TableLayout& layout);
    sqlite3_stmt* Prepare(const std::string& text);
    /// A statement of the connection itself, prepared once.
    sqlite3_stmt* Own(const std::string& text);
    /// Runs a statement of the connection itself, prepared once.
    void Execute(const std::string& text);
    /// The number that such a statement gives, 0 for none.
    std::int64_t Number(const std::string& text);
    std::int64_t Pragma(const std::string& text);
    bool InTransaction() const { return sqlite3_get_autocommit(handle) == 0; }
    /// How many records have been written through the connection, without those of the history.
    std::int64_t Writes() const;
    /// Called before each write: begins a transaction, which is the batch's or that of the single write and of what
    /// the history says of it. Throws BatchLost if it cannot begin that of a batch.
    void BeforeWrite();
    /// Called when a write is done: ends the transaction of a single one.
    void AfterWrite();
    /// Called when a write failed: commits what a batch has written before. Throws BatchLost, with the failure of the
    /// write, if that is gone.
    void AfterFailedWrite(const StoreError& failure);
    /// Gives up the single write that has failed; a batch goes on.
    void DropSingleWrite();
    /// Gives up everything that the transaction has written.
    void RollBack();
    /// Commits the transaction of the batch, if one was begun. Rolls it back and throws BatchLost if the store cannot.
    void Commit();

    sqlite3* handle = nullptr;
    std::filesystem::path file;
    bool reference = false;
    int batches = 0;
    bool isSingleWrite = false; ///< the transaction is that of one write
    std::unique_ptr<ChangeLog> log;
    std::vector<std::unique_ptr<TableStatements>> tables;
    std::unordered_map<std::string, sqlite3_stmt*> own;

private:
    void CommitWithHistory();
};

/// A name between square brackets.
std::string Quoted(std::string_view name);

/// A path as UTF-8.
std::string PathText(const std::filesystem::path& path);

/// The error number with which the hook of the tests lets the statement fail, or 0.
int FaultOf(const char* statement);

} // namespace quillmere
