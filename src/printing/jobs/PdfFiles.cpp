#include "printing/jobs/PdfFiles.h"

#include "frame/DeskMemory.h"
#include "frame/Session.h"
#include "frame/Text.h"
#include "printing/jobs/FileBatch.h"
#include "printing/jobs/PdfNames.h"
#include "printing/jobs/PrintSystem.h"

#include <algorithm>
#include <array>
#include <fmt/format.h>
#include <string>
#include <system_error>
#include <utility>

namespace quillmere {

namespace {

enum Kind { EachEmployee, WholeEmployer, Both };

constexpr std::string_view KindKey = "PDF FILES";
constexpr auto KindNames = std::to_array<std::string_view>({"EACH", "WHOLE", "BOTH"});

constexpr auto Rows = std::to_array<BoxRow>({
    {.name = "PdfWhose", .kind = BoxKind::Label},
    OptionRow("PdfKind", EachEmployee, "A file for each employee", 'E'),
    OptionRow("PdfKind", WholeEmployer, "One file with all employees", 'A'),
    OptionRow("PdfKind", Both, "Both", 'B'),
    {.name = "PdfFolder", .spoken = "Folder"},
    {.name = "PdfBrowse", .kind = BoxKind::Button, .text = "B&rowse..."},
    {.name = "PdfWord", .kind = BoxKind::DropDown, .spoken = "Opening password of employees' files"},
    {.name = "PdfRemark", .kind = BoxKind::Label},
    {.name = "PdfNow", .kind = BoxKind::Label, .spoken = "Being written"},
    {.name = "PdfWrite", .kind = BoxKind::Button, .text = "&Write"},
    {.name = "PdfCancel", .kind = BoxKind::Button, .text = "&Cancel"},
});

/// In the order of OpeningWord.
constexpr auto Words = std::to_array<std::string_view>({
    "None: anybody can open them",
    "The National Insurance number: AB123456C",
    "The date of birth in eight digits: 31121970",
    "The works number",
});

/// A folder as it is named everywhere, without a separator at its end.
std::filesystem::path FolderNamed(const std::string& text)
{
    const std::filesystem::path path(Trim(text));
    return path.has_filename() ? path : path.parent_path();
}

} // namespace

PdfFiles::PdfFiles(Session& session, PrintSystem& printing)
    : Screen(session, "PdfFiles", ShowMode::Modal, "Batch to PDF Files"),
      printing(printing),
      run(session, *this, "PdfNow", [this] {
          this->session.screens.Unload("PrePrint");
          this->session.screens.Unload(Name());
          this->session.screens.Show("LastBatch");
      })
{
    AddBoxes(Rows);
    SetButtons("PdfCancel", "PdfWrite");
    box("PdfWord").SetEntries({Words.begin(), Words.end()});
    OnClick("PdfBrowse", [this](Box&) { Browse(); });
    OnChoose("PdfWord", [this](Box& word) {
        box("PdfRemark")
            .SetText(word.Selected() > 0 ? "Whoever lacks it gets no file. The P11D(b) and the file with "
                                           "all employees have no password."
                                         : "");
    });
    OnClick("PdfWrite", [this](Box&) { Write(); });
    run.EndsBy("PdfCancel");
}

bool PdfFiles::Load()
{
    const std::string kind = DeskMemory(session.programFolder).Recall(KindKey);
    for (std::size_t index = 0; index < KindNames.size(); ++index)
        box("PdfKind", static_cast<int>(index)).SetTicked(kind == KindNames[index] || (kind.empty() && index == 0));
    box("PdfFolder").SetText(PdfFolder(session).string());
    // Off unless it is asked for, each time anew.
    box("PdfWord").Select(static_cast<int>(OpeningWord::None));
    return true;
}

void PdfFiles::SetOrder(BatchOrder newOrder)
{
    order = std::move(newOrder);
    box("PdfWhose").SetText(order.employer);
    // The declaration alone is one file.
    for (const Kind kind : {EachEmployee, WholeEmployer, Both})
        box("PdfKind", kind).SetEnabled(order.selection.HasPapersOfEmployees());
}

void PdfFiles::Browse()
{
    if (const auto folder = session.platform.AskFolder({.title = Caption(), .proposedPath = box("PdfFolder").Text()}))
        box("PdfFolder").SetText(FolderNamed(*folder).string());
}

FilesOrder PdfFiles::Files() const
{
    return {.folder = FolderNamed(box("PdfFolder").Text()),
            .each = !box("PdfKind", WholeEmployer).Ticked(),
            .whole = !box("PdfKind", EachEmployee).Ticked(),
            .word = static_cast<OpeningWord>(std::max(0, box("PdfWord").Selected()))};
}

void PdfFiles::Write()
{
    FilesOrder files = Files();
    if (std::error_code error; !std::filesystem::is_directory(files.folder, error)) {
        session.messages.Tell(Caption(), fmt::format("'{}' is no folder.", files.folder.string()));
        Focus(box("PdfFolder"));
        return;
    }
    order.files = files;
    if (const std::size_t there = FilesThere(session, order).size(); there > 0) {
        const Answer answer = session.platform.ShowMessage(
            {.title = Caption(),
             .text = fmt::format("{}\n\n{} of the files {} there already. Replace {}?\n\nNo keeps what is there and "
                                 "writes the others.",
                                 files.folder.string(), there, there == 1 ? "is" : "are", there == 1 ? "it" : "them"),
             .icon = Icon::Question,
             .buttons = Buttons::YesNo,
             .defaultAnswer = Answer::No,
             .mayLeave = true});
        if (answer == Answer::Cancel)
            return;
        order.files->replaces = answer == Answer::Yes;
    }
    const DeskMemory memory(session.programFolder);
    if (const auto kind = ChosenOption("PdfKind"))
        memory.Remember(KindKey, KindNames.at(static_cast<std::size_t>(*kind)));
    RememberPdfFolder(session, files.folder);
    for (const auto& other : Boxes())
        if (other->Kind() != BoxKind::Label && other->Name() != "PdfCancel")
            other->SetEnabled(false);
    Focus(box("PdfCancel"));
    run.Start(MakeBatch(session, printing, order));
}

} // namespace quillmere
