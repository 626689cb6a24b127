#pragma once

#include "clientdb/store/Recordset.h"
#include "clientdb/store/Template.h"
#include "support/TemporaryFolder.h"

#include <filesystem>

namespace quillmere::bench {

/// A client database that lasts as long as the run, with what `fill` writes in one transaction.
template<class Fill>
class MadeDatabase {
public:
    explicit MadeDatabase(Fill fill) : path(folder.path / "clients")
    {
        CreateTables(path);
        Database database = Database::OpenDatabase(path);
        WriteBatch batch(database);
        fill(database);
        batch.Commit();
    }

private:
    const test::TemporaryFolder folder;

public:
    const std::filesystem::path path;
};

} // namespace quillmere::bench
