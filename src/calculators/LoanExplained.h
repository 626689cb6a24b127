#pragma once

#include "calculators/LoanBenefit.h"
#include "frame/Explained.h"

#include <string_view>

namespace quillmere {

/// How the cash equivalent of a loan came about, box by box of the loan calculator.
Explained ExplainLoan(const LoanFacts& loan);

} // namespace quillmere
