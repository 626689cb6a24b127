#pragma once

#include "declaration/Declaration.h"
#include "frame/Box.h"
#include "review/FormFacts.h"

#include <deque>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

/// What an employee's form, or an employer's declaration, should be looked at for before it is sent. A check is a pure
/// look at texts that are stored; it changes nothing and works no benefit out.
namespace quillmere::review {

enum class Severity {
    Fault,  ///< the authority sends such a form back, or the form contradicts itself
    Oddity, ///< may be right, and is often wrong
};

/// Where a check has found something: a box of a screen, and what is special about it.
struct Spot {
    std::string_view section; ///< letter of the form, empty outside the sections
    std::string_view screen;  ///< the screen that holds the box
    std::string box;          ///< given name of the box to go to
    int index = Box::NoIndex; ///< of a control array
    std::string detail = {};  ///< "Car 3", "20.00 on the form, 30.00 in the list"; empty: the words say all

    friend bool operator==(const Spot&, const Spot&) = default;
};
using Spots = std::vector<Spot>;

/// One thing that is looked for.
struct Check {
    std::string_view code; ///< stays the same from year to year
    Severity severity;
    std::string_view words;
    std::string_view source; ///< who says so
    bool typedOver = false;  ///< a box reads something else than what was worked out for it
};

/// A check with its look at the facts.
template<class Looked>
struct CheckRow {
    Check check;
    Spots (*find)(const Looked&);
};

/// What the checks of an employer see of his employees' forms and of his declaration.
struct EmployerFacts {
    /// What an employer's checks have to know of one employee.
    struct Employee {
        std::string name;
        std::string payeReference;
        std::string nationalInsurance;
        bool director = false;
        bool anyBenefit = false; ///< some cash equivalent or payment stands on the form
    };
    std::vector<Employee> employees;
    DeclarationTotals declaration; ///< as worked out today
    std::string storedBoxA;        ///< as the declaration's screen has stored it
};

/// A text of which its box on paper holds the beginning only.
struct CutText {
    std::string field;
    std::string prints; ///< what of it prints
};
/// What the checks of the printed form see.
using PaperFacts = std::vector<CutText>;

using EmployeeCheck = CheckRow<FormFacts>;
using PaperCheck = CheckRow<PaperFacts>;
using EmployerCheck = CheckRow<EmployerFacts>;

/// Every check of an employee's form, in the order of the form.
std::span<const EmployeeCheck> EmployeeChecks();
/// Every check of how a form prints.
std::span<const PaperCheck> PaperChecks();
/// Every check over an employer's forms and his declaration.
std::span<const EmployerCheck> EmployerChecks();

/// Something to look at.
struct Finding {
    const Check* check;
    std::shared_ptr<const std::string> form; ///< whose form, one name for all its findings
    Spot spot;

    /// Empty for the employer's own findings.
    const std::string& Employee() const { return *form; }
    friend bool operator==(const Finding& one, const Finding& other)
    {
        return one.check == other.check && one.Employee() == other.Employee() && one.spot == other.spot;
    }
};

/// There may be tens of thousands.
using FindingList = std::deque<Finding>;

// Each lists what it finds behind what is listed, in the order of the checks.

/// All findings on one employee's form.
void CheckEmployee(std::string_view employee, const FormFacts& form, FindingList& findings);
/// Where a figure has been typed over one that was worked out, with the words about it.
struct TypedOverFigure {
    Spot spot;
    std::string words;
};
std::vector<TypedOverFigure> FiguresTypedOver(const FormFacts& form);
/// All findings on how an employee's form prints.
void CheckPaper(std::string_view employee, const PaperFacts& facts, FindingList& findings);
/// All findings that an employer's forms and declaration show together.
void CheckEmployer(const EmployerFacts& facts, FindingList& findings);

/// What an employer's checks need of one employee's form.
EmployerFacts::Employee FactsOf(std::string_view employee, const FormFacts& form);

} // namespace quillmere::review
