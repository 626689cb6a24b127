#include "printing/jobs/PreviewPages.h"

#include "printing/paper/Document.h"

#include <algorithm>

namespace quillmere {

namespace {

constexpr double PixelsPerTwip = 96.0 / 1440.0;
constexpr double TrueWidth = SheetWidth * PixelsPerTwip;
constexpr double TrueHeight = SheetHeight * PixelsPerTwip;

/// Around and between sheets.
constexpr double Gap = 12;
constexpr double ThumbnailWidth = 150;
/// A surface without room still shows something.
constexpr double LeastWidth = 20;

struct Size {
    double width, height;
};

Size Scaled(double factor)
{
    return {TrueWidth * factor, TrueHeight * factor};
}

/// Size of a sheet of which so many stand side by side, as large as the surface holds whole.
Size Fitting(const PreviewView& view, int abreast)
{
    const double across = (view.width - Gap * (abreast + 1)) / abreast;
    const double down = view.height - 2 * Gap;
    const double least = LeastWidth / TrueWidth;
    return Scaled(std::max(least, std::min(across / TrueWidth, down / TrueHeight)));
}

Size SheetSize(const PreviewView& view)
{
    switch (view.mode) {
    case ZoomMode::Percentage:
        return Scaled(view.percent / 100);
    case ZoomMode::Thumbnail:
        return Scaled(ThumbnailWidth / TrueWidth);
    case ZoomMode::TwoPages:
        return Fitting(view, 2);
    case ZoomMode::WholePage:
        return Fitting(view, 1);
    case ZoomMode::PageWidth:
        return Scaled(std::max(LeastWidth, view.width - 2 * Gap) / TrueWidth);
    case ZoomMode::Stretch:
        break;
    }
    return {std::max(LeastWidth, view.width - 2 * Gap), std::max(LeastWidth, view.height - 2 * Gap)};
}

} // namespace

PreviewPicture PlaceSheets(const PreviewView& view)
{
    PreviewPicture picture;
    if (view.pageCount < 1)
        return picture;
    const Size sheet = SheetSize(view);
    int first = view.page, last = view.page, abreast = 1;
    if (view.mode == ZoomMode::TwoPages) {
        last = std::min(view.page + 1, view.pageCount);
        abreast = 2;
    } else if (view.mode == ZoomMode::Thumbnail) {
        first = 1;
        last = view.pageCount;
        abreast = std::clamp(static_cast<int>((view.width - Gap) / (sheet.width + Gap)), 1, view.pageCount);
    }
    for (int page = first; page <= last; ++page) {
        const int column = (page - first) % abreast, row = (page - first) / abreast;
        picture.sheets.push_back({.page = page,
                                  .x = Gap + column * (sheet.width + Gap),
                                  .y = Gap + row * (sheet.height + Gap),
                                  .width = sheet.width,
                                  .height = sheet.height});
    }
    const int rows = (last - first) / abreast + 1;
    picture.width = Gap + abreast * (sheet.width + Gap);
    picture.height = Gap + rows * (sheet.height + Gap);
    return picture;
}

double PercentOf(const PreviewView& view)
{
    const Size sheet = SheetSize(view);
    return 100 * std::min(sheet.width / TrueWidth, sheet.height / TrueHeight);
}

} // namespace quillmere
