#pragma once

#include "printing/paper/Document.h"

#include <span>
#include <string>
#include <vector>

namespace quillmere {

/// A part of a page in the operators of a PDF content stream, which stands on its own. Fonts are named "/F" and the
/// face's number. Neighbours that belong to one element are marked together, with numbers from `firstMark` on; what
/// belongs to none is marked as an artifact.
std::string PdfContent(const Document& document, std::span<const Operation> operations, int firstMark = 0);

/// The element behind each of these marks, in their order.
std::vector<ElementNumber> PdfMarks(std::span<const Operation> operations);

/// Name of the face's font in the resources of a page, with its slash.
std::string PdfFontName(Face face);

} // namespace quillmere
