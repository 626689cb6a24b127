#pragma once

#include <string_view>

namespace quillmere {

struct Session;

/// False for an empty text; else true if the date is not later than the last day of the tax year. A date that cannot be
/// compared is kept in `LastBadDate` and told, and counts as not too late.
[[nodiscard]] bool IsNotAfterYearEnd(Session& session, std::string_view text);

} // namespace quillmere
