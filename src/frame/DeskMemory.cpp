#include "frame/DeskMemory.h"

#include "frame/CheckedFile.h"

#include <fmt/format.h>
#include <sstream>

namespace quillmere {

namespace {

constexpr std::string_view FileName = "DESK.TXT";

std::string ContentOf(const std::filesystem::path& file)
{
    try {
        return ReadFile(file);
    } catch (const FileError&) {
        return {};
    }
}

bool IsOf(std::string_view line, std::string_view key)
{
    return line.starts_with(key) && line.substr(key.size()).starts_with('=');
}

} // namespace

DeskMemory::DeskMemory(const std::filesystem::path& programFolder) : file(programFolder / FileName)
{
}

std::string DeskMemory::Recall(std::string_view key) const
{
    std::istringstream lines(ContentOf(file));
    for (std::string line; std::getline(lines, line);)
        if (IsOf(line, key))
            return line.substr(key.size() + 1);
    return {};
}

void DeskMemory::Remember(std::string_view key, std::string_view text) const
{
    if (text.find('\n') != std::string_view::npos || Recall(key) == text)
        return;
    std::string content;
    std::istringstream lines(ContentOf(file));
    for (std::string line; std::getline(lines, line);)
        if (!IsOf(line, key))
            content += line + "\n";
    try {
        WriteFileChecked(file, content + fmt::format("{}={}\n", key, text));
    } catch (const FileError&) {
        // It is proposed again as it was.
    }
}

} // namespace quillmere
