#pragma once

#include "desktop/DesktopPlatform.h"
#include "frame/Platform.h"

#include <deque>
#include <optional>
#include <string>
#include <vector>

namespace quillmere {
class DesktopHost;
}

namespace quillmere::scenario {

/// A message box, file dialog or printer dialog that the program has shown.
struct SeenMessage {
    std::string title;
    std::string text;
    int line = 0; ///< of the step in which it came
};

/// How the next box is to be answered: one of the words, or a path for a file dialog.
struct ScriptedAnswer {
    std::string text;
    bool isPath = false;
    int line = 0;
};

/// The door to the outside as a scenario plays it: boxes are kept and answered from a queue, printers and the clock are
/// those of the scenario, and what is printed or opened is kept.
class ScriptedPlatform : public Platform {
public:
    /// Title with which the system's printer dialog counts as a message.
    static constexpr auto PrinterSetupTitle = "Print Setup";

    Answer ShowMessage(const Message& message) override;
    void Beep() override { ++beeps; }
    std::optional<std::string> AskSaveFile(const SaveFileQuestion& question) override;
    std::optional<std::string> AskFolder(const FolderQuestion& question) override;
    std::optional<std::string> AskOpenFile(const OpenFileQuestion& question) override;
    bool ShowPrinterSetup() override;
    std::vector<std::string> Printers() override { return printers; }
    PrintOutcome Print(const PrintRequest& request) override;
    SheetEdge EdgeOf(const std::string& printer) override { return printer.empty() ? SheetEdge{} : edge; }
    int OpenWithDesktop(const std::filesystem::path& file) override;
    Day Today() override { return today; }
    std::string TimeOfDay() override { return "12:00:00"; }
    void After(std::chrono::milliseconds wait, std::function<void()> work) override;
    void SetBusyPointer(bool busy) override;
    void ShowProgress(int done, int total) override;
    void YieldToMessages() override;
    void CopyText(const std::string& text) override { copied = text; }
    std::vector<LibraryInUse> Libraries() override { return DesktopLibraries(); }
    std::string UserName() override { return {}; }
    std::string DeskName() override { return "clerk@desk"; }

    std::deque<ScriptedAnswer> answers;
    std::deque<SeenMessage> unseen;   ///< boxes that the scenario has not looked at yet
    std::vector<std::string> misfits; ///< answers that no button of their box stands for
    std::vector<std::string> printers;
    SheetEdge edge; ///< of every printer
    std::vector<PrintRequest> printed;
    std::vector<std::filesystem::path> opened;
    std::string copied; ///< on the clipboard
    Day today{};
    int beeps = 0;
    int line = 0;                        ///< of the step that is being played
    std::filesystem::path programFolder; ///< a path given without its start begins here
    DesktopHost* host = nullptr;

    /// Does what waits for a time to be over.
    void LetTimePass();

private:
    /// Shows a box over the window in front, and takes it away again, as the desktop does with one that is answered.
    void StandInFront();
    /// A dialog that asks for a path, of which one is proposed.
    std::optional<std::string> AskPath(const std::string& title, const std::string& proposed);
    /// The answer for a box that takes the given words, or the word given as the default one.
    std::string Answered(const std::string& title, const std::vector<std::string>& words, const std::string& standard,
                         bool takesPath, bool& isPath);
    std::vector<std::function<void()>> later;
    bool busyPointer = false;
};

} // namespace quillmere::scenario
