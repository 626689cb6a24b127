#pragma once

#include "printing/jobs/PrintSystem.h"
#include "printing/jobs/frmVSPrint.h"
#include "printing/jobs/frmVSPrintDialog.h"
#include "printing/jobs/frmVSPrintSettings.h"

#include <memory>
#include <string>

namespace quillmere::test {

/// The three screens around the page engine, with no windows, over a door of the test's own.
template<typename Door>
struct PreviewRoom {
    PreviewRoom()
    {
        session.settings =
            SetDefaultConfiguration({.programFolder = "/nowhere", .screenHeight = 768, .screenWidth = 1366});
        Register<frmVSPrint>("frmVSPrint");
        Register<frmVSPrintDialog>("frmVSPrintDialog");
        Register<frmVSPrintSettings>("frmVSPrintSettings");
    }
    ~PreviewRoom() { session.screens.Abandon(); }
    PreviewRoom(const PreviewRoom&) = delete;
    PreviewRoom& operator=(const PreviewRoom&) = delete;

    /// Draws a document whose pages say "Page 1" and so on, and opens the preview on it.
    frmVSPrint& Preview(int pages)
    {
        Draw(pages);
        return static_cast<frmVSPrint&>(*session.screens.Show("frmVSPrint"));
    }
    bool Draw(int pages)
    {
        if (printing.document.OpenPrintJob("Acme Ltd - Jane Smith") != Opening::Open)
            return false;
        for (int page = 1; page <= pages; ++page) {
            printing.page.NextPrintPage();
            printing.page.vsTextLeft(20, 20, "Page " + std::to_string(page));
        }
        printing.document.vsEndDoc();
        return true;
    }
    /// Opens the print dialog from the preview.
    Screen& Dialog(Screen& preview)
    {
        preview.Click(preview.box("cmdPrint"));
        return *session.screens.Find("frmVSPrintDialog");
    }
    Screen& Settings() { return *session.screens.Show("frmVSPrintSettings"); }

    Door door;
    Session session{door};
    PrintSystem printing{session};

private:
    template<typename ScreenClass>
    void Register(std::string_view name)
    {
        session.screens.Register(name, [this](Session& with) { return std::make_unique<ScreenClass>(with, printing); });
    }
};

} // namespace quillmere::test
