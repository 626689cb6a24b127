#include "review/Checks.h"

#include <fmt/format.h>
#include <utility>

namespace quillmere::review {

namespace {

template<class Looked>
void Run(std::span<const CheckRow<Looked>> checks, std::string_view employee, const Looked& looked,
         FindingList& findings)
{
    std::shared_ptr<const std::string> name;
    for (const CheckRow<Looked>& row : checks)
        for (Spot& spot : row.find(looked)) {
            if (name == nullptr)
                name = std::make_shared<const std::string>(employee);
            findings.push_back({.check = &row.check, .form = name, .spot = std::move(spot)});
        }
}

} // namespace

void CheckEmployee(std::string_view employee, const FormFacts& form, FindingList& findings)
{
    Run(EmployeeChecks(), employee, form, findings);
}

std::vector<TypedOverFigure> FiguresTypedOver(const FormFacts& form)
{
    std::vector<TypedOverFigure> figures;
    for (const auto& [check, find] : EmployeeChecks()) {
        if (!check.typedOver)
            continue;
        for (Spot& spot : find(form)) {
            std::string words = fmt::format("{}{}{}", check.words, spot.detail.empty() ? "" : ": ", spot.detail);
            figures.push_back({.spot = std::move(spot), .words = std::move(words)});
        }
    }
    return figures;
}

void CheckPaper(std::string_view employee, const PaperFacts& facts, FindingList& findings)
{
    Run(PaperChecks(), employee, facts, findings);
}

void CheckEmployer(const EmployerFacts& facts, FindingList& findings)
{
    Run(EmployerChecks(), {}, facts, findings);
}

} // namespace quillmere::review
