#pragma once

#include "clientdb/Notepad.h"

#include <string>
#include <string_view>
#include <vector>

namespace quillmere {

/// A row of a van's history as its boxes read: the day of a change of use, and the type of use from then on.
struct VanUse {
    std::string change; ///< `ChangeUse`
    std::string type;   ///< `TypeUse`, "1" to "4"
};

/// Days of a van's uses.
struct VanUseDays {
    std::vector<std::string> rows; ///< `Days` of each row; empty for one that is not in use, and for the last
    std::string last;              ///< `FinalDays`: the last row's days
};

/// The days of each row in use: from its day to that of the next row in use; the first row runs from the beginning of
/// the history's year, and the last to its end. A row needs a day and a type; the first one needs no day.
VanUseDays DaysOfUse(const std::vector<VanUse>& uses);

/// What is wrong with a row of a van's history.
enum class VanUseFault {
    None,
    BadDate,    ///< no date, or one outside the history's year
    Successive, ///< two periods of unavailability that follow one another
    TooLong,    ///< a short unavailability that is too long
    TooShort,   ///< a long unavailability that is too short
};

/// Looks at a row, counted from 0, after it has been changed: its date, and the periods that it begins and ends.
VanUseFault CheckUse(const std::vector<VanUse>& uses, std::size_t row);

/// The history of one van by an earlier method of charging: a list of changes of use through the year. Nothing leads
/// to it, and nothing reads what it stores in the vans' record.
class GNotepad2 : public Notepad {
public:
    explicit GNotepad2(Session& session);

    bool Load() override;

private:
    std::vector<VanUse> Uses() const;
    std::string FieldOf(std::string_view stem, int row) const;
    std::string LastField() const;
    void KeepHistory();
    void LeaveRow(const Box& left);
    void Recalculate() override;
    bool MayStore() override;

    int van; ///< 1 to 3
};

} // namespace quillmere
