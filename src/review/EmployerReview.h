#pragma once

#include "clientdb/store/Recordset.h"
#include "review/Checks.h"
#include "review/Paper.h"

#include <string>
#include <vector>

namespace quillmere::review {

/// The checks of an employer: each form, and then what the forms and the declaration show together. Done in pieces, so
/// that keys and other desks do not wait.
class EmployerReview {
public:
    /// `paper` outlives it.
    EmployerReview(std::string employer, const Paper& paper) : employer(std::move(employer)), paper(paper) {}

    /// Looks at up to `most` more employees. False once there is nothing more to look at. Throws StoreError.
    bool GoOn(Database& database, int most);

    const std::vector<Finding>& Findings() const { return findings; }
    std::size_t EmployeesSeen() const { return facts.employees.size(); }

private:
    void LookAtAll(Database& database);

    std::string employer;
    const Paper& paper;
    std::string last; ///< the employee who was looked at last
    EmployerFacts facts;
    std::vector<Finding> findings;
    bool done = false;
};

/// The findings on one employee's form. Throws StoreError.
std::vector<Finding> CheckEmployeeOf(Database& database, std::string_view employer, std::string_view employee,
                                     const Paper& paper);

/// The findings on all forms of an employer, and on what they show together, in that order. Throws StoreError.
std::vector<Finding> CheckAllOf(Database& database, std::string_view employer, const Paper& paper);

} // namespace quillmere::review
