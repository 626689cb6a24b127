#pragma once

#include "calculators/LoanBenefit.h"
#include "frame/Explained.h"

namespace quillmere {

/// How the cash equivalent of a loan came about, box by box of the loan calculator. `others` is what the employee's
/// other loans came to at most: the law looks at all of them together.
Explained ExplainLoan(const LoanFacts& loan, Amount others = {});

/// What a loan came to at most, as far as its boxes tell.
Amount LargestBalance(const LoanFacts& loan);

} // namespace quillmere
