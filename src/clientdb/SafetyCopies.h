#pragma once

#include "frame/Dates.h"

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// The copies of a client database that the program makes by itself: files in the folder `Copies` beside the database,
/// whose names say when and before what each was made. The names are all that is known of them: a copy that somebody
/// takes away, or brings from elsewhere under such a name, counts as it is found.
namespace quillmere {

struct Session;

/// Before what a copy was made.
enum class CopyReason {
    FirstOfDay,
    Delete,
    Rename,
    Transfer,
    Import,
    PutBack,
    Share,
    Damaged,  ///< not before anything: the damaged database itself, which was about to be written over
    Salvaged, ///< not before anything: what could be read of a damaged database
};

/// "before Delete", as it stands in names and lists.
std::string_view WordsOf(CopyReason reason);

struct SafetyCopy {
    Day day;
    std::string time; ///< "14:31:07"
    CopyReason reason = CopyReason::FirstOfDay;
    int number = 1; ///< of those of one second
    std::filesystem::path file = {};

    /// True if it was a whole database when it was made, with everybody in it.
    bool IsGood() const;
    friend bool operator==(const SafetyCopy&, const SafetyCopy&) = default;
};

/// The name of a copy's file, without the folder.
std::string FileNameOf(const SafetyCopy& copy, const std::filesystem::path& database);

/// What the name of a file in the folder of copies says; nothing if it is no copy of that database.
std::optional<SafetyCopy> ReadCopyName(const std::filesystem::path& file, const std::filesystem::path& database);

/// The folder of a database's copies, there or not.
std::filesystem::path CopiesFolder(const std::filesystem::path& database);

/// All copies of a database that are there, the latest first.
std::vector<SafetyCopy> SafetyCopiesOf(const std::filesystem::path& database);

/// Those of the copies that are old enough to go: all of the last seven days stay, then the last of each day for thirty
/// days, then the last of each month. One that was not good when it was made takes no good one's place, so that the
/// last good one never goes.
std::vector<SafetyCopy> Outdated(std::vector<SafetyCopy> copies, Day today);

/// Where a new copy for that reason goes, with the folder made if need be. Throws FileError.
std::filesystem::path PlaceOfCopy(const std::filesystem::path& database, SafetyCopy copy);

/// Makes a copy, and lets those go that are old enough. The copy counts only when it has been opened and found whole.
/// Throws StoreError and FileError, and then no copy has gone.
void MakeSafetyCopy(const std::filesystem::path& database, const SafetyCopy& copy);

// ---- as the program goes on

/// A copy for that reason that would be made now.
SafetyCopy CopyOfNow(Session& session, CopyReason reason);

/// Keeps a copy of the selected folder's database before something is done to it; of one with nobody in it, or whose
/// copies are the server's, none is needed. If none can be made, the status bar says so, once until one can be made
/// again, and what was to be done goes on.
void KeepCopy(Session& session, CopyReason reason);

/// Keeps the first copy of the day, unless it is there.
void KeepDailyCopy(Session& session);
/// The same once the windows are up, so that nobody waits for it.
void KeepDailyCopySoon(Session& session);

} // namespace quillmere
