#pragma once

namespace quillmere {

/// Tells a screen reader rightly what those widgets are that the toolkit takes for something else: a screen's window,
/// and ticks and options, whose marks are their boxes' to change.
void TellRoles();

} // namespace quillmere
