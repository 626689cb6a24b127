#pragma once

#include "frame/Screen.h"

#include <string>
#include <vector>

namespace quillmere {

/// A thing that somebody who is asked for help wants to know of the program.
struct AboutFact {
    std::string what, which;
};

/// Edition, version, folders, database and libraries, as they are now.
std::vector<AboutFact> AboutFacts(const Session& session);

/// Which program this is, what it works on and what it is made with, to be copied into a letter.
class About : public Screen {
public:
    explicit About(Session& session);

    bool Load() override;

private:
    std::vector<AboutFact> facts;
};

} // namespace quillmere
