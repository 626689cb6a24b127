#pragma once

#include "clientdb/store/Recordset.h"
#include "frame/Amount.h"

#include <array>
#include <string>
#include <string_view>
#include <vector>

namespace quillmere {

/// The benefits liable to Class 1A of all employees of an employer, in the fields as they are stored, unrounded. It
/// reads through a cursor of its own, so that no other position moves. Throws StoreError.
Amount EmployerTotal(Database& database, std::string_view employer);

/// A box of an employee's form that counts in the total.
struct LiableBenefit {
    std::string employee;
    std::string_view field; ///< one of `Class1AFields`
    Amount amount;
};
/// All that make up the total, by employee in the order of the form, without those that count nothing.
std::vector<LiableBenefit> LiableBenefits(Database& database, std::string_view employer);

/// Lines of an address on the declaration.
inline constexpr std::size_t AddressLines = 6;

/// All values of an employer's declaration as a batch prints them: box A is the total of the employees' forms, whatever
/// a screen has stored, and what follows from it is worked out afresh. Amounts stand in amount form, empty for nought;
/// a value that has no place in the return is empty.
struct DeclarationTotals {
    std::string employerReference;
    std::string accountsOffReference;
    std::array<std::string, AddressLines> employerAdd;
    std::array<std::string, AddressLines> returnAdd;
    std::string section1ABox;
    std::string section1CBox; ///< empty with adjustments
    bool section1Tick = false;
    bool section2Tick1 = false;
    bool section2Tick2 = false;
    bool section2Tick3 = false;
    std::string sentToBox;
    std::string sentToDate;
    // Section 4: all empty without adjustments. B and C with their descriptions stand as they are stored.
    std::string section4ABox;
    std::string section4BBox;
    std::string section4BDesc;
    std::string section4CBox;
    std::string section4CDesc;
    std::string section4DBox;
    std::string section4FBox;

    friend bool operator==(const DeclarationTotals&, const DeclarationTotals&) = default;
};

/// Works out an employer's declaration. An employer with no record of a declaration has the totals alone. Throws
/// StoreError.
DeclarationTotals ComputeDeclarationTotals(Database& database, std::string_view employer);

/// The same by who has been through the employees already: `benefits` is the employer's total.
DeclarationTotals ComputeDeclarationTotals(Database& database, std::string_view employer, Amount benefits);

} // namespace quillmere
