#pragma once

#include "calculators/TabbedNotepad.h"
#include "calculators/VanBenefit.h"

namespace quillmere {

/// A caption with the number of days of the tax year in the place that it keeps for it.
std::string WithDaysOfYear(std::string_view caption);

/// The calculator of vans and van fuel behind section G: up to three vans, of which one shows at a time.
class GNotepad : public TabbedNotepad {
public:
    explicit GNotepad(Session& session);

    bool Load() override;

private:
    void TabShown() override;
    void Recalculate() override;
    void Put(const VanWorking& working);
    void WriteDates(const VanDates& dates);
    VanDates Dates() const;
    /// The day on which the fuel was withdrawn can be entered while there is fuel.
    void OpenDateWithdrawn();
    void LeaveDate(VanDate left);
    void LeaveRegistrationNumber(Box& number);
    void ClickFuelTick();
    std::vector<Result> Results(const Recordset& own) const override;
    void Delete() override;

    VanDates datesBefore; ///< as they stood when the box in use was entered
};

} // namespace quillmere
