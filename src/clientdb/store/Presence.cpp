#include "clientdb/store/Presence.h"

#include "clientdb/store/ServerLink.h"

#include <cstdint>
#include <fmt/format.h>

namespace quillmere {
namespace {

/// So many characters has the name of a connection.
constexpr std::size_t LongestName = 63;

/// A number for a text of any length, the same at every desk.
std::uint64_t Digest(std::string_view text)
{
    constexpr std::uint64_t Start = 14695981039346656037ULL, Prime = 1099511628211ULL;
    std::uint64_t digest = Start;
    for (const char letter : text)
        digest = (digest ^ static_cast<unsigned char>(letter)) * Prime;
    return digest;
}

} // namespace

std::string Presence::Beginning() const
{
    return fmt::format("{} {:016x} ", SilentLink, Digest(schema + '\n' + employer + '\n' + employee));
}

std::string Presence::Desk() const
{
    std::string plain = desk.substr(0, LongestName - Beginning().size());
    for (char& letter : plain)
        if (letter < ' ' || letter > '~')
            letter = '?';
    return plain;
}

void SayPresence(ServerLink& link, const Presence& presence)
{
    const std::string name =
        presence.employee.empty() ? std::string(SilentLink) : presence.Beginning() + presence.Desk();
    if (link.saidName == name)
        return;
    const std::string words = "SELECT set_config('application_name',$1,false)";
    const ServerLink::Parameter parameter{.data = name.data(), .size = name.size()};
    link.Send(words, words, {&parameter, 1}, false);
    link.SendOff();
    link.saidName = name;
}

} // namespace quillmere
