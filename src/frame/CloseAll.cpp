#include "frame/CloseAll.h"

#include "edition/Edition.h"

namespace quillmere {

void UnloadAllScreens(Session& session)
{
    session.screens.UnloadAll(Closing::WithAll);
    SetStatusNote(session, {});
}

bool CloseAllScreens(Session& session)
{
    for (Screen* screen : session.screens.Open())
        if (!screen->MayClose())
            return false;
    UnloadAllScreens(session);
    return true;
}

void UnloadNotepads(Session& session)
{
    session.screens.UnloadAll(Closing::WithOpened);
}

void EnableEmployeeCommands(Session& session, bool enabled)
{
    Screen* main = session.screens.Find("MDIForm1");
    if (main == nullptr)
        return;
    for (const std::unique_ptr<Box>& box : main->Boxes())
        if (box->IsOfEmployee())
            box->SetEnabled(enabled);
}

void ShowOpenEmployee(Session& session, bool open)
{
    if (Box* who = session.screens.FindBox("MDIForm1", "StatusWho"))
        who->SetText(open ? OpenEmployeeInWords(session) : std::string());
    if (Box* start = session.screens.FindBox("MDIForm1", "Start"))
        start->SetVisible(!open);
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

void ClearStatusNote(Session& session, std::string_view beginning)
{
    if (Box* panel = session.screens.FindBox("MDIForm1", "StatusNote"); panel && panel->Text().starts_with(beginning))
        panel->SetText({});
}

std::string OpenEmployeeInWords(const Session& session)
{
    return session.CurrentEmployee + " (" + session.CurrentEmployer + ")";
}

void SayStored(Session& session)
{
    for (Onlooker* onlooker : session.onlookers)
        onlooker->Stored();
}

std::string OpenEmployeeCaption(const Session& session)
{
    return std::string(edition::AppTitle) + " - " + OpenEmployeeInWords(session);
}

} // namespace quillmere
