#include "clientdb/store/ServerEngine.h"
#include "clientdb/store/ServerWords.h"

#include <charconv>
#include <fmt/format.h>
#include <utility>

namespace quillmere {
namespace {

bool IsWrite(std::string_view words)
{
    return words.starts_with("INSERT") || words.starts_with("UPDATE") || words.starts_with("DELETE");
}

} // namespace

ServerPrepared::ServerPrepared(ServerConnection& of, std::string storeWords)
    : connection(of), words(std::move(storeWords)), text(ServerStatement(words)), writes(IsWrite(words))
{
}

ServerLink::Parameter& ServerPrepared::At(int parameter)
{
    const auto count = static_cast<std::size_t>(parameter);
    if (parameters.size() < count) {
        parameters.resize(count);
        kept.resize(count);
    }
    return parameters[count - 1];
}

void ServerPrepared::BindText(int parameter, std::string_view bound)
{
    ServerLink::Parameter& at = At(parameter);
    std::optional<std::string> carried = CarriedText(bound);
    if (carried) {
        kept[static_cast<std::size_t>(parameter) - 1] = std::move(*carried);
        bound = kept[static_cast<std::size_t>(parameter) - 1];
    }
    at = {.data = bound.data() == nullptr ? "" : bound.data(), .size = bound.size()};
}

void ServerPrepared::BindNumber(int parameter, std::int64_t number)
{
    ServerLink::Parameter& at = At(parameter);
    std::string& digits = kept[static_cast<std::size_t>(parameter) - 1];
    digits = fmt::format("{}", number);
    at = {.data = digits.c_str(), .size = digits.size(), .isNumber = true};
}

void ServerPrepared::BindBytes(int parameter, std::string_view bytes)
{
    At(parameter) = {.data = bytes.data() == nullptr ? "" : bytes.data(), .size = bytes.size()};
}

void ServerPrepared::BindNull(int parameter)
{
    At(parameter) = {};
}

void ServerPrepared::Ask()
{
    if (!asked)
        asked = connection.Send(text, words, parameters, writes, true);
}

void ServerPrepared::Drop() noexcept
{
    if (asked && connection.link != nullptr)
        connection.link->Drop(*asked);
    asked.reset();
}

bool ServerPrepared::Step()
{
    if (result == nullptr) {
        Ask();
        result = connection.Wait(*std::exchange(asked, std::nullopt));
        row = -1;
        const char* const count = PQcmdTuples(result.get());
        changed = 0;
        std::from_chars(count, count + std::string_view(count).size(), changed);
        if (writes) {
            connection.changes += changed;
            if (PQntuples(result.get()) > 0)
                connection.lastAdded = NumberIn(result.get(), 0, 0);
            row = PQntuples(result.get());
        }
    }
    uncarried.clear();
    return ++row < PQntuples(result.get());
}

void ServerPrepared::Post()
{
    connection.Send(text, words, parameters, writes, false);
    connection.changes += writes ? 1 : 0;
}

void ServerPrepared::Reset() noexcept
{
    Drop();
    result.reset();
}

std::int64_t ServerPrepared::Number(int column) const
{
    return NumberIn(result.get(), row, column);
}

std::optional<std::string_view> ServerPrepared::TextOrNull(int column) const
{
    if (PQgetisnull(result.get(), row, column) == 1)
        return std::nullopt;
    std::string_view read = Bytes(column);
    if (std::optional<std::string> plain = UncarriedText(read)) {
        // Reserved for a whole row, so that none of the texts moves.
        uncarried.reserve(static_cast<std::size_t>(PQnfields(result.get())));
        read = uncarried.emplace_back(std::move(*plain));
    }
    if (read.size() > MostBytesOfText)
        FailOfText(PQfname(result.get(), column), words);
    return read;
}

std::string_view ServerPrepared::Bytes(int column) const
{
    return {PQgetvalue(result.get(), row, column), static_cast<std::size_t>(PQgetlength(result.get(), row, column))};
}

void ServerPrepared::Take(Cells& cells, int first, std::size_t count) const
{
    for (int column = first; column < first + static_cast<int>(count); ++column)
        cells.Put(TextOrNull(column));
}

} // namespace quillmere
