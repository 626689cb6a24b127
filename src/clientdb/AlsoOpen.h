#pragma once

#include "frame/Session.h"

#include <memory>

namespace quillmere {

/// Says in the status bar who else has the open employee of a shared folder open, and tells the other desks of this
/// one. It is asked again behind the keys whenever a page shows or something has been stored, and from time to time in
/// between; of a folder that is not shared there is nobody to ask.
class AlsoOpen : public Onlooker {
public:
    explicit AlsoOpen(Session& session) : session(session) {}

    void Shown() override { LookSoon(); }
    void Closed() override;
    void Stored() override { LookSoon(); }

private:
    void LookSoon();
    void LookLater();
    void Look();

    Session& session;
    bool isScheduled = false;
    bool isTold = false;                                 ///< the others know of somebody who is open here
    std::shared_ptr<int> life = std::make_shared<int>(); ///< what waits does nothing after it
};

} // namespace quillmere
