#pragma once

#include "printing/paper/Document.h"

namespace quillmere {

/// Where on a sheet something is drawn that can be seen on white paper: from the leftmost to the rightmost and from the
/// uppermost to the lowest of it, mm from the sheet's top left corner. With nothing drawn right lies before left.
struct Ink {
    double left = 1e9, top = 1e9, right = -1e9, bottom = -1e9;

    bool IsNone() const { return right < left; }
};

/// That of all pages of a document together.
Ink InkOf(const Document& document);

} // namespace quillmere
