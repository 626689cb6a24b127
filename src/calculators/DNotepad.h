#pragma once

#include "clientdb/Notepad.h"

namespace quillmere {

/// The calculator of the basic charge for living accommodation, behind section D.
class DNotepad : public Notepad {
public:
    explicit DNotepad(Session& session);

    void Activate() override { WorkOut(); }

private:
    void Recalculate() override;
    /// Looks at what is typed in `BasicChargeE`, which wants figures in C and D first.
    [[nodiscard]] Guard GuardE();
    std::vector<Result> Results(const Recordset& own) const override;
};

} // namespace quillmere
