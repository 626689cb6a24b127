#include "clientdb/FindEmployee.h"

#include "clientdb/EmployerScreens.h"
#include "edition/Edition.h"
#include "frame/BusyPointer.h"
#include "frame/Session.h"

#include <array>
#include <fmt/format.h>

namespace quillmere {

namespace {

/// More than anybody looks through; who wants others types on.
constexpr std::size_t MostListed = 200;

constexpr auto Rows = std::to_array<BoxRow>({
    {.name = "Sought",
     .spoken = "Any part of a name, an employer, a works number or a National Insurance number",
     .movesIn = "Found"},
    TableBoxRow("Found", "Employees found", "Employee\tEmployer\tWorks number\tNI number"),
    {.name = "Count", .kind = BoxKind::Label},
    {.name = "FindOpen", .kind = BoxKind::Button, .text = "&Open"},
    {.name = "FindCancel", .kind = BoxKind::Button, .text = "&Cancel"},
});

std::string CountText(std::size_t matches, std::size_t listed, std::size_t everybody)
{
    if (listed < matches)
        return fmt::format("The first {} of {} found: type more to see others", listed, matches);
    return fmt::format("{} of {} employees", matches, everybody);
}

} // namespace

FindEmployee::FindEmployee(Session& session) : Screen(session, "FindEmployee", ShowMode::Window, "Find Employee")
{
    AddBoxes(Rows);
    SetButtons("FindCancel", "FindOpen");
    OnType("Sought", [this](Box&) { Search(); });
    OnDoubleClick("Found", [this](Box&) { OpenChosen(); });
    OnClick("FindOpen", [this](Box&) { OpenChosen(); });
}

bool FindEmployee::Load()
{
    const BusyPointer busy(session.platform);
    Database database = Database::OpenDatabase(session.ClientDatabasePath());
    finder = std::make_unique<EmployeeFinder>(database);
    Search();
    return true;
}

void FindEmployee::Search()
{
    EmployeeFinder::Result result = finder->Find(box("Sought").Text(), MostListed);
    found = std::move(result.best);
    std::vector<std::string> lines;
    lines.reserve(found.size());
    for (const FoundEmployee& employee : found)
        lines.push_back(fmt::format("{}\t{}\t{}\t{}", employee.employee, employee.employer, employee.worksNumber,
                                    employee.nationalInsurance));
    Box& list = box("Found");
    list.SetEntries(std::move(lines));
    list.Select(found.empty() ? -1 : 0);
    box("Count").SetText(CountText(result.matches, found.size(), finder->Count()));
}

void FindEmployee::OpenChosen()
{
    const int chosen = box("Found").Selected();
    if (chosen < 0) {
        Focus(box("Sought"));
        return;
    }
    const FoundEmployee employee = found.at(static_cast<std::size_t>(chosen));
    if (OpenEmployee(session, employee.employer, employee.employee))
        session.screens.Unload(Name());
}

} // namespace quillmere
