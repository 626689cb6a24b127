#pragma once

#include <string>
#include <string_view>

namespace quillmere {

/// A text (UTF-8) as an object of a PDF file: as it is if it is plain, else UTF-16 with its mark in hexadecimal.
std::string PdfText(std::string_view text);

} // namespace quillmere
