#pragma once

#include "printing/paper/Document.h"

#include <span>
#include <string>

namespace quillmere {

/// A part of a page in the operators of a PDF content stream, which stands on its own. Fonts are named "/F" and the
/// face's number.
std::string PdfContent(const Document& document, std::span<const Operation> operations);

/// Name of the face's font in the resources of a page, with its slash.
std::string PdfFontName(Face face);

} // namespace quillmere
