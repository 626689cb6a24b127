#pragma once

#include "clientdb/store/Recordset.h"
#include "review/Overview.h"

#include <string>
#include <string_view>
#include <vector>

/// Last year beside this year: what each section comes to, and what the transfer has left behind.
namespace quillmere::review {

/// Something of last year that has not come over, and why, in the transfer's own words.
struct LeftBehind {
    std::string what;  ///< "Car 2", "Notepad I", an employee
    std::string which; ///< "Estate 2.0", "3 amounts"
    std::string why;

    friend bool operator==(const LeftBehind&, const LeftBehind&) = default;
};

struct YearsCompared {
    bool isLastYear = false, isThisYear = false; ///< whether there is a record
    OverviewSums lastYear, thisYear;
    std::vector<LeftBehind> leftBehind;
};

/// The years of an employee, or of all of an employer's where the employee is empty: then whoever is in one of them
/// alone is named. Throws StoreError.
YearsCompared CompareYears(Database& lastYear, Database& thisYear, std::string_view employer,
                           std::string_view employee);

} // namespace quillmere::review
