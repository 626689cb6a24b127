#pragma once

#include "printing/paper/Document.h"
#include "printing/paper/PdfWriter.h"

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quillmere {

class Platform;

/// What became of pages that were to go to the printer.
enum class PrintResult { Sent, NothingToPrint, PrinterUnreachable, NotReady };

/// Whether pages come out as their list has them, or its last one first.
enum class PageOrder { AsListed, Reverse };

/// The page-drawing engine `vp`. It records what is drawn as a Document, in twips with y downwards, and keeps the ended
/// document until the next one is opened. Pen, brush, font and position stay as set until they are set again, across
/// pages and documents too. Drawing while no document is open is passed over.
class PageEngine {
public:
    explicit PageEngine(Platform& platform) : platform(platform) {}

    /// The selected printer. Setting "" asks for the printers afresh and selects the default one; setting a name that
    /// does not exist leaves the present one. A newly selected printer has its own duplex setting.
    const std::string& Device() const { return device; }
    void Device(std::string_view name);
    int NDevices() const { return static_cast<int>(devices.size()); }
    /// The name of printer `index`, from 0.
    const std::string& Devices(int index) const { return devices.at(static_cast<std::size_t>(index)); }

    void DocName(std::string_view name) { documentName = name; }
    /// What the document is about, for its properties.
    void Subject(std::string_view subject) { documentSubject = subject; }
    /// Who made the document, for its properties.
    void Author(std::string_view author) { documentAuthor = author; }
    /// True: pages are kept for viewing and for a later `PrintDoc`. False: they go to the printer when the document
    /// ends.
    void Preview(bool kept) { isPreview = kept; }

    /// Paper and orientation: every sheet of this engine is an upright A4, so that it only notes what it is told.
    void PaperSize(int code) { paperSize = code; }
    void Orientation(int code) { orientation = code; }
    /// 1 single-sided, 2 double-sided.
    void Duplex(int mode) { duplex = mode; }
    int PaperSize() const { return paperSize; }
    int Orientation() const { return orientation; }
    int Duplex() const { return duplex; }

    /// Margins and indents, in twips: added to the position of a text. The page layer sets them all to 0.
    void MarginTop(double twips) { marginTop = twips; }
    void MarginBottom(double twips) { marginBottom = twips; }
    void MarginLeft(double twips) { marginLeft = twips; }
    void MarginRight(double twips) { marginRight = twips; }
    void IndentLeft(double twips) { indentLeft = twips; }
    void IndentRight(double twips) { indentRight = twips; }
    void IndentFirst(double twips) { indentFirst = twips; }

    /// Opens a document with one page; the ended one is dropped.
    void StartDoc();
    /// Ends the open document. With `Preview` false its pages are sent to the printer.
    PrintResult EndDoc();
    void NewPage();
    /// Drops the ended document.
    void Clear();
    bool IsOpen() const { return open != nullptr; }

    void PenColor(Colour colour) { shape.pen = colour; }
    /// 0 is solid, the only style that the engine has; it only notes what it is told.
    void PenStyle(int style) { penStyle = style; }
    void PenWidth(double twips) { shape.width = twips; }
    void BrushColor(Colour colour) { shape.brush = colour; }
    /// 0 solid fill, 1 no fill.
    void BrushStyle(int style) { shape.filled = style == 0; }

    void DrawLine(double x1, double y1, double x2, double y2);
    void DrawRectangle(double x1, double y1, double x2, double y2);
    void DrawCircle(double x, double y, double radius);
    /// A closed, filled polygon as text: corner pairs "x y" in whole twips, joined by ", ".
    void Polygon(std::string_view corners);

    void FontName(std::string_view name) { fontName = name; }
    void FontSize(double points) { fontSize = points; }
    void FontBold(bool on) { fontBold = on; }
    void FontItalic(bool on) { fontItalic = on; }
    void TextColor(Colour colour) { textColour = colour; }
    /// Top left corner of the next text.
    void CurrentX(double twips) { currentX = twips; }
    void CurrentY(double twips) { currentY = twips; }
    /// Which point of the next text was given; a note for listings.
    void TextAlign(Alignment alignment) { textAlignment = alignment; }
    void Text(std::string_view text);
    double TextWidth(std::string_view text) const;
    double TextHeight(std::string_view text) const;

    /// Says whether what comes now is the same on every page of its form (see PagePart).
    void FixedPart(bool isFixed);

    /// Adds an element of the page in hand to what is read out, behind those that are there; 0 with no document open.
    ElementNumber AddElement(Element element);
    /// An element of the page in hand, until the next one is added; null with no document open.
    Element* FindElement(ElementNumber element);
    /// What is drawn now belongs to this element. Gives the one before.
    ElementNumber BelongsTo(ElementNumber element);

    /// Notes a place of the page in hand for the document's bookmarks; y in twips.
    void Bookmark(std::string_view title, int level, double y);

    /// Pages of the document in hand or ended.
    int PageCount() const;
    /// Prints the ended document: all its pages, or those of a page list (see ReadPageList). Never more than was asked
    /// for: a list without a page prints nothing.
    PrintResult PrintDoc(int copies, const std::optional<std::string>& pageList = std::nullopt,
                         PageOrder order = PageOrder::AsListed);

    /// How many pages the spooler has taken last, each copy counted.
    int PagesSent() const { return pagesSent; }

    /// The ended document, null before the first one.
    std::shared_ptr<const Document> Ended() const { return ended; }
    /// The ended document as a PDF file, all pages.
    std::string Pdf(const PdfOptions& options = {});

    /// Called with every document that ends.
    std::function<void(std::shared_ptr<const Document>)> documentEnded;
    /// Called with every text whose width is asked for.
    std::function<void(std::string_view)> textMeasured;

private:
    Face CurrentFace() const { return FaceFor(fontName, fontBold, fontItalic); }

    Platform& platform;
    PdfWriter writer;

    std::vector<std::string> devices;
    std::string device, documentName, documentSubject, documentAuthor;
    bool isPreview = true;
    int paperSize = 0, orientation = 0, duplex = 0, penStyle = 0;
    double marginTop = 0, marginBottom = 0, marginLeft = 0, marginRight = 0;
    double indentLeft = 0, indentRight = 0, indentFirst = 0;

    ShapeStyle shape;
    std::string fontName = "Arial";
    double fontSize = 10;
    bool fontBold = false, fontItalic = false;
    Colour textColour;
    double currentX = 0, currentY = 0;
    Alignment textAlignment = Alignment::Left;

    std::unique_ptr<Document> open;
    std::shared_ptr<const Document> ended;
    int pagesSent = 0;
};

/// The converter `VSPDF`, which turns the engine's ended document into a PDF file.
class PdfConverter {
public:
    /// Throws FileError; a file that could not be written whole is not there.
    void ConvertDocument(PageEngine& engine, const std::filesystem::path& path, const PdfOptions& options = {});
};

} // namespace quillmere
