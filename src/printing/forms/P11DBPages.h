#pragma once

#include "printing/forms/FormPrimitives.h"

namespace quillmere {

/// What the two ways of printing an employer's declaration, P11D(b), have different: from the employer's own record,
/// and in a batch from the totals that were just worked out.
enum class DeclarationVariant { Record, Totals };

/// The declaration side, sections 1 and 2. `read` gives the fields of `P11DB`, or the totals under the same names.
void PrintP11DBDeclaration(PageLayer& page, DeclarationVariant variant, const FieldReader& read);

/// The notes side, sections 3 and 4.
void PrintP11DBNotes(PageLayer& page, DeclarationVariant variant, const FieldReader& read);

} // namespace quillmere
