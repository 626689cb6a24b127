#pragma once

#include "calculators/VanBenefit.h"
#include "frame/Explained.h"

namespace quillmere {

/// How the benefit of a van and of its fuel came about, box by box of the van calculator.
Explained ExplainVan(const VanFacts& van);

} // namespace quillmere
