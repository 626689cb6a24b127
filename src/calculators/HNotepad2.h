#pragma once

#include "calculators/HNotepad.h"

namespace quillmere {

/// The list of currencies and their official rates, opened from the loans. Its Ok writes its table at once.
class HNotepad2 : public Notepad {
public:
    explicit HNotepad2(Session& session);

private:
    Recordset OpenOwn(Database& database) const override;
    void Open(Database& database) override;
    bool HandOver(const std::vector<Result>& results) override;
    void Delete() override;
};

} // namespace quillmere
