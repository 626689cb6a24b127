#pragma once

#include <optional>
#include <string>

namespace quillmere {

/// Which pages of a document one pass of manual duplex printing takes.
enum class ManualDuplex { AllPages, OddPagesOnly, EvenPagesOnly };

/// The page list of a pass over a document of so many pages: "1,3,5" or "2,4". In reverse order a document with an even
/// number of pages begins with the back of its last sheet, so there the two lists change places and the passes still
/// meet back to back. None for all pages: they need no list.
std::optional<std::string> PageListOf(ManualDuplex pass, int pageCount, bool reverse);

} // namespace quillmere
