#pragma once

#include "clientdb/store/Connection.h"

/// Records that the store does not give away, because one of their texts is longer than any box takes.
namespace quillmere {

bool IsTooLong(const StoreError& failure);

/// Tells of such a record whose it is.
[[noreturn]] void FailOfRecord(TableStatements& statements, std::int64_t record, const StoreError& failure);

} // namespace quillmere
