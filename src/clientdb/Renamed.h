#pragma once

#include "clientdb/TypedEntries.h"
#include "clientdb/store/Recordset.h"

#include <optional>

namespace quillmere {

/// The key that the record of an employee or employer has got since, by somebody's renaming; nothing if none of the
/// last operations of the history is one. Throws StoreError.
std::optional<TypedEntries::Record> RenamedTo(Database& database, const TypedEntries::Record& record);

} // namespace quillmere
