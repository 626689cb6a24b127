#include "ChecksPage.h"

#include "review/Checks.h"

#include <fmt/format.h>

namespace quillmere {

namespace {

using review::Severity;

template<class Checks>
void Add(std::string& text, std::string_view title, const Checks& checks)
{
    text += fmt::format("\n## {}\n\n| Code | Weight | What to look at | Source |\n|---|---|---|---|\n", title);
    for (const auto& row : checks)
        text +=
            fmt::format("| {} | {} | {} | {} |\n", row.check.code,
                        row.check.severity == Severity::Fault ? "Fault" : "Look", row.check.words, row.check.source);
}

} // namespace

std::string ChecksPage()
{
    std::string text =
        "# All checks\n\n"
        "What **View, Check** looks for, made from the program's own list. The code of a check stays the same from\n"
        "year to year.\n";
    Add(text, "On an employee's form", review::EmployeeChecks());
    Add(text, "On the printed form", review::PaperChecks());
    Add(text, "Over all forms of an employer", review::EmployerChecks());
    return text;
}

} // namespace quillmere
