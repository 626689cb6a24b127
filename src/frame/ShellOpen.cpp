#include "frame/ShellOpen.h"

#include <algorithm>
#include <array>
#include <fmt/format.h>

namespace quillmere {

namespace {

struct ShellError {
    int result;
    std::string_view text;
};

constexpr auto ShellErrors = std::to_array<ShellError>({
    {0, "Insufficient system memory or corrupt program file"},
    {2, "File not found"},
    {3, "Invalid path"},
    {5, "Sharing or protection error"},
    {6, "Separate data segments are requires for each task"},
    {8, "Insufficient memory to run the program"},
    {10, "Incorrect Windows version"},
    {11, "Invalid program file"},
    {12, "Program file requires a different operating system"},
    {13, "Program requires MS-DOS 4.0"},
    {14, "Unknown program file type"},
    {15, "Windows program does not support protected memory mode"},
    {16, "Invalid use of data segments when loading a second instance of a program"},
    {19, "Attempt to run a compressed program file"},
    {20, "Invalid dynamic link library"},
    {21, "Program requires Windows 32-bit extensions"},
});

} // namespace

std::string_view ShellErrorText(int result)
{
    const auto found = std::ranges::find(ShellErrors, result, &ShellError::result);
    return found == ShellErrors.end() ? std::string_view("Undefined error") : found->text;
}

std::string ShellErrorMessage(int result)
{
    return fmt::format("External program access error {}: {}", result, ShellErrorText(result));
}

} // namespace quillmere
