#include "clientdb/store/TableLayouts.h"
#include "exchange/Plan.h"
#include "support/Process.h"
#include "support/StoreFixture.h"

#include <chrono>
#include <fmt/format.h>
#include <random>

namespace quillmere::test {
namespace {

class ImportKill : public StoreFixture {
protected:
    static constexpr int Employees = 300;

    ImportKill() : table(exchange::ParseTable(Csv())), columns(exchange::ColumnsOf(table, targets)) {}

    static std::string Csv()
    {
        std::string csv = "First names,Surname,Works number,\"I, cost to you\",List,Item,Item cost\n";
        for (int i = 0; i < Employees; ++i)
            csv += fmt::format("Jane,Smith {},{},420,K,Item {},7\n", i, i, i);
        return csv;
    }

    void Import() const
    {
        Database database = Open();
        CarryOut(database, MakePlan(database, table, targets, columns, "Acme"));
    }

    /// True if the import was killed before its end.
    bool ImportAndKill(std::chrono::microseconds after) const
    {
        const Ending ending = InAProcess(
            [&](int tell) {
                Tell(tell, "begun");
                Import();
            },
            after, Patience::FromTheFirstWord);
        EXPECT_TRUE(ending.WasStopped() || ending.ended) << ending.words << " " << ending.told;
        return ending.WasStopped();
    }

    /// How many records all tables have together.
    int Records() const
    {
        int records = 0;
        Database database = Open();
        for (const TableLayout* layout : NewEmployeeTables()) {
            Recordset at = database.OpenRecordset(layout->name);
            for (at.MoveFirst(); !at.AtEnd(); at.MoveNext())
                ++records;
        }
        return records;
    }

    exchange::Targets targets;
    exchange::Table table;
    exchange::Columns columns;
};

TEST_F(ImportKill, AtAnyMomentLeavesAllOfItOrNothing)
{
    const std::filesystem::path empty = folder.path / "empty";
    std::filesystem::copy_file(file, empty);
    const auto begin = std::chrono::steady_clock::now();
    Import();
    const auto whole =
        std::chrono::duration_cast<std::chrono::microseconds>(std::chrono::steady_clock::now() - begin).count();
    const int all = Records();
    ASSERT_EQ(all, Employees * 24 + 3);

    std::mt19937 random(20110405);
    std::uniform_int_distribution<long> moment(0, static_cast<long>(whole));
    int killed = 0;
    // On a busy machine a moment may come late: it goes on until some have fallen where they should.
    constexpr int Fewest = 14, Most = 60;
    for (int kill = 0; kill < Fewest || (kill < Most && killed <= 4); ++kill) {
        std::filesystem::copy_file(empty, file, std::filesystem::copy_options::overwrite_existing);
        std::filesystem::remove(file.string() + "-journal");
        const bool wasKilled = ImportAndKill(std::chrono::microseconds(moment(random)));
        killed += wasKilled ? 1 : 0;
        const int left = Records();
        ASSERT_TRUE(left == 0 || left == all) << left;
        ASSERT_TRUE(wasKilled || left == all);
        Import();
        ASSERT_EQ(Records(), all);
    }
    EXPECT_GT(killed, 4);
}

} // namespace
} // namespace quillmere::test
