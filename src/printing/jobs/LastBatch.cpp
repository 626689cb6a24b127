#include "printing/jobs/LastBatch.h"

#include "clientdb/OpenRecord.h"
#include "edition/Edition.h"
#include "frame/Session.h"
#include "frame/ShellOpen.h"
#include "printing/jobs/PrintSystem.h"

#include <array>
#include <fmt/format.h>
#include <utility>
#include <vector>

namespace quillmere {

namespace {

constexpr auto Rows = std::to_array<BoxRow>({
    {.name = "BatchWords", .kind = BoxKind::Label},
    TableBoxRow("BatchLines", "Documents of the batch", "Document\t>Pages\tWhat became of it"),
    {.name = "BatchNow", .kind = BoxKind::Label, .spoken = "Being printed"},
    {.name = "BatchFolder", .kind = BoxKind::Button, .text = "Show in &Folder", .hidden = true},
    {.name = "BatchAgain",
     .kind = BoxKind::Button,
     .text = "Print &Again",
     .tip = "Prints what was not printed, and nothing else",
     .hidden = true},
    {.name = "BatchSheet",
     .kind = BoxKind::Button,
     .text = "&Print List",
     .tip = "Ctrl+P",
     .key = "Ctrl+P",
     .hidden = true},
    {.name = "BatchClose", .kind = BoxKind::Button, .text = "&Close"},
});

std::string PagesInWords(const BatchLine& line)
{
    return line.pages > 0 ? std::to_string(line.pages) : std::string();
}

} // namespace

LastBatch::LastBatch(Session& session, PrintSystem& printing)
    : Screen(session, "LastBatch", ShowMode::Modal, "Last Batch"),
      printing(printing),
      run(session, *this, "BatchNow", [this] { Fill(); })
{
    AddBoxes(Rows);
    SetButtons("BatchClose", {});
    OnClick("BatchAgain", [this](Box&) { PrintAgain(); });
    OnClick("BatchSheet", [this](Box&) { this->session.printTable(Sheet()); });
    OnClick("BatchFolder", [this](Box&) {
        const int result = this->session.platform.OpenWithDesktop(this->printing.lastBatch->order.files->folder);
        if (ShellOpenFailed(result))
            this->session.messages.Tell(edition::AppTitle, ShellErrorMessage(result));
    });
    run.EndsBy("BatchClose");
}

bool LastBatch::Load()
{
    Fill();
    return true;
}

void LastBatch::Fill()
{
    const auto& report = printing.lastBatch;
    std::vector<std::string> lines;
    if (report)
        for (const BatchLine& line : report->lines)
            lines.push_back(fmt::format("{}\t{}\t{}", line.name, PagesInWords(line), report->InWords(line)));
    box("BatchWords").SetText(report ? report->InWords() : "No batch has been printed yet.");
    box("BatchLines").SetEntries(std::move(lines));
    box("BatchLines").Select(box("BatchLines").Entries().empty() ? -1 : 0);
    box("BatchAgain").SetText(report && report->order.files ? "Write &Again" : "Print &Again");
    box("BatchAgain").SetVisible(report && report->Again());
    box("BatchSheet").SetVisible(report && session.printTable);
    box("BatchFolder").SetVisible(report && report->order.files);
    for (const std::string_view other : {"BatchAgain", "BatchSheet"})
        box(other).SetEnabled(true);
    box("BatchClose").SetText("&Close");
    Focus(box("BatchLines"));
}

void LastBatch::PrintAgain()
{
    auto order = printing.lastBatch->Again();
    if (!order)
        return;
    // What has been typed counts, although the page has not been stored.
    static_cast<void>(EmployeeRecord(session).Store());
    for (const std::string_view other : {"BatchAgain", "BatchSheet"})
        box(other).SetEnabled(false);
    box("BatchClose").SetText("&Cancel");
    Focus(box("BatchClose"));
    run.Start(MakeBatch(session, printing, *std::move(order)));
}

PrintedTable LastBatch::Sheet() const
{
    const BatchReport& report = *printing.lastBatch;
    PrintedTable table{.documentName = report.order.employer + " - Batch",
                       .employer = report.order.employer,
                       .employee = {},
                       .heading = "Batch of " + report.order.employer,
                       .subHeading = report.InWords(),
                       .columns = {{.caption = "Document", .width = 4},
                                   {.caption = "Pages", .width = 1, .figure = true},
                                   {.caption = "What became of it", .width = 6}},
                       .rows = {},
                       .remarks = {}};
    for (const BatchLine& line : report.lines)
        table.rows.push_back({line.name, PagesInWords(line), report.InWords(line)});
    return table;
}

} // namespace quillmere
