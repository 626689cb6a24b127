#pragma once

#include <string>
#include <vector>

namespace quillmere {

class PdfFile;

/// A bookmark: title in UTF-8, the place as page and height in points from the bottom.
struct PdfOutlineItem {
    std::string title;
    int level;
    std::string page; ///< reference
    double y;
};

/// Puts the bookmarks into the file and gives the reference of their tree; empty without any. Each hangs under the one
/// before it whose level is lower. A tree of more than two levels begins closed, but for its first one.
std::string AddOutline(PdfFile& file, const std::vector<PdfOutlineItem>& items);

} // namespace quillmere
