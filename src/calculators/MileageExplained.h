#pragma once

#include "calculators/MileageBenefit.h"
#include "frame/Explained.h"

namespace quillmere {

/// How the taxable mileage and passenger payments of one kind of vehicle came about, box by box.
Explained ExplainMileage(const MileageFacts& vehicle);

} // namespace quillmere
