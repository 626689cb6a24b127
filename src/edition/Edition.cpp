#include "edition/Edition.h"

namespace quillmere::edition {

static_assert(AmountColumnWidth.size() == 10);
static_assert(ProductFolder.size() == PriorProductFolder.size());

} // namespace quillmere::edition
