#pragma once

#include <string_view>
#include <vector>

namespace quillmere {

/// Reads a page list such as "1,3,5-12": page numbers and ascending ranges, separated by commas, in the order in which
/// they are to be printed; a page named twice comes twice. What lies outside the document is left out. A list that is
/// empty, names no page of the document or holds anything else than numbers and ranges gives no pages at all.
std::vector<int> ReadPageList(std::string_view list, int pageCount);

} // namespace quillmere
