#pragma once

#include "calculators/AccommodationBenefit.h"
#include "frame/Explained.h"

namespace quillmere {

/// How the basic charge came about, box by box. `shownE` is what box E reads: once it has cut D back to C, the notepad
/// shows the figure of before.
Explained ExplainBasicCharge(const BasicChargeFacts& boxes, std::string_view shownE);

/// How the additional charge came about, box by box.
Explained ExplainAdditionalCharge(const AdditionalChargeFacts& boxes);

} // namespace quillmere
