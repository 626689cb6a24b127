#pragma once

#include "frame/Dates.h"
#include "frame/LibraryInUse.h"

#include <chrono>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace quillmere {

enum class Icon { None, Information, Question, Exclamation, Critical };
enum class Buttons { Ok, YesNo };
enum class Answer { Ok, Yes, No, Cancel };

/// A message box. `defaultAnswer` is the button that Enter presses, and Escape too where there is no other way out.
struct Message {
    std::string title;
    std::string text;
    Icon icon = Icon::None;
    Buttons buttons = Buttons::Ok;
    Answer defaultAnswer = Answer::Ok;
    bool mayLeave = false; ///< Escape is an answer of its own, Cancel
};

/// A dialog that asks where to save a file.
struct SaveFileQuestion {
    std::string title;
    std::string proposedPath;
    std::string filterName;       ///< "Marlbase databases"
    std::string filterPattern;    ///< "*.mdb"
    std::string defaultExtension; ///< without the point
};

/// A dialog that asks for a folder that is there.
struct FolderQuestion {
    std::string title;
    std::string proposedPath;
};

/// A dialog that asks which file to read.
struct OpenFileQuestion {
    std::string title;
    std::string folder;        ///< where it begins to look; empty: wherever
    std::string filterName;    ///< "Tables"
    std::string filterPattern; ///< "*.csv *.txt"
};

/// Finished pages for a printer: the document as a PDF file whose pages stand in the order in which they are to come
/// out.
struct PrintRequest {
    std::string printer;
    std::string documentName;
    std::string pdf;                   ///< bytes of the file
    std::vector<int> pages;            ///< the document's page numbers, from 1, in that order
    int copies = 1;                    ///< made by the spooler
    int duplex = 0;                    ///< 0 printer default (nothing is set), 1 single-sided, 2 double-sided
    std::chrono::seconds patience{20}; ///< interval of tmrAbandon: the printing system must get ready in it
};

/// How far from the edges of an A4 sheet a printer begins to print, mm.
struct SheetEdge {
    double left = 0, top = 0, right = 0, bottom = 0;

    friend bool operator==(const SheetEdge&, const SheetEdge&) = default;
};

/// What a request to a printer ended in.
enum class PrintOutcome {
    Sent,
    PrinterUnreachable,
    NotReady, ///< the printing system did not get ready in time; nothing will be printed
};

/// The one door to whatever is outside the program's own screens: message boxes, file and printer dialogs, printers,
/// the desktop's document viewer, the clock, the pointer. The desktop answers it with dialogs, a test by script.
class Platform {
public:
    Platform() = default;
    Platform(const Platform&) = delete;
    Platform& operator=(const Platform&) = delete;
    virtual ~Platform() = default;

    virtual Answer ShowMessage(const Message& message) = 0;
    virtual void Beep() = 0;
    /// The chosen path; nothing if the user pressed Cancel.
    virtual std::optional<std::string> AskSaveFile(const SaveFileQuestion& question) = 0;
    /// The chosen folder; nothing if the user pressed Cancel.
    virtual std::optional<std::string> AskFolder(const FolderQuestion& question) = 0;
    /// The same of a file that is there.
    virtual std::optional<std::string> AskOpenFile(const OpenFileQuestion& question) = 0;
    /// The system's printer dialog. True if the user confirmed it.
    virtual bool ShowPrinterSetup() = 0;
    /// Names of the printers, the default one first; empty with no printer.
    virtual std::vector<std::string> Printers() = 0;
    virtual PrintOutcome Print(const PrintRequest& request) = 0;
    /// Where the printer cannot print; nothing where nobody says so.
    virtual SheetEdge EdgeOf(const std::string& /*printer*/) { return {}; }
    /// Asks the desktop to open a file with its viewer. The result is above 32 on success, else one of the codes of
    /// `ShellOpen`.
    virtual int OpenWithDesktop(const std::filesystem::path& file) = 0;
    virtual Day Today() = 0;
    /// The time of day, "14:31:07".
    virtual std::string TimeOfDay() = 0;
    /// Does the work once the time is over, after the event in hand. Where nothing waits for events, never.
    // NOLINTNEXTLINE(performance-unnecessary-value-param): who does the work later keeps it.
    virtual void After(std::chrono::milliseconds /*wait*/, std::function<void()> /*work*/) {}
    virtual void SetBusyPointer(bool busy) = 0;
    /// Shows how far a long work has come, in the status bar; `total` 0 takes the bar away.
    virtual void ShowProgress(int done, int total) = 0;
    /// Lets the windows repaint.
    virtual void YieldToMessages() = 0;
    /// Puts a text on the clipboard.
    virtual void CopyText(const std::string& text) = 0;
    /// The libraries that the windows are made with; none where there are no windows.
    virtual std::vector<LibraryInUse> Libraries() { return {}; }
    /// The account's full name, or an empty text.
    virtual std::string UserName() = 0;
    /// Who sits where: account and computer, "anna@desk3".
    virtual std::string DeskName() = 0;
};

} // namespace quillmere
