#include "clientdb/Employees.h"
#include "clientdb/store/TableLayouts.h"
#include "support/Process.h"
#include "support/StoreFixture.h"
#include "transfer/YearTransfer.h"

#include <fmt/format.h>
#include <map>
#include <random>
#include <set>
#include <stdexcept>

namespace quillmere::test {
namespace {

class TransferKill : public StoreFixture {
protected:
    static constexpr int Employees = 420;

    TransferKill()
    {
        lastYear = folder.path / "last year";
        std::filesystem::copy_file(file, lastYear);
        Database database = Database::OpenDatabase(lastYear);
        WriteBatch batch(database);
        for (int i = 0; i < Employees; ++i) {
            const std::string employer = i % 3 == 0 ? "Acme" : "Zenith";
            CreateEmployee(database, {employer, "Jane", fmt::format("Smith {}", i), "123/A456"});
            Recordset schedule = database.OpenRecordset("KNotepad");
            schedule.Index("IndKey");
            schedule.Seek(employer, fmt::format("Jane Smith {}", i));
            schedule.Edit();
            schedule.SetField("Description20", fmt::format("Item {}", i));
            schedule.Update();
        }
        batch.Commit();
    }

    std::vector<TransferNotice> TransferAll() const
    {
        YearTransfer transfer(file, lastYear);
        std::vector<TransferNotice> notices;
        for (const LastYearEmployee& employee : transfer.LastYearEmployees())
            transfer.Transfer(employee, TransferMode::All, notices);
        transfer.Commit();
        return notices;
    }

    /// True if the transfer was killed before its end.
    bool TransferAndKill(std::chrono::microseconds after) const
    {
        const Ending ending = InAProcess(
            [&](int tell) {
                Tell(tell, "begun");
                if (!TransferAll().empty())
                    throw std::runtime_error("the transfer failed");
            },
            after, Patience::FromTheFirstWord);
        EXPECT_TRUE(ending.WasStopped() || ending.ended) << ending.words << " " << ending.told;
        return ending.WasStopped();
    }

    /// How many tables have a record of each employee.
    std::map<std::string, int> RecordsOfEach() const
    {
        std::map<std::string, int> records;
        Database database = Open();
        for (const TableLayout* table : NewEmployeeTables())
            if (table->level == TableLevel::Employee) {
                Recordset at = database.OpenRecordset(table->name);
                for (at.MoveFirst(); !at.AtEnd(); at.MoveNext())
                    ++records[std::string(at.Field("Name"))];
            }
        return records;
    }

    /// How many records the tables have of each employer, those of his declaration and its schedules.
    std::map<std::string, int> RecordsOfEachEmployer() const
    {
        std::map<std::string, int> records;
        Database database = Open();
        for (const TableLayout* table : NewEmployeeTables())
            if (table->level == TableLevel::Employer) {
                Recordset at = database.OpenRecordset(table->name);
                for (at.MoveFirst(); !at.AtEnd(); at.MoveNext())
                    ++records[std::string(at.Field("EmployerName"))];
            }
        return records;
    }

    /// The employers who have all that belongs to one: the declaration and its two schedules.
    static std::map<std::string, int> Whole(const std::set<std::string>& employers)
    {
        std::map<std::string, int> records;
        for (const std::string& employer : employers)
            records[employer] = 3;
        return records;
    }

    /// The employers of those who are there.
    std::set<std::string> Employers() const
    {
        Database database = Open();
        const auto employers = database.EmployersInOrder("P11D");
        return {employers.begin(), employers.end()};
    }

    std::filesystem::path lastYear;
};

TEST_F(TransferKill, AtAnyMomentLeavesEachEmployeeWholeOrNotThereAndTheNextRunCompletesIt)
{
    // How long a whole run takes here, so that the kills fall into it.
    const std::filesystem::path empty = folder.path / "empty";
    std::filesystem::copy_file(file, empty);
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_TRUE(TransferAll().empty());
    const auto whole =
        std::chrono::duration_cast<std::chrono::microseconds>(std::chrono::steady_clock::now() - begin).count();

    std::mt19937 random(20110405);
    std::uniform_int_distribution<long> moment(0, static_cast<long>(whole));
    int killed = 0, partly = 0;
    // On a busy machine a moment may come early or late: it goes on until some have fallen where they should.
    constexpr int Fewest = 14, Most = 100;
    for (int kill = 0; kill < Fewest || (kill < Most && (killed <= 4 || partly == 0)); ++kill) {
        std::filesystem::copy_file(empty, file, std::filesystem::copy_options::overwrite_existing);
        std::filesystem::remove(file.string() + "-journal");
        killed += TransferAndKill(std::chrono::microseconds(moment(random)));
        const auto left = RecordsOfEach();
        for (const auto& [name, count] : left)
            ASSERT_EQ(count, 24) << name << " is not whole";
        ASSERT_EQ(RecordsOfEachEmployer(), Whole(Employers()));
        partly += !left.empty() && left.size() < Employees;
        EXPECT_TRUE(TransferAll().empty());
        const auto completed = RecordsOfEach();
        ASSERT_EQ(completed.size(), static_cast<std::size_t>(Employees));
        for (const auto& [name, count] : completed)
            ASSERT_EQ(count, 24) << name << " is not whole";
        ASSERT_EQ(RecordsOfEachEmployer(), Whole({"Acme", "Zenith"}));
    }
    EXPECT_GT(killed, 4);
    EXPECT_GT(partly, 0) << "no kill fell between the first and the last employee";
}

} // namespace
} // namespace quillmere::test
