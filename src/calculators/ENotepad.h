#pragma once

#include "calculators/TabbedNotepad.h"

namespace quillmere {

/// The calculator of mileage allowance and passenger payments behind section E: three kinds of vehicle, of which one
/// shows at a time.
class ENotepad : public TabbedNotepad {
public:
    explicit ENotepad(Session& session);

private:
    void TabShown() override;
    void Recalculate() override;
    std::vector<Result> Results(const Recordset& own) const override;
};

} // namespace quillmere
