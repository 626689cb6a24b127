#include "clientdb/DamagedDatabase.h"

#include "clientdb/store/Salvage.h"
#include "edition/Edition.h"
#include "frame/BusyPointer.h"
#include "frame/CloseAll.h"
#include "frame/Folders.h"
#include "frame/Session.h"

#include <algorithm>
#include <array>
#include <fmt/format.h>

namespace quillmere {

namespace {

constexpr auto Rows = std::to_array<BoxRow>({
    {.name = "DamagedWords", .kind = BoxKind::Label},
    {.name = "Offer", .kind = BoxKind::Label},
    TableBoxRow("Faults", "What is wrong", "What is wrong"),
    {.name = "DamagedPutBack", .kind = BoxKind::Button, .text = "&Put Back"},
    {.name = "DamagedSalvage", .kind = BoxKind::Button, .text = "S&alvage"},
    {.name = "DamagedCopies", .kind = BoxKind::Button, .text = "Safet&y Copies..."},
    {.name = "DamagedClose", .kind = BoxKind::Button, .text = "C&lose"},
});

/// A text in a cell of a table.
std::string InCell(std::string text)
{
    std::ranges::replace_if(
        text, [](char sign) { return sign == '\t' || sign == '\n'; }, ' ');
    return text;
}

std::string LineOf(const NotRead& lost)
{
    return fmt::format("{}\t{}\t{}", InCell(lost.table), InCell(lost.record), InCell(lost.why));
}

} // namespace

DamagedDatabase::DamagedDatabase(Session& session)
    : Screen(session, "DamagedDatabase", ShowMode::Panel, "Damaged Database")
{
    AddBoxes(Rows);
    SetButtons("DamagedClose", {});
    OnClick("DamagedPutBack", [this](Box&) { PutBackOffer(); });
    OnClick("DamagedSalvage", [this](Box&) { Salvage(); });
    OnClick("DamagedCopies", [this](Box&) { this->session.screens.Show("SafetyCopies"); });
}

bool DamagedDatabase::Load()
{
    const BusyPointer busy(session.platform);
    const CopyLook look = LookAt(session.ClientDatabasePath());
    std::vector<std::string> faults;
    for (const std::string& fault : look.state ? look.state->faults : std::vector{look.words})
        faults.push_back(InCell(fault));
    box("DamagedWords")
        .SetText(look.IsWhole() ? "The client database of this folder is whole."
                                : "The client database of this folder is damaged. Do not work on with it.");
    box("Faults").SetEntries(std::move(faults));
    offer = NewestGoodCopy(session.ClientDatabasePath());
    ShowOffer();
    return true;
}

void DamagedDatabase::ShowOffer()
{
    box("Offer").SetText(offer
                             ? fmt::format("The newest good copy, which Put Back goes back to: {}: {}",
                                           InWords(offer->copy), InWords(offer->state))
                             : "There is no good copy of it here. Salvage reads what can be read into a new database.");
}

void DamagedDatabase::PutBackOffer()
{
    if (!offer)
        return SetStatusNote(session, "There is no good copy to put back");
    // Once it is back this screen is closed, like all that showed what was.
    static_cast<void>(PutBack(session, GoodCopy(*offer).copy));
}

void DamagedDatabase::Salvage()
{
    const std::filesystem::path database = session.ClientDatabasePath();
    try {
        const BusyPointer busy(session.platform);
        const std::filesystem::path file = PlaceOfCopy(database, CopyOfNow(session, CopyReason::Salvaged));
        const Salvaged salvaged =
            SalvageDatabase(database, InFolder(session.resourceFolder, edition::TemplateDatabaseName), file);
        std::vector<std::string> lines;
        lines.reserve(salvaged.lost.size());
        for (const NotRead& lost : salvaged.lost)
            lines.push_back(LineOf(lost));
        box("Faults").SetColumns("Table\tWhose record could not be read\tWhy");
        box("Faults").SetEntries(std::move(lines));
        box("DamagedWords")
            .SetText(fmt::format("Salvaged: {} records read, {} lost. Safety Copies has the new database ({}), to be "
                                 "put back.",
                                 salvaged.records, salvaged.lost.size(), InWords(salvaged.state)));
    } catch (const Failure& failure) {
        session.messages.Tell(Caption(), fmt::format("Nothing could be salvaged.\n\n{}", failure.what()));
    }
}

void LookAfterDatabaseSoon(Session& session)
{
    Screen* const main = session.screens.Find("MDIForm1");
    if (main == nullptr)
        return;
    session.screens.StartTimer(*main, "CopyTimer", [&session] {
        const CopyLook look = LookAt(session.ClientDatabasePath());
        if (look.IsWhole())
            KeepDailyCopy(session);
        else if (look.state)
            session.screens.Show("DamagedDatabase");
    });
}

} // namespace quillmere
