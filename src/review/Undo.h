#pragma once

#include "clientdb/store/History.h"
#include "frame/Session.h"

#include <optional>
#include <string>

namespace quillmere::review {

/// What Edit, Undo takes back next: with an employee open the last change to his records alone that this desk has
/// stored, else whatever it has done last. Nothing if there is nothing, or the history cannot be read.
std::optional<PastOperation> NextToUndo(Session& session);

/// What Edit, Undo says.
std::string UndoWords(Session& session);

/// Takes it back. What has been typed on an open page is stored first, and is then what is taken back.
void UndoLast(Session& session);

/// Undoes an operation by the road of Open: the open page is stored first and sought again after. If anything has been
/// changed since, nothing is, and a message says what. False if it is not undone.
bool UndoOperation(Session& session, const PastOperation& operation);

} // namespace quillmere::review
