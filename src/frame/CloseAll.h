#pragma once

#include "frame/Session.h"

#include <string_view>

namespace quillmere {

/// Unloads every screen of the employee and every list, in the fixed order. Closing a page stores its boxes.
void UnloadAllScreens(Session& session);

/// When an employee has just been opened: unloads page 2 and the notepads, so that each loads anew for this employee,
/// and leaves page 1 up.
void UnloadNotepads(Session& session);

/// The main window's commands that need an open employee: Print, P11D(b), Close File.
void EnableEmployeeCommands(Session& session, bool enabled);

/// The main window's caption.
void SetMainCaption(Session& session, std::string_view caption);

/// The caption with an employee open: the program's title, the employee and, in parentheses, the employer.
std::string OpenEmployeeCaption(const Session& session);

} // namespace quillmere
