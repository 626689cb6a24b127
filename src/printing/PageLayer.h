#pragma once

#include "frame/Messages.h"
#include "frame/Settings.h"
#include "printing/PageEngine.h"

#include <filesystem>
#include <string>
#include <string_view>

namespace quillmere {

/// Where the pages of the job in hand go.
enum class Route { Screen = 1, Printer = 2, File = 3 };

/// What became of the opening of a job's document.
enum class Opening {
    Open,
    NotOpen,
    Left ///< the user has left the question for another printer
};

/// Width of the lines of the forms, mm.
inline constexpr double FormLine = 0.2;

/// Says that a printer cannot be reached, or with no name that there is none.
void TellPrinterError(Messages& messages, std::string_view device);

/// The thin layer between the drawing routines and the engine: positions in millimetres on an A4 sheet, from its top
/// left corner, become engine units with the user's offsets and scale. It alone knows the engine's units. The y of a
/// text is the line on which it stands.
class PageLayer {
public:
    /// `settings` is read at each call and takes the printer that the user settled on. The PDF file goes to the folder
    /// "Docs" below `rootFolder`.
    PageLayer(Platform& platform, Settings& settings, const std::filesystem::path& rootFolder);

    /// Keeps the engine and the converter. Called once, before anything else.
    void vsBindEngine(PageEngine& engine, PdfConverter& converter);
    PageEngine& Engine() { return *vp; }

    /// Selects the system's default printer and gives its name, "" with no printer.
    std::string vsDefaultDevice();
    void vsPreviewOn() { vp->Preview(true); }
    void vsPreviewOff() { vp->Preview(false); }
    void vsDocName(std::string_view name) { vp->DocName(name); }
    /// Opens the document on the named printer; false, with no message, if there is no such printer.
    [[nodiscard]] bool vsStartDoc(std::string_view printer);
    /// Offsets in mm, scale in percent.
    void vsSetScale(double left, double top, double percent);
    void vsOrientation(int orientation) { vp->Orientation(orientation); }
    void vsNewPage() { vp->NewPage(); }
    /// Ends the document; if its pages were for the printer and it cannot be reached, says so.
    PrintResult vsEndDoc();
    /// Writes the ended document as a PDF file. Throws FileError.
    void vsConvertToPdf(const std::filesystem::path& path);

    void vsLine(double width, double x1, double y1, double x2, double y2);
    void vsHLine(double width, double x1, double x2, double y) { vsLine(width, x1, y, x2, y); }
    /// Black outline, no fill.
    void vsBox(double width, double x1, double y1, double x2, double y2);
    void vsFillBox(Colour pen, Colour brush, double width, double x1, double y1, double x2, double y2);
    void vsTriangle(Colour colour, double x1, double y1, double x2, double y2, double x3, double y3);
    void vsCircle(Colour colour, double x, double y, double radius);
    void vsTick(double x, double y);

    void vsFontName(std::string_view name) { vp->FontName(name); }
    void vsTextColor(Colour colour) { vp->TextColor(colour); }
    /// Size in points, before the scale.
    void vsFont(double size, bool bold, bool italic);
    void vsBoldOn() { vp->FontBold(true); }
    void vsBoldOff() { vp->FontBold(false); }
    void vsItalicOn() { vp->FontItalic(true); }
    void vsItalicOff() { vp->FontItalic(false); }
    void vsUnderlineOn() { isUnderlined = true; }
    void vsUnderlineOff() { isUnderlined = false; }

    void vsTextLeft(double x, double y, std::string_view text);
    void vsTextRight(double x, double y, std::string_view text);
    /// Centred on the middle of x1 and x2.
    void vsTextCentre(double x1, double x2, double y, std::string_view text);
    /// The first "." of the text stands at x; a text with none ends there.
    void vsTextDecimal(double x, double y, std::string_view text);
    /// Two digits of pence end at about x.
    void vsTextMoney(double x, double y, std::string_view text) { vsTextDecimal(x - 4.0, y, text); }
    /// Goes on where the last text ended.
    void vsTextRun(std::string_view text);
    /// Width of a text in the font in force, in mm before the scale.
    double vsTextWidth(std::string_view text) const;
    /// Where the last text ended, in mm.
    double vsTextEnd() const;

    /// Says that what is drawn from here on is the same on every page of its form, until it is not.
    void BeginFixedPart() { vp->FixedPart(true); }
    void EndFixedPart() { vp->FixedPart(false); }

    /// Notes the page in hand (level 1) or a section on it (level 2, with its y in mm) for the document's bookmarks.
    void vsBookmark(std::string_view title, int level = 1, double y = 0);

    /// Opens the document of a job, with questions to the user if the chosen printer is gone.
    [[nodiscard]] Opening OpenPrintJob(std::string_view documentName);
    /// True if the job's printer is among the printers of this moment.
    bool HasPrinter();
    /// Begins the job's page of this number: a new page of the document unless it is the first.
    void NextPrintPage(int pageNumber);
    /// Sets offsets and scale by the route. Called at the opening of a job and after every vsNewPage.
    void SetScaleForPage();
    /// True for a job whose document becomes a PDF file.
    bool IsPdfRoute() const;
    /// Ends the job's document, writes it to PdfPath and asks the desktop to show it. Messages tell what failed.
    void EndOnPdf();
    /// "Docs" and "Preview.pdf" below the root folder.
    std::filesystem::path PdfPath() const;

    Route route = Route::Screen;

    /// The greys of the job in hand, worked out from the settings when it was opened.
    Colour ColBlack{}, ColDark{}, ColLight{}, ColWhite{};

    /// Shading of panels, and the font of the values.
    bool HasShading() const { return settings.reportShading; }
    const std::string& ReportFont() const { return settings.reportFont; }

private:
    double X(double mm) const { return mm * scaledUnit + leftOffset; }
    double Y(double mm) const { return mm * scaledUnit + topOffset; }
    void SetPen(Colour colour, double width);
    /// `width` is that of the text, in engine units.
    void DrawText(std::string_view text, double width, Alignment alignment);
    bool SelectDevice(std::string_view printer);
    void SetGreys();
    bool StartDocument();
    /// False, and told, if the old file cannot go. It stays until the new one takes its place.
    bool OldPdfMayGo();

    Platform& platform;
    Messages messages;
    Settings& settings;
    const std::filesystem::path& rootFolder;
    PageEngine* vp = nullptr;
    PdfConverter* VSPDF = nullptr;

    double cursorX = 0, cursorY = 0;        ///< engine units: where the last text ended
    double leftOffset = 0, topOffset = 0;   ///< engine units
    double scaleFraction = 1;               ///< percent divided by 100
    double scaledUnit = UnitsPerMillimetre; ///< engine units of a scaled millimetre
    bool isUnderlined = false;
};

} // namespace quillmere
