#pragma once

#include "frame/Explained.h"
#include "frame/Session.h"
#include "screens/P11DPage.h"

#include <string_view>

namespace quillmere::review {

/// The section of the Act that a section of the form, by its letter, stands under.
std::string_view ActOfSection(char letter);

/// How a box of one of the two pages has come to what it reads: the car's working, the cost less what was made good,
/// or the list or calculator behind the section. Nothing for a box that holds no figure. Throws StoreError.
Explained ExplainOnPage(const Session& session, const P11DPage& page, const Box& box);

/// The car that a box belongs to, from 1; 0 for a box of none.
int CarOf(const Screen& screen, const Box& box);
/// The working of a car on its screen, with the number of the car at its boxes.
Explained ExplainCarOn(const Screen& screen, int car);

/// A list of the open employee as it is stored behind a box of the form, whose field that is; nothing if none is.
Explained ExplainStoredList(const Session& session, std::string_view field);

} // namespace quillmere::review
