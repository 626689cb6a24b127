#pragma once

#include "frame/Session.h"

#include <string_view>

namespace quillmere {

/// Unloads the pages, notepads, lists and dialogs of the employee, in their order. Closing a page stores its boxes.
void UnloadAllScreens(Session& session);

/// The same for a command that goes on with something else: false, with the store's words and all left open, if the
/// store does not take what the open page holds.
[[nodiscard]] bool CloseAllScreens(Session& session);

/// When an employee has just been opened: unloads page 2 and the notepads (but not the guidance on accommodation), so
/// that each loads anew for this employee, and leaves page 1 up.
void UnloadNotepads(Session& session);

/// Enables or disables what needs an open employee: Print and P11D(b) of the File menu, Close File and Print of the
/// toolbar.
void EnableEmployeeCommands(Session& session, bool enabled);

/// Says in the status bar who is open; with nobody open the desk is empty and says what to begin with.
void ShowOpenEmployee(Session& session, bool open);

/// The main window's caption.
void SetMainCaption(Session& session, std::string_view caption);

/// A word in the status bar; an empty one takes it away.
void SetStatusNote(Session& session, std::string_view note);
/// Takes the word away if it is one that begins so; others stay.
void ClearStatusNote(Session& session, std::string_view beginning);

/// The open employee and, in parentheses, the employer.
std::string OpenEmployeeInWords(const Session& session);

/// The store has taken what was typed: said to whoever looks on.
void SayStored(Session& session);

/// The caption with an employee open: the program's title, the employee and, in parentheses, the employer.
std::string OpenEmployeeCaption(const Session& session);

} // namespace quillmere
