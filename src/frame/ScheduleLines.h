#pragma once

namespace quillmere {

/// A schedule has twenty lines: on its screen, in its record and on its report.
inline constexpr int LinesOfASchedule = 20;

} // namespace quillmere
