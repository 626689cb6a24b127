#pragma once

#include "desktop/BoxWidgets.h"
#include "frame/Screen.h"

class QKeyEvent;

namespace quillmere {

/// True for the keys that ask what is at hand in a box: F4, and Alt with Down.
bool AsksForChoices(const QKeyEvent& key);

/// Puts the letters of a box, or a calendar of its days, below its edit; what is chosen is typed into it. False if the
/// box has nothing at hand.
bool OfferChoices(const Screen& screen, const Box& box, BoxEdit& edit);

} // namespace quillmere
