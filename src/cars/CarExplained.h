#pragma once

#include "cars/CarBenefit.h"
#include "frame/Explained.h"

namespace quillmere {

/// How the benefit of a car and of its fuel came about, from the prices to `FCashEqu` and `FFuelEqu`. The boxes of the
/// steps are stems of a column's. Without `fuelProvided` there is no fuel benefit to explain. Throws as `ReadCar` and
/// `CarBenefit` do.
Explained ExplainCar(const CarTexts& boxes, bool fuelProvided);

} // namespace quillmere
