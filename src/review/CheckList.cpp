#include "review/CheckList.h"

#include "clientdb/EmployerScreens.h"
#include "clientdb/OpenRecord.h"
#include "frame/Session.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <fmt/format.h>
#include <map>

namespace quillmere::review {

namespace {

constexpr auto Rows = std::to_array<BoxRow>({
    OptionRow("Scope", 0, "This employee", 'E'),
    OptionRow("Scope", 1, "All of this employer", 'M'),
    {.name = "Findings",
     .kind = BoxKind::Table,
     .spoken = "Things to look at",
     .columns = "Weight\tEmployee\tSection\tWhat to look at\tBox\tSource"},
    {.name = "Summary", .kind = BoxKind::Label},
    {.name = "CheckGo", .kind = BoxKind::Button, .text = "&Go to Box"},
    {.name = "CheckAgain", .kind = BoxKind::Button, .text = "Check &Again"},
    {.name = "CheckClose", .kind = BoxKind::Button, .text = "&Close"},
});

/// So long one piece of the look through an employer may keep the keys waiting.
constexpr std::chrono::milliseconds Piece{20};
/// Employees between two looks at the clock.
constexpr int EmployeesAtOnce = 8;

/// From which screen, by which of its controls, another one is reached.
struct WayRow {
    std::string_view to, from, by;
};
constexpr auto Ways = std::to_array<WayRow>({
    {"Form3", "Side2Form1", "Page1"},
    {"Side2Form1", "Form3", "Page2"},
    {"Form3_4", "Form3", "Label65"},
    {"Form5_6", "Form3", "Label66"},
    {"P11DDeclaration", "Form3", "lblP11DB"},
});

/// Opens a screen of the open employee by the user's own way; nothing if the way is barred.
Screen* Reach(Screens& screens, std::string_view screen)
{
    if (screens.IsShown(screen))
        return screens.Find(screen);
    const auto way = std::ranges::find(Ways, screen, &WayRow::to);
    if (way == Ways.end())
        return nullptr;
    // What is reached from page 1 is reached from page 2 by way of it.
    if (!screens.IsShown(way->from) && (screen == "Form3" || Reach(screens, way->from) == nullptr))
        return nullptr;
    Screen* from = screens.Find(way->from);
    from->Click(from->box(way->by));
    return screens.IsShown(screen) ? screens.Find(screen) : nullptr;
}

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

std::string SummaryText(const std::vector<Finding>& findings, bool complete)
{
    const auto faults = std::ranges::count(findings, Severity::Fault, &Finding::severity);
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
    using Clock = std::chrono::steady_clock;
    const auto until = Clock::now() + Piece;
    bool more = true;
    {
        Database database = Database::OpenDatabase(session.ClientDatabasePath());
        while (more && Clock::now() < until)
            more = review->GoOn(database, EmployeesAtOnce);
    }
    if (more) {
        box("Summary").SetText(SummaryText(review->Findings(), false));
        session.screens.StartTimer(*this, "CheckTimer", [this] { GoOn(); });
        return;
    }
    Show(review->Findings(), true);
    review.reset();
}

void CheckList::Show(const std::vector<Finding>& newFindings, bool complete)
{
    findings = newFindings;
    // Faults first; else in the order of the employees and of the form.
    std::ranges::stable_sort(findings, {}, &Finding::severity);
    SpokenNames spoken(session.screens);
    std::vector<std::string> lines;
    lines.reserve(findings.size());
    for (const Finding& finding : findings) {
        const Spot& spot = finding.spot;
        lines.push_back(fmt::format("{}\t{}\t{}\t{}{}{}\t{}\t{}",
                                    finding.severity == Severity::Fault ? "Fault" : "Look", finding.employee,
                                    spot.section, finding.words, spot.detail.empty() ? "" : ": ", spot.detail,
                                    spoken.Of(spot), finding.source));
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
    const bool elsewhere = !finding.employee.empty() && finding.employee != session.CurrentEmployee;
    const bool open = session.screens.Find("Form3") != nullptr;
    if ((elsewhere || !open) && !OpenEmployee(session, session.CurrentEmployer,
                                              finding.employee.empty() ? session.CurrentEmployee : finding.employee))
        return;
    if (Screen* screen = Reach(session.screens, finding.spot.screen))
        if (Box* found = screen->FindBox(finding.spot.box, finding.spot.index))
            screen->Focus(*found);
}

} // namespace quillmere::review
