#include "review/GoToBox.h"

#include "clientdb/EmployerScreens.h"
#include "frame/Session.h"
#include "screens/Form3.h"
#include "screens/Ways.h"

namespace quillmere::review {

bool GoToBox(Session& session, const std::string& employer, const std::string& employee, const BoxPlace& place)
{
    const bool isOpen = session.screens.Find<Form3>() != nullptr && employer == session.CurrentEmployer &&
                        employee == session.CurrentEmployee;
    if (!isOpen && !OpenEmployee(session, employer, employee))
        return false;
    Screen* screen = Reach(session.screens, place.screen);
    Box* box = screen == nullptr ? nullptr : screen->FindBox(place.box, place.index);
    if (box == nullptr)
        return false;
    screen->Focus(*box);
    return true;
}

} // namespace quillmere::review
