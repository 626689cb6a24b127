#pragma once

#include "printing/paper/Document.h"

#include <string>
#include <string_view>

/// What makes a PDF file one that is kept for years: its properties as metadata, and what its colours mean.
namespace quillmere {

/// A text of the properties without what metadata cannot hold.
std::string PropertyText(std::string_view text);

/// The document's properties as a packet of metadata. `isArchive` claims that the file keeps the rules of PDF/A-2u.
std::string PdfMetadata(const Document& document, bool isArchive);

/// True if such a file may show this character, which has this glyph: not in the place of one that is missing, and one
/// with a meaning of its own.
constexpr bool MayBeArchived(char32_t character, std::uint16_t glyph)
{
    return glyph != 0 && character != 0xFEFF && character < 0xFFFE;
}

/// The colours of the screen (sRGB) as a colour profile, version 4.
std::string ScreenColours();

} // namespace quillmere
