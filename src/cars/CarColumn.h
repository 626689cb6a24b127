#pragma once

#include "cars/CarBenefit.h"
#include "cars/CarPrices.h"
#include "clientdb/FurtherCars.h"
#include "frame/Session.h"

#include <array>
#include <functional>
#include <span>
#include <string>
#include <string_view>

namespace quillmere {

class OpenRecord;

/// One car's column of boxes: six cars, one design. It makes the boxes on its screen, holds what leaving each of them
/// does, and runs `CarBenefitCompute`. Cars 1 and 2 stand on page 1, the others on the two screens for further cars.
class CarColumn {
public:
    /// What follows a run of the routine: the totals of page 1, or nothing.
    struct Totals {
        std::function<void()> computeBoth;
        std::function<void()> computeFuel;
    };

    /// Makes the column's boxes on `screen`, at the end of those that are there.
    CarColumn(Session& session, Screen& screen, int car, Totals totals);
    CarColumn(const CarColumn&) = delete;
    CarColumn& operator=(const CarColumn&) = delete;

    /// The procedure of the general error box when a run fails.
    static constexpr std::string_view ComputeProcedure = "Car Benefit - Compute";

    /// Reads the whole column and rewrites its working boxes and its two results.
    void CarBenefitCompute();
    /// Empties every box, clears the ticks and makes the boxes writable.
    void Empty();

private:
    Box& box(std::string_view stem) const;
    Box& PeriodBox(std::string_view stem, int row) const;
    void AddBoxes();
    void BindEvents();
    CarDateTexts DateTexts() const;

    void SetStates();
    void Compute();
    void Write(const CarWorking& working);
    void SetWithdrawnState(std::string_view dateWithdrawn);

    void LeaveFuel();
    void LeaveRegistrationDate();
    void LeaveDateFrom();
    void LeaveDateTo();
    void LeavePeriod(Box& left, const CarDateOutcome& outcome);
    void LeaveListPrice();
    void LeaveAccessories();
    void LeaveCapitalContribution();
    bool Refuse(Box& price, PriceCheck check) const;
    void LeaveDateWithdrawn();
    void ClickFuelTick();
    void Tell(std::string_view title, std::string_view text) const;

    Session& session;
    Screen& screen;
    int car;
    Totals totals;
};

/// A car as its column on a screen reads.
CarTexts CarTextsOn(const Screen& screen, int car);

/// One of the two totals of section F: where its figures come from and what is said when they cannot be had.
struct CarTotalKind {
    std::string_view figure;     ///< stem of the six boxes and fields
    std::string_view total;      ///< field of the employee's record
    std::string_view errorTitle; ///< when the record of cars 3 to 6 is missing
};

/// The six cars' figures of a stem. One is read from `screen` if that car stands there, for cars 1 and 2 else from the
/// employee's open record, where it is given, and for the others from the stored one.
std::array<std::string, 6> CarFigures(const OpenRecord* page, const Screen& screen, std::string_view stem,
                                      const FurtherCars& furtherCars);

/// Adds the six cars' figures and hands each total over to the employee's record.
void ComputeCarTotals(Session& session, const Screen& screen, std::span<const CarTotalKind> kinds,
                      const FurtherCars& furtherCars);

} // namespace quillmere
