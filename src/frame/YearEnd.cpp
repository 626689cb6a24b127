#include "frame/YearEnd.h"

#include "edition/Edition.h"
#include "frame/Dates.h"
#include "frame/Session.h"

namespace quillmere {

bool IsNotAfterYearEnd(Session& session, std::string_view text)
{
    const YearEndTest test = TestYearEnd(text);
    if (test == YearEndTest::Unreadable) {
        session.LastBadDate = text;
        session.messages.Tell(edition::AppTitle, "Registration Date must be before specified date");
    }
    return test != YearEndTest::No;
}

} // namespace quillmere
