#include "clientdb/BoundScreen.h"

#include "clientdb/store/Recordset.h"
#include "frame/CloseAll.h"

namespace quillmere {

BoundScreen::BoundScreen(Session& session, std::string_view name, ShowMode mode, std::string_view caption,
                         const Source& source)
    : Screen(session, name, mode, caption), source(source)
{
}

BoundScreen::Sought BoundScreen::SeekRecord(std::string_view errorTitle)
{
    try {
        const std::string_view employee = source.index == "IndKey" ? session.CurrentEmployee : std::string_view();
        const bool found = link->Seek(source.index, session.CurrentEmployer, employee);
        TellOfBroughtBack();
        if (found)
            return Sought::Found;
        session.messages.Tell(errorTitle, "Employee not found");
        return Sought::NotFound;
    } catch (const Failure& error) {
        session.messages.Tell(Caption(), error.what());
        return Sought::Failed;
    }
}

bool BoundScreen::StoreRecord()
{
    return Telling([this] {
        try {
            link->Store();
        } catch (const RecordGone&) {
        }
    });
}

bool BoundScreen::Telling(const std::function<void()>& work)
{
    try {
        work();
        return true;
    } catch (const Failure& error) {
        session.messages.Tell(Caption(), error.what());
        return false;
    }
}

bool BoundScreen::MayClose()
{
    return Telling([this] { link->Store(); }) || !link->HasRecord();
}

void BoundScreen::TakeResult(std::string_view field, std::string_view text, const std::optional<std::string>& stored)
{
    for (const auto& bound : Boxes()) {
        if (bound->Field() != field)
            continue;
        bound->ShowStored(text);
        if (stored)
            link->NoteStored(*bound, *stored == text ? bound->Stored() : *stored);
    }
}

void BoundScreen::CloseRequested()
{
    LeaveBoxInUse();
    Screen::CloseRequested();
}

void BoundScreen::TellOfBroughtBack() const
{
    constexpr std::string_view Back = "What was typed and not stored last time is back in its boxes";
    if (link->HasBroughtBack())
        SetStatusNote(session, Back);
    else
        ClearStatusNote(session, Back);
}

void BoundScreen::DropChanges()
{
    static_cast<void>(Telling([this] { link->DropChanges(); }));
}

void BoundScreen::StoreOrKeep()
{
    try {
        link->Release();
    } catch (const RecordGone&) {
        // There is nothing that it could come back to.
    } catch (const StoreError&) {
        static_cast<void>(Telling([this] { link->KeepChanges(); }));
    }
}

bool BoundScreen::ReleaseRecord()
{
    return Telling([this] {
        link->Release();
        TellOfBroughtBack();
    });
}

} // namespace quillmere
