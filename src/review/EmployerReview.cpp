#include "review/EmployerReview.h"

#include "declaration/Class1A.h"

#include <algorithm>
#include <fmt/format.h>
#include <iterator>
#include <limits>
#include <map>
#include <optional>

namespace quillmere::review {

namespace {

FieldReader ReaderOf(const EmployerForms& forms)
{
    return [&forms](std::string_view table, std::string_view field) { return forms.Field(table, field); };
}

std::vector<Finding> CheckForm(std::string_view employee, const FieldReader& read, const Paper& paper)
{
    std::vector<Finding> findings = CheckEmployee(employee, read);
    std::ranges::move(CheckPaper(employee, paper.Cut(read)), std::back_inserter(findings));
    return findings;
}

} // namespace

bool EmployerReview::GoOnBetweenKeys(const std::filesystem::path& path)
{
    constexpr std::chrono::milliseconds Piece{20};
    const Clock::time_point until = Clock::now() + Piece;
    if (done)
        return false;
    if (held == nullptr)
        held = std::make_unique<Held>(path, employer);
    const bool more = Look(held->database, held->forms, std::numeric_limits<int>::max(), until);
    if (!more)
        held.reset();
    return more;
}

bool EmployerReview::GoOn(Database& database, int most)
{
    if (done)
        return false;
    EmployerForms forms(database, employer, last);
    return Look(database, forms, most, Clock::time_point::max());
}

/// Looks at more employees: at up to `most`, and at none but the first once that time has come.
bool EmployerReview::Look(Database& database, EmployerForms& forms, int most, Clock::time_point until)
{
    const FieldReader read = ReaderOf(forms);
    do {
        if (!forms.Next()) {
            LookAtAll(database);
            return false;
        }
        last = forms.Employee();
        facts.employees.push_back(FactsOf(last, read));
        benefits += Class1ABenefitsOf([&read](std::string_view field) { return read("P11D", field); });
        std::vector<Finding> found = CheckForm(last, read, paper);
        if (heard)
            heard(last, read, found.size());
        std::ranges::move(found, std::back_inserter(findings));
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
    std::ranges::move(CheckEmployer(facts), std::back_inserter(findings));
}

std::vector<Finding> CheckEmployeeOf(Database& database, std::string_view employer, std::string_view employee,
                                     const Paper& paper)
{
    std::map<std::string, std::optional<Recordset>, std::less<>> tables; // opened when first asked for
    const FieldReader read = [&](std::string_view table, std::string_view field) {
        auto found = tables.find(table);
        if (found == tables.end()) {
            std::optional<Recordset> records = database.OpenRecordset(table);
            records->Index("IndKey");
            records->Seek(employer, employee);
            if (records->NoMatch())
                records.reset();
            found = tables.emplace(table, std::move(records)).first;
        }
        return found->second ? found->second->Field(field) : std::string_view();
    };
    return CheckForm(employee, read, paper);
}

std::vector<Finding> CheckAllOf(Database& database, std::string_view employer, const Paper& paper)
{
    EmployerReview review(std::string(employer), paper);
    while (review.GoOn(database, std::numeric_limits<int>::max())) {
    }
    return review.Findings();
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
