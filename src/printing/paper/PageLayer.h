#pragma once

#include "printing/paper/PageEngine.h"

#include <string>
#include <string_view>
#include <utility>

namespace quillmere {

struct Settings;

/// Width of the lines of the forms, mm.
inline constexpr double FormLine = 0.2;

/// The pen of the pages, a thin layer between the drawing routines and the engine: positions in millimetres on an A4
/// sheet, from its top left corner, become engine units with the user's offsets and scale. It alone knows the engine's
/// units. The y of a text is the line on which it stands.
class PageLayer {
public:
    /// `settings` is read at each call.
    explicit PageLayer(const Settings& settings);

    /// The engine that it draws with. Called once, before anything else.
    void vsBindEngine(PageEngine& engine) { vp = &engine; }

    /// Begins a document: no page, no underline, and the greys of the settings.
    void BeginDocument();
    /// Offsets and scale with which every page of the document begins.
    void SetPageScale(double left, double top, double percent);
    /// Offsets in mm, scale in percent.
    void vsSetScale(double left, double top, double percent);
    void vsOrientation(int orientation) { vp->Orientation(orientation); }
    void vsNewPage() { vp->NewPage(); }
    /// Begins the document's next page: a new one of the engine unless it is the first.
    void NextPrintPage();
    /// Begins a further page, also where there is none yet.
    void FurtherPrintPage();
    /// The document in hand leaves no page empty: its first page is the first that is begun, in whichever way.
    void LeaveNoPageEmpty() { leavesNoPageEmpty = true; }
    /// Pages begun in the document in hand.
    int PageNumber() const { return pageNumber; }

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

    /// Adds an element to what is read out of the page in hand, behind those that are there.
    ElementNumber AddElement(Element element) { return vp->AddElement(std::move(element)); }
    /// One of its elements, until the next one is added; null for none.
    Element* FindElement(ElementNumber element) { return vp->FindElement(element); }
    /// What is drawn now belongs to this element. Gives the one before; see BelongsTo.
    ElementNumber DrawFor(ElementNumber element) { return vp->BelongsTo(element); }

    /// Says that what is drawn from here on is the same on every page of its form, until it is not.
    void BeginFixedPart() { vp->FixedPart(true); }
    void EndFixedPart() { vp->FixedPart(false); }

    /// Begins a chapter of the document, an employee's papers in a document of several: its bookmark stands at the next
    /// page that has one, and all bookmarks from there on hang under it, until the next chapter.
    void BeginChapter(std::string_view title);
    /// Notes the page in hand (level 1) or a section on it (level 2, with its y in mm) for the document's bookmarks.
    void vsBookmark(std::string_view title, int level = 1, double y = 0);

    /// The greys of the document in hand.
    Colour ColBlack, ColDark, ColLight, ColWhite;

    /// Shading of panels, and the font of the values.
    bool HasShading() const;
    const std::string& ReportFont() const;

private:
    double X(double mm) const { return mm * scaledUnit + leftOffset; }
    double Y(double mm) const { return mm * scaledUnit + topOffset; }
    void SetGreys();
    void SetPen(Colour colour, double width);
    /// `width` is that of the text, in engine units.
    void DrawText(std::string_view text, double width, Alignment alignment);

    const Settings& settings;
    PageEngine* vp = nullptr;

    std::string nextChapter; ///< its bookmark waits for the next page's
    bool hasChapters = false;

    int pageNumber = 0;
    bool leavesNoPageEmpty = false;
    double pageLeft = 0, pageTop = 0, pagePercent = 100; ///< what each page begins with, as for vsSetScale
    double cursorX = 0, cursorY = 0;                     ///< engine units: where the last text ended
    double leftOffset = 0, topOffset = 0;                ///< engine units
    double scaleFraction = 1;                            ///< percent divided by 100
    double scaledUnit = UnitsPerMillimetre;              ///< engine units of a scaled millimetre
    bool isUnderlined = false;
};

/// For its life what is drawn belongs to an element of the page.
class BelongsTo {
public:
    BelongsTo(PageLayer& page, ElementNumber element) : page(page), before(page.DrawFor(element)) {}
    BelongsTo(PageLayer& page, Role role) : BelongsTo(page, page.AddElement({.role = role})) {}
    BelongsTo(const BelongsTo&) = delete;
    BelongsTo& operator=(const BelongsTo&) = delete;
    ~BelongsTo() { page.DrawFor(before); }

private:
    PageLayer& page;
    ElementNumber before;
};

} // namespace quillmere
