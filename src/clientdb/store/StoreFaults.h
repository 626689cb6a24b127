#pragma once

#include <functional>
#include <string_view>

namespace quillmere {

/// Looks at each statement that the record store is about to run. Nought lets it run; any other result is the store's
/// error number with which it fails instead.
using StoreFaultHook = std::function<int(std::string_view statement)>;

/// For tests: sets the hook of this process, or takes it away with an empty one.
void SetStoreFaultHook(StoreFaultHook hook);

} // namespace quillmere
