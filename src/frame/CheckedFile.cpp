#include "frame/CheckedFile.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <fcntl.h>
#include <fmt/format.h>
#include <linux/magic.h>
#include <optional>
#include <sys/stat.h>
#include <sys/vfs.h>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace quillmere {

namespace {

/// A file descriptor that closes itself.
class Descriptor {
public:
    explicit Descriptor(int opened) : number(opened) {}
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    Descriptor(Descriptor&& other) noexcept : number(std::exchange(other.number, -1)) {}
    Descriptor& operator=(Descriptor&& other) noexcept
    {
        std::swap(number, other.number);
        return *this;
    }
    ~Descriptor() { Close(); }

    bool IsOpen() const { return number >= 0; }
    int Number() const { return number; }

    /// 0, or what the system says of data that it could not store after all.
    int Close()
    {
        const int closing = std::exchange(number, -1);
        return closing >= 0 && ::close(closing) != 0 && errno != EINTR ? errno : 0;
    }

private:
    int number;
};

Descriptor OpenForReading(const std::filesystem::path& file)
{
    Descriptor opened(::open(file.c_str(), O_RDONLY | O_CLOEXEC));
    if (!opened.IsOpen())
        throw FileError(file, errno);
    return opened;
}

/// Reads the next piece into the buffer; 0 at the end of the file.
std::size_t ReadPiece(const Descriptor& from, const std::filesystem::path& file, std::vector<char>& buffer)
{
    for (;;) {
        const ssize_t count = ::read(from.Number(), buffer.data(), buffer.size());
        if (count >= 0)
            return static_cast<std::size_t>(count);
        if (errno != EINTR)
            throw FileError(file, errno);
    }
}

/// The file that a name leads to, so that a link stays one and its target is what gets the new content.
std::filesystem::path BehindLinks(const std::filesystem::path& file)
{
    std::error_code error;
    if (!std::filesystem::is_symlink(file, error))
        return file;
    auto target = std::filesystem::weakly_canonical(file, error);
    return error ? file : target;
}

constexpr std::string_view TemporaryEnding = ".tmp";

/// The stem, a process's number, "-", the number of its attempt, the ending.
bool IsTemporaryName(std::string_view name, std::string_view stem)
{
    if (!name.starts_with(stem) || !name.ends_with(TemporaryEnding) ||
        name.size() < stem.size() + TemporaryEnding.size())
        return false;
    name.remove_prefix(stem.size());
    name.remove_suffix(TemporaryEnding.size());
    const auto dash = name.find('-');
    const auto isNumber = [](std::string_view text) {
        return !text.empty() && text.find_first_not_of("0123456789") == std::string_view::npos;
    };
    return dash != std::string_view::npos && isNumber(name.substr(0, dash)) && isNumber(name.substr(dash + 1));
}

/// The part of a temporary file's name before the process's number, with its dot.
std::string_view StemOf(std::string_view temporaryName)
{
    if (temporaryName.size() < TemporaryEnding.size())
        return {};
    const std::string_view name = temporaryName.substr(0, temporaryName.size() - TemporaryEnding.size());
    return name.substr(0, name.rfind('.') + 1);
}

std::filesystem::path FolderOf(const std::filesystem::path& file)
{
    return file.has_parent_path() ? file.parent_path() : std::filesystem::path(".");
}

/// Makes new names in a folder last; `file` is named in a failure. A file system that knows no such thing, or a folder
/// that may be written but not read, has nothing better to give.
void SyncFolder(const std::filesystem::path& folder, const std::filesystem::path& file)
{
    const Descriptor opened(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (opened.IsOpen() && ::fsync(opened.Number()) != 0 && errno == EIO)
        throw NameNotSynced(file, errno);
}

/// Brings all that the folder's file system has to write to the disk. False if it has failed, or if the file system is
/// not one of those of which it is known that this leaves nothing out: those of networks.
bool SyncWholeSystem(const std::filesystem::path& folder)
{
    constexpr auto Known = std::to_array<unsigned long>(
        {EXT4_SUPER_MAGIC, XFS_SUPER_MAGIC, BTRFS_SUPER_MAGIC, F2FS_SUPER_MAGIC, TMPFS_MAGIC});
    const Descriptor opened(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    struct statfs system {};
    return opened.IsOpen() && ::fstatfs(opened.Number(), &system) == 0 &&
           std::ranges::find(Known, static_cast<unsigned long>(system.f_type)) != Known.end() &&
           ::syncfs(opened.Number()) == 0;
}

/// The new content of a file, which takes the file's place when it is complete and vanishes when it is not.
class Replacement {
public:
    /// Who writes many files knows already what killed processes have left in their folder.
    explicit Replacement(const std::filesystem::path& named,
                         const std::vector<std::filesystem::path>* forgotten = nullptr)
        : target(BehindLinks(named))
    {
        const std::optional<mode_t> kept = PermissionsOfTarget();
        RemoveLeftOvers(forgotten != nullptr ? *forgotten : ForgottenTemporaries(FolderOf(target)));
        // A name may be taken by what a killed process of the same number left behind.
        for (int attempt = 1; !descriptor.IsOpen(); ++attempt) {
            temporary = target;
            temporary += fmt::format(".{}-{}{}", ::getpid(), attempt, TemporaryEnding);
            descriptor =
                Descriptor(::open(temporary.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, S_IRUSR | S_IWUSR));
            if (!descriptor.IsOpen() && errno != EEXIST && errno != EINTR)
                throw FileError(target, errno);
        }
        if (kept)
            ::fchmod(descriptor.Number(), *kept); // A file system without permissions has none to keep.
    }
    Replacement(const Replacement&) = delete;
    Replacement& operator=(const Replacement&) = delete;
    ~Replacement()
    {
        if (!isInPlace)
            ::unlink(temporary.c_str());
    }

    const std::filesystem::path& Temporary() const { return temporary; }

    void Write(std::string_view content)
    {
        while (!content.empty()) {
            const ssize_t count = ::write(descriptor.Number(), content.data(), content.size());
            if (count > 0)
                content.remove_prefix(static_cast<std::size_t>(count));
            else if (count == 0 || errno != EINTR)
                throw FileError(target, count == 0 ? ENOSPC : errno);
        }
    }

    void TakePlace(const FileCheck& check = {})
    {
        TakeName(check);
        SyncFolder(FolderOf(target), target);
    }

    /// The same, and the name lasts once its folder has been synced.
    void TakeName(const FileCheck& check = {})
    {
        Sync();
        TakeNameSynced(check);
    }

    /// The system may begin to bring to the disk what has been written.
    void BeginSync() const { ::sync_file_range(descriptor.Number(), 0, 0, SYNC_FILE_RANGE_WRITE); }
    void Sync() const
    {
        if (::fsync(descriptor.Number()) != 0)
            throw FileError(target, errno);
    }
    /// After a sync of the whole file system, which does not say of which file something has been lost.
    void CheckArrived() const
    {
        constexpr unsigned Waits = SYNC_FILE_RANGE_WAIT_BEFORE | SYNC_FILE_RANGE_WRITE | SYNC_FILE_RANGE_WAIT_AFTER;
        if (::sync_file_range(descriptor.Number(), 0, 0, Waits) != 0)
            throw FileError(target, errno);
    }
    /// For a file that is on the disk.
    void TakeNameSynced(const FileCheck& check = {})
    {
        if (const int error = descriptor.Close())
            throw FileError(target, error);
        if (check)
            check(temporary);
        if (::rename(temporary.c_str(), target.c_str()) != 0)
            throw FileError(target, errno);
        isInPlace = true;
    }

private:
    /// Permissions of the file that is to be replaced, nothing if there is none. One that nobody may write is left
    /// alone, although its folder would let it be replaced.
    std::optional<mode_t> PermissionsOfTarget() const
    {
        struct stat found {};
        if (::stat(target.c_str(), &found) != 0)
            return std::nullopt;
        if ((found.st_mode & 0222U) == 0 || ::access(target.c_str(), W_OK) != 0)
            throw FileError(target, EACCES);
        return found.st_mode & 0777U;
    }

    /// Removes what killed processes have left of their attempts to write this file.
    void RemoveLeftOvers(const std::vector<std::filesystem::path>& forgotten) const
    {
        const std::string stem = target.filename().string() + ".";
        for (const std::filesystem::path& leftOver : forgotten)
            if (IsTemporaryName(leftOver.filename().string(), stem)) {
                std::error_code gone;
                std::filesystem::remove(leftOver, gone);
            }
    }

    std::filesystem::path target, temporary;
    Descriptor descriptor{-1};
    bool isInPlace = false;
};

constexpr std::size_t PieceSize = 262'144;

} // namespace

FileError::FileError(const std::filesystem::path& file, int errorNumber)
    : Failure(errorNumber, fmt::format("{}: {}", file.string(), std::generic_category().message(errorNumber)))
{
}

std::vector<std::filesystem::path> ForgottenTemporaries(const std::filesystem::path& folder)
{
    // Nobody can still be at a file to which nobody has written for so long.
    constexpr std::chrono::hours Forgotten(1);
    const auto now = std::filesystem::file_time_type::clock::now();
    std::vector<std::filesystem::path> found;
    std::error_code ignored;
    std::filesystem::directory_iterator entry(folder, ignored);
    for (; !ignored && entry != std::filesystem::directory_iterator(); entry.increment(ignored)) {
        const std::string name = entry->path().filename().string();
        const std::string_view stem = StemOf(name);
        if (stem.empty() || !IsTemporaryName(name, stem))
            continue;
        std::error_code gone;
        const auto written = entry->last_write_time(gone);
        if (!gone && now - written > Forgotten)
            found.push_back(entry->path());
    }
    return found;
}

void WriteFileChecked(const std::filesystem::path& file, std::string_view content)
{
    Replacement replacement(file);
    replacement.Write(content);
    replacement.TakePlace();
}

struct FolderWriter::Pending {
    std::unique_ptr<Replacement> file;
    Failed failed;
};

FolderWriter::FolderWriter(std::filesystem::path newFolder)
    : folder(std::move(newFolder)), forgotten(ForgottenTemporaries(folder))
{
}

FolderWriter::~FolderWriter() = default;

void FolderWriter::Write(const std::string& name, std::string_view content, Failed failed)
{
    // A sync costs the disk about the same however much it brings there; what waits is lost by a kill.
    constexpr std::size_t MostFiles = 64, MostBytes = 16'777'216;
    auto file = std::make_unique<Replacement>(folder / name, &forgotten);
    file->Write(content);
    file->BeginSync();
    pending.push_back({std::move(file), std::move(failed)});
    bytes += content.size();
    if (pending.size() >= MostFiles || bytes >= MostBytes)
        NameThem();
}

/// A name is given only to what is on the disk. All of it is brought there at once; where that cannot be had, or has
/// failed, file by file, so that it is known whose content it is that the disk has not taken.
void FolderWriter::NameThem()
{
    bytes = 0;
    const bool isSynced = pending.size() > 1 && SyncWholeSystem(folder);
    for (const Pending& one : std::exchange(pending, {})) {
        try {
            // A link may lead to another file system.
            if (isSynced && FolderOf(one.file->Temporary()) == folder)
                one.file->CheckArrived();
            else
                one.file->Sync();
            one.file->TakeNameSynced();
        } catch (const FileError& error) {
            one.failed(error);
        }
    }
}

void FolderWriter::Sync()
{
    NameThem();
    SyncFolder(folder, folder);
}

void CopyFileChecked(const std::filesystem::path& source, const std::filesystem::path& target, const FileCheck& check)
{
    const Descriptor from = OpenForReading(source);
    std::vector<char> buffer(PieceSize);
    std::size_t count = ReadPiece(from, source, buffer);
    Replacement replacement(target);
    for (; count > 0; count = ReadPiece(from, source, buffer))
        replacement.Write({buffer.data(), count});
    replacement.TakePlace(check);
}

struct FileInMaking::Parts {
    Replacement replacement;
};

FileInMaking::FileInMaking(const std::filesystem::path& file) : parts(new Parts{Replacement(file)})
{
}

FileInMaking::~FileInMaking() = default;

const std::filesystem::path& FileInMaking::Path() const
{
    return parts->replacement.Temporary();
}

void FileInMaking::TakePlace(const FileCheck& check)
{
    parts->replacement.TakePlace(check);
}

void MakeFileChecked(const std::filesystem::path& file, const FileFill& fill, const FileCheck& check)
{
    FileInMaking making(file);
    fill(making.Path());
    making.TakePlace(check);
}

std::string ReadFile(const std::filesystem::path& file)
{
    const Descriptor from = OpenForReading(file);
    std::vector<char> buffer(PieceSize);
    std::string content;
    while (const std::size_t count = ReadPiece(from, file, buffer))
        content.append(buffer.data(), count);
    return content;
}

} // namespace quillmere
