#pragma once

#include "printing/Document.h"

#include <array>
#include <string>

namespace quillmere {

/// The drawing of one page in the operators of a PDF content stream. Fonts are named "/F" and the face's number.
std::string PdfContent(const Document& document, int page);

/// Name of the face's font in the resources of a page, with its slash.
std::string PdfFontName(Face face);

} // namespace quillmere
