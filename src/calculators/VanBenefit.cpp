#include "calculators/VanBenefit.h"

#include "edition/Edition.h"
#include "frame/Text.h"

#include <algorithm>
#include <chrono>
#include <optional>

namespace quillmere {

namespace {

using enum VanDate;

constexpr auto FirstPair = std::to_array({From1, To1});

/// The day in a box; nothing for a blank one.
std::optional<Day> DayIn(const VanDates& dates, VanDate box)
{
    return ReadDate(dates[box]);
}

/// The day in a box of the first pair, or the bound of the year for a blank one.
Day FirstDay(const VanDates& dates)
{
    return DayIn(dates, From1).value_or(edition::TaxYearStartDay);
}
Day LastDay(const VanDates& dates)
{
    return DayIn(dates, To1).value_or(edition::TaxYearEndDay);
}

/// The date boxes of a van, read once.
struct VanDays {
    DayRange available;
    std::optional<DayRange> second, third; ///< further periods of unavailability with both their dates
    std::optional<Day> withdrawn;
};

VanDays ReadDays(const VanDates& dates)
{
    const auto complete = [&](VanDate from, VanDate to) -> std::optional<DayRange> {
        const auto first = DayIn(dates, from);
        const auto last = DayIn(dates, to);
        if (!first || !last)
            return std::nullopt;
        return DayRange{*first, *last};
    };
    return {.available = {FirstDay(dates), LastDay(dates)},
            .second = complete(From2, To2),
            .third = complete(From3, To3),
            .withdrawn = DayIn(dates, Withdrawn)};
}

/// Days of a further period, both ends counted; one that is too short counts nothing.
int DaysOf(const std::optional<DayRange>& period, const edition::VanRates& rates)
{
    const int days = period ? DaysBetween(period->first, period->last) + 1 : 0;
    return days < rates.shortestPeriod ? 0 : days;
}

/// Whole pounds times a percentage; exact, since a percentage has no more than four decimals.
Amount TimesPercentage(Amount wholePounds, Amount percentage)
{
    return percentage * (wholePounds.Units() / Amount::UnitsOfAPound);
}

/// The days that a rule compares. A blank box of the first pair is the bound of the year unless the rule says
/// otherwise.
std::optional<Day> RuleDay(const VanDates& dates, VanDate box, VanBlankBound blank)
{
    if (const auto day = DayIn(dates, box); day || blank == VanBlankBound::SkipsTheRule)
        return day;
    if (box == From1)
        return FirstDay(dates);
    if (box == To1)
        return LastDay(dates);
    return std::nullopt;
}

bool Holds(const VanDateRule& rule, const VanDates& dates)
{
    if (rule.test == VanDateTest::EitherFilled)
        return !dates[rule.from].empty() || !dates[rule.to].empty();
    if (rule.test == VanDateTest::NotBeforeTheYear)
        return IsNotBeforeYearStart(dates[rule.to]);
    const auto from = RuleDay(dates, rule.from, rule.blank);
    const auto to = RuleDay(dates, rule.to, rule.blank);
    if (!from || !to)
        return true;
    const int days = DaysBetween(*from, *to);
    switch (rule.test) {
    case VanDateTest::Above0:
        return days > 0;
    case VanDateTest::NotBelow0:
        return days >= 0;
    case VanDateTest::APeriodLong:
        return days >= edition::Vans.shortestPeriod - 1;
    case VanDateTest::NotAbove0:
        return days <= 0;
    case VanDateTest::EitherFilled:
    case VanDateTest::NotBeforeTheYear:
        break;
    }
    return true;
}

void EmptyPeriod(VanDates& dates, VanDate from, VanDate to)
{
    dates[from].clear();
    dates[to].clear();
}

/// Runs the rules of a box that is filled in, until it is emptied.
void RunRules(VanDates& dates, VanDate left)
{
    for (const VanDateRule& rule : VanDateRules) {
        if (rule.left != left || dates[left].empty() || Holds(rule, dates))
            continue;
        if (rule.loss == VanDateLoss::ThirdPeriod)
            EmptyPeriod(dates, From3, To3);
        else
            dates[left].clear();
    }
}

/// Runs the rules of a later period as a whole: a period that does not fit loses both dates, half filled or not.
void RunPeriod(VanDates& dates, VanDate from, VanDate to)
{
    for (const VanDate box : {from, to}) {
        const bool wasFilled = !dates[box].empty();
        RunRules(dates, box);
        if (wasFilled && dates[box].empty())
            EmptyPeriod(dates, from, to);
    }
}

/// A row of the grid as its total takes it.
Amount RowValue(std::string_view text)
{
    // Kept: a row in parentheses counts nothing, so that a negative fuel charge does not lower the total.
    const std::string trimmed = Trim(text);
    return trimmed.starts_with('(') ? Amount() : ReadAmount(trimmed);
}

std::string TotalText(const std::array<std::string, 3>& rows)
{
    Amount total;
    for (const std::string& row : rows)
        total += RowValue(row);
    return AmountText(total, edition::FormatMoneyBlankZero);
}

/// Days of periods, both ends of each counted.
int DaysOf(const std::vector<DayRange>& periods)
{
    int days = 0;
    for (const DayRange& period : periods)
        days += DaysBetween(period.first, period.last) + 1;
    return days;
}

std::vector<DayRange> PeriodsAfterFuelWithdrawn(const VanDays& days)
{
    if (!days.withdrawn)
        return {};
    static constexpr std::chrono::days OneDay(1);
    const Day withdrawn = *days.withdrawn;
    const std::optional<DayRange>&second = days.second, &third = days.third;
    const auto between = [](Day from, Day to) { return DayRange{from + OneDay, to - OneDay}; };
    const auto toTheEnd = [&days](Day from) { return DayRange{from + OneDay, days.available.last}; };

    std::vector<DayRange> periods;
    if (second && withdrawn < second->first && third)
        periods = {between(withdrawn, second->first), between(second->last, third->first), toTheEnd(third->last)};
    else if (second && withdrawn < second->first)
        periods = {between(withdrawn, second->first), toTheEnd(second->last)};
    else if (second && third && withdrawn > second->last && withdrawn < third->first)
        periods = {between(withdrawn, third->first), toTheEnd(third->last)};
    // Kept: a count that is truly nought falls back to all days to the end, unavailable ones included.
    return DaysOf(periods) != 0 ? periods : std::vector{toTheEnd(withdrawn)};
}

void WorkOutFuel(VanWorking& working, const VanDays& days, const edition::VanRates& rates, int daysInYear)
{
    working.P = Amount::WholePounds(rates.fuelCharge);
    working.R = DaysOf(PeriodsAfterFuelWithdrawn(days));
    working.S = working.E + working.R;
    working.T = RoundUpToPounds(Amount::FromDouble((working.P * working.S).Pounds() / daysInYear));
    working.V = working.P - working.T;
    // Kept: here the percentage is divided first and then multiplied, unlike the reduction of the van itself.
    working.W = RoundUpToPounds(Amount::FromDouble(working.V.Pounds() * (working.H.Pounds() / 100)));
    working.X = working.V - working.W;
}

} // namespace

Amount RoundUpToPounds(Amount amount)
{
    const Amount cut = IntPounds(amount.Pounds());
    return cut == amount ? cut : cut + Amount::WholePounds(1);
}

VanWorking VanBenefit(const VanFacts& facts, const edition::VanRates& rates)
{
    VanWorking working;
    working.dates = facts.dates;
    if (facts.registrationNumber.empty()) {
        for (const VanDate box : {From1, To1, From2, To2, From3, To3})
            working.dates[box].clear();
        return working;
    }

    VanDays days = ReadDays(facts.dates);
    const int daysInYear = DaysInYear(ReadWholeNumber(edition::YearEndYear));
    working.A = Amount::WholePounds(rates.charge);
    working.B = DaysBetween(edition::TaxYearStartDay, days.available.first) +
                DaysBetween(days.available.last, edition::TaxYearEndDay);
    working.C = DaysOf(days.second, rates);
    working.D = DaysOf(days.third, rates);
    working.E = working.B + working.C + working.D;
    working.F = RoundUpToPounds(Amount::FromDouble((working.A * working.E).Pounds() / daysInYear));
    working.G = working.A - working.F;
    working.H = ReadAmount(facts.percentage);
    working.J = RoundUpToPounds(Amount::FromDouble(TimesPercentage(working.G, working.H).Pounds() / 100));
    working.K = working.G - working.J;
    working.L = ReadAmount(facts.payments);
    working.M = working.L > working.K ? Amount() : working.K - working.L;
    if (!facts.fuelTick)
        return working;

    switch (CheckVanWithdrawn(facts.dates)) {
    case VanWithdrawnCheck::EmptiedAndRestart: {
        VanFacts again = facts;
        again.dates[Withdrawn].clear();
        return VanBenefit(again, rates);
    }
    case VanWithdrawnCheck::Emptied:
        working.dates[Withdrawn].clear();
        days.withdrawn.reset();
        break;
    case VanWithdrawnCheck::Stands:
        break;
    }
    WorkOutFuel(working, days, rates, daysInYear);
    return working;
}

std::vector<DayRange> PeriodsAfterFuelWithdrawn(const VanDates& dates)
{
    return PeriodsAfterFuelWithdrawn(ReadDays(dates));
}

int DaysAfterFuelWithdrawn(const VanDates& dates)
{
    return DaysOf(PeriodsAfterFuelWithdrawn(dates));
}

DayRange DaysAvailable(const VanDates& dates)
{
    return ReadDays(dates).available;
}

VanWithdrawnCheck CheckVanWithdrawn(const VanDates& dates)
{
    const std::string& withdrawn = dates[Withdrawn];
    if (withdrawn.empty())
        return VanWithdrawnCheck::Stands;
    const VanDays days = ReadDays(dates);
    const auto& day = days.withdrawn;
    if (!day || *day == days.available.last || !IsDateBetween(withdrawn, dates[From1], dates[To1]))
        return VanWithdrawnCheck::EmptiedAndRestart;
    for (const auto& period : {days.second, days.third})
        if (period && *day >= period->first && *day <= period->last)
            return VanWithdrawnCheck::Emptied;
    return VanWithdrawnCheck::Stands;
}

VanDates LeaveVanDate(const VanDates& before, const VanDates& now, VanDate left)
{
    VanDates dates = now;
    const bool wasFilled = !Trim(now[left]).empty();
    dates[left] = EnteredDate(now[left]);
    RunRules(dates, left);

    const bool emptied = wasFilled && dates[left].empty();
    const bool isFirstPair = std::ranges::find(FirstPair, left) != FirstPair.end();
    if (isFirstPair && (emptied || dates[left] != before[left])) {
        RunPeriod(dates, From2, To2);
        RunPeriod(dates, From3, To3);
    }
    return dates;
}

VanTotals TotalOfVans(const std::array<std::string, 3>& charges, const std::array<std::string, 3>& fuelCharges)
{
    VanTotals totals{.van = TotalText(charges), .fuel = TotalText(fuelCharges)};
    // Kept: van 1 alone decides whether the totals are stored.
    if (!charges[0].empty())
        totals.storedVan = totals.van;
    if (!fuelCharges[0].empty())
        totals.storedFuel = totals.fuel;
    return totals;
}

} // namespace quillmere
