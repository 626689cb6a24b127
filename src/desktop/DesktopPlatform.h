#pragma once

#include "frame/Platform.h"
#include "printing/jobs/CupsPrinters.h"

#include <QUrl>

#include <filesystem>

namespace quillmere {

class DesktopHost;

/// What the windows are made with.
std::vector<LibraryInUse> DesktopLibraries();

/// The door to the outside as a person meets it: message boxes and dialogs of the desktop, its viewer, its clock, and
/// the printers of the print spooler.
class DesktopPlatform : public Platform {
public:
    explicit DesktopPlatform(DesktopHost& host);

    Answer ShowMessage(const Message& message) override;
    void Beep() override;
    std::optional<std::string> AskSaveFile(const SaveFileQuestion& question) override;
    std::optional<std::string> AskFolder(const FolderQuestion& question) override;
    std::optional<std::string> AskOpenFile(const OpenFileQuestion& question) override;
    bool ShowPrinterSetup() override;
    std::vector<std::string> Printers() override;
    PrintOutcome Print(const PrintRequest& request) override;
    SheetEdge EdgeOf(const std::string& printer) override;
    int OpenWithDesktop(const std::filesystem::path& file) override;
    Day Today() override;
    std::string TimeOfDay() override;
    void After(std::chrono::milliseconds wait, std::function<void()> work) override;
    void SetBusyPointer(bool busy) override;
    void ShowProgress(int done, int total) override;
    void YieldToMessages() override;
    void CopyText(const std::string& text) override;
    std::vector<LibraryInUse> Libraries() override { return DesktopLibraries(); }
    std::string UserName() override;
    std::string DeskName() override;

private:
    DesktopHost& host;
    bool busy = false;
    CupsPrinters printers;
};

/// Where a viewer finds a file, byte for byte, even one whose name is no text.
QUrl AddressOf(const std::filesystem::path& file);

} // namespace quillmere
