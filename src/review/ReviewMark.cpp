#include "review/ReviewMark.h"

#include "clientdb/OpenRecord.h"
#include "frame/CloseAll.h"

#include <algorithm>
#include <array>
#include <fmt/format.h>

namespace quillmere::review {

std::string MarkInWords(const std::map<FormMark, MarkOfForm>& marks, FormMark mark)
{
    const auto found = marks.find(mark);
    if (found == marks.end())
        return {};
    return found->second.isOutdated ? "changed since" : found->second.day;
}

void ToggleReviewed(Session& session, const std::string& employer, std::span<const std::string> employees)
{
    if (employees.empty())
        return;
    Database database = Database::OpenDatabase(session.ClientDatabasePath());
    const FormMarks marks(database);
    const bool takesAway = std::ranges::all_of(employees, [&](const std::string& employee) {
        const auto of = marks.Of(employer, employee);
        const auto reviewed = of.find(FormMark::Reviewed);
        return reviewed != of.end() && !reviewed->second.isOutdated;
    });
    WriteBatch batch(database);
    for (const std::string& employee : employees)
        if (takesAway)
            marks.Clear(FormMark::Reviewed, employer, employee);
        else if (!marks.Set(FormMark::Reviewed, employer, employee, FormatDate(session.platform.Today())))
            return SetStatusNote(session, "This database takes no marks");
    batch.Commit();
    const std::string who = employees.size() == 1 ? employees.front() : fmt::format("{} employees", employees.size());
    SetStatusNote(session, fmt::format("{}: {}", takesAway ? "No longer reviewed" : "Reviewed", who));
}

void ToggleReviewedOfOpen(Session& session)
{
    // What has been typed counts, although the page has not been stored.
    session.screens.LeaveBoxInUse();
    static_cast<void>(EmployeeRecord(session).Store());
    ToggleReviewed(session, session.CurrentEmployer, std::array{session.CurrentEmployee});
}

} // namespace quillmere::review
