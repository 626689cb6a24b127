#pragma once

#include "frame/Explained.h"
#include "frame/Screen.h"
#include "frame/Session.h"

#include <optional>
#include <string>
#include <vector>

/// How each worked-out box of the pages, notepads, calculators and of the declaration has come to what it reads: the
/// facts are those that stand in the boxes of its screen, or what is stored behind the page.
namespace quillmere::review {

/// What is told of a box.
struct BoxExplained {
    std::string heading;              ///< the words of the box
    Explained chain;                  ///< from the facts to its figure
    std::vector<std::string> remarks; ///< where the box reads something else than its figure
};

/// What is told of a box; nothing on a screen where nothing is worked out. A box that is typed in is told of by what
/// comes of it.
std::optional<BoxExplained> ExplainBox(const Session& session, const Screen& screen, const Box& box);

/// A line of what is told: a step, a note or a remark.
struct WorkingLine {
    std::string letter, says, sum, figure, source;
    bool isNote = false;
};
std::vector<WorkingLine> LinesOf(const BoxExplained& told);

} // namespace quillmere::review
