#pragma once

#include "printing/forms/FormTables.h"

#include <vector>

namespace quillmere {

/// First side of the substitute P11D: sections A to F, from an employee's record of `P11D`.
void PrintP11D1(PageLayer& page, const FieldReader& read);

/// Second side: sections G to N. Fields whose names begin with N print in section M, those with O in section N.
void PrintP11D2(PageLayer& page, const FieldReader& read);

/// List the texts of either side that may be longer than their boxes, behind those that are listed.
void AddBoxedTextsOfP11D1(std::vector<BoxedText>& texts);
void AddBoxedTextsOfP11D2(std::vector<BoxedText>& texts);

} // namespace quillmere
