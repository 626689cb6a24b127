#pragma once

#include "frame/Failure.h"

#include <cstddef>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace quillmere {

/// A file that could not be read, written, copied or removed. The text names the file and says why.
class FileError : public Failure {
public:
    FileError(const std::filesystem::path& file, int errorNumber);
};

/// A file that is in its place with its new content, and of which the disk has not said that its name lasts: a power
/// cut may bring the old one back.
class NameNotSynced : public FileError {
public:
    using FileError::FileError;
};

/// Writes a whole file: a temporary file beside it, flushed and synced, then renamed over the old one, so that the old
/// content stays whole if anything fails. One that is made anew is its owner's alone. Throws FileError; of these
/// NameNotSynced alone leaves the new content in place.
void WriteFileChecked(const std::filesystem::path& file, std::string_view content);

/// Writes one file after the other into a folder in the same way; what costs the disk as much for one file as for many
/// is done for many at once. Until then none of these stands under its name.
class FolderWriter {
public:
    explicit FolderWriter(std::filesystem::path folder);
    FolderWriter(const FolderWriter&) = delete;
    FolderWriter& operator=(const FolderWriter&) = delete;
    /// What has not been synced is dropped.
    ~FolderWriter();

    /// Hears of a file that has been written and did not get its name after all.
    using Failed = std::function<void(const FileError&)>;
    /// Throws FileError, and then nothing of that file is left behind.
    void Write(const std::string& name, std::string_view content, Failed failed);
    /// Gives all that was written its name, and makes the names last. Throws FileError.
    void Sync();

private:
    struct Pending;
    void NameThem();

    std::filesystem::path folder;
    std::vector<std::filesystem::path> forgotten; ///< left there by killed processes
    std::vector<Pending> pending;                 ///< written and not named yet
    std::size_t bytes = 0;                        ///< of those
};

/// Looks at a file that is complete but has not taken its place yet; what it throws leaves the old one as it was.
using FileCheck = std::function<void(const std::filesystem::path& complete)>;

/// Copies a file byte for byte in the same way, read in pieces. Throws FileError, and what the check throws.
void CopyFileChecked(const std::filesystem::path& source, const std::filesystem::path& target,
                     const FileCheck& check = {});

/// Puts the whole content into a file that is there under a name of its own, still empty and its owner's alone.
using FileFill = std::function<void(const std::filesystem::path& empty)>;

/// Makes a whole file in the same way out of what is filled in. Throws FileError, and what the two throw.
void MakeFileChecked(const std::filesystem::path& file, const FileFill& fill, const FileCheck& check = {});

/// The same for a file that is filled in piece by piece: it vanishes if it is dropped before it takes its place.
class FileInMaking {
public:
    /// Throws FileError.
    explicit FileInMaking(const std::filesystem::path& file);
    FileInMaking(const FileInMaking&) = delete;
    FileInMaking& operator=(const FileInMaking&) = delete;
    ~FileInMaking();

    const std::filesystem::path& Path() const;
    /// Throws FileError, and what the check throws.
    void TakePlace(const FileCheck& check = {});

private:
    struct Parts;
    std::unique_ptr<Parts> parts;
};

/// What killed processes have left in a folder of files that they were about to write in this way, an hour ago or more.
std::vector<std::filesystem::path> ForgottenTemporaries(const std::filesystem::path& folder);

/// The whole content of a file. Throws FileError.
std::string ReadFile(const std::filesystem::path& file);

} // namespace quillmere
