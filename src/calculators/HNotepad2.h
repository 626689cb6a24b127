#pragma once

#include "calculators/HNotepad.h"

namespace quillmere {

/// The list of currencies and their official rates, opened from the loans. Its Ok writes its table at once.
class HNotepad2 : public CalculatorNotepad {
public:
    explicit HNotepad2(Session& session);

    bool Load() override;

private:
    void Ok() override;
    void Delete() override;
};

} // namespace quillmere
