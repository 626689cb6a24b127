#pragma once

#include "frame/Messages.h"
#include "frame/Settings.h"
#include "printing/paper/PageLayer.h"

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace quillmere {

/// Where the pages of the job in hand go.
enum class Route { Screen = 1, Printer = 2, File = 3 };

/// What became of the opening of a job's document.
enum class Opening {
    Open,
    NotOpen,
    Left ///< the user has left the question for another printer
};

/// Whose form a document begins with.
struct PrintedForm {
    std::string employer, employee;
};

/// Says that a printer cannot be reached, or with no name that there is none.
void TellPrinterError(Messages& messages, std::string_view device);

/// The document of the job in hand, from its opening on a printer to the preview, the printer or the PDF file where it
/// ends. What is on its pages is drawn with the page layer, whose offsets and scale are set here by the route.
class JobDocument {
public:
    /// `settings` is read at each call and takes the printer that the user settled on. The PDF file goes to the folder
    /// "Docs" below `rootFolder`.
    JobDocument(Platform& platform, Settings& settings, const std::filesystem::path& rootFolder, PageLayer& page);

    /// Keeps the engine and the converter. Called once, before anything else.
    void vsBindEngine(PageEngine& engine, PdfConverter& converter);

    /// Opens the document of a job, with questions to the user if the chosen printer is gone. One for a file needs
    /// none.
    [[nodiscard]] Opening OpenPrintJob(std::string_view documentName);
    /// Tells that the document which has been opened begins with an employee's form.
    void BeginsWith(PrintedForm newForm) { form = std::move(newForm); }
    /// Whose form the document begins with; nothing if it is another document.
    const std::optional<PrintedForm>& Form() const { return form; }
    /// True if the job's printer is among the printers of this moment.
    bool HasPrinter();
    /// The printer that the document goes to, and how many pages it has been sent last.
    const std::string& Printer() const { return vp->Device(); }
    int PagesSent() const { return vp->PagesSent(); }
    /// The ended document.
    std::shared_ptr<const Document> Ended() const { return vp->Ended(); }
    /// Drops what has been drawn.
    void Drop() { vp->Clear(); }
    /// Ends the document; if its pages were for the printer and it cannot be reached, says so.
    PrintResult vsEndDoc();
    /// Ends the job's document, writes it to PdfPath and asks the desktop to show it. Messages tell what failed.
    void EndOnPdf();
    /// "Docs" and "Preview.pdf" below the root folder.
    std::filesystem::path PdfPath() const;

    /// Selects the system's default printer and gives its name, "" with no printer.
    std::string vsDefaultDevice();
    void vsPreviewOn() { vp->Preview(true); }
    void vsPreviewOff() { vp->Preview(false); }
    void vsDocName(std::string_view name) { vp->DocName(name); }
    /// Opens the document on the named printer; false, with no message, if there is no such printer.
    [[nodiscard]] bool vsStartDoc(std::string_view printer);
    /// Writes the ended document as a PDF file. Throws FileError.
    void vsConvertToPdf(const std::filesystem::path& path);
    /// True for a job whose document becomes a PDF file.
    bool IsPdfRoute() const;

    Route route = Route::Screen;
    PageLayer& page;

private:
    bool SelectDevice(std::string_view printer);
    bool StartDocument();
    void OpenWithoutPrinter();
    void StartOnA4();
    /// Offsets and scale by the route.
    void SetScaleForPage();
    bool OldPdfMayGo();

    Platform& platform;
    Messages messages;
    Settings& settings;
    const std::filesystem::path& rootFolder;
    PageEngine* vp = nullptr;
    PdfConverter* VSPDF = nullptr;
    std::optional<PrintedForm> form;
};

} // namespace quillmere
