#pragma once

#include "Script.h"

#include <vector>

/// The steps of the language, one row each, beside what they do. `Steps()` has them all.
namespace quillmere::scenario {

std::vector<StepRow> GivenSteps();
std::vector<StepRow> ActSteps();
std::vector<StepRow> ExpectationSteps();
std::vector<StepRow> ShowingSteps();

} // namespace quillmere::scenario
