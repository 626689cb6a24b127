#include "clientdb/store/ServerWords.h"

#include <sqlite3.h>

#include <algorithm>
#include <array>
#include <fmt/format.h>

namespace quillmere {
namespace {

/// The characters U+10FF00 to U+10FFFF carry a byte each: two bytes that all have in common, then two with the byte.
constexpr std::string_view CarrierHead = "\xF4\x8F";
constexpr unsigned char CarrierThird = 0xBC, Continuation = 0x80;

bool IsContinuation(char byte)
{
    return (static_cast<unsigned char>(byte) & 0xC0) == Continuation;
}

bool IsCarrier(std::string_view character)
{
    return character.starts_with(CarrierHead) && static_cast<unsigned char>(character[2]) >= CarrierThird;
}

/// How many bytes the character takes with which the text begins; 0 for one that the server does not take.
std::size_t LengthOfCharacter(std::string_view text)
{
    const auto first = static_cast<unsigned char>(text[0]);
    if (first < 0x80)
        return first == 0 ? 0 : 1;
    const std::size_t length = first >= 0xF0 ? 4 : first >= 0xE0 ? 3 : 2;
    if (first < 0xC2 || first > 0xF4 || text.size() < length ||
        !std::ranges::all_of(text.substr(1, length - 1), IsContinuation))
        return 0;
    const auto second = static_cast<unsigned char>(text[1]);
    const bool tooLong = (first == 0xE0 && second < 0xA0) || (first == 0xF0 && second < 0x90);
    const bool noCharacter = (first == 0xED && second > 0x9F) || (first == 0xF4 && second > 0x8F);
    return tooLong || noCharacter ? 0 : length;
}

} // namespace

std::string ServerStatement(std::string_view statement)
{
    std::string text;
    text.reserve(statement.size() + 64);
    int parameters = 0;
    for (std::size_t at = 0; at < statement.size(); ++at) {
        const char letter = statement[at];
        if (letter == '\'') {
            const std::size_t end = statement.find('\'', at + 1);
            text += statement.substr(at, end + 1 - at);
            at = end;
        } else if (letter == '[' || letter == ']') {
            text += '"';
        } else if (letter == '?') {
            text += '$';
            const bool isNumbered = at + 1 < statement.size() && statement[at + 1] >= '1' && statement[at + 1] <= '9';
            if (!isNumbered)
                text += fmt::format("{}", ++parameters);
        } else {
            text += letter;
        }
    }
    return text;
}

std::optional<std::string> CarriedText(std::string_view text)
{
    const auto isPlain = [](char letter) { return letter > 0; };
    if (std::ranges::all_of(text, isPlain))
        return std::nullopt;
    std::string carried;
    bool any = false;
    while (!text.empty()) {
        std::size_t length = LengthOfCharacter(text);
        if (length == 0 || (length == 4 && IsCarrier(text))) {
            const auto byte = static_cast<unsigned char>(text[0]);
            carried += CarrierHead;
            carried += static_cast<char>(CarrierThird + (byte >> 6));
            carried += static_cast<char>(Continuation | (byte & 0x3F));
            length = 1;
            any = true;
        } else {
            carried += text.substr(0, length);
        }
        text.remove_prefix(length);
    }
    return any ? std::optional(std::move(carried)) : std::nullopt;
}

std::optional<std::string> UncarriedText(std::string_view text)
{
    std::size_t at = text.find(CarrierHead);
    if (at == std::string_view::npos)
        return std::nullopt;
    std::string plain;
    while (!text.empty()) {
        plain += text.substr(0, at);
        text.remove_prefix(std::min(at, text.size()));
        if (text.size() >= 4 && IsCarrier(text)) {
            const auto high = static_cast<unsigned char>(text[2]), low = static_cast<unsigned char>(text[3]);
            plain += static_cast<char>(((high - CarrierThird) << 6) | (low & 0x3F));
            text.remove_prefix(4);
        } else if (!text.empty()) {
            plain += text[0];
            text.remove_prefix(1);
        }
        at = text.find(CarrierHead);
    }
    return plain;
}

std::string FailureWords(std::string_view sqlState, std::string_view said, std::string_view statement)
{
    const int number = FailureNumber(sqlState);
    if (number == SQLITE_BUSY)
        return fmt::format("A part of the database is locked by somebody else: {}", said);
    const bool isRefused = number == SQLITE_READONLY;
    const bool onlyReads = statement.starts_with("SELECT") && !statement.ends_with("FOR UPDATE");
    if (!isRefused || onlyReads)
        return std::string(said);
    return fmt::format("The server lets you look, but not store anything: {}", said);
}

int FailureNumber(std::string_view sqlState)
{
    struct Kind {
        std::string_view begins;
        int number;
    };
    // Whatever is longer stands first.
    static constexpr auto kinds = std::to_array<Kind>({
        {"23505", SQLITE_CONSTRAINT}, // another record has the key
        {"55P03", SQLITE_BUSY},       // somebody holds the lock
        {"40P01", SQLITE_BUSY},       // two wait for each other
        {"40001", SQLITE_BUSY},
        {"42501", SQLITE_READONLY}, // the role may not
        {"25006", SQLITE_READONLY},
        {"53100", SQLITE_FULL},
        {"54", SQLITE_TOOBIG},
        {"08", SQLITE_CANTOPEN},  // the connection is gone
        {"28", SQLITE_CANTOPEN},  // who are you?
        {"3D", SQLITE_CANTOPEN},  // no such database
        {"57P", SQLITE_CANTOPEN}, // the server goes down
        {"53", SQLITE_CANTOPEN},  // it has no room for more
        {"XX00", SQLITE_CORRUPT},
        {"42", SQLITE_ERROR}, // the tables are not what they are taken for
    });
    const auto* const kind =
        std::ranges::find_if(kinds, [&](const Kind& of) { return sqlState.starts_with(of.begins); });
    return kind == kinds.end() ? SQLITE_IOERR : kind->number;
}

} // namespace quillmere
