#pragma once

#include "printing/forms/FormPrimitives.h"

namespace quillmere {

/// First side of the substitute P11D: sections A to F, from an employee's record of `P11D`.
void PrintP11D1(PageLayer& page, const FieldReader& read);

/// Second side: sections G to N. Fields whose names begin with N print in section M, those with O in section N.
void PrintP11D2(PageLayer& page, const FieldReader& read);

} // namespace quillmere
