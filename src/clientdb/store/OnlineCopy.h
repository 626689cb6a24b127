#pragma once

#include "clientdb/store/DatabaseState.h"

#include <filesystem>

/// Copies of a client database that is in use, by the store's own online copy: each is the database as it stands at one
/// moment, and whoever has it open goes on working.
namespace quillmere {

/// Copies the database into a file, which takes its name only when it is on the disk, has been opened and found whole,
/// and holds as many employers and employees. That of a shared folder becomes a file too. What was copied. Throws
/// StoreError (one of damage, if that is why there is no copy) and FileError.
DatabaseState CopyDatabase(const std::filesystem::path& database, const std::filesystem::path& copy);

/// What was put back is in the place of the database, and nobody knows that it lasts, or has found it whole.
class PutBackUnconfirmed : public Failure {
public:
    explicit PutBackUnconfirmed(const Failure& reason) : Failure(reason) {}
};

/// Gives the database the content of a copy, all of it or, whatever happens, none. It is written into the file that is
/// there, in one transaction, and not put in its place: another desk that has the file open would go on reading, and
/// writing, one that no longer has a name, and all that it stores would be lost. This way it waits for the lock and
/// then sees what was put back. A database that is damaged beyond opening is written over likewise; where there is no
/// file, one is made. Throws StoreError, of damage too if it is the copy's, and FileError; of what it throws
/// PutBackUnconfirmed alone leaves the copy in place.
void PutBackDatabase(const std::filesystem::path& copy, const std::filesystem::path& database);

} // namespace quillmere
