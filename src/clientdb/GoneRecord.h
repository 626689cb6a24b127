#pragma once

#include "clientdb/TypedEntries.h"
#include "clientdb/store/Recordset.h"
#include "frame/Session.h"

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

/// Records that another desk has deleted or renamed while they were open here.
namespace quillmere {

/// What the status bar says of one begins with this, and if nobody has given it another name it says this.
inline constexpr std::string_view RecordGoneWords = "This record is no longer there: ";
inline constexpr std::string_view NotStoredWords = "This record is no longer there: what is typed is not stored";

/// Keeps what is typed of a record for whoever opens it next. Throws FileError.
void KeepTyped(Session& session, const std::filesystem::path& database, const TypedEntries::Record& of,
               std::vector<TypedEntries::Line> typed);

/// Keeps what is typed of a record that is gone for whoever opens it when it is back, or under the name that somebody
/// has given it since. What the status bar says of it.
std::string LoseRecord(Session& session, Database& opened, const std::filesystem::path& database,
                       const TypedEntries::Record& gone, const std::vector<TypedEntries::Line>& typed);

} // namespace quillmere
