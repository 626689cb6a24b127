#pragma once

#include "edition/VanRates.h"
#include "frame/Amount.h"
#include "frame/Dates.h"

#include <array>
#include <cstddef>
#include <string>
#include <vector>

/// The van benefit and van fuel benefit of one van, its dates, and what the three vans come to. ITEPA 2003 s.154 to
/// s.164.
namespace quillmere {

/// The date boxes of a van: the days between which it was available, two further periods in which it was not, and the
/// day on which the fuel was withdrawn.
enum class VanDate : std::size_t { From1, To1, From2, To2, From3, To3, Withdrawn };

/// The texts of a van's date boxes.
struct VanDates {
    std::array<std::string, 7> texts;

    std::string& operator[](VanDate box) { return texts[static_cast<std::size_t>(box)]; }
    const std::string& operator[](VanDate box) const { return texts[static_cast<std::size_t>(box)]; }
    friend bool operator==(const VanDates&, const VanDates&) = default;
};

/// A van as its boxes read.
struct VanFacts {
    std::string registrationNumber; ///< `VanRegNumber`; empty: there is no van
    VanDates dates;
    std::string percentage; ///< `HBox`
    std::string payments;   ///< `LBox`
    bool fuelTick = false;  ///< `VanFuelTick`
};

/// The working paper of a van, box by box. Amounts in pounds, B to E, R and S in days, H in per cent.
struct VanWorking {
    Amount A;
    int B = 0, C = 0, D = 0, E = 0;
    Amount F, G, H, J, K, L;
    Amount M; ///< van benefit charge
    Amount P;
    int R = 0, S = 0;
    Amount T, V, W;
    Amount X;       ///< van fuel benefit charge; negative for a percentage above 100
    VanDates dates; ///< what the date boxes are to read
};

/// Rounds up to whole pounds an amount that already stands at four decimals.
Amount RoundUpToPounds(Amount amount);

/// Works out one van (recalculation of `GNotepad`). A van without registration number has nothing but blanks, and loses
/// its dates but not the day of withdrawal.
VanWorking VanBenefit(const VanFacts& facts, const edition::VanRates& rates = edition::Vans);

/// The periods between withdrawal of the fuel and the end of availability that are not counted as unavailable.
std::vector<DayRange> PeriodsAfterFuelWithdrawn(const VanDates& dates);
/// Their days (box R).
int DaysAfterFuelWithdrawn(const VanDates& dates);

/// The days between which a van was available; a blank box is the bound of the year.
DayRange DaysAvailable(const VanDates& dates);

/// What the check of the day of withdrawal comes to. Nobody is told.
enum class VanWithdrawnCheck {
    Stands,
    Emptied,           ///< it lies in a period in which there was no van
    EmptiedAndRestart, ///< it is the last day of the van or outside its days: the whole recalculation starts again
};
VanWithdrawnCheck CheckVanWithdrawn(const VanDates& dates);

/// What a rule asks of the difference in whole days between two boxes.
enum class VanDateTest { EitherFilled, Above0, NotBelow0, APeriodLong, NotAbove0, NotBeforeTheYear };
/// What a rule makes of a blank `DateFrom1` or `DateTo1`.
enum class VanBlankBound { IsTheYears, SkipsTheRule };
/// What is emptied when a rule fails.
enum class VanDateLoss { BoxLeft, ThirdPeriod };

/// One rule that a date box is held to when it is left. A rule that names another blank box does not apply.
struct VanDateRule {
    VanDate left;
    VanDateTest test;
    VanDate from; ///< the difference runs from this box ...
    VanDate to;   ///< ... to this one; of `EitherFilled` the two boxes of which one must be filled in, of
                  ///< `NotBeforeTheYear` the box itself
    VanBlankBound blank = VanBlankBound::IsTheYears;
    VanDateLoss loss = VanDateLoss::BoxLeft;
};

/// The rules of every box, in the order in which they are run. `APeriodLong` is a difference of 29 days or more, 30
/// days counting both ends.
inline constexpr auto VanDateRules = [] {
    using enum VanDate;
    using enum VanDateTest;
    return std::to_array<VanDateRule>({
        {.left = From1, .test = Above0, .from = From1, .to = To1, .blank = VanBlankBound::SkipsTheRule},
        {.left = To1, .test = Above0, .from = From1, .to = To1, .blank = VanBlankBound::SkipsTheRule},

        {.left = From2, .test = EitherFilled, .from = From1, .to = To1},
        {.left = From2, .test = Above0, .from = From2, .to = To2},
        {.left = From2, .test = APeriodLong, .from = From2, .to = To2},
        {.left = From2, .test = NotBelow0, .from = From1, .to = From2},
        {.left = From2, .test = NotBelow0, .from = From2, .to = To1},
        {.left = From2, .test = APeriodLong, .from = From2, .to = To1},
        {.left = From2, .test = NotBeforeTheYear, .from = From2, .to = From2},

        {.left = To2, .test = Above0, .from = From2, .to = To2},
        {.left = To2, .test = APeriodLong, .from = From2, .to = To2},
        {.left = To2, .test = NotBelow0, .from = To2, .to = To1},
        {.left = To2, .test = Above0, .from = From1, .to = To2},
        {.left = To2, .test = NotBelow0, .from = To2, .to = From3, .loss = VanDateLoss::ThirdPeriod},

        {.left = From3, .test = EitherFilled, .from = From2, .to = To2},
        {.left = From3, .test = Above0, .from = From3, .to = To3},
        {.left = From3, .test = APeriodLong, .from = From3, .to = To3},
        {.left = From3, .test = APeriodLong, .from = From2, .to = From3},
        {.left = From3, .test = NotAbove0, .from = From3, .to = To2},
        {.left = From3, .test = APeriodLong, .from = From3, .to = To1},

        {.left = To3, .test = Above0, .from = From3, .to = To3},
        {.left = To3, .test = APeriodLong, .from = From3, .to = To3},
        {.left = To3, .test = NotBelow0, .from = To2, .to = To3},
        {.left = To3, .test = NotAbove0, .from = To1, .to = To3},
        {.left = To3, .test = Above0, .from = From1, .to = To3},
    });
}();

/// A date box is left: what all date boxes are to read. `before` holds the texts as they stood when the box was
/// entered, `now` those with the new one. The day of withdrawal is tested for its form and year alone; its further
/// check belongs to the recalculation, which follows in every case.
VanDates LeaveVanDate(const VanDates& before, const VanDates& now, VanDate left);

/// What Ok makes of the three vans: texts of the totals on the page, and of the same fields as they are stored.
struct VanTotals {
    std::string van, fuel;             ///< boxes `GVan`, `GVanFuel`
    std::string storedVan, storedFuel; ///< fields of the same names
};

/// Adds the `MBox` and `XBox` rows of vans 1 to 3.
VanTotals TotalOfVans(const std::array<std::string, 3>& charges, const std::array<std::string, 3>& fuelCharges);

} // namespace quillmere
