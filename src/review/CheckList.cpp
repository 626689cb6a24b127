#include "review/CheckList.h"

#include "clientdb/OpenRecord.h"
#include "frame/Session.h"
#include "review/GoToBox.h"

#include <algorithm>
#include <array>
#include <fmt/format.h>
#include <map>

namespace quillmere::review {

namespace {

constexpr auto Rows = std::to_array<BoxRow>({
    OptionRow("Scope", 0, "This employee", 'P'),
    OptionRow("Scope", 1, "All of this employer", 'M'),
    {.name = "Findings",
     .kind = BoxKind::Table,
     .spoken = "Things to look at",
     .columns = "Weight\tEmployee\tSection\tWhat to look at\tBox\tSource"},
    {.name = "Summary", .kind = BoxKind::Label},
    {.name = "CheckGo", .kind = BoxKind::Button, .text = "Go to Box", .letter = 'J'},
    {.name = "CheckAgain", .kind = BoxKind::Button, .text = "Check &Again"},
    {.name = "CheckClose", .kind = BoxKind::Button, .text = "C&lose"},
});

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

Severity SeverityOf(const Finding& finding)
{
    return finding.check->severity;
}

std::string SummaryText(const FindingList& findings, bool complete)
{
    const auto faults = std::ranges::count(findings, Severity::Fault, SeverityOf);
    if (!complete)
        return fmt::format("{} to look at so far ...", findings.size());
    if (findings.empty())
        return "Nothing to look at";
    return fmt::format("{} to look at, {} of them faults", findings.size(), faults);
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
    OnClick("CheckClose", [this](Box&) { this->session.screens.Unload(Name()); });
}

bool CheckList::Load()
{
    Start();
    return true;
}

void CheckList::Start()
{
    review.reset();
    if (session.CurrentEmployer.empty()) {
        Show({}, true);
        box("Summary").SetText("Open an employee to check");
        return;
    }
    // What has been typed counts, although the page has not been stored.
    static_cast<void>(EmployeeRecord(session).Store());
    if (box("Scope", ThisEmployer).Ticked()) {
        review.emplace(session.CurrentEmployer, paper);
        Show({}, false);
        return GoOn();
    }
    Database database = Database::OpenDatabase(session.ClientDatabasePath());
    Show(CheckEmployeeOf(database, session.CurrentEmployer, session.CurrentEmployee, paper), true);
}

void CheckList::GoOn()
{
    if (review->GoOnBetweenKeys(session.ClientDatabasePath())) {
        box("Summary").SetText(SummaryText(review->Findings(), false));
        session.screens.StartTimer(*this, "CheckTimer", [this] { GoOn(); });
        return;
    }
    Show(review->Findings(), true);
    review.reset();
}

void CheckList::Show(const FindingList& newFindings, bool complete)
{
    findings = newFindings;
    // Faults first; else in the order of the employees and of the form.
    std::ranges::stable_sort(findings, {}, SeverityOf);
    SpokenNames spoken(session.screens);
    std::vector<std::string> lines;
    lines.reserve(findings.size());
    for (const Finding& finding : findings) {
        const Spot& spot = finding.spot;
        lines.push_back(fmt::format("{}\t{}\t{}\t{}{}{}\t{}\t{}",
                                    finding.check->severity == Severity::Fault ? "Fault" : "Look", finding.Employee(),
                                    spot.section, finding.check->words, spot.detail.empty() ? "" : ": ", spot.detail,
                                    spoken.Of(spot), finding.check->source));
    }
    box("Findings").SetEntries(std::move(lines));
    box("Summary").SetText(SummaryText(findings, complete));
}

void CheckList::GoToChosen()
{
    const int chosen = box("Findings").Selected();
    if (chosen < 0)
        return;
    const Finding finding = findings.at(static_cast<std::size_t>(chosen));
    const Spot& spot = finding.spot;
    const std::string employee = finding.Employee().empty() ? session.CurrentEmployee : finding.Employee();
    GoToBox(session, session.CurrentEmployer, employee, {spot.screen, spot.box, spot.index});
}

} // namespace quillmere::review
