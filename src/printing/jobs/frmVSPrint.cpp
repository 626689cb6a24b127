#include "printing/jobs/frmVSPrint.h"

#include "edition/Edition.h"
#include "frame/Amount.h"
#include "frame/CheckedFile.h"
#include "frame/CloseAll.h"
#include "frame/Session.h"
#include "frame/ShellOpen.h"
#include "printing/jobs/PdfNames.h"
#include "printing/jobs/PrintJobs.h"
#include "printing/jobs/PrintSystem.h"

#include <algorithm>
#include <array>
#include <fmt/format.h>

namespace quillmere {

namespace {

/// A button that turns to a page.
constexpr BoxRow TurningRow(std::string_view name, std::string_view sign, std::string_view page, char letter)
{
    return {.name = name, .kind = BoxKind::Button, .text = sign, .spoken = page, .tip = page, .letter = letter};
}

/// The surface comes first: it has the focus when the window opens, so that the arrow keys move the page.
constexpr auto Rows = std::to_array<BoxRow>({
    {.name = "vp", .kind = BoxKind::Surface, .spoken = "Page"},
    {.name = "picControls", .kind = BoxKind::Frame},
    {.name = "cmbPrint", .kind = BoxKind::DropDown, .spoken = "Page Order"},
    TurningRow("cmdFirst", "<<", "First Page", 'F'),
    TurningRow("cmdPrevious", "<", "Previous Page", 'V'),
    {.name = "lblPage", .kind = BoxKind::Label, .spoken = "Page shown"},
    TurningRow("cmdNext", ">", "Next Page", 'N'),
    TurningRow("cmdLast", ">>", "Last Page", 'L'),
    {.name = "cmbZoomMode", .kind = BoxKind::DropDown, .spoken = "Zoom"},
    {.name = "cmbPercent", .kind = BoxKind::DropDown, .spoken = "Percentage"},
    {.name = "cmdPrint", .kind = BoxKind::Button, .text = "&Print"},
    {.name = "cmdClose", .kind = BoxKind::Button, .text = "&Close"},
    {.name = "SavePdf", .kind = BoxKind::Button, .text = "&Save PDF...", .tip = "Ctrl+S"},
    {.name = "ShowInFolder", .kind = BoxKind::Button, .text = "Show in Fol&der", .hidden = true},
    {.name = "cmdInside", .kind = BoxKind::Button, .text = "Move &Inside...", .hidden = true},
    {.name = "lblEdge", .kind = BoxKind::Label, .spoken = "Printer's edge", .hidden = true},
    {.name = "lblLook",
     .kind = BoxKind::Label,
     .tip = "Check in the View menu lists them and goes to each box",
     .hidden = true},
    {.name = "lblDocument", .kind = BoxKind::Label, .spoken = "Document"},
});

constexpr auto Percentages = std::to_array<int>({25, 50, 75, 100, 150, 200, 400});
constexpr int PercentAtStart = 2;

/// Two sizes closer than this, in percent, are the same to the eye.
constexpr double SamePercent = 0.5;

} // namespace

frmVSPrint::frmVSPrint(Session& session, PrintSystem& printing)
    : Screen(session, "frmVSPrint", ShowMode::Modal, "Print Preview"), printing(printing)
{
    AddBoxes(Rows);
    SetButtons("cmdClose", {});
    box("cmbPrint").SetEntries({"Normal", "Reverse"});
    box("cmbZoomMode").SetEntries({"Percentage", "Thumbnail", "TwoPages", "WholePage", "PageWidth", "Stretch"});
    for (const int percent : Percentages)
        box("cmbPercent").AddEntry(std::to_string(percent) + "%");
    OnClick("cmdFirst", [this](Box&) { TurnTo(1); });
    OnClick("cmdPrevious", [this](Box&) { TurnTo(pageShown - 1); });
    OnClick("cmdNext", [this](Box&) { TurnTo(pageShown + 1); });
    OnClick("cmdLast", [this](Box&) { TurnTo(PageCount()); });
    OnChoose("cmbZoomMode", [this](Box&) { ZoomModeChosen(); });
    OnClick("cmdPrint", [this](Box&) { this->session.screens.Show("frmVSPrintDialog"); });
    OnClick("SavePdf", [this](Box&) { SavePdf(); });
    OnClick("cmdInside", [this](Box&) { MoveInside(); });
    OnClick("ShowInFolder", [this](Box&) {
        if (const int result = this->session.platform.OpenWithDesktop(saved.parent_path()); ShellOpenFailed(result))
            this->session.messages.Tell(edition::AppTitle, ShellErrorMessage(result));
    });
}

bool frmVSPrint::Load()
{
    const Settings& settings = session.settings;
    document = printing.engine.Ended();
    box("lblDocument").SetText(document ? document->name : std::string());
    box("lblDocument").SetTip(box("lblDocument").Text());
    box("cmbPercent").Select(PercentAtStart);
    box("cmbZoomMode").Select(static_cast<int>(ZoomMode::PageWidth));
    ZoomModeChosen();
    box("cmbPrint").Select(settings.reportReverse ? 1 : 0);
    SetPlacement({.maximised = settings.vsPreviewMaximised,
                  .top = settings.vsPreviewTop,
                  .left = settings.vsPreviewLeft,
                  .height = settings.vsPreviewHeight,
                  .width = settings.vsPreviewWidth});
    TurnTo(1);
    session.screens.StartTimer(*this, "Edge", [this] { LookAtEdge(); });
    return true;
}

void frmVSPrint::Unload()
{
    Settings& settings = session.settings;
    if (const auto& placement = Placement()) {
        settings.vsPreviewMaximised = placement->maximised;
        settings.vsPreviewTop = placement->top;
        settings.vsPreviewLeft = placement->left;
        settings.vsPreviewHeight = placement->height;
        settings.vsPreviewWidth = placement->width;
    }
    settings.reportReverse = IsReversed();
    session.screens.Unload("frmVSPrintDialog");
    // One that was closed before it was painted leaves no busy pointer behind.
    Painted();
}

void frmVSPrint::TurnTo(int page)
{
    pageShown = std::min(std::max(page, 1), PageCount());
    ShowPage();
}

void frmVSPrint::ShowPage()
{
    box("lblPage").SetText(fmt::format("{} of {}", pageShown, PageCount()));
    for (const std::string_view back : {"cmdFirst", "cmdPrevious"})
        box(back).SetEnabled(pageShown > 1);
    for (const std::string_view on : {"cmdNext", "cmdLast"})
        box(on).SetEnabled(pageShown < PageCount());
}

void frmVSPrint::ZoomModeChosen()
{
    box("cmbPercent").SetEnabled(box("cmbZoomMode").Selected() == static_cast<int>(ZoomMode::Percentage));
}

int frmVSPrint::Percent() const
{
    return ReadWholeNumber(box("cmbPercent").Text());
}

PreviewView frmVSPrint::View() const
{
    return {.mode = static_cast<ZoomMode>(box("cmbZoomMode").Selected()),
            .percent = static_cast<double>(Percent()),
            .page = pageShown,
            .pageCount = PageCount(),
            .width = surfaceWidth,
            .height = surfaceHeight};
}

void frmVSPrint::SurfaceSized(double width, double height)
{
    surfaceWidth = width;
    surfaceHeight = height;
}

void frmVSPrint::Painted()
{
    session.platform.SetBusyPointer(false);
}

std::string frmVSPrint::ProposedName() const
{
    return FileNameOf(document->name, printing.document.Form().has_value()) + ".pdf";
}

void frmVSPrint::SavePdf()
{
    if (!document)
        return;
    const std::optional<std::string> chosen =
        session.platform.AskSaveFile({.title = "Save PDF",
                                      .proposedPath = PdfFolder(session) / ProposedName(),
                                      .filterName = "PDF documents",
                                      .filterPattern = "*.pdf",
                                      .defaultExtension = "pdf"});
    if (!chosen)
        return;
    const std::filesystem::path file = *chosen;
    if (std::error_code error;
        std::filesystem::exists(file, error) &&
        !session.messages.Ask("Save PDF", fmt::format("{}\n\nis there already. Replace it?", file.string()),
                              Icon::Question, Answer::No))
        return;
    try {
        if (!SaveShown(session, printing, file))
            return;
    } catch (const Failure& error) {
        session.messages.Tell(edition::AppTitle, error.what(), Icon::Critical);
        return;
    }
    saved = file;
    RememberPdfFolder(session, file.parent_path());
    SetStatusNote(session, "Saved: " + file.string());
    box("lblDocument").SetText("Saved: " + file.filename().string());
    box("lblDocument").SetTip(file.string());
    box("ShowInFolder").SetVisible(true);
}

void frmVSPrint::LookAtEdge()
{
    if (!document)
        return;
    const std::string printer = printing.document.Printer();
    const SheetEdge told = session.platform.EdgeOf(printer);
    if (session.screens.Find(Name()) != this)
        return; // closed while the printer was asked
    edge = told;
    fit = FitOf(InkOf(*document), edge);
    Box& words = box("lblEdge");
    words.SetText(WordsOf(fit, printer));
    words.SetTip(words.Text());
    words.SetVisible(!words.Empty());
    box("cmdInside").SetVisible(fit.canMove);
}

void frmVSPrint::MoveInside()
{
    Settings& settings = session.settings;
    const double left = settings.vsLeft + fit.across, top = settings.vsTop + fit.down;
    const std::string question = fmt::format(
        "{} cannot print at the edge of the sheet: {:.1f} mm at the left, {:.1f} at the top, {:.1f} at the right and "
        "{:.1f} at the bottom.\n\nWith the printer offsets Left {:.1f} mm (now {:.1f}) and Top {:.1f} mm (now {:.1f}) "
        "all of the document is printed. They hold for every printed document, and stand in Report Settings.\n\n"
        "Set these offsets and draw the document again?",
        printing.document.Printer(), edge.left, edge.top, edge.right, edge.bottom, left, settings.vsLeft, top,
        settings.vsTop);
    if (!session.messages.Ask(Caption(), question, Icon::Question, Answer::Yes))
        return;
    settings.vsLeft = left;
    settings.vsTop = top;
    const std::string look = box("lblLook").Text();
    session.screens.Unload(Name());
    ShowAgain(session, printing, look);
}

void frmVSPrint::Press(std::string_view button)
{
    if (box(button).Enabled())
        Click(box(button));
}

void frmVSPrint::Execute(Command command)
{
    switch (command) {
    case Command::PreviousPage:
        return Press("cmdPrevious");
    case Command::NextPage:
        return Press("cmdNext");
    case Command::FirstPage:
        return Press("cmdFirst");
    case Command::LastPage:
        return Press("cmdLast");
    case Command::ZoomIn:
        return Zoom(true);
    case Command::ZoomOut:
        return Zoom(false);
    case Command::Print:
        return Press("cmdPrint");
    case Command::Save:
        return Press("SavePdf");
    }
}

/// Goes to the next percentage of the list, from whatever size the sheets have now.
void frmVSPrint::Zoom(bool larger)
{
    const double now = PercentOf(View());
    int position = -1;
    for (int candidate = 0; candidate < static_cast<int>(Percentages.size()); ++candidate) {
        const int percent = Percentages[static_cast<std::size_t>(candidate)];
        if (!larger && percent < now - SamePercent)
            position = candidate;
        if (larger && percent > now + SamePercent) {
            position = candidate;
            break;
        }
    }
    if (position < 0)
        return;
    box("cmbPercent").Select(position);
    box("cmbZoomMode").Select(static_cast<int>(ZoomMode::Percentage));
    ZoomModeChosen();
}

} // namespace quillmere
