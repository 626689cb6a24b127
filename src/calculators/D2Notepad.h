#pragma once

#include "clientdb/Notepad.h"

namespace quillmere {

/// The calculator of the additional charge for living accommodation, opened from the basic charge.
class D2Notepad : public Notepad {
public:
    explicit D2Notepad(Session& session);

private:
    void Open(Database& database) override;
    void ShowBasicCharge(const Recordset& records);
    void Recalculate() override;
    void LeaveCost(const Box& cost);
    void LeaveDays(Box& days);
    // Kept: Ok works nothing out.
    bool MayStore() override { return true; }
    void Delete() override;
};

/// Guidance on the cost of accommodation: fixed text and a button that closes it.
class D2InfoNotepad : public Screen {
public:
    explicit D2InfoNotepad(Session& session);
};

} // namespace quillmere
