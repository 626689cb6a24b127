#include "printing/jobs/frmVSPrintDialog.h"

#include "edition/Edition.h"
#include "frame/Amount.h"
#include "frame/BusyPointer.h"
#include "frame/Session.h"
#include "printing/jobs/PrintJobs.h"
#include "printing/jobs/PrintPasses.h"
#include "printing/jobs/PrintSystem.h"
#include "printing/jobs/frmVSPrint.h"
#include "printing/paper/PageList.h"

#include <algorithm>
#include <array>
#include <string>

namespace quillmere {

namespace {

/// The options of the page range, by index.
enum Range { AllPages, CurrentPage, Pages };

/// Digits, "," and "-", backspace.
KeyVerdict PageNumbersKeyFilter(char32_t key)
{
    return key == U',' || key == U'-' ? KeyVerdict{.key = key} : WholeNumberKeyFilter(key);
}

/// More copies than this are a slip of the keys.
constexpr int MostCopies = 999;

int ReadCopies(std::string_view text)
{
    return std::clamp(ReadWholeNumber(text), 1, MostCopies);
}

constexpr auto Rows = std::to_array<BoxRow>({
    {.name = "fraCopies", .kind = BoxKind::Frame, .text = "Copies"},
    {.name = "txtCopies", .filter = WholeNumberKeyFilter, .spoken = "Number of copies"},
    {.name = "fraRange", .kind = BoxKind::Frame, .text = "Page range"},
    OptionRow("optRange", AllPages, "All pages", 'A'),
    OptionRow("optRange", CurrentPage, "Current page", 'U'),
    OptionRow("optRange", Pages, "Pages", 'G'),
    {.name = "txtPageNumbers", .filter = PageNumbersKeyFilter, .spoken = "Page numbers"},
    {.name = "fraDuplex", .kind = BoxKind::Frame, .text = "Manual Duplex"},
    OptionRow("optDuplex", 0, "All pages", 'L'),
    OptionRow("optDuplex", 1, "Odd pages only", 'O'),
    OptionRow("optDuplex", 2, "Even pages only", 'E'),
    {.name = "cmdPrint", .kind = BoxKind::Button, .text = "&Print"},
    {.name = "cmdCancel", .kind = BoxKind::Button, .text = "&Cancel"},
});

} // namespace

frmVSPrintDialog::frmVSPrintDialog(Session& session, PrintSystem& printing)
    : Screen(session, "frmVSPrintDialog", ShowMode::Modal, "Print Dialog"), printing(printing)
{
    AddBoxes(Rows);
    SetButtons("cmdCancel", "cmdPrint");
    OnLeave("txtCopies", [](Box& copies) {
        const int number = ReadWholeNumber(copies.Text());
        if (ReadCopies(copies.Text()) != number)
            copies.SetText(std::to_string(ReadCopies(copies.Text())));
    });
    OnClick("optRange", [this](Box&) { RangeChosen(); });
    OnClick("cmdPrint", [this](Box&) { Print(); });
}

bool frmVSPrintDialog::Load()
{
    preview = session.screens.Load<frmVSPrint>("frmVSPrint");
    if (!printing.engine.Device().empty())
        SetCaption(printing.engine.Device());
    box("txtCopies").SetText("1");
    box("optRange", AllPages).SetTicked(true);
    box("optDuplex", 0).SetTicked(true);
    if (preview->PageCount() < 2)
        for (const Range other : {CurrentPage, Pages})
            box("optRange", other).SetEnabled(false);
    RangeChosen();
    return true;
}

void frmVSPrintDialog::RangeChosen()
{
    const auto range = ChosenOption("optRange");
    const bool passes = range == AllPages && preview->PageCount() >= 2;
    box("fraDuplex").SetEnabled(passes);
    for (int index = 0; index <= 2; ++index) {
        Box& option = box("optDuplex", index);
        option.SetEnabled(passes);
        if (range != AllPages)
            option.SetTicked(index == 0);
    }
    box("txtPageNumbers").SetEnabled(range == Pages);
    if (range == Pages)
        Focus(box("txtPageNumbers"));
}

std::optional<std::string> frmVSPrintDialog::PageList() const
{
    switch (ChosenOption("optRange").value_or(AllPages)) {
    case CurrentPage:
        return std::to_string(preview->PageShown());
    case Pages:
        return box("txtPageNumbers").Text();
    default:
        break;
    }
    return PageListOf(static_cast<ManualDuplex>(ChosenOption("optDuplex").value_or(0)), preview->PageCount(),
                      preview->IsReversed());
}

bool frmVSPrintDialog::HasFirstPage() const
{
    const std::optional<std::string> list = PageList();
    return !list || std::ranges::count(ReadPageList(*list, preview->PageCount()), 1) > 0;
}

void frmVSPrintDialog::Print()
{
    PrintResult result{};
    {
        const BusyPointer busy(session.platform);
        result = printing.engine.PrintDoc(ReadCopies(box("txtCopies").Text()), PageList(),
                                          preview->IsReversed() ? PageOrder::Reverse : PageOrder::AsListed);
    }
    session.platform.YieldToMessages();
    switch (result) {
    case PrintResult::NothingToPrint:
        return TellNothingToPrint();
    case PrintResult::PrinterUnreachable:
        TellPrinterError(session.messages, printing.engine.Device());
        break;
    case PrintResult::NotReady: // tmrAbandon has fired
        session.messages.Tell("Printing Process",
                              "The printing system is not ready.\nThe print job has been abandoned.");
        break;
    case PrintResult::Sent:
        // A pass with the first page: the others of a form that is printed side by side belong to it.
        if (HasFirstPage())
            MarkPrinted(session, printing.document);
        SayPagesSent(session, printing.engine.PagesSent(), printing.engine.Device());
        break;
    }
    session.screens.Unload(Name());
}

/// Nothing has gone to the printer; where a page list is the cause, it can be mended.
void frmVSPrintDialog::TellNothingToPrint()
{
    if (ChosenOption("optRange") != Pages) {
        session.messages.Tell(edition::AppTitle, "The document has no pages to print.");
        return;
    }
    session.messages.Tell(edition::AppTitle,
                          "The page numbers name no page of this document.\nNothing has been printed.");
    Focus(box("txtPageNumbers"));
}

} // namespace quillmere
