#include "app/About.h"

#include "app/GuideHtml.h"
#include "app/Version.h"
#include "clientdb/EmployeeFinder.h"
#include "clientdb/store/DatabaseFacts.h"
#include "edition/Edition.h"
#include "exchange/Csv.h"
#include "frame/Session.h"
#include "printing/jobs/CupsPrinters.h"
#include "printing/paper/PaperLibraries.h"

#include <array>
#include <fmt/format.h>

namespace quillmere {

namespace {

constexpr auto Rows = std::to_array<BoxRow>({
    {.name = "AboutTitle", .kind = BoxKind::Label, .text = edition::AppTitle},
    TableBoxRow("AboutFacts", "About the program", "What\tWhich"),
    {.name = "AboutCopy", .kind = BoxKind::Button, .text = "C&opy", .key = "Ctrl+C"},
    {.name = "AboutClose", .kind = BoxKind::Button, .text = "&Close"},
});

/// Everything that the program is linked with.
std::vector<LibraryInUse> AllLibraries(Platform& platform)
{
    std::vector<LibraryInUse> all = platform.Libraries();
    for (const std::vector<LibraryInUse>& some :
         {StoreLibraries(),
          PaperLibraries(),
          {FoldingLibrary(), exchange::CsvLibrary(), GuideLibrary(), SpoolerLibrary()}})
        all.insert(all.end(), some.begin(), some.end());
    return all;
}

} // namespace

std::vector<AboutFact> AboutFacts(const Session& session)
{
    const std::filesystem::path database = session.ClientDatabasePath();
    const DatabaseFacts facts = FactsOfDatabase(database);
    std::vector<AboutFact> told{
        {"Edition", fmt::format("{}, tax year {}", edition::ProductVersionLabel, edition::YearLabel)},
        {"Version", fmt::format("{}.{}.{}", VersionMajor, VersionMinor, VersionRevision)},
        {"Program folder", session.programFolder.string()},
        {"Client folder", database.parent_path().string()},
        {"Database", database.filename().string()},
        {"Size of the database", facts.size},
        {"Format of the database", facts.format},
    };
    for (LibraryInUse& library : AllLibraries(session.platform))
        told.push_back({"Library " + library.name, std::move(library.version)});
    return told;
}

About::About(Session& session) : Screen(session, "About", ShowMode::Window, "About")
{
    AddBoxes(Rows);
    SetButtons("AboutClose", "AboutClose");
    OnClick("AboutCopy", [this](Box&) {
        std::string text = std::string(edition::AppTitle) + "\n";
        for (const AboutFact& fact : facts)
            text += fmt::format("{}\t{}\n", fact.what, fact.which);
        this->session.platform.CopyText(text);
    });
}

bool About::Load()
{
    facts = AboutFacts(session);
    std::vector<std::string> lines;
    lines.reserve(facts.size());
    for (const AboutFact& fact : facts)
        lines.push_back(fmt::format("{}\t{}", fact.what, fact.which));
    box("AboutFacts").SetEntries(std::move(lines));
    box("AboutFacts").Select(0);
    return true;
}

} // namespace quillmere
