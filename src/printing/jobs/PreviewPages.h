#pragma once

#include <vector>

namespace quillmere {

/// How the preview shows a document, in the order of its list.
enum class ZoomMode { Percentage, Thumbnail, TwoPages, WholePage, PageWidth, Stretch };

/// One sheet of the preview, in pixels of the whole picture at scale 1.
struct PreviewSheet {
    int page = 1;
    double x = 0, y = 0, width = 0, height = 0;
};

/// The picture that the preview shows through its surface: the sheets and how much room they take in all. A picture
/// that is larger than the surface scrolls, a smaller one stands in its middle.
struct PreviewPicture {
    std::vector<PreviewSheet> sheets;
    double width = 0, height = 0;
};

/// What the picture depends on.
struct PreviewView {
    ZoomMode mode = ZoomMode::PageWidth;
    double percent = 100; ///< of the sheet's true size; for ZoomMode::Percentage
    int page = 1;         ///< the page shown
    int pageCount = 0;
    double width = 0, height = 0; ///< of the surface, pixels at scale 1
};

/// Places the sheets. A percentage, the whole page, the page's width and the stretched page show one sheet, the two
/// pages the page shown and the one after it, the thumbnails all. No sheets for a document without pages.
PreviewPicture PlaceSheets(const PreviewView& view);

/// How large the sheets are in that view, as a percentage of their true size; for a stretched one the smaller of its
/// two measures.
double PercentOf(const PreviewView& view);

} // namespace quillmere
