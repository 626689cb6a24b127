#pragma once

#include <string>
#include <string_view>

namespace quillmere {

/// A text as it stands in HTML or XML, between tags or as an attribute in double quotes.
std::string MarkupText(std::string_view text);

} // namespace quillmere
