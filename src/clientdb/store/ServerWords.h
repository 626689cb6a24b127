#pragma once

#include <optional>
#include <string>
#include <string_view>

/// What the store says, in the words of the server's engine.
namespace quillmere {

/// A statement of the store as the server takes it: names in double quotes instead of square brackets, parameters by
/// number.
std::string ServerStatement(std::string_view statement);

/// The server takes no text with a zero byte or bytes that are no UTF-8; the file takes any. Such bytes are carried by
/// characters of the last private plane, which no keyboard gives; so are the bytes of these characters themselves.
/// Nothing: the text goes as it is.
std::optional<std::string> CarriedText(std::string_view text);
/// The text as it was before. Nothing: as it is.
std::optional<std::string> UncarriedText(std::string_view text);

/// What the user is told of a failure: the server's words, and before them what a refused role or somebody else's lock
/// comes to.
std::string FailureWords(std::string_view sqlState, std::string_view said, std::string_view statement);

/// The file engine's number for a failure that the server names by five letters and digits.
int FailureNumber(std::string_view sqlState);

} // namespace quillmere
