#include "clientdb/store/ServerLink.h"

#include "clientdb/store/ServerWords.h"

#include <sqlite3.h>

#include <charconv>
#include <fmt/format.h>
#include <utility>
#include <vector>

namespace quillmere {
namespace {

/// So many statements at most wait for each other's answers, a few for each field of the largest notepad: more of them
/// would only make the answers pile up on this side.
constexpr std::size_t MostWaiting = 2000;

std::string WithoutEnd(std::string text)
{
    while (!text.empty() && (text.back() == '\n' || text.back() == ' '))
        text.pop_back();
    return text;
}

} // namespace

ServerLink::ServerLink(const ServerService& service)
{
    // How long a statement waits for somebody else's lock; the library's own setting may name more, behind this.
    std::string options = fmt::format("-c search_path={} -c lock_timeout=2000", service.schema);
    std::vector<const char*> settings, values;
    const auto set = [&](const char* name, const char* value) {
        settings.push_back(name);
        values.push_back(value);
    };
    const std::string silent(SilentLink);
    set("application_name", silent.c_str());
    set("client_encoding", "UTF8");
    set("connect_timeout", "5");
    set("keepalives_idle", "30");
    set("tcp_user_timeout", "20000");
    for (const auto& [name, value] : service.settings)
        if (name == "options")
            options += ' ' + value;
        else
            set(name.c_str(), value.c_str());
    set("options", options.c_str());
    set(nullptr, nullptr);
    handle = PQconnectdbParams(settings.data(), values.data(), 0);
    ++roundTrips;
    if (PQstatus(handle) != CONNECTION_OK || PQenterPipelineMode(handle) == 0) {
        const std::string words = WithoutEnd(PQerrorMessage(handle));
        PQfinish(handle);
        throw StoreError(SQLITE_CANTOPEN, words, "");
    }
}

ServerLink::~ServerLink()
{
    PQfinish(handle);
}

ServerLink::Ticket ServerLink::Send(const std::string& statement, std::string_view words,
                                    std::span<const Parameter> parameters, bool isWanted)
{
    if (sinceSync >= MostWaiting)
        Flush();
    const auto [found, isNew] = names.try_emplace(statement, std::string());
    if (isNew) {
        found->second = fmt::format("s{}", last);
        waiting.push_back({.ticket = ++last, .words = std::string(words), .prepares = statement});
        if (PQsendPrepare(handle, found->second.c_str(), statement.c_str(), 0, nullptr) == 0)
            FailOfConnection();
    }
    std::vector<const char*> data;
    std::vector<int> sizes, formats;
    for (const Parameter& parameter : parameters) {
        data.push_back(parameter.data);
        sizes.push_back(static_cast<int>(parameter.size));
        formats.push_back(parameter.isNumber ? 0 : 1);
    }
    waiting.push_back({.ticket = ++last, .words = std::string(words), .prepares = {}, .isWanted = isWanted});
    if (PQsendQueryPrepared(handle, found->second.c_str(), static_cast<int>(data.size()), data.data(), sizes.data(),
                            formats.data(), 1) == 0)
        FailOfConnection();
    ++sinceSync;
    return last;
}

void ServerLink::SendOff()
{
    if (sinceSync == 0)
        return;
    waiting.push_back({.ticket = ++last, .words = {}, .prepares = {}, .isWanted = false, .isSync = true});
    sinceSync = 0;
    if (PQpipelineSync(handle) == 0)
        FailOfConnection();
}

void ServerLink::Flush()
{
    SendOff();
    ++roundTrips;
    TakeAnswers();
    if (failure)
        throw *std::exchange(failure, std::nullopt);
}

void ServerLink::Settle()
{
    if (!waiting.empty())
        Flush();
}

ServerLink::Result ServerLink::Wait(Ticket ticket)
{
    if (!results.contains(ticket))
        Flush();
    const auto found = results.find(ticket);
    if (found == results.end())
        throw StoreError(SQLITE_MISUSE, "The server has no answer to a statement.", "");
    Result result = std::move(found->second);
    results.erase(found);
    return result;
}

void ServerLink::Drop(Ticket ticket)
{
    results.erase(ticket);
    for (Waiting& of : waiting)
        of.isWanted = of.isWanted && of.ticket != ticket;
}

void ServerLink::TakeAnswers()
{
    while (!waiting.empty()) {
        const Waiting of = std::move(waiting.front());
        waiting.pop_front();
        TakeAnswer(of);
    }
}

void ServerLink::TakeAnswer(const Waiting& of)
{
    Result result(PQgetResult(handle), PQclear);
    if (result == nullptr)
        FailOfConnection();
    const ExecStatusType status = PQresultStatus(result.get());
    if (of.isSync) {
        if (status != PGRES_PIPELINE_SYNC)
            FailOfConnection();
        return;
    }
    if (status == PGRES_PIPELINE_ABORTED) {
        Forget(of);
    } else if (status != PGRES_COMMAND_OK && status != PGRES_TUPLES_OK) {
        Forget(of);
        const char* const state = PQresultErrorField(result.get(), PG_DIAG_SQLSTATE);
        const char* const words = PQresultErrorField(result.get(), PG_DIAG_MESSAGE_PRIMARY);
        if (!failure && state != nullptr)
            failure.emplace(FailureNumber(state), FailureWords(state, words != nullptr ? words : "", of.words),
                            of.words);
        else if (!failure)
            failure.emplace(FailureHere(PQresultErrorMessage(result.get())));
    } else if (of.isWanted) {
        results.insert_or_assign(of.ticket, std::move(result));
    }
    if (PQstatus(handle) != CONNECTION_OK)
        FailOfConnection();
    // Behind each answer stands an empty one.
    Result(PQgetResult(handle), PQclear).reset();
}

/// A statement that has not been prepared after all.
void ServerLink::Forget(const Waiting& of)
{
    if (!of.prepares.empty())
        names.erase(of.prepares);
}

/// What fails without a word of the server's: mostly the connection, else something on this side of it.
StoreError ServerLink::FailureHere(const std::string& said)
{
    // The library goes on with what may have been the reason, over several lines.
    const std::string words = said.substr(0, said.find('\n'));
    if (IsAlive())
        return StoreError(SQLITE_IOERR, "The server's library cannot go on: " + words, "");
    return StoreError(SQLITE_CANTOPEN, "The connection to the server is lost: " + words, "");
}

/// Nobody knows which answer would come next, so there is no going on with the connection, even if it stands.
void ServerLink::FailOfConnection()
{
    if (!lost)
        lost = failure ? *failure : FailureHere(PQerrorMessage(handle));
    failure.reset();
    waiting.clear();
    results.clear();
    sinceSync = 0;
    PQfinish(std::exchange(handle, nullptr));
    throw StoreError(*lost);
}

bool ServerLink::IsAlive()
{
    // A server that ends the connection says so first; only behind its words the end is met.
    return PQconsumeInput(handle) == 1 && PQconsumeInput(handle) == 1 && PQstatus(handle) == CONNECTION_OK;
}

std::int64_t NumberIn(const PGresult* result, int row, int column)
{
    if (PQgetisnull(result, row, column) == 1)
        return 0;
    constexpr Oid Int8 = 20, Int4 = 23;
    const char* const bytes = PQgetvalue(result, row, column);
    const int size = PQgetlength(result, row, column);
    const Oid type = PQftype(result, column);
    std::int64_t number = 0;
    if (type != Int8 && type != Int4) {
        std::from_chars(bytes, bytes + size, number);
        return number;
    }
    std::uint64_t read = 0;
    for (int at = 0; at < size; ++at)
        read = read << 8 | static_cast<unsigned char>(bytes[at]);
    return type == Int4 ? static_cast<std::int32_t>(read) : static_cast<std::int64_t>(read);
}

} // namespace quillmere
