#include "frame/Tick.h"

#include "frame/Text.h"

#include <string>

namespace quillmere {

bool IsSet(std::string_view storedTick)
{
    const std::string upper = UpperCase(Trimmed(storedTick));
    return upper == "1" || upper == "-1" || upper == "TRUE" || upper == "Y";
}

} // namespace quillmere
