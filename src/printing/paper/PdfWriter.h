#pragma once

#include "printing/paper/Document.h"

#include <memory>
#include <span>
#include <string>

namespace quillmere {

/// What is asked of a PDF file beside its pages.
struct PdfOptions {
    std::string password; ///< that opens the file, in UTF-8; empty: anybody opens it
};

/// Makes PDF files of recorded documents: the content as recorded, each character a glyph at its measured place, in the
/// order of drawing, so that texts can be selected, searched and read out. The faces in use are embedded as subsets.
///
/// The same document gives the same bytes, whatever was written before it: what a subset holds depends on the
/// document's characters alone (see PdfFonts.h). A writer keeps its subsets, so one writer should serve many documents.
class PdfWriter {
public:
    PdfWriter();
    PdfWriter(const PdfWriter&) = delete;
    PdfWriter& operator=(const PdfWriter&) = delete;
    ~PdfWriter();

    /// The bytes of a file with all pages, or with the given pages (from 1) in the given order, with title, subject,
    /// author, language and the bookmarks of these pages. Throws std::out_of_range for a page that the document lacks.
    std::string Write(const Document& document, const PdfOptions& options = {});
    std::string Write(const Document& document, std::span<const int> pages, const PdfOptions& options = {});

private:
    struct State;
    std::unique_ptr<State> state;
};

} // namespace quillmere
