#include "exchange/ExportScreen.h"

#include "clientdb/Employees.h"
#include "clientdb/OpenRecord.h"
#include "edition/Edition.h"
#include "frame/BusyPointer.h"
#include "frame/CheckedFile.h"
#include "frame/CloseAll.h"
#include "frame/DeskMemory.h"
#include "frame/FileNames.h"

#include <algorithm>
#include <array>
#include <fmt/format.h>
#include <system_error>

namespace quillmere::exchange {

namespace {

constexpr std::string_view AllEmployers = "All employers", Title = "Export", FolderKey = "EXPORT FOLDER";

constexpr auto Rows = std::to_array<BoxRow>({
    {.name = "ExportEmployer", .kind = BoxKind::DropDown, .spoken = "Employer"},
    {.name = "ExportWords", .kind = BoxKind::Label},
    {.name = "ExportSave", .kind = BoxKind::Button, .text = "&Save..."},
    {.name = "ExportClose", .kind = BoxKind::Button, .text = "&Close"},
});

} // namespace

ExportScreen::ExportScreen(Session& session) : Screen(session, "ExportTable", ShowMode::Window, Title)
{
    int index = 0;
    for (const ExportRow& row : Exports())
        AddBox(OptionRow("ExportWhat", index, row.words, row.letter), "ExportWhat", index), ++index;
    AddBoxes(Rows);
    box("ExportWhat", 0).SetTicked(true);
    SetButtons("ExportClose", "ExportSave");
    OnClick("ExportSave", [this](Box&) { Save(); });
}

bool ExportScreen::Load()
{
    {
        Database database = Database::OpenDatabase(session.ClientDatabasePath());
        employers = EveryEmployer(database);
    }
    std::vector<std::string> entries{std::string(AllEmployers)};
    entries.insert(entries.end(), employers.begin(), employers.end());
    const auto current = std::ranges::find(employers, session.CurrentEmployer);
    box("ExportEmployer").SetEntries(std::move(entries));
    box("ExportEmployer").Select(current == employers.end() ? 0 : 1 + static_cast<int>(current - employers.begin()));
    return true;
}

const ExportRow& ExportScreen::Chosen() const
{
    return Exports()[static_cast<std::size_t>(ChosenOption("ExportWhat").value_or(0))];
}

std::filesystem::path ExportScreen::ProposedFile() const
{
    std::filesystem::path folder = DeskMemory(session.programFolder).Recall(FolderKey);
    if (std::error_code error; folder.empty() || !std::filesystem::is_directory(folder, error))
        folder = session.ClientDatabasePath().parent_path();
    const std::string whose =
        Chosen().what == Exported::Working ? session.CurrentEmployee : box("ExportEmployer").Text();
    return folder / (ReadyFileName(fmt::format("{} - {} {}", whose, Chosen().name, edition::YearLabel)) + ".csv");
}

void ExportScreen::Save()
{
    if (Chosen().what == Exported::Working && session.screens.Find("Form3") == nullptr)
        return session.messages.Tell(Title, "Open an employee first: it is his figures that are told.");
    // What has been typed counts, although the page has not been stored.
    if (!EmployeeRecord(session).Store())
        return;
    const std::optional<std::string> chosen = session.platform.AskSaveFile({.title = std::string(Title),
                                                                            .proposedPath = ProposedFile().string(),
                                                                            .filterName = "Tables",
                                                                            .filterPattern = "*.csv",
                                                                            .defaultExtension = "csv"});
    if (!chosen)
        return;
    const std::filesystem::path file = *chosen;
    if (std::error_code error;
        std::filesystem::exists(file, error) &&
        !session.messages.Ask(Title, fmt::format("{}\n\nis there already. Replace it?", file.string()), Icon::Question,
                              Answer::No))
        return;
    const int position = box("ExportEmployer").Selected();
    const std::string employer = position <= 0 ? std::string() : employers.at(static_cast<std::size_t>(position - 1));
    std::size_t rows = 0;
    try {
        const BusyPointer busy(session.platform);
        const std::vector<Cells> table = ExportedTable(session, Chosen().what, employer);
        rows = table.size() - 1;
        WriteFileChecked(file, TableBytes(table));
    } catch (const Failure& failure) {
        session.messages.Tell(Title, fmt::format("Nothing has been written. {}", failure.what()), Icon::Critical);
        return;
    }
    DeskMemory(session.programFolder).Remember(FolderKey, file.parent_path().string());
    const std::string words = fmt::format("{} rows written: {}", rows, file.string());
    SetStatusNote(session, words);
    box("ExportWords").SetText(fmt::format("{} rows written: {}", rows, file.filename().string()));
    box("ExportWords").SetTip(file.string());
}

} // namespace quillmere::exchange
