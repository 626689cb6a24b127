#pragma once

#include "frame/PrintedTable.h"
#include "printing/forms/ReportPage.h"

namespace quillmere {

/// Prints a table that a screen shows, on as many pages as it needs, each with the heads of its columns. A text that is
/// wider than its column goes on below, at a blank as long as the page has room for its words.
void PrintTableReport(PageLayer& page, const ReportNames& names, const PrintedTable& table);

} // namespace quillmere
