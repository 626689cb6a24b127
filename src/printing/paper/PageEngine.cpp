#include "printing/paper/PageEngine.h"

#include "frame/CheckedFile.h"
#include "frame/Platform.h"
#include "printing/paper/PageList.h"

#include <algorithm>
#include <charconv>
#include <numeric>
#include <utility>

namespace quillmere {

void PageEngine::Device(std::string_view name)
{
    if (name.empty()) {
        devices = platform.Printers();
        device = devices.empty() ? std::string() : devices.front();
        duplex = 0;
    } else if (std::ranges::find(devices, name) != devices.end()) {
        device = name;
        duplex = 0;
    }
}

void PageEngine::StartDoc()
{
    ended.reset();
    open = std::make_unique<Document>();
    open->name = documentName;
    open->subject = documentSubject;
    open->author = documentAuthor;
    open->AddPage();
}

PrintResult PageEngine::EndDoc()
{
    if (!open)
        return PrintResult::NothingToPrint;
    open->ShrinkToFit();
    ended = std::exchange(open, nullptr);
    if (documentEnded)
        documentEnded(ended);
    return isPreview ? PrintResult::NothingToPrint : PrintDoc(1);
}

void PageEngine::NewPage()
{
    if (open)
        open->AddPage();
}

void PageEngine::Clear()
{
    open.reset();
    ended.reset();
}

void PageEngine::DrawLine(double x1, double y1, double x2, double y2)
{
    if (open)
        open->AddLine(shape, x1, y1, x2, y2);
}

void PageEngine::DrawRectangle(double x1, double y1, double x2, double y2)
{
    if (open)
        open->AddRectangle(shape, x1, y1, x2, y2);
}

void PageEngine::DrawCircle(double x, double y, double radius)
{
    if (open)
        open->AddCircle(shape, x, y, radius);
}

void PageEngine::Polygon(std::string_view corners)
{
    if (!open)
        return;
    std::vector<double> points;
    const char* at = corners.data();
    const char* const end = at + corners.size();
    while (at < end) {
        int position = 0;
        const auto read = std::from_chars(at, end, position);
        if (read.ec == std::errc())
            points.push_back(position);
        at = read.ec == std::errc::invalid_argument ? at + 1 : read.ptr;
    }
    ShapeStyle filled = shape;
    filled.filled = true;
    open->AddPolygon(filled, points);
}

void PageEngine::Text(std::string_view text)
{
    if (open && !text.empty())
        open->AddText({.face = CurrentFace(), .colour = textColour, .size = fontSize}, textAlignment,
                      currentX + marginLeft + indentLeft + indentFirst, currentY + marginTop, text);
    textAlignment = Alignment::Left;
}

double PageEngine::TextWidth(std::string_view text) const
{
    if (textMeasured)
        textMeasured(text);
    return quillmere::TextWidth(CurrentFace(), fontSize, text);
}

double PageEngine::TextHeight(std::string_view) const
{
    return quillmere::TextHeight(CurrentFace(), fontSize);
}

void PageEngine::FixedPart(bool isFixed)
{
    if (open)
        open->BeginPart(isFixed);
}

ElementNumber PageEngine::AddElement(Element element)
{
    return open ? open->AddElement(std::move(element)) : 0;
}

Element* PageEngine::FindElement(ElementNumber element)
{
    return open && element != 0 ? &open->ElementAt(element) : nullptr;
}

ElementNumber PageEngine::BelongsTo(ElementNumber element)
{
    if (!open)
        return 0;
    const ElementNumber before = open->Current();
    open->BelongsTo(element);
    return before;
}

void PageEngine::Bookmark(std::string_view title, int level, double y)
{
    if (open)
        open->bookmarks.push_back({std::string(title), open->PageCount(), level, y});
}

int PageEngine::PageCount() const
{
    return open ? open->PageCount() : ended ? ended->PageCount() : 0;
}

PrintResult PageEngine::PrintDoc(int copies, const std::optional<std::string>& pageList, PageOrder order)
{
    const int count = ended ? ended->PageCount() : 0;
    std::vector<int> pages;
    if (pageList) {
        pages = ReadPageList(*pageList, count);
    } else {
        pages.resize(static_cast<std::size_t>(count));
        std::iota(pages.begin(), pages.end(), 1);
    }
    if (order == PageOrder::Reverse)
        std::ranges::reverse(pages);
    if (pages.empty() || copies < 1)
        return PrintResult::NothingToPrint;
    if (device.empty())
        return PrintResult::PrinterUnreachable;
    const auto outcome = platform.Print({.printer = device,
                                         .documentName = ended->name,
                                         .pdf = writer.Write(*ended, pages),
                                         .pages = pages,
                                         .copies = copies,
                                         .duplex = duplex});
    switch (outcome) {
    case PrintOutcome::Sent:
        pagesSent = static_cast<int>(pages.size()) * copies;
        return PrintResult::Sent;
    case PrintOutcome::NotReady:
        return PrintResult::NotReady;
    case PrintOutcome::PrinterUnreachable:
        break;
    }
    return PrintResult::PrinterUnreachable;
}

std::string PageEngine::Pdf(const PdfOptions& options)
{
    return ended ? writer.Write(*ended, options) : std::string();
}

void PdfConverter::ConvertDocument(PageEngine& engine, const std::filesystem::path& path, const PdfOptions& options)
{
    if (engine.Ended())
        WriteFileChecked(path, engine.Pdf(options));
}

} // namespace quillmere
