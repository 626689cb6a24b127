#include "clientdb/CopyScreens.h"

#include "frame/BusyPointer.h"
#include "frame/Session.h"

#include <array>
#include <fmt/format.h>

namespace quillmere {

namespace {

constexpr auto Rows = std::to_array<BoxRow>({
    {.name = "InUse", .kind = BoxKind::Label},
    TableBoxRow("Copies", "Copies of the client database", "When\tWhy\t>Size\tCheck"),
    {.name = "CopyPutBack", .kind = BoxKind::Button, .text = "&Put Back"},
    {.name = "CopiesAgain", .kind = BoxKind::Button, .text = "Look &Again"},
    {.name = "CopiesClose", .kind = BoxKind::Button, .text = "&Close"},
});

std::string SizeText(std::uintmax_t size)
{
    return fmt::format("{:.1f} MB", static_cast<double>(size) / 1'000'000);
}

} // namespace

SafetyCopies::SafetyCopies(Session& session) : Screen(session, "SafetyCopies", ShowMode::Window, "Safety Copies")
{
    AddBoxes(Rows);
    SetButtons("CopiesClose", {});
    OnClick("CopyPutBack", [this](Box&) { PutBackChosen(); });
    OnClick("CopiesAgain", [this](Box&) { Fill(); });
}

bool SafetyCopies::Load()
{
    Fill();
    return true;
}

void SafetyCopies::Fill()
{
    const BusyPointer busy(session.platform);
    const CopyLook inUse = LookAt(session.ClientDatabasePath());
    box("InUse").SetText("In use: " + inUse.words);
    lines.clear();
    looked = 0;
    for (KeptCopy& copy : KeptCopiesOf(session.ClientDatabasePath()))
        lines.push_back({.copy = std::move(copy), .check = {}});
    ShowLines();
    box("Copies").Select(lines.empty() ? -1 : 0);
    LookOn();
    if (inUse.state && !inUse.IsWhole() && !session.screens.IsShown("DamagedDatabase"))
        session.screens.Show("DamagedDatabase");
}

void SafetyCopies::LookOn()
{
    if (looked == lines.size())
        return;
    session.screens.StartTimer(*this, "LookTimer", [this] {
        if (looked == lines.size())
            return;
        Line& line = lines[looked++];
        line.check = LookAt(line.copy.file).words;
        ShowLines();
        LookOn();
    });
}

void SafetyCopies::ShowLines()
{
    std::vector<std::string> entries;
    entries.reserve(lines.size());
    for (const Line& line : lines)
        entries.push_back(
            fmt::format("{}\t{}\t{}\t{}", line.copy.when, line.copy.why, SizeText(line.copy.size), line.check));
    Box& list = box("Copies");
    const int chosen = list.Selected();
    list.SetEntries(std::move(entries));
    list.Select(chosen);
}

void SafetyCopies::PutBackChosen()
{
    const int chosen = box("Copies").Selected();
    if (chosen < 0) {
        Focus(box("Copies"));
        return;
    }
    const KeptCopy copy = lines.at(static_cast<std::size_t>(chosen)).copy;
    if (!PutBack(session, copy))
        return;
    Fill();
    Focus(box("Copies"));
}

} // namespace quillmere
