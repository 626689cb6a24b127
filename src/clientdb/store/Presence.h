#pragma once

#include <string>
#include <string_view>

namespace quillmere {

class ServerLink;

/// Whom a desk has open in a shared folder. The name of its connection says so to all who are connected to the server:
/// no table is written, no role needs a right for it, and it goes with the connection, however that ends.
struct Presence {
    std::string desk = {}; ///< "anna@desk3"
    std::string schema = {}, employer = {}, employee = {};

    /// What the names of all connections begin with that have the employee open; that of this desk goes on with the
    /// desk.
    std::string Beginning() const;
    /// The desk as such a name has it: the server keeps so many characters, and of those only plain ones.
    std::string Desk() const;
};

/// The name of a connection that says nothing of anybody.
inline constexpr std::string_view SilentLink = "quillmere";

/// Has the connection say it, or for an empty employee nothing, with whatever is sent next.
void SayPresence(ServerLink& link, const Presence& presence);

} // namespace quillmere
