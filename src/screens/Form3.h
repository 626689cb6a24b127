#pragma once

#include "cars/CarColumn.h"
#include "screens/P11DPage.h"

#include <deque>
#include <initializer_list>
#include <optional>

namespace quillmere {

/// Page 1: the first side of the form P11D for one employee, with the identity block and sections A to F.
class Form3 : public P11DPage {
public:
    explicit Form3(Session& session);

    bool Load() override;
    void Activate() override;
    void Unload() override;

    /// The totals of section F over all six cars: both of them, or the fuel's alone.
    void ComputeCashAndFuel();
    void ComputeFuel();

private:
    void LeaveDateOfBirth();
    void LeaveNationalInsurance();
    void ClickDeclaration();
    /// Works cars out one after the other, with one look at cars 3 to 6 for all their totals.
    void ComputeCars(std::initializer_list<CarColumn*> columns);

    std::deque<CarColumn> cars;
    bool keepsFurtherCars = false;
    std::optional<FurtherCars> furtherCars; ///< while `keepsFurtherCars`
    bool computedOnce = false;              ///< both cars have been worked out for the record that was opened
};

} // namespace quillmere
