#include "transfer/TransferList.h"

#include "clientdb/SafetyCopies.h"
#include "clientdb/UserOperation.h"
#include "edition/Edition.h"
#include "frame/BusyPointer.h"
#include "frame/CheckedFile.h"
#include "frame/Folders.h"
#include "frame/ProgressBar.h"
#include "frame/Session.h"

#include <array>
#include <fmt/format.h>

namespace quillmere {

namespace {

constexpr auto Rows = std::to_array<BoxRow>({
    {.name = "lblLegend", .kind = BoxKind::Label, .text = "Clients in %LTY% Database:"},
    {.name = "lblFolderName", .kind = BoxKind::Label},
    {.name = "TransferListbox", .kind = BoxKind::List, .spoken = "Clients in last year's database"},
});
constexpr auto ButtonRows = std::to_array<BoxRow>({
    {.name = "Transfer", .kind = BoxKind::Button, .text = "Transfer", .letter = 'T'},
    // Kept: the tooltip is older than the button's work.
    {.name = "TransferAll",
     .kind = BoxKind::Button,
     .text = "Transfer All",
     .tip = "The Transfer All function will be available in a later version",
     .letter = 'A'},
    {.name = "Cancel", .kind = BoxKind::Button, .text = "Cancel", .letter = 'C'},
});

constexpr std::string_view YearMark = "%LTY%";

constexpr std::string_view SingleQuestion =
    "If this file does not already exist in the destination folder it will be transferred.";
constexpr std::string_view AllQuestion =
    "All files that do not already exist in the destination folder will be transferred.";
constexpr std::string_view RestOfQuestion =
    "Existing files in the destination folder will not be overwritten but you should backup all files in the "
    "destination folder\n"
    "before proceeding.\n"
    "\n"
    "You must ensure that no other attempts to access any files in the source or destination folders during the\n"
    "transfer process.\n"
    "\n"
    "Do you wish to proceed?";

} // namespace

TransferList::TransferList(Session& session) : Screen(session, "TransferList", ShowMode::Modal, TransferTitle)
{
    AddBoxes(Rows);
    filter.emplace(*this, "TransferListbox", "clients");
    AddBoxes(ButtonRows);
    SetButtons("Cancel", "Transfer");
    OnClick("Transfer", [this](Box&) {
        if (box("TransferListbox").Empty()) {
            this->session.messages.Tell(edition::AppTitle, "You must select a Client to transfer", Icon::Critical);
            Focus(box("TransferListbox"));
        } else if (Confirmed("Transfer", SingleQuestion)) {
            TransferSelected();
        }
    });
    OnClick("TransferAll", [this](Box&) {
        if (Confirmed("Transfer All", AllQuestion))
            TransferAll();
    });
}

bool TransferList::ShowLastYearClients()
{
    const BusyPointer busy(session.platform);
    Box& legend = box("lblLegend");
    std::string text = legend.Text();
    if (const std::size_t mark = text.find(YearMark); mark != std::string::npos)
        legend.SetText(text.replace(mark, YearMark.size(), edition::YearLabelPrior));
    try {
        std::vector<std::string> clients = ReadLastYearClients();
        if (clients.empty()) {
            session.messages.Tell(edition::AppTitle, "There are no Employers to display");
            return false;
        }
        filter->Fill(std::move(clients));
        return true;
    } catch (const Failure&) {
        session.messages.Tell(edition::AppTitle, "No previous year data found");
        return false;
    }
}

std::vector<std::string> TransferList::ReadLastYearClients()
{
    lastYearDatabase = LastYearDatabaseOf(session.programFolder);
    box("lblFolderName").SetText(LastYearSelectedFolderName(PriorProgramFolderOf(session.programFolder)));
    Database database = Database::OpenDatabase(lastYearDatabase, OpenMode::ReadOnly);
    std::vector<std::string> clients;
    for (const LastYearEmployee& employee : ListLastYearEmployees(database))
        clients.push_back(ListText(employee));
    return clients;
}

bool TransferList::Confirmed(std::string_view title, std::string_view first)
{
    return session.messages.Ask(title, fmt::format("{}\n{}", first, RestOfQuestion));
}

void TransferList::TransferSelected()
{
    Run(ParseListText(box("TransferListbox").Text()));
}

void TransferList::TransferAll()
{
    Run(std::nullopt);
}

void TransferList::Run(const std::optional<LastYearEmployee>& selected)
{
    KeepCopy(session, CopyReason::Transfer);
    const UserOperation operation(session, selected ? "Transfer of " + selected->employee : "Transfer of all");
    try {
        const BusyPointer busy(session.platform);
        YearTransfer transfer(session.ClientDatabasePath(), lastYearDatabase, session.operation);
        const auto employees = selected ? std::vector{*selected} : transfer.LastYearEmployees();
        if (!TransferEach(transfer, employees, selected ? TransferMode::Single : TransferMode::All))
            return;
    } catch (const StoreError& failure) {
        session.messages.Tell(Caption(), failure.what());
        return;
    }
    session.messages.Tell("Transfer", "Transfer Complete", Icon::Information);
}

bool TransferList::TransferEach(YearTransfer& transfer, const std::vector<LastYearEmployee>& employees,
                                TransferMode mode)
{
    ProgressBar progress(session.platform, static_cast<int>(employees.size()), ProgressBar::Shows::WholePercents);
    std::vector<TransferNotice> notices;
    const auto tell = [&] {
        for (const TransferNotice& notice : notices)
            session.messages.Tell(notice.title, notice.text);
        notices.clear();
    };
    try {
        for (const LastYearEmployee& employee : employees) {
            transfer.Transfer(employee, mode, notices);
            tell();
            progress.Advance();
        }
        transfer.Commit();
        return true;
    } catch (const StoreError& failure) {
        // Nothing can be stored any more. With the next employee it would be the same, so it is told once, and from
        // whom on the transfer is to be done again.
        tell();
        session.messages.Tell(
            Caption(), fmt::format("{}\nNot transferred: {}{}", failure.what(), ListText(transfer.FirstNotStored()),
                                   mode == TransferMode::All ? ", and all who follow in the list." : "."));
        return false;
    }
}

} // namespace quillmere
