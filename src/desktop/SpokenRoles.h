#pragma once

namespace quillmere {

/// Tells a screen reader rightly what those widgets are that the toolkit takes for something else: a screen's window,
/// ticks and options, whose marks are their boxes' to change, and figures, whose padding is not spoken.
void TellRoles();

} // namespace quillmere
