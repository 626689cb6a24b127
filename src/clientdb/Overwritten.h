#pragma once

#include "frame/Box.h"
#include "frame/Session.h"

#include <string>
#include <string_view>
#include <vector>

namespace quillmere {

/// A text that another desk has stored since the box was filled here, and the one that goes over it.
struct Overwritten {
    std::string box, theirs, ours;

    Overwritten(const Box& box, std::string_view theirs, std::string_view ours);
};

/// Tells the user what he has stored over, with both texts; nothing where there is nothing.
void TellOverwritten(Session& session, std::string_view title, const std::vector<Overwritten>& all);

} // namespace quillmere
