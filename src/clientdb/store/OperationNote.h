#pragma once

#include <cstdint>
#include <filesystem>
#include <string>

namespace quillmere {

/// What the change history says of the writes of one user's operation, shared by all databases that are opened for it.
struct OperationNote {
    std::string words = "Change"; ///< "Vouchers or credit cards, OK"
    std::string who = {};         ///< "anna@desk3"
    std::string when = {};        ///< yyyy-mm-dd hh:mm:ss

    // What the store finds out while it writes.
    std::filesystem::path file = {}; ///< of the history in which it stands
    std::int64_t number = 0;         ///< there; 0: nothing of it is stored
    bool historyIsOff = false;       ///< the tables of the history are not this program's, or damaged
};

} // namespace quillmere
