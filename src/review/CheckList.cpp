#include "review/CheckList.h"

#include "clientdb/Employees.h"
#include "clientdb/OpenRecord.h"
#include "frame/Session.h"
#include "review/GoToBox.h"

#include <algorithm>
#include <array>
#include <fmt/format.h>
#include <iterator>
#include <map>
#include <utility>

namespace quillmere::review {

namespace {

constexpr auto Rows = std::to_array<BoxRow>({
    OptionRow("Scope", 0, "This employee", 'P'),
    OptionRow("Scope", 1, "All of this employer", 'M'),
    OptionRow("Scope", 2, "All employers", 'Y'),
    {.name = "Findings", .kind = BoxKind::Table, .spoken = "Things to look at"},
    {.name = "Summary", .kind = BoxKind::Label},
    {.name = "CheckGo", .kind = BoxKind::Button, .text = "Go to Box", .letter = 'J'},
    {.name = "CheckAgain", .kind = BoxKind::Button, .text = "Check &Again"},
    {.name = "CheckClose", .kind = BoxKind::Button, .text = "C&lose"},
});

constexpr std::string_view Columns = "Weight\tEmployee\tSection\tWhat to look at\tBox\tSource";
constexpr std::string_view FolderColumns = "Weight\tEmployer\tEmployee\tSection\tWhat to look at\tBox\tSource";

/// The words by which a box is spoken, asked of a screen that is made once for all its findings.
class SpokenNames {
public:
    explicit SpokenNames(const Screens& screens) : screens(screens) {}
    std::string Of(const Spot& spot)
    {
        std::unique_ptr<Screen>& screen = made[spot.screen];
        if (screen == nullptr)
            screen = screens.Make(spot.screen);
        const Box* box = screen->FindBox(spot.box, spot.index);
        return box == nullptr ? std::string() : box->Spoken();
    }

private:
    const Screens& screens;
    std::map<std::string_view, std::unique_ptr<Screen>> made;
};

std::string SoFar(std::size_t findings)
{
    return fmt::format("{} to look at so far ...", findings);
}

} // namespace

CheckList::CheckList(Session& session)
    : Screen(session, "CheckList", ShowMode::Panel, "Check"), paper(session.settings, session.platform)
{
    AddBoxes(Rows);
    SetButtons("CheckClose", "CheckGo");
    box("Scope", ThisEmployee).SetTicked(true);
    OnClick("Scope", [this](Box&) { Start(); });
    OnClick("CheckAgain", [this](Box&) { Start(); });
    OnClick("CheckGo", [this](Box&) { GoToChosen(); });
    OnDoubleClick("Findings", [this](Box&) { GoToChosen(); });
}

bool CheckList::Load()
{
    // With nobody open there is still the folder.
    if (session.CurrentEmployer.empty())
        ChooseOption("Scope", EveryEmployer);
    Start();
    return true;
}

void CheckList::Start()
{
    review.reset();
    waiting.clear();
    found.clear();
    const bool isOfFolder = box("Scope", EveryEmployer).Ticked();
    box("Findings").SetColumns(isOfFolder ? FolderColumns : Columns);
    if (session.CurrentEmployer.empty() && !isOfFolder) {
        Show();
        box("Summary").SetText("Open an employee to check");
        return;
    }
    // What has been typed counts, although the page has not been stored.
    static_cast<void>(EmployeeRecord(session).Store());
    Database database = Database::OpenDatabase(session.ClientDatabasePath());
    if (box("Scope", ThisEmployee).Ticked()) {
        Take(session.CurrentEmployer,
             CheckEmployeeOf(database, session.CurrentEmployer, session.CurrentEmployee, paper));
        return Show();
    }
    if (isOfFolder)
        std::ranges::copy(quillmere::EveryEmployer(database), std::back_inserter(waiting));
    else
        waiting.push_back(session.CurrentEmployer);
    box("Findings").SetEntries({});
    GoOn();
}

/// Looks through the employers that wait, in pieces between the keys.
void CheckList::GoOn()
{
    if (!review && !waiting.empty())
        review.emplace(waiting.front(), paper);
    if (!review)
        return Show();
    const bool more = review->GoOnBetweenKeys(session.ClientDatabasePath());
    box("Summary").SetText(SoFar(found.size() + review->Found()));
    if (!more) {
        Take(waiting.front(), std::move(*review).Findings());
        review.reset();
        waiting.pop_front();
    }
    session.screens.StartTimer(*this, "CheckTimer", [this] { GoOn(); });
}

void CheckList::Take(const std::string& employer, const FindingList& findings)
{
    const auto name = std::make_shared<const std::string>(employer);
    for (const Finding& finding : findings)
        found.push_back({name, finding});
}

/// Lists what has been found: faults first, else in the order of the employers, of their employees and of the form.
void CheckList::Show()
{
    const auto severityOf = [](const Found& one) { return one.finding.check->severity; };
    std::ranges::stable_sort(found, {}, severityOf);
    const bool isOfFolder = box("Scope", EveryEmployer).Ticked();
    SpokenNames spoken(session.screens);
    std::vector<std::string> lines;
    lines.reserve(found.size());
    for (const auto& [employer, finding] : found) {
        const Spot& spot = finding.spot;
        const Check& check = *finding.check;
        lines.push_back(fmt::format("{}\t{}{}{}\t{}\t{}{}{}\t{}\t{}",
                                    check.severity == Severity::Fault ? "Fault" : "Look", isOfFolder ? *employer : "",
                                    isOfFolder ? "\t" : "", finding.Employee(), spot.section, check.words,
                                    spot.detail.empty() ? "" : ": ", spot.detail, spoken.Of(spot), check.source));
    }
    box("Findings").SetEntries(std::move(lines));
    const auto faults = std::ranges::count(found, Severity::Fault, severityOf);
    box("Summary").SetText(found.empty() ? "Nothing to look at"
                                         : fmt::format("{} to look at, {} of them faults", found.size(), faults));
}

/// Whose form leads to a finding: for one of an employer's own the open employee of his, else his first one.
std::string CheckList::LeadingTo(const Found& one) const
{
    if (!one.finding.Employee().empty())
        return one.finding.Employee();
    if (*one.employer == session.CurrentEmployer)
        return session.CurrentEmployee;
    Database database = Database::OpenDatabase(session.ClientDatabasePath());
    const std::vector<std::string> employees = ListEmployees(database, *one.employer);
    return employees.empty() ? std::string() : employees.front();
}

void CheckList::GoToChosen()
{
    const int chosen = box("Findings").Selected();
    if (chosen < 0)
        return;
    const Found one = found.at(static_cast<std::size_t>(chosen));
    const Spot& spot = one.finding.spot;
    GoToBox(session, *one.employer, LeadingTo(one), {spot.screen, spot.box, spot.index});
}

} // namespace quillmere::review
