#include "clientdb/AlsoOpen.h"

#include "clientdb/store/Recordset.h"
#include "clientdb/store/ServerService.h"

#include <chrono>
#include <fmt/format.h>
#include <fmt/ranges.h>
#include <string>
#include <vector>

namespace quillmere {

namespace {

constexpr std::chrono::seconds BetweenLooks(10);

void ShowOthers(Session& session, const std::vector<std::string>& others)
{
    Box* const panel = session.screens.FindBox("MDIForm1", "StatusAlso");
    if (panel == nullptr)
        return;
    panel->SetText(others.empty() ? std::string() : fmt::format("Also open: {}", fmt::join(others, ", ")));
    panel->SetVisible(!others.empty());
}

} // namespace

AlsoOpen::AlsoOpen(Session& of) : session(of), looking(of.platform, BetweenLooks, [this] { Look(); })
{
}

/// Nobody is open any more once page 1 has gone.
void AlsoOpen::Closed()
{
    if (isTold && session.screens.Find("Form3") == nullptr)
        LookSoon();
}

/// Once the keys have been dealt with.
void AlsoOpen::LookSoon()
{
    if (Screen* main = session.screens.Find("MDIForm1"))
        session.screens.StartTimer(*main, "AlsoTimer", [this] { Look(); });
}

void AlsoOpen::Look()
{
    const bool isOpen = session.screens.Find("Form3") != nullptr;
    std::vector<std::string> others;
    try {
        const std::filesystem::path path = session.ClientDatabasePath();
        if ((isOpen || isTold) && ReadService(path)) {
            Database database = Database::OpenDatabase(path);
            others = database.OthersAt(session.platform.DeskName(), session.CurrentEmployer,
                                       isOpen ? std::string_view(session.CurrentEmployee) : std::string_view());
            isTold = isOpen;
            if (isOpen)
                looking.Ask();
        }
    } catch (const Failure&) {
        // Whoever stores or opens something is told why; until then nobody waits for a server that is away.
        isTold = false;
    }
    ShowOthers(session, others);
}

} // namespace quillmere
