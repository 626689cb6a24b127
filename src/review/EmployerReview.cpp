#include "review/EmployerReview.h"

#include "review/EmployeeForm.h"

#include <fmt/format.h>
#include <limits>

namespace quillmere::review {

namespace {

void CheckForm(std::string_view employee, const FormFacts& form, const Paper& paper, FindingList& findings)
{
    CheckEmployee(employee, form, findings);
    CheckPaper(employee, paper.Cut(form), findings);
}

} // namespace

bool EmployerReview::GoOnBetweenKeys(const std::filesystem::path& path)
{
    constexpr std::chrono::milliseconds Piece{20};
    const Clock::time_point until = Clock::now() + Piece;
    if (done)
        return false;
    if (!held)
        held.emplace(Database::OpenDatabase(path));
    const bool more = Look(*held, std::numeric_limits<int>::max(), until);
    if (!more)
        held.reset();
    return more;
}

bool EmployerReview::GoOn(Database& database, int most)
{
    return !done && Look(database, most, Clock::time_point::max());
}

/// Looks at more employees: at up to `most`, and at none but the first once that time has come.
bool EmployerReview::Look(Database& database, int most, Clock::time_point until)
{
    if (!forms)
        forms.emplace(database, employer);
    const FormFacts& form = forms->Facts();
    do {
        if (!forms->Next()) {
            forms.reset();
            LookAtAll(database);
            return false;
        }
        const std::string& employee = forms->Employee();
        facts.employees.push_back(FactsOf(employee, form));
        benefits += Class1ABenefits(form.liable);
        CheckForm(employee, form, paper, findings);
        if (heard) {
            heard(employee, form, findings);
            heardOf += findings.size();
            findings.clear();
        }
    } while (--most > 0 && Clock::now() < until);
    return true;
}

void EmployerReview::LookAtAll(Database& database)
{
    done = true;
    facts.declaration = ComputeDeclarationTotals(database, employer, benefits);
    Recordset declarations = database.OpenRecordset("P11DB");
    declarations.MoveFirstOf(employer);
    facts.storedBoxA = declarations.AtEnd() ? std::string() : std::string(declarations.Field("Section1ABox"));
    CheckEmployer(facts, findings);
}

FindingList CheckEmployeeOf(Database& database, std::string_view employer, std::string_view employee,
                            const Paper& paper)
{
    const EmployeeForm form(database, employer, employee);
    FindingList findings;
    CheckForm(employee, form.Facts(), paper, findings);
    return findings;
}

FindingList CheckAllOf(Database& database, std::string_view employer, const Paper& paper)
{
    EmployerReview review(std::string(employer), paper);
    while (review.GoOn(database, std::numeric_limits<int>::max())) {
    }
    return std::move(review).Findings();
}

std::string ThingsToLookAt(const Session& session, const std::string& employer, const std::string& employee)
{
    try {
        Database database = Database::OpenDatabase(session.ClientDatabasePath());
        const Paper paper(session.settings, session.platform);
        const std::size_t found = employee.empty() ? CheckAllOf(database, employer, paper).size()
                                                   : CheckEmployeeOf(database, employer, employee, paper).size();
        return found == 0 ? std::string() : fmt::format("{} thing{} to look at", found, found == 1 ? "" : "s");
    } catch (const Failure&) {
        return {};
    }
}

} // namespace quillmere::review
