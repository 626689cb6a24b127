#include "clientdb/FolderScreens.h"
#include "desktop/layouts/DialogParts.h"
#include "desktop/layouts/Layouts.h"

namespace quillmere::layouts {

Layout frmFolderManager()
{
    constexpr int line = 30;
    Layout layout{.width = 660, .height = 90 + FolderSlots * line, .onScreen = true};
    layout.Text(44, 16, 180, "Folder Name", {.bold = true});
    layout.Text(236, 16, 400, "Directory Path", {.bold = true});
    for (int slot = 1; slot <= FolderSlots; ++slot) {
        const int y = 38 + (slot - 1) * line;
        layout.Text(16, y + 3, 20, std::to_string(slot), {.align = TextLook::Align::Right});
        layout.PlaceAt("txtName", slot, 44, y, 180);
        layout.PlaceAt("txtPath", slot, 236, y, 408);
    }
    ButtonRow(layout, 644, layout.height - 44, {"cmdOK", "cmdCancel"});
    return layout;
}

Layout frmBackup()
{
    Layout layout{.width = 620, .height = 136};
    layout.Text(16, 18, 590,
                "Click on the 'Save' button to save a backup copy of your client database file:", {.size = 13});
    layout.Place("lblSource", 16, 36, 588, 40, "Client database");
    ButtonRow(layout, 604, 92, {"cmdSave", "cmdCancel"});
    return layout;
}

Layout TransferList()
{
    constexpr int list = 110, buttons = 466;
    Layout layout{.width = 520, .height = buttons + 44, .growing = "TransferListbox"};
    layout.Place("lblLegend", 16, 14, 488, 20);
    layout.Place("lblFolderName", 16, 36, 488, 36, "Last year's folder");
    FilterLine(layout, 16, 76, 488);
    layout.Place("TransferListbox", 16, list, 488, buttons - list - 14);
    layout.Place("ListCount", 16, buttons, 160, ButtonHeight);
    layout.Place("Transfer", 184, buttons, 100, ButtonHeight);
    layout.Place("TransferAll", 292, buttons, 108, ButtonHeight);
    Button(layout, 504, buttons, "Cancel");
    return layout;
}

} // namespace quillmere::layouts
