#include "clientdb/BoundScreen.h"

#include "clientdb/Recordset.h"

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
        if (link->Seek(source.index, session.CurrentEmployer, employee))
            return Sought::Found;
        session.messages.Tell(errorTitle, "Employee not found");
        return Sought::NotFound;
    } catch (const StoreError& error) {
        session.messages.Tell(Caption(), error.what());
        return Sought::Failed;
    }
}

bool BoundScreen::StoreRecord()
{
    try {
        link->Store();
    } catch (const RecordGone&) {
        return true;
    } catch (const StoreError& error) {
        session.messages.Tell(Caption(), error.what());
        return false;
    }
    return true;
}

void BoundScreen::TakeResult(std::string_view boxName, std::string_view text, std::string_view stored)
{
    Box& result = box(boxName);
    result.SetText(text);
    link->NoteStored(result, stored);
}

void BoundScreen::TakeField(std::string_view field, std::string_view text)
{
    for (const auto& bound : Boxes())
        if (bound->Field() == field)
            link->Take(*bound, text);
}

bool BoundScreen::ReleaseRecord()
{
    try {
        link->Release();
        return true;
    } catch (const StoreError& error) {
        session.messages.Tell(Caption(), error.what());
        return false;
    }
}

} // namespace quillmere
