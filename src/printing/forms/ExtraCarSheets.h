#pragma once

#include "printing/forms/FormPrimitives.h"
#include "printing/forms/Records.h"

namespace quillmere {

/// A sheet with section F of the form for two of cars 3 to 6.
struct ExtraCarSheet {
    int firstCar; ///< 3 or 5
    std::string_view procedure;
    std::string_view loadingError;
    std::string_view bookmark;
};

inline constexpr ExtraCarSheet Cars3And4{.firstCar = 3,
                                         .procedure = "Print P11D(3-4)",
                                         .loadingError = "P11D Cars 3 + 4 - loading error",
                                         .bookmark = "P11D cars 3 and 4"};
inline constexpr ExtraCarSheet Cars5And6{.firstCar = 5,
                                         .procedure = "Print P11D(5-6)",
                                         .loadingError = "P11D Cars 5 + 6 - loading error",
                                         .bookmark = "P11D cars 5 and 6"};

/// True as soon as one of the cars has a cash equivalent of the car or of its fuel in the table, whatever else of it is
/// filled. The table stands on the employee's record.
[[nodiscard]] bool HaveCashEquivalents(Records& records, std::string_view table, int firstCar, int lastCar);

/// The sheet, from the fields of a record of `ExtraCars`.
void DrawExtraCarSheet(PageLayer& page, const ExtraCarSheet& sheet, std::string_view nationalInsurance,
                       const FieldReader& readCars);

} // namespace quillmere
