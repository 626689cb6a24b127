#pragma once

#include "printing/forms/FormTables.h"

#include <vector>

namespace quillmere {

/// First side of the substitute P11D: sections A to F, from an employee's record of `P11D`.
void PrintP11D1(PageLayer& page, const FieldReader& read);

/// Second side: sections G to N. Fields whose names begin with N print in section M, those with O in section N.
void PrintP11D2(PageLayer& page, const FieldReader& read);

/// The texts of either side that are longer than their boxes, behind those that are listed. BeginValues has set the
/// font.
void FindCutOnP11D1(const PageLayer& page, const FieldReader& read, std::vector<CutText>& cut);
void FindCutOnP11D2(const PageLayer& page, const FieldReader& read, std::vector<CutText>& cut);

} // namespace quillmere
