#include "calculators/GNotepad2.h"

#include "edition/Edition.h"
#include "edition/LeftOvers.h"
#include "frame/Amount.h"
#include "frame/Dates.h"
#include "frame/Nth.h"
#include "frame/Text.h"

#include <array>
#include <optional>

namespace quillmere {

namespace {

/// Changes of use that a history has room for. The record has one field of days more, which nothing fills.
constexpr int UseRows = 9;
constexpr int DaysRows = UseRows + 1;

/// What differs between the three vans.
struct VanOfHistory {
    std::string_view caption; ///< the employee's and the employer's name follow
    std::string_view ok;
    std::string_view failure; ///< what a failure of its Ok says
    std::string_view number;  ///< stands behind the stems of its fields
};
constexpr auto Vans = std::to_array<VanOfHistory>({
    {.caption = "History of first van - ", .ok = "Ok", .failure = "Unable to update database", .number = ""},
    {.caption = "History of second van - ", .ok = "OK2", .failure = "Unable to update database", .number = "2"},
    // Kept: the third button has words of its own.
    {.caption = "History of third van - ", .ok = "OK3", .failure = "Unable to update van history", .number = "3"},
});

const VanOfHistory& OfVan(int van)
{
    return Nth(Vans, van);
}

/// Types of use: 1 exclusive, 2 shared, 3 and 4 the shorter and the longer unavailability.
constexpr std::string_view ShortUnavailability = "3", LongUnavailability = "4";

KeyVerdict TypeOfUseKeyFilter(char32_t key)
{
    const bool passes = (key >= U'1' && key <= U'4') || key == U'\b';
    return {.key = passes ? key : 0, .beep = !passes};
}

constexpr auto ButtonRows = std::to_array<BoxRow>({
    {.name = "Ok", .kind = BoxKind::Button, .text = "&OK", .hidden = true},
    {.name = "OK2", .kind = BoxKind::Button, .text = "&OK", .hidden = true},
    {.name = "OK3", .kind = BoxKind::Button, .text = "&OK", .hidden = true},
    {.name = "Cancel", .kind = BoxKind::Button, .text = "&Cancel"},
});

bool IsUnavailable(const VanUse& use)
{
    return use.type == ShortUnavailability || use.type == LongUnavailability;
}

/// The day on which a row's use begins; nothing for a row that is not in use. The first row begins with the year.
std::optional<Day> BeginningOf(const std::vector<VanUse>& uses, std::size_t row)
{
    if (uses[row].type.empty())
        return std::nullopt;
    return row == 0 ? edition::VanHistoryStartDay : ReadDate(uses[row].change);
}

std::optional<std::size_t> NextInUse(const std::vector<VanUse>& uses, std::size_t row)
{
    for (std::size_t later = row + 1; later < uses.size(); ++later)
        if (BeginningOf(uses, later))
            return later;
    return std::nullopt;
}

std::optional<std::size_t> PreviousInUse(const std::vector<VanUse>& uses, std::size_t row)
{
    for (std::size_t earlier = row; earlier-- > 0;)
        if (BeginningOf(uses, earlier))
            return earlier;
    return std::nullopt;
}

/// Looks at two rows of which the second ends the use of the first.
VanUseFault CheckPair(const std::vector<VanUse>& uses, std::size_t row, std::size_t next)
{
    if (IsUnavailable(uses[row]) && IsUnavailable(uses[next]))
        return VanUseFault::Successive;
    const int days = DaysBetween(*BeginningOf(uses, row), *BeginningOf(uses, next));
    if (uses[row].type == ShortUnavailability && days >= edition::VanHistoryLongPeriod)
        return VanUseFault::TooLong;
    if (uses[row].type == LongUnavailability && days < edition::VanHistoryLongPeriod)
        return VanUseFault::TooShort;
    return VanUseFault::None;
}

std::string_view MessageOf(VanUseFault fault)
{
    switch (fault) {
    case VanUseFault::Successive:
        return "Cannot have 2 successive periods of unavailability";
    case VanUseFault::TooLong:
        return "Date entered must be less than 30 days";
    case VanUseFault::TooShort:
        return "Date entered must be more than 29 days";
    case VanUseFault::None:
    case VanUseFault::BadDate:
        break;
    }
    return {};
}

} // namespace

VanUseDays DaysOfUse(const std::vector<VanUse>& uses)
{
    VanUseDays days{.rows = std::vector<std::string>(uses.size()), .last = {}};
    for (std::size_t row = 0; row < uses.size(); ++row) {
        const auto beginning = BeginningOf(uses, row);
        if (!beginning)
            continue;
        if (const auto next = NextInUse(uses, row))
            days.rows[row] = PlainNumberBlankZero(DaysBetween(*beginning, *BeginningOf(uses, *next)));
        else
            days.last = PlainNumberBlankZero(DaysBetween(*beginning, edition::VanHistoryEndDay));
    }
    return days;
}

VanUseFault CheckUse(const std::vector<VanUse>& uses, std::size_t row)
{
    const std::string& change = uses[row].change;
    if (!change.empty() &&
        (!IsDateText(change) || !IsDateBetween(change, edition::VanHistoryStart, edition::VanHistoryEnd)))
        return VanUseFault::BadDate;
    if (!BeginningOf(uses, row))
        return VanUseFault::None;
    const auto previous = PreviousInUse(uses, row);
    const VanUseFault before = previous ? CheckPair(uses, *previous, row) : VanUseFault::None;
    if (before != VanUseFault::None)
        return before;
    const auto next = NextInUse(uses, row);
    return next ? CheckPair(uses, row, *next) : VanUseFault::None;
}

GNotepad2::GNotepad2(Session& session)
    : Notepad(session, "GNotepad2", edition::VanHistoryCaption, "GNotepad",
              {.loading = "Notepad G2 - loading error",
               .ok = "Notepad G2 'Ok' Error",
               .okFailure = OfVan(session.VanOfHistory).failure,
               .okIcon = Icon::Exclamation,
               .okMissing = "Notepad G2 - Updating error",
               .missingEnds = true}),
      van(session.VanOfHistory)
{
    for (int row = 1; row <= UseRows; ++row) {
        const std::string ofRow = ", row " + std::to_string(row);
        AddBox({.filter = DateKeyFilter}, "ChangeUse", row).SetSpoken("Change of use" + ofRow);
        AddBox({.filter = TypeOfUseKeyFilter}, "TypeUse", row).SetSpoken("Type of use" + ofRow);
        AddBox({.readOnly = true}, "Days", row).SetSpoken("Days" + ofRow);
    }
    AddBox({.hidden = true}, "Days", DaysRows);
    AddBox({.spoken = "Days of the last use", .readOnly = true}, "FinalDays");
    AddBoxes(ButtonRows);
    const std::string_view ok = OfVan(van).ok;
    box(ok).SetVisible(true);
    BindButtons(ok, {}, "Cancel");
    KeepHistory();
    for (const std::string_view column : {"ChangeUse", "TypeUse"})
        OnLeave(column, [this](Box& left) { LeaveRow(left); });
}

/// Fields of the second and third van have its number between stem and row.
std::string GNotepad2::FieldOf(std::string_view stem, int row) const
{
    return Numbered(std::string(stem) + std::string(OfVan(van).number), row);
}

std::string GNotepad2::LastField() const
{
    return Numbered("TotalDays", van);
}

/// The fields, in the order in which they are written.
void GNotepad2::KeepHistory()
{
    for (int row = 1; row <= UseRows; ++row)
        for (const std::string_view column : {"ChangeUse", "TypeUse"})
            Keep(FieldOf(column, row), &box(column, row), row);
    for (int row = 1; row <= DaysRows; ++row)
        Keep(FieldOf("Days", row), &box("Days", row), row);
    Keep(LastField(), &box("FinalDays"));
}

bool GNotepad2::Load()
{
    if (!Notepad::Load())
        return false;
    SetCaption(NotepadCaption(OfVan(van).caption, session));
    return true;
}

std::vector<VanUse> GNotepad2::Uses() const
{
    std::vector<VanUse> uses;
    for (int row = 1; row <= UseRows; ++row)
        uses.push_back({.change = Trim(box("ChangeUse", row).Text()), .type = Trim(box("TypeUse", row).Text())});
    return uses;
}

void GNotepad2::LeaveRow(const Box& left)
{
    Box& change = box("ChangeUse", left.Index());
    const VanUseFault fault = CheckUse(Uses(), PlaceOfNth(left.Index()));
    if (fault == VanUseFault::None) {
        change.SetText(NormaliseDate(Trim(change.Text())));
    } else {
        if (const std::string_view message = MessageOf(fault); !message.empty())
            session.messages.Tell(edition::AppTitle, message);
        change.Clear();
        box("TypeUse", left.Index()).Clear();
    }
    WorkOut();
}

void GNotepad2::Recalculate()
{
    const VanUseDays days = DaysOfUse(Uses());
    int row = 0;
    for (const std::string& shown : days.rows)
        box("Days", ++row).SetText(shown);
    box("FinalDays").SetText(days.last);
}

bool GNotepad2::MayStore()
{
    for (const VanUse& use : Uses())
        if (!use.change.empty() && use.type.empty()) {
            session.messages.Tell("No Type selected", "You must enter a Type of use alongside a Change of use");
            return false;
        }
    return true;
}

} // namespace quillmere
