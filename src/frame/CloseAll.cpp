#include "frame/CloseAll.h"

#include "edition/Edition.h"

#include <array>

namespace quillmere {

namespace {

struct ClosingRow {
    std::string_view screen;
    bool notepad = false; ///< unloaded too when an employee has just been opened
};

/// The order of closing.
// clang-format off
constexpr auto ClosingOrder = std::to_array<ClosingRow>({
    {"Side2Form1", true},  {"Form3"},
    {"ANotepad", true},    {"BNotepad", true},    {"CNotepad", true},    {"DNotepad", true},
    {"D2Notepad", true},   {"D2InfoNotepad"},     {"ENotepad", true},    {"FNotepad", true},
    {"GNotepad", true},    {"GNotepad2", true},   {"HNotepad", true},    {"HNotepad2", true},
    {"INotepad", true},    {"JNotepad", true},    {"KNotepad", true},    {"LNotepad", true},
    {"NNotepad1", true},   {"NNotepad2", true},   {"NNotepad3", true},   {"ONotepad1", true},
    {"ONotepad2", true},   {"ONotepad3", true},   {"ONotepad4", true},   {"ONotepad5", true},
    {"ONotepad6", true},   {"EmployeeList"},      {"EmployerList"},      {"Form1"},
    {"NewFile"},           {"NewFileCheck"},      {"RenameEmp"},         {"P11DDeclaration"},
    {"P11DBNotepad1"},     {"P11DBNotepad2"},     {"PrePrint"},          {"TransferList"},
});
// clang-format on

} // namespace

void UnloadAllScreens(Session& session)
{
    for (const ClosingRow& row : ClosingOrder)
        session.screens.Unload(row.screen);
}

void UnloadNotepads(Session& session)
{
    for (const ClosingRow& row : ClosingOrder)
        if (row.notepad)
            session.screens.Unload(row.screen);
}

void EnableEmployeeCommands(Session& session, bool enabled)
{
    Screen* main = session.screens.Find("MDIForm1");
    if (main == nullptr)
        return;
    main->box("mnuPrint").SetEnabled(enabled);
    main->box("FileP11DB").SetEnabled(enabled);
    main->box("cmdFile", 4).SetEnabled(enabled);
    main->box("cmdFile", 9).SetEnabled(enabled);
}

void SetMainCaption(Session& session, std::string_view caption)
{
    if (Screen* main = session.screens.Find("MDIForm1"))
        main->SetCaption(caption);
}

void SetStatusNote(Session& session, std::string_view note)
{
    if (Box* panel = session.screens.FindBox("MDIForm1", "StatusNote"))
        panel->SetText(note);
}

std::string OpenEmployeeCaption(const Session& session)
{
    return std::string(edition::AppTitle) + " - " + session.CurrentEmployee + " (" + session.CurrentEmployer + ")";
}

} // namespace quillmere
