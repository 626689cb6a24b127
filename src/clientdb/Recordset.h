#pragma once

#include <filesystem>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>

namespace quillmere {

/// A failure of the record store: the store's own words, its error number and the statement in hand.
class StoreError : public std::runtime_error {
public:
    StoreError(int number, const std::string& text, std::string statement);
    int Number() const { return number; }
    const std::string& Statement() const { return statement; }

private:
    int number;
    std::string statement;
};

/// A name that is in no table layout: a mistake in the program.
class UnknownName : public std::logic_error {
public:
    using std::logic_error::logic_error;
};

class Recordset;

enum class OpenMode { ReadWrite, ReadOnly };

/// An open database file: shared, with no exclusive lock. It never makes a file. Closed by its end.
class Database {
public:
    /// Throws StoreError if the file is missing, no database of this program, or locked past the time-out.
    static Database OpenDatabase(const std::filesystem::path& path, OpenMode mode = OpenMode::ReadWrite);
    Database(Database&&) noexcept;
    Database& operator=(Database&&) noexcept;
    ~Database();

    /// A cursor in table mode over the named table (names regardless of case), standing before its first record.
    Recordset OpenRecordset(std::string_view table);
    void Close();

    struct Connection;

private:
    friend class Recordset;
    friend class WriteBatch;
    explicit Database(std::shared_ptr<Connection> connection);
    std::shared_ptr<Connection> connection;
};

/// A cursor over one table with a current record. Field names are those of the table layouts; a null field reads as an
/// empty text. Every operation throws StoreError when the store fails and UnknownName for a name of no layout.
class Recordset {
public:
    Recordset(Recordset&&) noexcept;
    Recordset& operator=(Recordset&&) noexcept;
    ~Recordset();

    /// Names the index, "IndKey" or "PrimaryKey", for Seek and for the order of MoveFirst and MoveNext. Without an index
    /// the order is that of adding; with one, that of the key by code point.
    void Index(std::string_view name);
    /// Positions on the record whose key equals the parts.
    void Seek(std::string_view part1);
    void Seek(std::string_view part1, std::string_view part2);
    bool NoMatch() const;

    void MoveFirst();
    void MoveNext();
    bool AtEnd() const;
    /// As MoveFirst, but MoveFirst and MoveNext then go through the records of one employer only, in the same order.
    void MoveFirstOf(std::string_view employer);

    /// The field's text, empty for null. The view holds until the cursor moves or writes.
    std::string_view Field(std::string_view name) const;
    bool IsNull(std::string_view name) const;

    /// Opens the current record for writing; a record that is gone is a StoreError.
    void Edit();
    /// Opens a new record, all fields null.
    void AddNew();
    void SetField(std::string_view name, std::string_view text);
    void SetNull(std::string_view name);
    /// Writes what was set since Edit or AddNew. After AddNew the cursor stands on the new record.
    void Update();
    /// Deletes the current record; MoveNext then goes on to the one after it.
    void Delete();

    struct State;

private:
    friend class Database;
    explicit Recordset(std::unique_ptr<State> state);
    std::unique_ptr<State> state;
};

/// Gathers the single writes of one operation into one transaction of the store, so that they cost one sync. It is
/// committed when the batch ends, and also when a write fails: what was written before a failure stays.
class WriteBatch {
public:
    explicit WriteBatch(Database& database);
    /// Commits now; throws StoreError if the store cannot.
    void Commit();
    /// Commits what Commit has not, passing over a failure.
    ~WriteBatch();
    WriteBatch(const WriteBatch&) = delete;
    WriteBatch& operator=(const WriteBatch&) = delete;

private:
    std::shared_ptr<Database::Connection> connection;
};

} // namespace quillmere
