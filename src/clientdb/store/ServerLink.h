#pragma once

#include "clientdb/store/Libpq.h"
#include "clientdb/store/Presence.h"
#include "clientdb/store/ServerService.h"
#include "clientdb/store/StoreErrors.h"

#include <cstdint>
#include <deque>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>

namespace quillmere {

/// One connection to a server. Statements go into a pipeline: they are put behind each other, and what is waited for
/// takes along all that was put there before, in one round trip. A statement is prepared with its first run, which
/// costs none of its own.
class ServerLink {
public:
    /// A text or, as bytes, anything; null without `data`.
    struct Parameter {
        const char* data = nullptr;
        std::size_t size = 0;
        bool isNumber = false; ///< a number as text, which ends with a zero byte
    };
    using Result = std::unique_ptr<PGresult, void (*)(PGresult*)>;
    using Ticket = std::int64_t;

    /// Connects. Throws StoreError.
    explicit ServerLink(const ServerService& service);
    ~ServerLink();
    ServerLink(const ServerLink&) = delete;
    ServerLink& operator=(const ServerLink&) = delete;

    /// Puts a statement behind those that wait; `words` tell of it if it fails. With `isWanted` its result is kept.
    Ticket Send(const std::string& statement, std::string_view words, std::span<const Parameter> parameters,
                bool isWanted);
    /// The result of a statement; what was put there before has been done. Throws StoreError with the first failure
    /// among all these; nothing behind the failure has been done.
    Result Wait(Ticket ticket);
    bool HasAnswer(Ticket ticket) const { return results.contains(ticket); }
    /// Nobody wants the result any more.
    void Drop(Ticket ticket);
    /// Has the server begin with what waits, without waiting for it.
    void SendOff();

    /// Waits for all that has been put there, if anything has. Throws StoreError.
    void Settle();

    /// True if nothing is known to be wrong with the connection.
    bool IsAlive();

    /// How often it has been waited for the server, by all connections of this process.
    static std::int64_t RoundTrips() { return roundTrips; }

    /// What the look at the schema has found, once for each connection.
    std::optional<std::map<std::string, std::string, std::less<>>> tableWords;

    /// By which the server knows it, as it was told last.
    std::string saidName{SilentLink};

private:
    struct Waiting {
        Ticket ticket;
        std::string words;
        std::string prepares; ///< the text of a statement that is prepared by it
        bool isWanted = false;
        bool isSync = false;
    };

    void Flush();
    void TakeAnswers();
    void TakeAnswer(const Waiting& of);
    void Forget(const Waiting& of);
    StoreError FailureHere(const std::string& said);
    [[noreturn]] void FailOfConnection();

    PGconn* handle = nullptr;                           ///< null once it is lost
    std::optional<StoreError> lost;                     ///< by what
    std::unordered_map<std::string, std::string> names; ///< of the prepared statements, by their text
    std::deque<Waiting> waiting;
    std::map<Ticket, Result> results;
    std::optional<StoreError> failure; ///< the first since the last sync
    Ticket last = 0;
    std::size_t sinceSync = 0;
    inline static std::int64_t roundTrips = 0;
};

/// A number of an answer, sent as the bytes of a whole number, the highest first, or as a text; 0 where there is none.
std::int64_t NumberIn(const PGresult* result, int row, int column);

} // namespace quillmere
