#pragma once

#include "frame/Messages.h"
#include "frame/Onlooker.h"
#include "frame/PrintedTable.h"
#include "frame/Screens.h"
#include "frame/Settings.h"

#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace quillmere {

class FurtherCars;
class OpenRecord;
class TypedJournal;
struct OperationNote;

/// Which document a print command of one employee or employer asks for.
enum class PrintedDocument { Employee, Declaration };

/// Why the employer list is open. The numbers are given.
enum class EmployerListPurpose {
    Open = 0,
    RenameEmployee = 1,
    DeleteEmployee = 2,
    NewEmployee = 4,
    DeleteEmployer = 5,
};

/// What the whole process shares, made once and handed down by reference.
struct Session {
    explicit Session(Platform& platform) : platform(platform), messages(platform), screens(*this) {}

    Platform& platform;
    Messages messages;
    Settings settings = SetDefaultConfiguration({});

    // Shared values whose names are given.
    std::filesystem::path RootFolder;    ///< the folder above the program folder, shared by the editions
    std::filesystem::path WindowsFolder; ///< the platform's own folder for what is temporary
    std::string CurrentEmployer;         ///< key of the employer being worked on; empty before the first selection
    std::string CurrentEmployee;         ///< key of the open employee; empty before the first selection
    EmployerListPurpose EmployerListMode = EmployerListPurpose::Open;
    int CurrentPage = 1;           ///< which page shows, 1 or 2: it is sought again after a print run
    bool EmployeeOpenFlag = false; ///< an employee is being opened from the list
    bool DeclarationOpen = false;  ///< from the click that leads to the P11D(b) until page 1 is in front again
    std::string LastBadDate;       ///< Kept: the last date text that could not be compared; nothing reads it

    // The program's own.
    std::filesystem::path programFolder;   ///< holds the settings file; its last component is the product's code
    std::filesystem::path resourceFolder;  ///< holds the template and the reference database: the executable's folder
    int screenHeight = 0, screenWidth = 0; ///< of the desktop: default size of the windows
    std::filesystem::path databaseNamed;   ///< at the start, by the user: its folder is the one to begin with
    int VanOfHistory = 1;                  ///< whose history the van record opens, van 1 to 3
    bool endsBySystem = false;             ///< closed at the system's wish: nobody is there to be asked

    std::vector<Onlooker*> onlookers;     ///< who is told what happens in the boxes
    TypedJournal* typedJournal = nullptr; ///< keeps what is typed and not stored yet; may be missing

    /// The operation that the user is about, for the change history; nothing between two of them.
    std::shared_ptr<OperationNote> operation;
    /// The further cars as what is under way has read them (FurtherCarsAlong): whoever shows their figures by it looks
    /// for them no more. Nothing otherwise.
    std::shared_ptr<const FurtherCars> furtherCars;
    bool noCopyTold = false;     ///< that no safety copy can be made has been said
    bool historyOffTold = false; ///< that this run's changes are not noted has been said

    /// Draws a document of the current employer and employee and shows it. Empty in a program that draws none.
    std::function<void(PrintedDocument)> printJob;
    /// Shows a table of the screen as a document in the preview. Empty in a program that draws none.
    std::function<void(const PrintedTable&)> printTable;
    /// Shows how a box of a screen has come to what it reads. Empty in a program that explains nothing.
    std::function<void(Screen&, Box&)> explain;
    /// Says how many things of an employee's form should be looked at before it is sent, or of all of an employer's
    /// where the employee is empty; nothing if there are none. Empty in a program that looks at none.
    std::function<std::string(const std::string& employer, const std::string& employee)> thingsToLookAt;
    /// Offers what has been typed for the employee who has just been opened, and not stored. Empty in a program that
    /// keeps no such thing.
    std::function<void()> offerTyped;

    std::vector<std::shared_ptr<OpenRecord>> openRecords; ///< known here by name alone: `OpenRecords` makes them

    Screens screens; ///< last, so that screens go first

    /// The client database of the selected folder.
    std::filesystem::path ClientDatabasePath() const;
};

} // namespace quillmere
