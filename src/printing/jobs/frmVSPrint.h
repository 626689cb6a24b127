#pragma once

#include "frame/Screen.h"
#include "printing/jobs/PreviewPages.h"
#include "printing/jobs/PrinterEdge.h"
#include "printing/paper/Document.h"

#include <filesystem>
#include <memory>
#include <string>

namespace quillmere {

struct PrintSystem;

/// "Print Preview": shows the engine's ended document, and is the way in which a single job reaches the printer.
class frmVSPrint : public Screen {
public:
    frmVSPrint(Session& session, PrintSystem& printing);

    bool Load() override;
    void Unload() override;

    /// The document that is shown; null if there is none.
    const std::shared_ptr<const Document>& Shown() const { return document; }
    int PageShown() const { return pageShown; }
    int PageCount() const { return document ? document->PageCount() : 0; }
    /// True if the pages are to be printed from the last to the first.
    bool IsReversed() const { return box("cmbPrint").Selected() == 1; }

    /// Where the document's printer cannot print.
    const SheetEdge& Edge() const { return edge; }

    /// Turns to a page; one outside the document is the first or the last.
    void TurnTo(int page);

    /// What the surface is to show.
    PreviewView View() const;
    /// The surface's size, pixels at scale 1.
    void SurfaceSized(double width, double height);
    /// The window has been painted for the first time: the pointer goes back to normal.
    void Painted();

    /// Keys that work wherever the focus stands.
    enum class Command { PreviousPage, NextPage, FirstPage, LastPage, ZoomIn, ZoomOut, Print, Save };
    void Execute(Command command);

private:
    void Press(std::string_view button);
    void ShowPage();
    void ZoomModeChosen();
    void Zoom(bool larger);
    /// Asks where the document is to be kept as a PDF file, and keeps it there.
    void SavePdf();
    /// Asks what the printer can print, and says whether the document lies in it.
    void LookAtEdge();
    /// Draws the document anew with the offsets that bring it inside, if the user wants them.
    void MoveInside();
    std::string ProposedName() const;
    int Percent() const;

    PrintSystem& printing;
    std::shared_ptr<const Document> document;
    std::filesystem::path saved; ///< the file that the document was kept in; empty if it was not
    SheetEdge edge;
    EdgeFit fit;
    int pageShown = 0;
    double surfaceWidth = 0, surfaceHeight = 0;
};

} // namespace quillmere
