#include "printing/PageLayer.h"

#include "edition/Edition.h"
#include "edition/FormWords.h"
#include "frame/CheckedFile.h"
#include "frame/Folders.h"
#include "frame/ShellOpen.h"
#include "printing/HeldFile.h"

#include <cmath>
#include <fmt/format.h>
#include <system_error>

namespace quillmere {

namespace {

constexpr int PaperA4 = 9;
constexpr int Portrait = 0;
constexpr int SolidPen = 0;
constexpr int SolidBrush = 0;
constexpr int NoBrush = 1;

constexpr double AddedTopMargin = 2.0; // mm
constexpr double UnderlineWidth = 0.2; // mm
constexpr double TickStroke = 0.4;     // mm

} // namespace

PageLayer::PageLayer(Platform& platform, Settings& settings, const std::filesystem::path& rootFolder)
    : platform(platform), messages(platform), settings(settings), rootFolder(rootFolder)
{
    SetGreys();
}

void PageLayer::vsBindEngine(PageEngine& engine, PdfConverter& converter)
{
    vp = &engine;
    VSPDF = &converter;
}

std::string PageLayer::vsDefaultDevice()
{
    vp->Device("");
    platform.YieldToMessages();
    return vp->Device();
}

bool PageLayer::SelectDevice(std::string_view printer)
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

bool PageLayer::HasPrinter()
{
    return !settings.vsPrinter.empty() && SelectDevice(settings.vsPrinter);
}

bool PageLayer::vsStartDoc(std::string_view printer)
{
    isUnderlined = false;
    cursorX = cursorY = 0;
    vp->Clear();
    if (!SelectDevice(printer))
        return false;
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
    return true;
}

void PageLayer::vsSetScale(double left, double top, double percent)
{
    leftOffset = left * UnitsPerMillimetre;
    topOffset = top * UnitsPerMillimetre;
    scaleFraction = percent / 100.0;
    scaledUnit = scaleFraction * UnitsPerMillimetre;
}

PrintResult PageLayer::vsEndDoc()
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

void PageLayer::vsConvertToPdf(const std::filesystem::path& path)
{
    platform.YieldToMessages();
    VSPDF->ConvertDocument(*vp, path);
    platform.YieldToMessages();
}

void PageLayer::SetPen(Colour colour, double width)
{
    vp->PenColor(colour);
    vp->PenStyle(SolidPen);
    vp->PenWidth(width * scaledUnit);
}

void PageLayer::vsLine(double width, double x1, double y1, double x2, double y2)
{
    SetPen(Black, width);
    vp->DrawLine(X(x1), Y(y1), X(x2), Y(y2));
}

void PageLayer::vsBox(double width, double x1, double y1, double x2, double y2)
{
    SetPen(Black, width);
    vp->BrushStyle(NoBrush);
    vp->DrawRectangle(X(x1), Y(y1), X(x2), Y(y2));
}

void PageLayer::vsFillBox(Colour pen, Colour brush, double width, double x1, double y1, double x2, double y2)
{
    SetPen(pen, width);
    vp->BrushColor(brush);
    vp->BrushStyle(SolidBrush);
    vp->DrawRectangle(X(x1), Y(y1), X(x2), Y(y2));
}

void PageLayer::vsTriangle(Colour colour, double x1, double y1, double x2, double y2, double x3, double y3)
{
    SetPen(colour, 0);
    vp->BrushColor(colour);
    vp->BrushStyle(SolidBrush);
    // Kept: the corners are cut down, not rounded, and so may lie up to a unit off the lines beside them.
    vp->Polygon(fmt::format("{:.0f} {:.0f}, {:.0f} {:.0f}, {:.0f} {:.0f}", std::floor(X(x1)), std::floor(Y(y1)),
                            std::floor(X(x2)), std::floor(Y(y2)), std::floor(X(x3)), std::floor(Y(y3))));
}

void PageLayer::vsCircle(Colour colour, double x, double y, double radius)
{
    SetPen(colour, 0);
    vp->BrushColor(colour);
    vp->BrushStyle(SolidBrush);
    vp->DrawCircle(X(x), Y(y), radius * scaledUnit);
}

void PageLayer::vsTick(double x, double y)
{
    vsLine(TickStroke, x - 0.5, y - 1.0, x, y);
    vsLine(TickStroke, x, y, x + 2.0, y - 3.0);
}

void PageLayer::vsFont(double size, bool bold, bool italic)
{
    vp->FontSize(size * scaleFraction);
    vp->FontBold(bold);
    vp->FontItalic(italic);
}

void PageLayer::vsTextLeft(double x, double y, std::string_view text)
{
    cursorX = X(x);
    cursorY = Y(y);
    DrawText(text, vp->TextWidth(text), Alignment::Left);
}

void PageLayer::vsTextRight(double x, double y, std::string_view text)
{
    const double width = vp->TextWidth(text);
    cursorX = X(x) - width;
    cursorY = Y(y);
    DrawText(text, width, Alignment::Right);
}

void PageLayer::vsTextCentre(double x1, double x2, double y, std::string_view text)
{
    const double width = vp->TextWidth(text);
    cursorX = X((x1 + x2) / 2) - width / 2;
    cursorY = Y(y);
    DrawText(text, width, Alignment::Centre);
}

void PageLayer::vsTextDecimal(double x, double y, std::string_view text)
{
    cursorX = X(x) - vp->TextWidth(text.substr(0, text.find('.')));
    cursorY = Y(y);
    DrawText(text, vp->TextWidth(text), Alignment::Decimal);
}

void PageLayer::vsTextRun(std::string_view text)
{
    DrawText(text, vp->TextWidth(text), Alignment::Run);
}

double PageLayer::vsTextWidth(std::string_view text) const
{
    return scaledUnit > 0 ? vp->TextWidth(text) / scaledUnit : 0;
}

double PageLayer::vsTextEnd() const
{
    return scaledUnit > 0 ? (cursorX - leftOffset) / scaledUnit : 0;
}

void PageLayer::DrawText(std::string_view text, double width, Alignment alignment)
{
    const double height = vp->TextHeight(text);
    vp->TextAlign(alignment);
    switch (settings.vsAlignTextMethod) {
    case 1:
        vp->CurrentX(settings.vsAlignTextX + cursorX);
        vp->CurrentY(TextDrop + settings.vsAlignTextY + cursorY - height);
        break;
    case 2:
        vp->CurrentX(cursorX);
        vp->CurrentY(TextDrop + cursorY - height * (1 - settings.vsAlignTextY));
        break;
    default:
        vp->CurrentX(cursorX);
        vp->CurrentY(TextDrop + cursorY - height);
        break;
    }
    vp->Text(text);
    if (isUnderlined && !text.empty()) {
        SetPen(Black, UnderlineWidth);
        vp->DrawLine(cursorX, cursorY + TextDrop, cursorX + width, cursorY + TextDrop);
    }
    cursorX += width;
}

void PageLayer::vsBookmark(std::string_view title, int level, double y)
{
    vp->Bookmark(title, level, level > 1 ? Y(y) : 0);
}

bool PageLayer::StartDocument()
{
    if (!vsStartDoc(settings.vsPrinter))
        return false;
    SetScaleForPage();
    return true;
}

Opening PageLayer::OpenPrintJob(std::string_view documentName)
{
    vsDocName(documentName);
    vp->Subject(edition::form::DocumentSubject);
    if (route == Route::Printer)
        vsPreviewOff();
    else
        vsPreviewOn();
    SetGreys();

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

void PageLayer::SetGreys()
{
    ColBlack = Grey(settings.vsBlack);
    ColDark = Grey(settings.vsDark);
    ColLight = Grey(settings.vsLight);
    ColWhite = Grey(settings.vsWhite);
}

void PageLayer::NextPrintPage(int pageNumber)
{
    if (pageNumber <= 1)
        return;
    vsOrientation(Portrait);
    vsNewPage();
    SetScaleForPage();
}

bool PageLayer::IsPdfRoute() const
{
    return route == Route::File || (route == Route::Screen && settings.reportPreview == 1);
}

void PageLayer::SetScaleForPage()
{
    if (IsPdfRoute())
        vsSetScale(settings.vsPdfLeft, settings.vsPdfTop + AddedTopMargin, settings.vsPdfScale);
    else
        vsSetScale(settings.vsLeft, settings.vsTop + AddedTopMargin, settings.vsScale);
}

std::filesystem::path PageLayer::PdfPath() const
{
    return InFolder(rootFolder, "Docs") / "Preview.pdf";
}

bool PageLayer::OldPdfMayGo()
{
    if (MayBeReplaced(PdfPath()))
        return true;
    messages.Tell(edition::AppTitle,
                  fmt::format("File '{}' could not be deleted.\nAnother application may be using it.\n"
                              "You must close this file before proceeding.",
                              PdfPath().string()));
    return false;
}

void PageLayer::EndOnPdf()
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
