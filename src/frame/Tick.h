#pragma once

#include <string_view>

namespace quillmere {

/// What a stored tick means: "1", "-1", "True" and "Y" are set, anything else is clear.
bool IsSet(std::string_view storedTick);

/// How a tick is stored.
constexpr std::string_view StoredTick(bool set)
{
    return set ? "1" : "0";
}

} // namespace quillmere
