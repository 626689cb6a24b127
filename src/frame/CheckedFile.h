#pragma once

#include "frame/Failure.h"

#include <filesystem>
#include <string>
#include <string_view>

namespace quillmere {

/// A file that could not be read, written, copied or removed. The text names the file and says why.
class FileError : public Failure {
public:
    FileError(const std::filesystem::path& file, int errorNumber);
};

/// Writes a whole file: a temporary file beside it, flushed and synced, then renamed over the old one, so that the old
/// content stays whole if anything fails. Throws FileError.
void WriteFileChecked(const std::filesystem::path& file, std::string_view content);

/// Copies a file byte for byte in the same way, read in pieces. Throws FileError.
void CopyFileChecked(const std::filesystem::path& source, const std::filesystem::path& target);

/// The whole content of a file. Throws FileError.
std::string ReadFile(const std::filesystem::path& file);

} // namespace quillmere
