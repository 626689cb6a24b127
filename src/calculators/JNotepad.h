#pragma once

#include "calculators/CalculatorNotepad.h"

namespace quillmere {

/// The calculator of qualifying relocation behind section J.
class JNotepad : public CalculatorNotepad {
public:
    explicit JNotepad(Session& session);

    bool Load() override;

private:
    void Recalculate();
    void LeaveEmployeeCost(Box& cost);
    void Ok() override;
    void Delete() override;
};

} // namespace quillmere
