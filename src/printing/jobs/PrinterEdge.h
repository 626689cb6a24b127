#pragma once

#include "frame/Platform.h"
#include "printing/paper/Ink.h"

#include <string>
#include <string_view>

namespace quillmere {

/// How what is drawn lies to the edge of the sheet on which a printer cannot print.
struct EdgeFit {
    bool isInside = true;        ///< all of it is printed
    bool canMove = false;        ///< moved by so much all of it is
    double across = 0, down = 0; ///< mm, to the right and down
};
EdgeFit FitOf(const Ink& ink, const SheetEdge& edge);

/// What stands in the preview about it; empty if all of it is printed.
std::string WordsOf(const EdgeFit& fit, std::string_view printer);

} // namespace quillmere
