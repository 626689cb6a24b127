#include "review/Checks.h"

#include <utility>

namespace quillmere::review {

namespace {

template<class Looked>
std::vector<Finding> Run(std::span<const CheckRow<Looked>> checks, std::string_view employee, const Looked& looked)
{
    std::vector<Finding> findings;
    for (const CheckRow<Looked>& check : checks)
        for (Spot& spot : check.find(looked))
            findings.push_back({.code = check.code,
                                .severity = check.severity,
                                .words = check.words,
                                .source = check.source,
                                .employee = std::string(employee),
                                .spot = std::move(spot)});
    return findings;
}

} // namespace

std::vector<Finding> CheckEmployee(std::string_view employee, const FieldReader& read)
{
    return Run(EmployeeChecks(), employee, read);
}

std::vector<Finding> CheckPaper(std::string_view employee, const PaperFacts& facts)
{
    return Run(PaperChecks(), employee, facts);
}

std::vector<Finding> CheckEmployer(const EmployerFacts& facts)
{
    return Run(EmployerChecks(), {}, facts);
}

} // namespace quillmere::review
