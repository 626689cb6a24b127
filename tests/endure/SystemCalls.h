#pragma once

#include <cstdint>
#include <filesystem>
#include <string_view>

/// The system calls of this process that change files, seen one by one, and made to fail where a trial wants it. They
/// are the program's own, the database engine's and the toolkit's alike.
namespace quillmere::endure {

/// One call. A call for which there is no place below stays unused.
struct Call {
    enum class Kind { Open, Write, Sync, SyncAll, Truncate, Rename, Remove, MakeFolder, Close };
    Kind kind;
    std::string_view file;   ///< whole path
    std::string_view target; ///< of a renaming
    std::int64_t at = 0;     ///< where a write begins; the new length of a truncation
    std::string_view data;   ///< of a write
    bool makes = false;      ///< the file that is opened was not there
    bool empties = false;    ///< the file that is opened loses its content
};

/// Looks at calls. The files are not touched while it does so.
class CallWatcher {
public:
    CallWatcher() = default;
    CallWatcher(const CallWatcher&) = delete;
    CallWatcher& operator=(const CallWatcher&) = delete;
    virtual ~CallWatcher() = default;

    /// Nought lets the call go through; anything else is the error number with which it fails.
    virtual int Before(const Call&) { return 0; }
    /// The call has succeeded.
    virtual void After(const Call&) {}
};

/// While it lives, every call for a file in or below the folder is shown to the watcher. One at a time. A file opened
/// for reading alone is not seen.
class Watch {
public:
    Watch(std::filesystem::path folder, CallWatcher& watcher);
    Watch(const Watch&) = delete;
    Watch& operator=(const Watch&) = delete;
    ~Watch();

    /// The watching ends for as long: a trial looks at the files itself.
    class Pause {
    public:
        Pause();
        Pause(const Pause&) = delete;
        Pause& operator=(const Pause&) = delete;
        ~Pause();
    };
};

} // namespace quillmere::endure
