#pragma once

#include "frame/Box.h"

#include <string>
#include <string_view>

namespace quillmere {
struct Session;
}

namespace quillmere::review {

/// A box of one of the screens of an employee.
struct BoxPlace {
    std::string_view screen, box;
    int index = Box::NoIndex;
};

/// Opens an employee if he is not open, and goes to the box by the user's own ways. False if a way is barred.
bool GoToBox(Session& session, const std::string& employer, const std::string& employee, const BoxPlace& place);

} // namespace quillmere::review
