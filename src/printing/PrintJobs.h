#pragma once

#include "printing/PrintSystem.h"

#include <string_view>

namespace quillmere {

/// Draws the document of one employee, or the declaration of the employer, and shows it: as a PDF file where the
/// settings say so, else in the preview. It never prints; that is done from the preview.
void PrintEmployeeJob(Session& session, PrintSystem& printing, std::string_view employer, std::string_view employee,
                      PrintedDocument document);

} // namespace quillmere
