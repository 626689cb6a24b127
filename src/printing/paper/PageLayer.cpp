#include "printing/paper/PageLayer.h"

#include "frame/Settings.h"

#include <cmath>
#include <fmt/format.h>

namespace quillmere {

namespace {

constexpr int Portrait = 0;
constexpr int SolidPen = 0;
constexpr int SolidBrush = 0;
constexpr int NoBrush = 1;

constexpr double UnderlineWidth = 0.2; // mm
constexpr double TickStroke = 0.4;     // mm

} // namespace

PageLayer::PageLayer(const Settings& settings) : settings(settings)
{
    SetGreys();
}

void PageLayer::BeginDocument()
{
    pageNumber = 0;
    nextChapter.clear();
    hasChapters = false;
    leavesNoPageEmpty = false;
    cursorX = cursorY = 0;
    isUnderlined = false;
    SetGreys();
}

void PageLayer::SetGreys()
{
    ColBlack = Grey(settings.vsBlack);
    ColDark = Grey(settings.vsDark);
    ColLight = Grey(settings.vsLight);
    ColWhite = Grey(settings.vsWhite);
}

void PageLayer::NextPrintPage()
{
    if (pageNumber == 0)
        ++pageNumber;
    else
        FurtherPrintPage();
}

void PageLayer::FurtherPrintPage()
{
    if (leavesNoPageEmpty && pageNumber == 0)
        return NextPrintPage();
    ++pageNumber;
    vsOrientation(Portrait);
    vsNewPage();
    vsSetScale(pageLeft, pageTop, pagePercent);
}

void PageLayer::SetPageScale(double left, double top, double percent)
{
    pageLeft = left;
    pageTop = top;
    pagePercent = percent;
    vsSetScale(left, top, percent);
}

bool PageLayer::HasShading() const
{
    return settings.reportShading;
}

const std::string& PageLayer::ReportFont() const
{
    return settings.reportFont;
}

void PageLayer::vsSetScale(double left, double top, double percent)
{
    leftOffset = left * UnitsPerMillimetre;
    topOffset = top * UnitsPerMillimetre;
    scaleFraction = percent / 100.0;
    scaledUnit = scaleFraction * UnitsPerMillimetre;
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

void PageLayer::BeginChapter(std::string_view title)
{
    nextChapter = title;
    hasChapters = true;
}

void PageLayer::vsBookmark(std::string_view title, int level, double y)
{
    if (const std::string chapter = std::exchange(nextChapter, {}); !chapter.empty())
        vp->Bookmark(chapter, 1, 0);
    vp->Bookmark(title, level + (hasChapters ? 1 : 0), level > 1 ? Y(y) : 0);
}

} // namespace quillmere
