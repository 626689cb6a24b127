#pragma once

#include "clientdb/Notepad.h"

namespace quillmere {

/// The calculator of qualifying relocation behind section J.
class JNotepad : public Notepad {
public:
    explicit JNotepad(Session& session);

private:
    void ShowPage(const Recordset& page) override;
    void Recalculate() override;
    void LeaveEmployeeCost(Box& cost);
    std::vector<Result> Results(const Recordset& own) const override;
    void Delete() override;
};

} // namespace quillmere
