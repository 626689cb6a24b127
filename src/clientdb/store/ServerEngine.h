#pragma once

#include "clientdb/store/Connection.h"
#include "clientdb/store/HeldRecords.h"
#include "clientdb/store/ServerLink.h"

#include <deque>
#include <optional>

/// The engine of a client folder that is shared: its tables are on a server, in a schema of their own.
namespace quillmere {

struct ServerConnection;

/// Whether a schema has been made along with its tables.
enum class NewSchema { No, Yes };

class ServerPrepared final : public Prepared {
public:
    ServerPrepared(ServerConnection& connection, std::string words);
    ~ServerPrepared() override { Drop(); }

    /// Sends the statement, whose first step then has its answer. Nobody may want that after all.
    void Ask();
    void Drop() noexcept;

    std::string_view Words() const override { return words; }
    void BindText(int parameter, std::string_view text) override;
    void BindNumber(int parameter, std::int64_t number) override;
    void BindBytes(int parameter, std::string_view bytes) override;
    void BindNull(int parameter) override;
    bool Step() override;
    int Changed() override { return changed; }
    void Post() override;
    void Reset() noexcept override;
    std::int64_t Number(int column) const override;
    std::optional<std::string_view> TextOrNull(int column) const override;
    std::string_view Bytes(int column) const override;
    void Take(Cells& cells, int first, std::size_t count) const override;

private:
    ServerLink::Parameter& At(int parameter);

    ServerConnection& connection;
    std::string words; ///< the store's
    std::string text;  ///< the server's
    bool writes;
    std::vector<ServerLink::Parameter> parameters;
    std::deque<std::string> kept; ///< what the parameters are made of, where it is not as they were bound
    std::optional<ServerLink::Ticket> asked;
    ServerLink::Result result{nullptr, PQclear};
    mutable std::vector<std::string> uncarried; ///< texts of the row that read otherwise than the server has them
    int row = 0, changed = 0;
};

struct ServerConnection final : Database::Connection {
    ServerConnection(const ServerService& service, OpenMode mode);
    /// One whose tables are yet to be made, and are not there for others before the end of the transaction that it is
    /// in; so is the schema, unless there is one with nothing in it. Throws StoreError.
    struct WithNewTables {};
    ServerConnection(const ServerService& service, WithNewTables);
    NewSchema HasNewSchema() const { return newSchema; }
    ~ServerConnection() override { ServerConnection::Close(); }

    void Close() override;
    bool IsOpen() const override { return link != nullptr; }
    std::unique_ptr<Prepared> Prepare(const std::string& text) override;
    bool InTransaction() const override { return transaction != Transaction::None; }
    void BeginReading() override;
    void EndReading() noexcept override;
    void BeginWriting() override;
    void EndTransaction() override;
    /// The same of one that must not be left in doubt: if the connection is lost before the server has confirmed the
    /// end, it is asked over a new one what has become of the transaction. Throws StoreError if it has not been stored,
    /// and OutcomeUnknown if nobody can be asked.
    void EndTransactionForSure();
    /// Begins a transaction that writes whole tables, and in which nothing goes on after a failure. Others read
    /// meanwhile what was before, and cannot write.
    void BeginAlone();
    void GiveUpTransaction() noexcept override;
    void MarkPlace(const std::string& name) override;
    void GoBackTo(const std::string& name) noexcept override;
    std::int64_t Changes() const override { return changes; }
    std::int64_t LastAdded() const override { return lastAdded; }
    std::string_view ReadListWords() const override;
    std::string RowidList(std::span<const std::int64_t> rowids) const override;
    std::string_view AddedWords() const override { return " RETURNING rowid"; }
    bool IsShared() const override { return true; }
    std::int64_t NumberForOperation() override;
    std::int64_t HistoryBytes() override;
    bool HoldsRecords() const override { return transaction == Transaction::Writing; }
    std::string_view HoldWords() const override { return " FOR UPDATE"; }
    const HeldRecord* Held(const TableLayout& table, std::int64_t record) override;
    const HeldRecord* Held(const TableStatements& statements, const TableIndex& index, const Key& key) override;
    const HeldRecord* HeldFirst(const TableLayout& table) override;
    void NoteHeld(const TableLayout& table, std::int64_t record, const Cells& texts, bool isFirst) override;
    void NoteWritten(const TableLayout& table, std::int64_t record, const PendingEdit& edit) override;
    void NoteDeleted(const TableLayout& table, std::int64_t record) override;
    void BeforeSeek() override;
    void Foresee(TableStatements& statements, const TableIndex& index, const Key& key) override;
    Prepared* Foreseen(const TableStatements& statements, const TableIndex& index, const Key& key) override;
    void ForeseeAdding(std::span<const TableLayout* const> tables) override;
    std::int64_t NumberForRecord(const TableLayout& table) override;
    HistoryState LookAtHistory() override;
    std::string TableWords(std::string_view table) override;
    void CountOn(std::string_view table, std::string_view number) override;
    std::vector<std::string> OthersAt(std::string_view desk, std::string_view employer,
                                      std::string_view employee) override;
    /// True if the role may take the schema away from the others, and what does it, within a transaction that is alone.
    bool OwnsSchema();
    void RenameSchema(std::string_view newName);

private:
    friend class ServerPrepared;
    /// A record that has been asked for before it is sought.
    struct Question {
        const TableIndex* index;
        std::string part1;
        std::optional<std::string> part2;
        std::unique_ptr<ServerPrepared> prepared;
        const TableLayout* table;
    };
    enum class Transaction { None, Reading, Writing, Alone };

    ServerLink::Ticket Send(const std::string& text, std::string_view words,
                            std::span<const ServerLink::Parameter> parameters, bool writes, bool isWanted);
    ServerLink::Result Wait(ServerLink::Ticket ticket);
    void AskForNumber();
    std::vector<Question>::iterator FindQuestion(const TableStatements& statements, const TableIndex& index,
                                                 const Key& key);
    void ForgetRecords() noexcept;
    void ForgetUnknown();
    void Say(const std::string& text);
    void Over() noexcept;
    void RequireTables();

    ServerService service;
    bool readOnly;
    NewSchema newSchema = NewSchema::No;
    std::unique_ptr<ServerLink> link;
    Transaction transaction = Transaction::None;
    bool isMarked = false;   ///< nothing has been written since the last savepoint
    bool everMarked = false; ///< there is one
    bool isNumberAsked = false;
    std::optional<ServerLink::Ticket> operationAsked; ///< the answer is a number for the history
    std::optional<std::int64_t> historyBytes;         ///< that came along with it
    std::vector<const TableLayout*> adding;           ///< tables to which a record will be added
    std::optional<ServerLink::Ticket> addingAsked;    ///< the answer is a number for each of them
    ServerLink::Result addingNumbers{nullptr, PQclear};
    HeldRecords held;
    std::vector<Question> foreseen;
    std::unique_ptr<Prepared> answering; ///< the question that was asked for last
    bool isUnknown = false;              ///< something has been written that may be a held record
    std::int64_t changes = 0, lastAdded = 0;
};

/// Opens the tables that a service file names. Throws StoreError.
std::shared_ptr<ServerConnection> OpenServer(const ServerService& service, OpenMode mode,
                                             std::shared_ptr<OperationNote> note);

/// Makes the schema of a service with all its tables, empty but for the list of currencies. Throws StoreError.
void CreateServerTables(const ServerService& service);
/// Takes all of them away again. Throws StoreError.
void DropServerTables(const ServerService& service, NewSchema schema);

} // namespace quillmere
