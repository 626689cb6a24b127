#include "printing/frmVSPrintDialog.h"

#include "edition/Edition.h"
#include "frame/Amount.h"
#include "frame/Session.h"
#include "printing/PageList.h"
#include "printing/PrintPasses.h"
#include "printing/PrintSystem.h"
#include "printing/frmVSPrint.h"

#include <algorithm>
#include <array>
#include <numeric>
#include <string>
#include <vector>

namespace quillmere {

namespace {

/// The options of the page range, by index.
enum Range { AllPages, CurrentPage, Pages };

/// Digits, "," and "-", backspace.
KeyVerdict PageNumbersKeyFilter(char32_t key)
{
    return key == U',' || key == U'-' ? KeyVerdict{.key = key} : WholeNumberKeyFilter(key);
}

constexpr auto Rows = std::to_array<BoxRow>({
    {.name = "fraCopies", .kind = Kind::Frame, .text = "Copies"},
    {.name = "txtCopies", .filter = WholeNumberKeyFilter, .spoken = "Number of copies"},
    {.name = "fraRange", .kind = Kind::Frame, .text = "Page range"},
    OptionRow("optRange", AllPages, "All pages"),
    OptionRow("optRange", CurrentPage, "Current page"),
    OptionRow("optRange", Pages, "Pages"),
    {.name = "txtPageNumbers", .filter = PageNumbersKeyFilter, .spoken = "Page numbers"},
    {.name = "fraDuplex", .kind = Kind::Frame, .text = "Manual Duplex"},
    OptionRow("optDuplex", 0, "All pages"),
    OptionRow("optDuplex", 1, "Odd pages only"),
    OptionRow("optDuplex", 2, "Even pages only"),
    {.name = "cmdPrint", .kind = Kind::Button, .text = "&Print"},
    {.name = "cmdCancel", .kind = Kind::Button, .text = "&Cancel"},
});

} // namespace

frmVSPrintDialog::frmVSPrintDialog(Session& session, PrintSystem& printing)
    : Screen(session, "frmVSPrintDialog", ShowMode::Modal, "Print Dialog"), printing(printing)
{
    AddBoxes(Rows);
    SetButtons("cmdCancel", "cmdPrint");
    OnLeave("txtCopies", [](Box& copies) {
        if (ReadWholeNumber(copies.Text()) < 1)
            copies.SetText("1");
    });
    OnClick("optRange", [this](Box&) { RangeChosen(); });
    OnClick("cmdPrint", [this](Box&) { Print(); });
    OnClick("cmdCancel", [this](Box&) { this->session.screens.Unload(Name()); });
}

const frmVSPrint& frmVSPrintDialog::Preview() const
{
    return static_cast<const frmVSPrint&>(*session.screens.Load("frmVSPrint"));
}

bool frmVSPrintDialog::Load()
{
    if (!printing.engine.Device().empty())
        SetCaption(printing.engine.Device());
    box("txtCopies").SetText("1");
    box("optRange", AllPages).SetTicked(true);
    box("optDuplex", 0).SetTicked(true);
    if (Preview().PageCount() < 2)
        for (const Range other : {CurrentPage, Pages})
            box("optRange", other).SetEnabled(false);
    RangeChosen();
    return true;
}

int frmVSPrintDialog::Chosen(std::string_view options) const
{
    int index = 0;
    while (index < 2 && !box(options, index).Ticked())
        ++index;
    return index;
}

void frmVSPrintDialog::RangeChosen()
{
    const int range = Chosen("optRange");
    const bool passes = range == AllPages && Preview().PageCount() >= 2;
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
    const frmVSPrint& preview = Preview();
    switch (Chosen("optRange")) {
    case CurrentPage:
        return std::to_string(preview.PageShown());
    case Pages:
        return box("txtPageNumbers").Text();
    default:
        break;
    }
    const auto pass = static_cast<ManualDuplex>(Chosen("optDuplex"));
    if (pass == ManualDuplex::AllPages)
        return std::nullopt;
    return PageListOf(pass, preview.PageCount(), preview.IsReversed());
}

void frmVSPrintDialog::Print()
{
    const frmVSPrint& preview = Preview();
    const int copies = std::max(1, ReadWholeNumber(box("txtCopies").Text()));
    std::vector<int> pages;
    if (const auto list = PageList()) {
        pages = ReadPageList(*list, preview.PageCount());
    } else {
        pages.resize(static_cast<std::size_t>(preview.PageCount()));
        std::iota(pages.begin(), pages.end(), 1);
    }
    if (preview.IsReversed())
        std::ranges::reverse(pages);

    session.platform.SetBusyPointer(true);
    const PrintResult result = printing.engine.PrintDoc(copies, pages);
    session.platform.SetBusyPointer(false);
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
        break;
    }
    session.screens.Unload(Name());
}

/// Nothing has gone to the printer; where a page list is the cause, it can be mended.
void frmVSPrintDialog::TellNothingToPrint()
{
    if (Chosen("optRange") != Pages) {
        session.messages.Tell(edition::AppTitle, "The document has no pages to print.");
        return;
    }
    session.messages.Tell(edition::AppTitle,
                          "The page numbers name no page of this document.\nNothing has been printed.");
    Focus(box("txtPageNumbers"));
}

} // namespace quillmere
