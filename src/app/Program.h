#pragma once

#include "clientdb/AlsoOpen.h"
#include "clientdb/TypedJournal.h"
#include "frame/Session.h"
#include "frame/SingleInstance.h"
#include "printing/jobs/PrintSystem.h"
#include "review/BoxNotes.h"
#include "review/StatusTalk.h"

#include <filesystem>
#include <optional>

namespace quillmere {

/// Where a run of the program finds its files.
struct ProgramPlaces {
    std::filesystem::path programFolder;  ///< holds settings and, at first, the client database
    std::filesystem::path resourceFolder; ///< holds the template and the reference database
    int screenHeight = 768, screenWidth = 1366;
    std::filesystem::path database = {}; ///< named at the start: its folder is to be the one in use; may be missing
};

/// The program between its start and its end, without any toolkit.
class Program {
public:
    /// `host` may be null: then no window is seen.
    Program(Platform& platform, ScreenHost* host, ProgramPlaces places);
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;
    ~Program();

    /// The entry point: refuses a second instance, works out the folders and shows the main window.
    /// False if the process is to end at once.
    bool Main();

    /// Closes the main window, as its close box does: stores what is open, writes the settings, ends.
    void Close();
    /// The same at the system's wish: nobody is asked, and what the store does not take is kept for the next start.
    void CloseForSystem();

    /// True once the main window has been closed: the process ends.
    bool Ended() const;

    Session& TheSession() { return session; }
    PrintSystem& Printing() { return printing; }

private:
    Session session;
    PrintSystem printing;
    review::StatusTalk statusTalk;
    review::BoxNotes boxNotes;
    TypedJournal typedJournal;
    AlsoOpen alsoOpen;
    ProgramPlaces places;
    std::optional<SingleInstance> instance;
};

/// Registers every screen of the program under its name, in the order of closing.
void RegisterScreens(Screens& screens, PrintSystem& printing);

} // namespace quillmere
