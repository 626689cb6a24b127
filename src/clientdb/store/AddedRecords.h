#pragma once

#include "clientdb/store/ChangeBytes.h"
#include "clientdb/store/Connection.h"

namespace quillmere {

/// The history leaves the fields of new records to the tables, as long as the records are there. Finds what such
/// records held when they were added: what they hold now, with what the changes since did to them taken back. A
/// deletion among these has all of it.
///
/// Gives each of the changes its fields and takes its digest away. One whose record has been written past the history
/// stays as it is. The changes are among those that the history holds from number `first` on.
void FindFieldsAdded(Database::Connection& connection, std::span<RecordChange* const> added, std::int64_t first);

} // namespace quillmere
