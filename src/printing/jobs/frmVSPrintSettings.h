#pragma once

#include "frame/Screen.h"
#include "frame/Settings.h"

#include <optional>
#include <string>
#include <string_view>

namespace quillmere {

struct PrintSystem;

/// "Report Settings": the settings of printing on three pages. What it shows goes into the settings when it is closed,
/// whichever way that happens; there is no way out without.
class frmVSPrintSettings : public Screen {
public:
    frmVSPrintSettings(Session& session, PrintSystem& printing);

    bool Load() override;
    void Unload() override;

private:
    void ShowPage(int page);
    void ShowSettings(const Settings& settings);
    /// Lists the printers of now, with one of them chosen: the default one if none is given.
    void FillPrinters(std::optional<std::string> chosen);
    void Defaults();
    /// The printer chosen in the list; while none is, the one of the settings.
    std::string ChosenPrinter() const;

    PrintSystem& printing;
    std::string printer; ///< that the list was to show, whether it is in it or not
};

} // namespace quillmere
