#pragma once

#include "clientdb/TypedEntries.h"
#include "frame/Screen.h"
#include "review/FieldWords.h"

#include <optional>
#include <string>
#include <vector>

/// What has been typed for the open employee and not stored, before a crash or in a notepad that was cancelled: the
/// offer to bring it back.
namespace quillmere::review {

/// Shows the strip if anything waits that an earlier run has left.
void OfferTyped(Session& session);
/// Shows the list of what waits; if nothing does the status bar says so.
void ShowTyped(Session& session);
/// Goes to the boxes by the user's own ways and types into them what waits: on the pages all of it, and then on one
/// more screen, where its own Ok stores it. What cannot be typed there waits on.
void BringTypedBack(Session& session);

/// "7 boxes typed on 21 June 14:31 were not stored".
std::string WordsOfWaiting(const std::vector<TypedEntries::Line>& waiting);

/// A strip at the foot of the main window that says what waits. Closed, it comes back at the next opening.
class TypedStrip : public Screen {
public:
    explicit TypedStrip(Session& session);
    void Activate() override;
};

/// What waits, box by box in the words of the form.
class TypedList : public Screen {
public:
    explicit TypedList(Session& session);
    bool Load() override;
    void Activate() override;

private:
    std::optional<FieldWords> words; ///< from the loading on
};

} // namespace quillmere::review
