#pragma once

#include "calculators/CalculatorNotepad.h"

namespace quillmere {

/// The calculator of the basic charge for living accommodation, behind section D.
class DNotepad : public CalculatorNotepad {
public:
    explicit DNotepad(Session& session);

    bool Load() override;
    void Activate() override { Recalculate(); }

private:
    void Recalculate();
    /// Looks at what is typed in `BasicChargeE`, which wants figures in C and D first.
    [[nodiscard]] Guard GuardE();
    void Ok() override;
    void Delete() override;
};

} // namespace quillmere
