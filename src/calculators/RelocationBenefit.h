#pragma once

#include "edition/RelocationRates.h"
#include "frame/Amount.h"

#include <string>
#include <string_view>

/// What the expenses and benefits of a move exceed the exempt amount by. ITEPA 2003 s.271 to s.289.
namespace quillmere {

/// The entered boxes.
struct RelocationFacts {
    std::string ABox;         ///< expenses payments
    std::string EmployerCost; ///< cost of benefits
    std::string EmployeeCost; ///< paid towards it by the employee
    std::string CBox;         ///< living accommodation
    std::string QualExp;      ///< qualifying expenses and benefits of last year
};

/// The working paper. With the first four boxes empty nothing is worked out and no box changes.
struct RelocationWorking {
    bool computed = false;
    Amount A, employerCost, employeeCost;
    Amount B; ///< employer's less employee's cost, may be negative
    Amount C;
    Amount D; ///< A + B + C
    Amount qualExp;
    Amount E;               ///< exempt amount that is left
    bool exemptNil = false; ///< more than the exemption was used last year: `EBox` reads "Nil"
    Amount F;               ///< D - E
    bool resultNil = false; ///< E is greater than D: `FBox` reads "Nil"

    /// What `EBox` and `FBox` read.
    std::string EText() const;
    std::string FText() const;
};

/// Works out the move (recalculation of `JNotepad`).
RelocationWorking RelocationBenefit(const RelocationFacts& facts, int exemption = edition::RelocationExemption);

/// True if `EmployeeCost` is not greater than `EmployerCost`; a greater one is emptied without a message.
bool DoesEmployeeCostStand(std::string_view employeeCost, std::string_view employerCost);

} // namespace quillmere
