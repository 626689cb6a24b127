#pragma once

#include "calculators/RelocationBenefit.h"
#include "frame/Explained.h"

namespace quillmere {

/// How the taxable part of a move came about, box by box.
Explained ExplainRelocation(const RelocationFacts& boxes);

} // namespace quillmere
