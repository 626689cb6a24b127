#pragma once

#include "clientdb/PutBack.h"
#include "frame/Screen.h"

#include <optional>

namespace quillmere {

/// The client database of the selected folder is damaged: what is wrong with it, the newest good copy to go back to,
/// and what can still be read of it. It stands at the foot of the main window, and is in nobody's way.
class DamagedDatabase : public Screen {
public:
    explicit DamagedDatabase(Session& session);

    bool Load() override;

private:
    void ShowOffer();
    void PutBackOffer();
    void Salvage();

    std::optional<GoodCopy> offer;
};

/// Looks at the database once the windows are up: shows the screen if it is damaged, and otherwise keeps the first copy
/// of the day.
void LookAfterDatabaseSoon(Session& session);

} // namespace quillmere
