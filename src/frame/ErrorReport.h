#pragma once

#include <string>
#include <string_view>

namespace quillmere {

/// Text of the general error box, in which every operation ends that has no message of its own: the procedure, the
/// error's number and text, and a diagnostic text, which may be empty.
std::string ErrorReportText(std::string_view procedure, long number, std::string_view text,
                            std::string_view diagnostic = {});

} // namespace quillmere
