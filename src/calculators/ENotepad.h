#pragma once

#include "calculators/TabbedNotepad.h"

namespace quillmere {

/// The calculator of mileage allowance and passenger payments behind section E: three kinds of vehicle, of which one
/// shows at a time.
class ENotepad : public TabbedNotepad {
public:
    explicit ENotepad(Session& session);

    bool Load() override { return OpenGrid(); }

private:
    void ColumnShown() override;
    void Recalculate() override;
    void Ok() override;
    void Delete() override { ClearColumn(); }
};

} // namespace quillmere
