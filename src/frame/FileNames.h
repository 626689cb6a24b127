#pragma once

#include <string>
#include <string_view>

namespace quillmere {

/// A file's name made of words that were not thought as one: characters that some file system refuses give way to "-",
/// blanks and points at the ends are dropped, and it is cut after a whole character where it would be too long with an
/// ending of up to twenty characters. Never empty.
std::string ReadyFileName(std::string_view words);

} // namespace quillmere
