#pragma once

#include "calculators/CalculatorNotepad.h"

namespace quillmere {

/// The calculator of the additional charge for living accommodation, opened from the basic charge.
class D2Notepad : public CalculatorNotepad {
public:
    explicit D2Notepad(Session& session);

    bool Load() override;

private:
    void ShowBasicCharge(const Recordset& records);
    void Recalculate();
    void LeaveCost(const Box& cost);
    void LeaveDays(Box& days);
    void Ok() override;
    void Delete() override;
};

/// Guidance on the cost of accommodation: fixed text and a button that closes it.
class D2InfoNotepad : public Screen {
public:
    explicit D2InfoNotepad(Session& session);
};

} // namespace quillmere
