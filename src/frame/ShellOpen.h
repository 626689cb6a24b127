#pragma once

#include <string>
#include <string_view>

namespace quillmere {

/// True if the result of `Platform::OpenWithDesktop` says that the desktop could not open the file.
constexpr bool ShellOpenFailed(int result)
{
    return result < 33;
}

/// What a failing result means.
std::string_view ShellErrorText(int result);

/// Text of the message box for a failing result.
std::string ShellErrorMessage(int result);

} // namespace quillmere
