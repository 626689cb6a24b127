#pragma once

#include "frame/OnceLater.h"
#include "frame/Session.h"

namespace quillmere {

/// Says in the status bar who else has the open employee of a shared folder open, and tells the other desks of this
/// one. It is asked again behind the keys whenever a page shows or something has been stored, and from time to time in
/// between; of a folder that is not shared there is nobody to ask.
class AlsoOpen : public Onlooker {
public:
    explicit AlsoOpen(Session& session);

    void Shown() override { LookSoon(); }
    void Closed() override;
    void Stored() override { LookSoon(); }

private:
    void LookSoon();
    void Look();

    Session& session;
    bool isTold = false; ///< the others know of somebody who is open here
    OnceLater looking;
};

} // namespace quillmere
