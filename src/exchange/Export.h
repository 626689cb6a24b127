#pragma once

#include "exchange/Csv.h"
#include "frame/Session.h"

#include <string>
#include <string_view>
#include <vector>

/// What can be written out as a table.
namespace quillmere::exchange {

enum class Exported { Overview, Employees, Lists, Cars, Working };

struct ExportRow {
    Exported what;
    std::string_view words; ///< on the screen
    std::string_view name;  ///< of the file, behind whose it is
    char letter;
};
std::span<const ExportRow> Exports();

/// The table, with its headings first: of an employer, or of all of them where that is empty; a working is that of the
/// open employee. What is typed and not stored is not in it. Throws StoreError.
std::vector<Cells> ExportedTable(const Session& session, Exported what, const std::string& employer);

} // namespace quillmere::exchange
