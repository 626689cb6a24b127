#pragma once

#include "clientdb/store/Connection.h"

/// The engine of a client folder that keeps its database in a file.
namespace quillmere {

/// Marks a client database in its file header ("Qmre").
inline constexpr std::int32_t ApplicationId = 0x516D7265;
/// Version of the table layouts.
inline constexpr std::int32_t LayoutVersion = 1;

class FilePrepared final : public Prepared {
public:
    FilePrepared(sqlite3* handle, const std::string& text);
    ~FilePrepared() override { sqlite3_finalize(statement); }

    std::string_view Words() const override { return sqlite3_sql(statement); }
    void BindText(int parameter, std::string_view text) override;
    void BindNumber(int parameter, std::int64_t number) override;
    void BindBytes(int parameter, std::string_view bytes) override;
    void BindNull(int parameter) override { sqlite3_bind_null(statement, parameter); }
    bool Step() override;
    int Changed() override { return sqlite3_changes(handle); }
    void Reset() noexcept override { sqlite3_reset(statement); }
    std::int64_t Number(int column) const override { return sqlite3_column_int64(statement, column); }
    std::optional<std::string_view> TextOrNull(int column) const override
    {
        const unsigned char* text = sqlite3_column_text(statement, column);
        if (text == nullptr)
            return std::nullopt;
        const auto size = static_cast<std::size_t>(sqlite3_column_bytes(statement, column));
        if (size > MostBytesOfText)
            FailOfText(sqlite3_column_name(statement, column), Words());
        return std::string_view(reinterpret_cast<const char*>(text), size);
    }
    std::string_view Bytes(int column) const override;
    void Take(Cells& cells, int first, std::size_t count) const override;

    sqlite3_stmt* Raw() const { return statement; }

private:
    sqlite3* handle;
    sqlite3_stmt* statement = nullptr;
};

struct FileConnection final : Database::Connection {
    /// Opens the file with flags of the file's engine.
    FileConnection(const std::filesystem::path& path, int flags);
    ~FileConnection() override { FileConnection::Close(); }

    void Close() override;
    bool IsOpen() const override { return handle != nullptr; }
    std::unique_ptr<Prepared> Prepare(const std::string& text) override { return PrepareHere(text); }
    std::unique_ptr<FilePrepared> PrepareHere(const std::string& text);
    bool InTransaction() const override { return sqlite3_get_autocommit(handle) == 0; }
    void BeginReading() override { Execute("BEGIN"); }
    void EndReading() noexcept override { Pass("END"); }
    void BeginWriting() override { Execute("BEGIN IMMEDIATE"); }
    void EndTransaction() override { Execute("COMMIT"); }
    void GiveUpTransaction() noexcept override { Pass("ROLLBACK"); }
    void MarkPlace(const std::string& name) override { Execute("SAVEPOINT " + name); }
    void GoBackTo(const std::string& name) noexcept override { Pass(("ROLLBACK TO " + name).c_str()); }
    std::int64_t Changes() const override { return sqlite3_total_changes64(handle); }
    std::int64_t LastAdded() const override { return sqlite3_last_insert_rowid(handle); }
    std::string_view ReadListWords() const override;
    std::string RowidList(std::span<const std::int64_t> rowids) const override;
    std::string_view AddedWords() const override { return {}; }
    HistoryState LookAtHistory() override;
    std::string TableWords(std::string_view table) override;

    /// Begins the transaction that fills a new file. One that vanishes if anything fails has nothing to go back to, and
    /// is synced once, when it is complete.
    void BeginFilling();
    /// Runs a statement once, which is not kept: the number that it gives.
    std::int64_t Pragma(const std::string& text);
    /// True if the file is another one than that which stands at its path now.
    bool HasMoved();

    sqlite3* handle = nullptr;

private:
    void Pass(const char* text) noexcept { sqlite3_exec(handle, text, nullptr, nullptr, nullptr); }
};

/// Opens a client database in a file. Throws StoreError.
std::shared_ptr<FileConnection> OpenClientFile(const std::filesystem::path& path, OpenMode mode,
                                               std::shared_ptr<OperationNote> note);
/// Opens the reference database. Throws StoreError.
std::shared_ptr<FileConnection> OpenReferenceFile(const std::filesystem::path& path, OpenMode mode);

} // namespace quillmere
