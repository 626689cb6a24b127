#include "StepFamilies.h"

#include <algorithm>
#include <iterator>

namespace quillmere::scenario {

std::span<const StepRow> Steps()
{
    static const std::vector<StepRow> steps = [] {
        std::vector<StepRow> all;
        for (const auto family : {GivenSteps, ActSteps, ExpectationSteps, ShowingSteps})
            std::ranges::move(family(), std::back_inserter(all));
        return all;
    }();
    return steps;
}

} // namespace quillmere::scenario
