#pragma once

#include "clientdb/store/Recordset.h"
#include "clientdb/store/Template.h"
#include "support/PrivateServer.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace quillmere::test {

/// A test with an empty client database, of the engine that the tests are to use.
class StoreFixture : public ::testing::Test {
protected:
    explicit StoreFixture(const std::filesystem::path& in = std::filesystem::temp_directory_path()) : folder(in)
    {
        file = folder.path / "clients";
        MakeEmpty(file);
    }

    /// Puts an empty database at a path, in the place of one that is there.
    void MakeEmpty(const std::filesystem::path& at)
    {
        if (OnServer())
            return lent.MakeEmptyAt(at);
        std::filesystem::remove(at);
        PutEmptyDatabase(at);
    }

    Database Open(OpenMode mode = OpenMode::ReadWrite) const { return Database::OpenDatabase(file, mode); }

    /// Adds a record with its keys.
    static void Add(Database& database, std::string_view table, std::string_view employer, std::string_view employee)
    {
        Recordset records = database.OpenRecordset(table);
        records.AddNew();
        records.SetField("EmployerName", employer);
        records.SetField("EmployeeName", employee);
        records.SetField("Name", std::string(employer) + " " + std::string(employee));
        records.Update();
    }

    /// One field of every record, in the order of the cursor.
    static std::vector<std::string> All(Recordset& records, std::string_view field)
    {
        std::vector<std::string> texts;
        for (records.MoveFirst(); !records.AtEnd(); records.MoveNext())
            texts.emplace_back(records.Field(field));
        return texts;
    }

    LentDatabases lent;
    TemporaryFolder folder;
    std::filesystem::path file;
};

} // namespace quillmere::test
