#include "review/Checks.h"

#include <utility>

namespace quillmere::review {

namespace {

template<class Looked>
void Run(std::span<const CheckRow<Looked>> checks, std::string_view employee, const Looked& looked,
         std::vector<Finding>& findings)
{
    for (const CheckRow<Looked>& check : checks)
        for (Spot& spot : check.find(looked))
            findings.push_back({.code = check.code,
                                .severity = check.severity,
                                .words = check.words,
                                .source = check.source,
                                .employee = std::string(employee),
                                .spot = std::move(spot)});
}

} // namespace

void CheckEmployee(std::string_view employee, const FormFacts& form, std::vector<Finding>& findings)
{
    Run(EmployeeChecks(), employee, form, findings);
}

void CheckPaper(std::string_view employee, const PaperFacts& facts, std::vector<Finding>& findings)
{
    Run(PaperChecks(), employee, facts, findings);
}

void CheckEmployer(const EmployerFacts& facts, std::vector<Finding>& findings)
{
    Run(EmployerChecks(), {}, facts, findings);
}

} // namespace quillmere::review
