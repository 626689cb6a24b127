#include "printing/jobs/JobDocument.h"

#include "edition/Edition.h"
#include "edition/FormWords.h"
#include "frame/CheckedFile.h"
#include "frame/Folders.h"
#include "frame/ShellOpen.h"
#include "printing/jobs/HeldFile.h"

#include <fmt/format.h>

namespace quillmere {

namespace {

constexpr int PaperA4 = 9;
constexpr int Portrait = 0;

constexpr double AddedTopMargin = 2.0; // mm

} // namespace

JobDocument::JobDocument(Platform& platform, Settings& settings, const std::filesystem::path& rootFolder,
                         PageLayer& page)
    : page(page), platform(platform), messages(platform), settings(settings), rootFolder(rootFolder)
{
}

void JobDocument::vsBindEngine(PageEngine& engine, PdfConverter& converter)
{
    vp = &engine;
    VSPDF = &converter;
    page.vsBindEngine(engine);
}

std::string JobDocument::vsDefaultDevice()
{
    vp->Device("");
    platform.YieldToMessages();
    return vp->Device();
}

bool JobDocument::SelectDevice(std::string_view printer)
{
    vp->Device("");
    for (int index = 0; index < vp->NDevices(); ++index) {
        if (vp->Devices(index) == printer) {
            vp->Device(printer);
            break;
        }
    }
    return vp->Device() == printer;
}

bool JobDocument::HasPrinter()
{
    return !settings.vsPrinter.empty() && SelectDevice(settings.vsPrinter);
}

bool JobDocument::vsStartDoc(std::string_view printer)
{
    page.BeginDocument();
    vp->Clear();
    if (!SelectDevice(printer))
        return false;
    StartOnA4();
    return true;
}

void JobDocument::OpenWithoutPrinter()
{
    page.BeginDocument();
    vp->Clear();
    StartOnA4();
    SetScaleForPage();
}

void JobDocument::StartOnA4()
{
    vp->PaperSize(PaperA4);
    vp->Orientation(Portrait);
    if (settings.vsDuplexMode == 1 || settings.vsDuplexMode == 2)
        vp->Duplex(settings.vsDuplexMode);
    vp->MarginTop(0);
    vp->MarginBottom(0);
    vp->MarginLeft(0);
    vp->MarginRight(0);
    vp->IndentLeft(0);
    vp->IndentRight(0);
    vp->IndentFirst(0);
    vp->StartDoc();
}

PrintResult JobDocument::vsEndDoc()
{
    const PrintResult result = vp->EndDoc();
    if (result == PrintResult::PrinterUnreachable || result == PrintResult::NotReady)
        TellPrinterError(messages, vp->Device());
    return result;
}

void TellPrinterError(Messages& messages, std::string_view device)
{
    if (device.empty())
        messages.Tell(edition::AppTitle, "There is no printer available", Icon::Critical);
    else
        messages.Tell(edition::AppTitle,
                      fmt::format("An error occurred while attempting to access the following printer:\n\n{}\n\n"
                                  "Make sure this printer is available and properly set up.",
                                  device),
                      Icon::Critical);
}

void JobDocument::vsConvertToPdf(const std::filesystem::path& path)
{
    platform.YieldToMessages();
    VSPDF->ConvertDocument(*vp, path);
    platform.YieldToMessages();
}

bool JobDocument::StartDocument()
{
    if (!vsStartDoc(settings.vsPrinter))
        return false;
    SetScaleForPage();
    return true;
}

Opening JobDocument::OpenPrintJob(std::string_view documentName)
{
    form.reset();
    vsDocName(documentName);
    vp->Subject(edition::form::DocumentSubject);
    vp->Author(settings.reportCompiler);
    if (route == Route::Printer)
        vsPreviewOff();
    else
        vsPreviewOn();

    if (route == Route::File) {
        OpenWithoutPrinter();
        return Opening::Open;
    }
    const std::string defaultDevice = vsDefaultDevice();
    if (settings.vsPrinter.empty())
        settings.vsPrinter = defaultDevice;
    if (StartDocument())
        return Opening::Open;

    // A batch asks again until a printer opens; Escape is the way out.
    if (defaultDevice.empty())
        return platform.ShowMessage({.title = settings.vsPrinter,
                                     .text = "This printer is not available.",
                                     .icon = Icon::Critical,
                                     .mayLeave = true}) == Answer::Cancel
                   ? Opening::Left
                   : Opening::NotOpen;
    const Answer answer =
        platform.ShowMessage({.title = settings.vsPrinter,
                              .text = fmt::format("This printer is not available.\n\n"
                                                  "Do you wish to use the default printer '{}' instead?",
                                                  defaultDevice),
                              .icon = Icon::Question,
                              .buttons = Buttons::YesNo,
                              .defaultAnswer = Answer::Yes,
                              .mayLeave = true});
    if (answer != Answer::Yes)
        return answer == Answer::Cancel ? Opening::Left : Opening::NotOpen;
    settings.vsPrinter = defaultDevice;
    if (StartDocument())
        return Opening::Open;
    // Kept: this one ends without a full stop, the one above with it.
    messages.Tell(settings.vsPrinter, "This printer is not available", Icon::Critical);
    return Opening::NotOpen;
}

bool JobDocument::IsPdfRoute() const
{
    return route == Route::File || (route == Route::Screen && settings.reportPreview == 1);
}

void JobDocument::SetScaleForPage()
{
    if (IsPdfRoute())
        page.SetPageScale(settings.vsPdfLeft, settings.vsPdfTop + AddedTopMargin, settings.vsPdfScale);
    else
        page.SetPageScale(settings.vsLeft, settings.vsTop + AddedTopMargin, settings.vsScale);
}

std::filesystem::path JobDocument::PdfPath() const
{
    return InFolder(rootFolder, "Docs") / "Preview.pdf";
}

bool JobDocument::OldPdfMayGo()
{
    if (MayBeReplaced(PdfPath()))
        return true;
    messages.Tell(edition::AppTitle,
                  fmt::format("File '{}' could not be deleted.\nAnother application may be using it.\n"
                              "You must close this file before proceeding.",
                              PdfPath().string()));
    return false;
}

void JobDocument::EndOnPdf()
{
    vsEndDoc();
    if (!vp->Ended() || !OldPdfMayGo())
        return;
    try {
        std::filesystem::create_directories(PdfPath().parent_path());
        vsConvertToPdf(PdfPath());
    } catch (const FileError& error) {
        // Told of instead of passed over: a full disk must not end in a viewer on a missing or cut off file.
        messages.Tell(edition::AppTitle, error.what(), Icon::Critical);
        return;
    } catch (const std::filesystem::filesystem_error& error) {
        messages.Tell(edition::AppTitle, FileError(PdfPath(), error.code().value()).what(), Icon::Critical);
        return;
    }
    platform.YieldToMessages();
    const int result = platform.OpenWithDesktop(PdfPath());
    if (ShellOpenFailed(result))
        messages.Tell(edition::AppTitle, ShellErrorMessage(result));
}

} // namespace quillmere
