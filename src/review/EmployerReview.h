#pragma once

#include "clientdb/store/Recordset.h"
#include "frame/Session.h"
#include "review/Checks.h"
#include "review/EmployerForms.h"
#include "review/Paper.h"

#include <chrono>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace quillmere::review {

/// The checks of an employer: each form, and then what the forms and the declaration show together. Done in pieces, so
/// that keys and other desks do not wait.
class EmployerReview {
public:
    /// Hears of each employee, with the findings on his form. They are not kept then.
    using Heard = std::function<void(std::string_view employee, const FormFacts& form, const FindingList& found)>;

    /// `paper` outlives it.
    EmployerReview(std::string employer, const Paper& paper, Heard heard = {})
        : employer(std::move(employer)), paper(paper), heard(std::move(heard))
    {
    }

    /// Looks at up to `most` more employees, with the same database each time. False once there is nothing more to look
    /// at. Throws StoreError.
    bool GoOn(Database& database, int most);
    /// The same for as long as a key may be kept waiting; from the first of such pieces to the last the database stays
    /// open, and free for everybody between them.
    bool GoOnBetweenKeys(const std::filesystem::path& path);

    /// How many findings there are so far, kept or not.
    std::size_t Found() const { return heardOf + findings.size(); }
    const FindingList& Findings() const& { return findings; }
    FindingList Findings() && { return std::move(findings); }
    std::size_t EmployeesSeen() const { return facts.employees.size(); }
    /// The employer's declaration, once there is nothing more to look at.
    const DeclarationTotals& Declaration() const { return facts.declaration; }

private:
    using Clock = std::chrono::steady_clock;
    bool Look(Database& database, int most, Clock::time_point until);
    void LookAtAll(Database& database);

    std::string employer;
    const Paper& paper;
    Heard heard;
    Amount benefits; ///< liable to Class 1A, of all employees so far
    EmployerFacts facts;
    FindingList findings;
    std::size_t heardOf = 0;      ///< findings that were not kept
    std::optional<Database> held; ///< for a look in pieces
    std::optional<EmployerForms> forms;
    bool done = false;
};

/// The findings on one employee's form. Throws StoreError.
FindingList CheckEmployeeOf(Database& database, std::string_view employer, std::string_view employee,
                            const Paper& paper);

/// The findings on all forms of an employer, and on what they show together, in that order. Throws StoreError.
FindingList CheckAllOf(Database& database, std::string_view employer, const Paper& paper);

/// How many findings there are on an employee's form, or on all of an employer's where the employee is empty, in words:
/// "3 things to look at". Empty if there are none, or if the store cannot be read.
std::string ThingsToLookAt(const Session& session, const std::string& employer, const std::string& employee);

} // namespace quillmere::review
