#pragma once

#include "frame/Screen.h"

namespace quillmere {

class frmVSPrint;
struct PrintSystem;

/// "Print Dialog": how many copies of which pages of the document in the preview go to the printer.
class frmVSPrintDialog : public Screen {
public:
    frmVSPrintDialog(Session& session, PrintSystem& printing);

    bool Load() override;

private:
    void RangeChosen();
    /// The page list as text; nothing for the whole document.
    std::optional<std::string> PageList() const;
    bool HasFirstPage() const;
    void Print();
    void TellNothingToPrint();

    PrintSystem& printing;
    const frmVSPrint* preview = nullptr; ///< in front of which it opens
};

} // namespace quillmere
