#include "screens/ScheduleNotepad.h"

#include "edition/Edition.h"

#include <vector>

namespace quillmere {

ScheduleNotepad::ScheduleNotepad(Session& session, const NotepadMember& member)
    : Notepad(session, member.name, NotepadCaption(member.section, session), member.name,
              {.loading = member.loadingTitle,
               .loadingPage = member.loadingTitle,
               .ok = member.okTitle,
               .okIcon = Icon::Exclamation}),
      member(member),
      schedule(*this, member.columns)
{
    for (const ScheduleColumn& column : member.columns)
        if (!column.total.empty())
            AddBox({.kind = BoxKind::Label, .amount = true}, std::string(column.total));
    AddButtons("cmdOK", "cmdDelete", "cmdCancel");
    KeepBoxes();
    schedule.OnLeaveAmount([this](Box&) { WorkOut(); });
}

void ScheduleNotepad::ShowPage(const Recordset& page)
{
    for (std::size_t which = 0; which < member.totalFields.size(); ++which)
        if (const std::string_view field = member.totalFields[which]; !field.empty())
            box(member.columns[which + 1].total).SetText(page.Field(field));
}

void ScheduleNotepad::Recalculate()
{
    const auto text = [this](const ScheduleColumn& column, int line) {
        return column.Exists() ? schedule.At(column, line).Text() : std::string();
    };
    const auto put = [this](const ScheduleColumn& column, int line, const std::string& shown) {
        if (column.Exists())
            schedule.At(column, line).SetText(shown);
    };
    const ScheduleColumn& description = member.columns.front();
    std::vector<ScheduleLine> lines;
    for (int line = 1; line <= LinesOfASchedule; ++line) {
        schedule.At(description, line).TrimText();
        lines.push_back({text(member.Cost(), line), text(member.Tax(), line), text(member.Cash(), line)});
    }
    const ScheduleTotals totals = RecalculateSchedule(lines, member.kind);
    int number = 0;
    for (const ScheduleLine& line : lines) {
        ++number;
        put(member.Cost(), number, line.cost);
        put(member.Tax(), number, line.tax);
        put(member.Cash(), number, line.cash);
    }
    const auto show = [this](const ScheduleColumn& column, const std::string& total) {
        if (column.Exists())
            box(column.total).SetText(total);
    };
    show(member.Cost(), totals.cost);
    show(member.Tax(), totals.tax);
    show(member.Cash(), totals.cash);
}

bool ScheduleNotepad::MayStore()
{
    if (member.inputTitle.empty())
        return true;
    for (int line = 1; line <= LinesOfASchedule; ++line) {
        if (ReadAmount(schedule.At(member.Tax(), line).Text()) <= ReadAmount(schedule.At(member.Cost(), line).Text()))
            continue;
        session.messages.Tell(member.inputTitle, "Tax is greater than the Cost on line: " + std::to_string(line));
        return false;
    }
    return true;
}

/// The totals, and for the page whether any line has a description.
std::vector<Notepad::Result> ScheduleNotepad::Results(const Recordset& /*own*/) const
{
    std::vector<Result> results;
    for (std::size_t which = 0; which < member.totalFields.size(); ++which) {
        const std::string own(member.totalFields[which]);
        if (own.empty())
            continue;
        const std::string& total = TextOf(member.columns[which + 1].total);
        if (!total.empty() || member.emptiedInstead.empty()) {
            results.push_back({.field = own, .stored = total, .shown = total});
        } else {
            results.push_back({.field = std::string(member.emptiedInstead), .stored = total, .shown = {}});
            results.push_back({.field = own, .stored = {}, .shown = total});
        }
    }
    if (!member.describedField.empty())
        results.push_back({.field = std::string(member.describedField),
                           .stored = {},
                           .shown = schedule.HasDescription() ? std::string(edition::AsPerAttached) : std::string()});
    return results;
}

void ScheduleNotepad::Delete()
{
    Notepad::Delete();
    for (const ScheduleColumn& column : member.columns)
        if (!column.total.empty())
            box(column.total).Clear();
}

} // namespace quillmere
