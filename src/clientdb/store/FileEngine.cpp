#include "clientdb/store/FileEngine.h"

#include "clientdb/store/ChangeLog.h"
#include "clientdb/store/KeptOpen.h"
#include "clientdb/store/Schema.h"

#include <fmt/format.h>
#include <fmt/ranges.h>
#include <utility>

namespace quillmere {
namespace {

/// How long a statement waits for another program's lock, in milliseconds.
constexpr int BusyTimeout = 2000;

/// The same failure, with the file's name in front.
StoreError CannotBeOpened(const std::filesystem::path& path, const StoreError& failure)
{
    return {static_cast<int>(failure.Number()), PathText(path) + " cannot be opened: " + failure.what(),
            failure.Statement()};
}

std::unique_ptr<FileConnection> OpenFile(const std::filesystem::path& path, OpenMode mode)
{
    std::error_code error;
    const auto kind = std::filesystem::status(path, error).type();
    if (kind == std::filesystem::file_type::not_found)
        throw StoreError(SQLITE_CANTOPEN, "There is no file " + PathText(path), "");
    if (kind != std::filesystem::file_type::regular)
        throw StoreError(SQLITE_CANTOPEN, PathText(path) + " is not a file", "");
    // A file to be read is opened like one to be written, so that what a crash left in its journal can be put right.
    auto connection = std::make_unique<FileConnection>(path, SQLITE_OPEN_READWRITE);
    if (mode == OpenMode::ReadOnly)
        connection->Pragma("PRAGMA query_only=ON");
    connection->Pragma("PRAGMA cell_size_check=ON");
    return connection;
}

/// How a file stood at some moment: written to since then it stands otherwise.
struct FileState {
    explicit FileState(const std::filesystem::path& path)
        : size(std::filesystem::file_size(path, error)), written(std::filesystem::last_write_time(path, error))
    {
    }
    friend bool operator==(const FileState&, const FileState&) = default;

    std::error_code error;
    std::uintmax_t size;
    std::filesystem::file_time_type written;
};

/// The connection that waits for the next opening of its file, and how that stood when it was closed.
struct Waiting {
    std::unique_ptr<FileConnection> connection;
    OpenMode mode;
    FileState left;
};

/// What is kept open, and for how many. As with the connections to a server, only a place that outlives the operations
/// can hand something from the one to the next.
struct Keeping {
    int keepers = 0;
    std::optional<Waiting> waiting;
};

Keeping& Kept()
{
    static Keeping keeping;
    return keeping;
}

/// The connection for all who use it. The last of them leaves it to the next opening, if it is to be kept.
std::shared_ptr<FileConnection> Lent(std::unique_ptr<FileConnection> connection, OpenMode mode)
{
    return {connection.release(), [mode](FileConnection* used) {
                std::unique_ptr<FileConnection> closed(used);
                if (Kept().keepers > 0 && closed->IsOpen() && !closed->InTransaction()) {
                    const FileState left(closed->file);
                    Kept().waiting = Waiting{.connection = std::move(closed), .mode = mode, .left = left};
                }
            }};
}

std::unique_ptr<FileConnection> TakeKept(const std::filesystem::path& path, OpenMode mode)
{
    std::optional<Waiting>& waiting = Kept().waiting;
    if (!waiting || waiting->mode != mode || waiting->connection->file != path)
        return nullptr;
    Waiting taken = std::move(*waiting);
    waiting.reset();
    if (taken.left.error || taken.left != FileState(path) || taken.connection->HasMoved())
        return nullptr;
    return std::move(taken.connection);
}

/// Fails unless the file is a client database, whole as far as its ends show.
void RequireClientFile(FileConnection& connection)
{
    if (connection.Pragma("PRAGMA application_id") != ApplicationId)
        throw StoreError(SQLITE_NOTADB, "it is not a client database", "");
    if (connection.Pragma("PRAGMA user_version") != LayoutVersion)
        throw StoreError(SQLITE_NOTADB, "its tables are those of another version", "");
    // The store itself reads a page that was cut off as if zeros followed.
    std::error_code error;
    const std::uintmax_t size = std::filesystem::file_size(connection.file, error);
    if (error)
        throw StoreError(SQLITE_CANTOPEN, error.message(), "");
    if (size % static_cast<std::uintmax_t>(connection.Pragma("PRAGMA page_size")) != 0)
        throw StoreError(SQLITE_CORRUPT, "its end is missing", "");
}

} // namespace

// ---- what is kept open ----------------------------------------------------------------------------

KeptOpen::KeptOpen()
{
    ++Kept().keepers;
}

KeptOpen::~KeptOpen()
{
    if (--Kept().keepers == 0)
        Kept().waiting.reset();
}

// ---- statements -----------------------------------------------------------------------------------

FilePrepared::FilePrepared(sqlite3* of, const std::string& text) : handle(of)
{
    const int result = sqlite3_prepare_v3(handle, text.c_str(), static_cast<int>(text.size()) + 1,
                                          SQLITE_PREPARE_PERSISTENT, &statement, nullptr);
    if (result != SQLITE_OK)
        throw StoreError(result, sqlite3_errmsg(handle), text);
}

void FilePrepared::BindText(int parameter, std::string_view text)
{
    // A null pointer would bind null, and an empty text is not null.
    sqlite3_bind_text64(statement, parameter, text.data() == nullptr ? "" : text.data(), text.size(), SQLITE_STATIC,
                        SQLITE_UTF8);
}

void FilePrepared::BindNumber(int parameter, std::int64_t number)
{
    sqlite3_bind_int64(statement, parameter, number);
}

void FilePrepared::BindBytes(int parameter, std::string_view bytes)
{
    sqlite3_bind_blob64(statement, parameter, bytes.data() == nullptr ? "" : bytes.data(), bytes.size(), SQLITE_STATIC);
}

bool FilePrepared::Step()
{
    const int result = sqlite3_step(statement);
    if (result == SQLITE_ROW)
        return true;
    if (result == SQLITE_DONE)
        return false;
    const int extended = sqlite3_extended_errcode(handle);
    throw StoreError(extended != SQLITE_OK ? extended : result, sqlite3_errmsg(handle), sqlite3_sql(statement));
}

std::string_view FilePrepared::Bytes(int column) const
{
    const void* bytes = sqlite3_column_blob(statement, column);
    const int size = sqlite3_column_bytes(statement, column);
    return {static_cast<const char*>(bytes), bytes == nullptr ? 0 : static_cast<std::size_t>(size)};
}

void FilePrepared::Take(Cells& cells, int first, std::size_t count) const
{
    const int end = first + static_cast<int>(count);
    for (int column = first; column < end; ++column)
        cells.Put(FilePrepared::TextOrNull(column));
}

// ---- the connection -------------------------------------------------------------------------------

FileConnection::FileConnection(const std::filesystem::path& path, int flags) : Connection(path)
{
    const int result =
        sqlite3_open_v2(PathText(path).c_str(), &handle, flags | SQLITE_OPEN_NOMUTEX | SQLITE_OPEN_EXRESCODE, nullptr);
    if (result != SQLITE_OK) {
        const std::string words = handle != nullptr ? sqlite3_errmsg(handle) : sqlite3_errstr(result);
        FileConnection::Close();
        throw StoreError(result, PathText(path) + ": " + words, "");
    }
    sqlite3_busy_timeout(handle, BusyTimeout);
    sqlite3_limit(handle, SQLITE_LIMIT_LENGTH, 2 * MostBytesOfRecord);
    sqlite3_db_config(handle, SQLITE_DBCONFIG_ENABLE_TRIGGER, 0, nullptr);
    sqlite3_db_config(handle, SQLITE_DBCONFIG_ENABLE_VIEW, 0, nullptr);
    sqlite3_db_config(handle, SQLITE_DBCONFIG_DQS_DML, 0, nullptr);
    sqlite3_db_config(handle, SQLITE_DBCONFIG_DQS_DDL, 0, nullptr);
    sqlite3_db_config(handle, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
    sqlite3_db_config(handle, SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
}

void FileConnection::Close()
{
    ForgetStatements();
    sqlite3_close(handle);
    handle = nullptr;
}

std::unique_ptr<FilePrepared> FileConnection::PrepareHere(const std::string& text)
{
    RequireOpen();
    return std::make_unique<FilePrepared>(handle, text);
}

std::int64_t FileConnection::Pragma(const std::string& text)
{
    Run run(Prepare(text));
    return run.Step() ? run.Number(0) : 0;
}

bool FileConnection::HasMoved()
{
    int moved = 0;
    return sqlite3_file_control(handle, "main", SQLITE_FCNTL_HAS_MOVED, &moved) != SQLITE_OK || moved != 0;
}

void FileConnection::BeginFilling()
{
    Pragma("PRAGMA journal_mode=MEMORY");
    Pragma("PRAGMA synchronous=OFF");
    Execute("BEGIN");
}

std::string_view FileConnection::ReadListWords() const
{
    // A cross join is never turned round, so the rows come in the order of the list.
    return "SELECT {0}.rowid,{1} FROM json_each(?) AS rowids CROSS JOIN {0} ON {0}.rowid=rowids.value";
}

std::string FileConnection::RowidList(std::span<const std::int64_t> rowids) const
{
    return fmt::format("[{}]", fmt::join(rowids, ","));
}

HistoryState FileConnection::LookAtHistory()
{
    HistoryLook look;
    Run schema(Own("SELECT name,tbl_name,sql FROM sqlite_schema"));
    while (schema.Step())
        look.Meet(schema.Text(0), schema.Text(1), schema.Text(2));
    return look.Found();
}

std::string FileConnection::TableWords(std::string_view table)
{
    Run schema(Own("SELECT sql FROM sqlite_schema WHERE name=?"));
    return schema.Bind(table).Step() ? std::string(schema.Text(0)) : std::string();
}

// ---- opening --------------------------------------------------------------------------------------

std::shared_ptr<FileConnection> OpenClientFile(const std::filesystem::path& path, OpenMode mode,
                                               std::shared_ptr<OperationNote> note)
{
    std::unique_ptr<FileConnection> connection = TakeKept(path, mode);
    const bool isKept = connection != nullptr;
    if (!isKept)
        connection = OpenFile(path, mode);
    try {
        if (!isKept)
            RequireClientFile(*connection);
        const HistoryState history = isKept ? connection->LookAtHistory() : RequireClientTables(*connection);
        connection->log = std::make_unique<ChangeLog>(*connection);
        connection->log->Begin(history, std::move(note));
        if (mode == OpenMode::ReadWrite && !isKept) {
            connection->Pragma("PRAGMA journal_mode=DELETE");
            connection->Pragma("PRAGMA synchronous=EXTRA");
        }
    } catch (const StoreError& failure) {
        throw CannotBeOpened(path, failure);
    }
    return Lent(std::move(connection), mode);
}

std::shared_ptr<FileConnection> OpenReferenceFile(const std::filesystem::path& path, OpenMode mode)
{
    auto connection = OpenFile(path, mode);
    connection->reference = true;
    try {
        connection->Pragma("PRAGMA schema_version");
    } catch (const StoreError& failure) {
        throw CannotBeOpened(path, failure);
    }
    return connection;
}

} // namespace quillmere
