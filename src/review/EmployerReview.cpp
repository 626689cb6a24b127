#include "review/EmployerReview.h"

#include "review/EmployerForms.h"

#include <algorithm>
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

bool EmployerReview::GoOn(Database& database, int most)
{
    if (done)
        return false;
    EmployerForms forms(database, employer, last);
    const FieldReader read = ReaderOf(forms);
    for (; most > 0; --most) {
        if (!forms.Next()) {
            LookAtAll(database);
            return false;
        }
        last = forms.Employee();
        facts.employees.push_back(FactsOf(last, read));
        std::ranges::move(CheckForm(last, read, paper), std::back_inserter(findings));
    }
    return true;
}

void EmployerReview::LookAtAll(Database& database)
{
    done = true;
    facts.declaration = ComputeDeclarationTotals(database, employer);
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

} // namespace quillmere::review
