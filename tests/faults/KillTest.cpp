#include "clientdb/Employees.h"
#include "clientdb/store/History.h"
#include "clientdb/store/TableLayouts.h"
#include "support/Process.h"
#include "support/StoreFixture.h"

#include <sqlite3.h>

#include <algorithm>
#include <fmt/format.h>
#include <map>
#include <random>
#include <set>

namespace quillmere::test {
namespace {

/// What the process that is to be killed does, step after step: creates employees, rewrites a schedule in one batch as
/// a notepad's Ok does, writes single fields, deletes employees. It tells each step once it has returned.
class Writer {
public:
    Writer(const std::filesystem::path& file, int pipe) : database(Database::OpenDatabase(file)), reports(pipe) {}

    void Run(int first)
    {
        Tell(reports, "open");
        for (int step = first;; ++step) {
            switch (step % 4) {
            case 0:
                CreateEmployee(database, {"Acme", "Jane", fmt::format("Smith {}", step), "123/A456"});
                break;
            case 1:
                RewriteSchedule(step);
                break;
            case 2:
                WriteSingleField(step);
                break;
            default:
                if (step > 40)
                    DeleteEmployee(database, "Acme", fmt::format("Jane Smith {}", step - 43));
            }
            Tell(reports, std::to_string(step));
        }
    }

private:
    void RewriteSchedule(int step)
    {
        WriteBatch batch(database);
        Recordset records = database.OpenRecordset("KNotepad");
        records.Index("IndKey");
        records.Seek("Acme", "Fixed");
        for (int line = 1; line <= 20; ++line)
            for (const char* stem : {"Description", "Cost", "AmountGood", "CashEq"}) {
                records.Edit();
                records.SetField(stem + std::to_string(line), std::to_string(step));
                records.Update();
            }
        batch.Commit();
    }

    void WriteSingleField(int step)
    {
        Recordset records = database.OpenRecordset("P11D");
        records.Index("IndKey");
        records.Seek("Acme", "Fixed");
        records.Edit();
        records.SetField("ACashEqu", std::to_string(step));
        records.Update();
    }

    Database database;
    int reports;
};

class Kill : public StoreFixture {
protected:
    /// In memory where it can be: a kill loses nothing that was written, and there are more steps to be killed in.
    Kill() : StoreFixture(QuickFolder()) {}

    /// Lets a writer work for so long, kills it, and returns the last step that it has told.
    int WriteAndKill(int first, std::chrono::microseconds after)
    {
        const Ending ending =
            InAProcess([&](int tell) { Writer(file, tell).Run(first); }, after, Patience::FromTheFirstWord);
        EXPECT_TRUE(ending.WasStopped()) << "the writer " << ending.words << " by itself: " << ending.told;
        return std::max(first - 1, static_cast<int>(LastNumberTold(ending.told)));
    }

    std::string Integrity() const
    {
        sqlite3* handle = nullptr;
        sqlite3_open_v2(file.c_str(), &handle, SQLITE_OPEN_READWRITE, nullptr);
        sqlite3_stmt* statement = nullptr;
        sqlite3_prepare_v2(handle, "PRAGMA integrity_check", -1, &statement, nullptr);
        std::string result = "no answer";
        if (sqlite3_step(statement) == SQLITE_ROW)
            result = reinterpret_cast<const char*>(sqlite3_column_text(statement, 0));
        sqlite3_finalize(statement);
        sqlite3_close(handle);
        return result;
    }

    /// How many of the tables have a record of each employee.
    static std::map<std::string, std::size_t> RecordsOfEach(Database& database)
    {
        std::map<std::string, std::size_t> records;
        for (const TableLayout* table : NewEmployeeTables())
            if (table->level == TableLevel::Employee)
                for (Recordset at = database.OpenRecordset(table->name); at.MoveNext(), !at.AtEnd();)
                    ++records[std::string(at.Field("EmployeeName"))];
        return records;
    }
};

TEST_F(Kill, AtAnyMomentLeavesADatabaseThatOpensWithAllEarlierWrites)
{
    constexpr int Kills = 210, MostKills = 20 * Kills, LeastSteps = 20;
    std::mt19937 random(20110405);
    // Where others have the machine, the writer comes to little in so short a time, and is given more after a while.
    const auto patience = [&](int kill) {
        return std::chrono::microseconds(std::uniform_int_distribution(0, 15000 * (1 + kill / Kills))(random));
    };
    {
        Database database = Open();
        CreateEmployee(database, {"Acme", "", "Fixed", ""});
    }
    int last = -1;
    int steps = 0;
    for (int kill = 0; kill < Kills || (steps <= LeastSteps && kill < MostKills); ++kill) {
        const int first = last + 1;
        last = WriteAndKill(first, patience(kill));
        steps += last - first + 1;

        Database database = Open();
        std::set<int> numbers;
        for (const std::string& employee : ListEmployees(database, "Acme"))
            if (employee != "Fixed")
                numbers.insert(std::stoi(employee.substr(employee.rfind(' '))));
        if (kill % 5 == 4) {
            ASSERT_EQ(Integrity(), "ok") << "kill " << kill;
            const auto records = RecordsOfEach(database);
            ASSERT_EQ(records.size(), numbers.size() + 1);
            for (const auto& [employee, count] : records)
                ASSERT_EQ(count, 24u) << employee << " is not whole";
        }
        // What was told is there; the step on its way may be, too.
        for (int step = 0; step <= last; step += 4) {
            const int deletedBy = step + 43;
            if (deletedBy == last + 1)
                continue;
            ASSERT_EQ(numbers.contains(step), deletedBy > last) << step << " of " << last;
        }
        // Where the step on its way was stored, it is not done again.
        if ((last + 1) % 4 == 0 && numbers.contains(last + 1))
            ++last;

        Recordset schedule = database.OpenRecordset("KNotepad");
        schedule.Index("IndKey");
        schedule.Seek("Acme", "Fixed");
        ASSERT_FALSE(schedule.NoMatch());
        std::set<std::string> values;
        for (int line = 1; line <= 20; ++line)
            for (const char* stem : {"Description", "Cost", "AmountGood", "CashEq"})
                values.emplace(schedule.Field(stem + std::to_string(line)));
        ASSERT_EQ(values.size(), 1u) << "a schedule was torn";
        // The history is what the tables are: the last operation goes back, and forth again.
        History history(database);
        for (int way = 0; way < 2; ++way)
            ASSERT_TRUE(history.Undo(history.Operations({}, 1).front().number).empty()) << "kill " << kill;

        const auto lastOf = [&](int remainder) { return last - ((last - remainder) % 4 + 4) % 4; };
        if (lastOf(1) > 0) {
            ASSERT_GE(std::stoi(*values.begin()), lastOf(1));
        }
        Recordset page = database.OpenRecordset("P11D");
        page.Index("IndKey");
        page.Seek("Acme", "Fixed");
        if (lastOf(2) > 0) {
            ASSERT_GE(std::stoi(std::string(page.Field("ACashEqu"))), lastOf(2));
        }
    }
    EXPECT_GT(steps, LeastSteps) << "the writer hardly came to write";
    EXPECT_EQ(Integrity(), "ok");
}

} // namespace
} // namespace quillmere::test
