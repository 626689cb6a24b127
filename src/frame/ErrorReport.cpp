#include "frame/ErrorReport.h"

#include <fmt/format.h>

namespace quillmere {

std::string ErrorReportText(std::string_view procedure, long number, std::string_view text, std::string_view diagnostic)
{
    std::string report = fmt::format("Procedure: {}\nError {}:  {}", procedure, number, text);
    if (!diagnostic.empty())
        report += fmt::format("\nDiagnostic: {}", diagnostic);
    return report;
}

} // namespace quillmere
