#include "review/BoxChoices.h"

#include "edition/CarWords.h"
#include "edition/Edition.h"
#include "edition/LeftOvers.h"
#include "review/BoxNames.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <string>

namespace quillmere::review {

namespace {

constexpr auto YearStart = edition::TaxYearStartDay, YearEnd = edition::TaxYearEndDay;
/// No form is about anybody born earlier; older cars are beyond what the rules can count.
constexpr auto Earliest = edition::OldestDate;

/// A form is sent within the year after its own.
constexpr auto SentBy = YearEnd + std::chrono::days(365);

constexpr auto Fuels = [] {
    std::array<Choice, edition::car::Fuels.size()> fuels{};
    std::ranges::transform(edition::car::Fuels, fuels.begin(), [](const auto& fuel) {
        return Choice{fuel.letter, fuel.name};
    });
    return fuels;
}();
constexpr auto Genders = std::to_array<Choice>({{"M", "Male"}, {"F", "Female"}});
constexpr auto YesAndNo = std::to_array<Choice>({{"Y", "Yes"}, {"N", "No"}});
constexpr auto TypesOfUse = std::to_array<Choice>({
    {"1", "Exclusive"},
    {"2", "Shared"},
    {"3", "Unavailable, fewer than 30 days"},
    {"4", "Unavailable, 30 days or more"},
});
constexpr auto NoInterest = std::to_array<Choice>({{"NIL", "No interest was paid"}});

constexpr DayBound From(std::string_view box, Day otherwise = YearStart)
{
    return {.box = box, .otherwise = otherwise};
}
constexpr DayBound To(std::string_view box, Day otherwise = YearEnd)
{
    return {.box = box, .otherwise = otherwise};
}

constexpr std::string_view CarScreens = "Form3 Form3_4 Form5_6";

// clang-format off
constexpr auto Rows = std::to_array<BoxChoices>({
    // Page 1
    {.screen = "Form3", .box = "DateofBirth", .first = From({}, Earliest), .last = To({})},
    {.screen = "Form3", .box = "SexBox", .letters = Genders},
    // Cars
    {.screen = CarScreens, .box = "FFuel", .letters = Fuels},
    {.screen = CarScreens, .box = "FRegDate", .first = From({}, Earliest), .last = To({})},
    {.screen = CarScreens, .box = "FDateFrom", .first = From("FRegDate#"), .last = To("FDateTo#"), .opensAtFirst = true},
    {.screen = CarScreens, .box = "FDateTo", .first = From("FDateFrom#"), .last = To({})},
    {.screen = CarScreens, .box = "txtUnavailableFirst", .first = From("FDateFrom#"), .last = To("FDateTo#"), .opensAtFirst = true},
    {.screen = CarScreens, .box = "txtUnavailableLast", .first = From("txtUnavailableFirst#"), .last = To("FDateTo#")},
    {.screen = CarScreens, .box = "FDateWithdrawn", .first = From("FDateFrom#"), .last = To("FDateTo#")},
    // Page 2
    {.screen = "Side2Form1", .box = "HLoanInterest", .letters = NoInterest},
    {.screen = "Side2Form1", .box = "HLoanDate", .first = From({}, edition::EarliestLoanDay), .last = To("HLoanDischarge#")},
    {.screen = "Side2Form1", .box = "HLoanDischarge", .first = From("HLoanDate#", edition::EarliestLoanDay), .last = To({})},
    {.screen = "Side2Form1", .box = "OEntertainTick", .letters = YesAndNo},
    // Vans
    {.screen = "GNotepad", .box = "DateFrom1", .first = From({}), .last = To("DateTo1"), .opensAtFirst = true},
    {.screen = "GNotepad", .box = "DateTo1", .first = From("DateFrom1"), .last = To({})},
    {.screen = "GNotepad", .box = "DateFrom", .first = From("DateFrom1"), .last = To("DateTo1"), .opensAtFirst = true},
    {.screen = "GNotepad", .box = "DateTo", .first = From("DateFrom#"), .last = To("DateTo1")},
    {.screen = "GNotepad", .box = "DateWithdrawn", .first = From("DateFrom1"), .last = To("DateTo1")},
    {.screen = "GNotepad2", .box = "ChangeUse", .first = From({}, edition::VanHistoryStartDay), .last = To({}, edition::VanHistoryEndDay), .opensAtFirst = true},
    {.screen = "GNotepad2", .box = "TypeUse", .letters = TypesOfUse},
    // Loans
    {.screen = "HNotepad", .box = "DateFrom", .first = From({}), .last = To("DateTo"), .opensAtFirst = true},
    {.screen = "HNotepad", .box = "DateTo", .first = From("DateFrom"), .last = To({})},
    // P11D(b)
    {.screen = "P11DDeclaration", .box = "SentDate", .first = From({}), .last = To({}, SentBy)},
    // The car sheet and its CO2 dialog
    {.screen = "FNotepad", .box = "Fuel", .letters = Fuels},
    {.screen = "FNotepad", .box = "DateReg", .first = From({}, Earliest), .last = To({})},
    {.screen = "FNotepad", .box = "DateFirst", .first = From("DateReg"), .last = To("DateLast"), .opensAtFirst = true},
    {.screen = "FNotepad", .box = "DateLast", .first = From("DateFirst"), .last = To({})},
    {.screen = "FNotepad", .box = "txtUnavailableFirst", .first = From("DateFirst"), .last = To("DateLast"), .opensAtFirst = true},
    {.screen = "FNotepad", .box = "txtUnavailableLast", .first = From("txtUnavailableFirst"), .last = To("DateLast")},
    {.screen = "FNotepad", .box = "DateWithdrawn", .first = From("DateFirst"), .last = To("DateLast")},
    {.screen = "Form1", .box = "CarReg", .first = From({}, Earliest), .last = To({})},
});
// clang-format on

/// The date in the box that a bound names, if it lies in the range.
std::optional<Day> DateAt(const DayBound& bound, DayRange range, const Screen& screen, const Box& asked)
{
    if (bound.box.empty())
        return std::nullopt;
    std::string name(bound.box);
    if (name.back() == '#')
        name.back() = asked.Name().back();
    const Box* other = screen.FindBox(name);
    if (other == nullptr)
        other = screen.FindBox(name, asked.Index());
    const auto day = other == nullptr ? std::nullopt : ReadDate(other->Text());
    return day && range.first <= *day && *day <= range.last ? day : std::nullopt;
}

} // namespace

std::span<const BoxChoices> AllBoxChoices()
{
    return Rows;
}

const BoxChoices* ChoicesOf(std::string_view screen, std::string_view box)
{
    return RowOf(Rows, screen, box);
}

DayRange DaysOf(const BoxChoices& choices, const Screen& screen, const Box& box)
{
    const DayRange whole{choices.first->otherwise, choices.last->otherwise};
    const DayRange range{DateAt(*choices.first, whole, screen, box).value_or(whole.first),
                         DateAt(*choices.last, whole, screen, box).value_or(whole.last)};
    // Two dates that are the wrong way round bound nothing.
    return range.first <= range.last ? range : whole;
}

} // namespace quillmere::review
