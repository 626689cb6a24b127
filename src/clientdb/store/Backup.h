#pragma once

#include "clientdb/store/StoreErrors.h"
#include "frame/Dates.h"

#include <filesystem>
#include <string>

/// The copy of a client database that serves as its backup.
namespace quillmere {

/// The name that is proposed for a day's backup: the database's own without its ending, then year, month and day, each
/// after a dash. It has no ending; the dialog gives it one.
std::string ProposedBackupName(const std::filesystem::path& database, Day today);

/// True if the folder has something of that name, in upper or lower case.
bool NameIsTaken(const std::filesystem::path& file);

/// True if both paths lead to one file.
bool IsSameFile(const std::filesystem::path& first, const std::filesystem::path& second);

/// A copy that is damaged, like its database, was to take the place of an older one that is whole.
class OlderCopyKept : public StoreError {
public:
    explicit OlderCopyKept(const std::filesystem::path& copy);
};

/// Copies the database byte for byte, whatever it is, while nobody may write to it. The copy takes the place of an
/// older one only when it is on the disk and has been checked whole; until then, and if anything fails, the older one
/// stays as it was. False if what was copied is damaged. Throws OlderCopyKept, StoreError and FileError.
[[nodiscard]] bool BackUpDatabase(const std::filesystem::path& database, const std::filesystem::path& copy);

/// True for a file that begins as a client database does.
bool BeginsAsClientDatabase(const std::filesystem::path& file);

/// Removes the copies of client databases that a killed backup has left half made in a folder.
void RemoveForgottenCopies(const std::filesystem::path& folder);

} // namespace quillmere
