#include "clientdb/SafetyCopies.h"

#include "FolderSyncs.h"
#include "clientdb/Employees.h"
#include "clientdb/PutBack.h"
#include "clientdb/store/OnlineCopy.h"
#include "clientdb/store/StoreFaults.h"
#include "support/ProgramFixture.h"
#include "support/StoreFixture.h"

#include <sqlite3.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <fmt/format.h>
#include <map>
#include <random>
#include <set>
#include <string>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace quillmere::test {
namespace {

Day On(int year, unsigned month, unsigned day)
{
    return std::chrono::sys_days(std::chrono::year(year) / static_cast<int>(month) / static_cast<int>(day));
}

SafetyCopy Made(Day day, std::string time = "09:00:00", CopyReason reason = CopyReason::Delete)
{
    return {.day = day, .time = std::move(time), .reason = reason};
}

// ---- names

TEST(CopyName, SaysWhenAndBeforeWhat)
{
    const std::filesystem::path database = "/data/ClientQuillmere11.mdb";
    EXPECT_EQ(FileNameOf(Made(On(2011, 6, 30), "14:31:07"), database),
              "ClientQuillmere11 2011-06-30 14-31-07 before Delete.mdb");
    SafetyCopy second = Made(On(2011, 6, 30), "14:31:07", CopyReason::FirstOfDay);
    second.number = 2;
    EXPECT_EQ(FileNameOf(second, database), "ClientQuillmere11 2011-06-30 14-31-07 first of the day (2).mdb");
}

TEST(CopyName, IsReadBackForEveryReason)
{
    const std::filesystem::path database = "/data/Müller & Co.mdb";
    std::set<std::string_view> words;
    for (int reason = 0; reason <= static_cast<int>(CopyReason::Salvaged); ++reason)
        for (const int number : {1, 2, 11}) {
            SafetyCopy copy = Made(On(2012, 2, 29), "00:00:59", static_cast<CopyReason>(reason));
            copy.number = number;
            copy.file = CopiesFolder(database) / FileNameOf(copy, database);
            EXPECT_EQ(ReadCopyName(copy.file, database), copy);
            words.insert(WordsOf(copy.reason));
        }
    EXPECT_EQ(words.size(), static_cast<std::size_t>(CopyReason::Salvaged) + 1) << "one reason, one name";
}

TEST(CopyName, OfAnythingElseIsNone)
{
    for (const char* name :
         {"Clients 2011-06-30 14-31-07 before Delete", "Clients 2011-06-30 14-31-07 before Lunch.mdb",
          "Clients 2011-02-30 14-31-07 before Delete.mdb", "Clients 2011-06-30 before Delete.mdb",
          "Others 2011-06-30 14-31-07 before Delete.mdb", "Clients 2011-06-30 14-31-07 before Delete.mdb.17-1.tmp",
          "Clients 2011-06-30 14-31-07 before Delete (x).mdb", "Clients-2011-06-30.mdb", "Clients .mdb", ".mdb", "",
          "Clients 11-06-30 14-31-07 before Delete.mdb", "Clients -011-06-30 14-31-07 before Delete.mdb"})
        EXPECT_FALSE(ReadCopyName(std::filesystem::path("/data/Copies") / name, "/data/Clients.mdb")) << name;
}

// ---- which of them go

std::vector<SafetyCopy> Left(std::vector<SafetyCopy> copies, Day today)
{
    for (const SafetyCopy& gone : Outdated(copies, today))
        std::erase(copies, gone);
    return copies;
}

TEST(OutdatedCopies, OfTheLastSevenDaysAreNone)
{
    std::vector<SafetyCopy> copies;
    for (unsigned day = 24; day <= 30; ++day)
        for (int hour = 8; hour < 18; ++hour)
            copies.push_back(Made(On(2011, 6, day), fmt::format("{:02}:00:00", hour)));
    EXPECT_EQ(Left(copies, On(2011, 6, 30)), copies);
    // A day later the oldest day keeps its last one.
    EXPECT_EQ(Left(copies, On(2011, 7, 1)).size(), copies.size() - 9);
    EXPECT_EQ(Left(copies, On(2011, 7, 1)).front(), Made(On(2011, 6, 24), "17:00:00"));
}

TEST(OutdatedCopies, LeaveTheLastOfEachDayForThirtyDaysAndThenTheLastOfEachMonth)
{
    std::vector<SafetyCopy> copies;
    for (Day day = On(2011, 4, 6); day <= On(2011, 6, 30); day += std::chrono::days(1))
        for (const char* time : {"09:00:00", "17:00:00"})
            copies.push_back(Made(day, time));
    std::map<int, int> perAge;
    const Day today = On(2011, 6, 30);
    std::vector<Day> old;
    for (const SafetyCopy& copy : Left(copies, today)) {
        const int age = DaysBetween(copy.day, today);
        ++perAge[age];
        if (age >= 7) {
            EXPECT_EQ(copy.time, "17:00:00");
        }
        if (age >= 30)
            old.push_back(copy.day);
    }
    for (int age = 0; age < 30; ++age)
        EXPECT_EQ(perAge[age], age < 7 ? 2 : 1) << age;
    EXPECT_EQ(old, (std::vector<Day>{On(2011, 4, 30), On(2011, 5, 31)}));
}

TEST(OutdatedCopies, AreNeverTheLastGoodOne)
{
    // Years later, after a damaged one of the same month.
    const std::vector<SafetyCopy> copies = {Made(On(2011, 6, 2)),
                                            Made(On(2011, 6, 20), "09:00:00", CopyReason::Damaged),
                                            Made(On(2011, 6, 21), "09:00:00", CopyReason::Salvaged)};
    const std::vector<SafetyCopy> left = Left(copies, On(2015, 1, 1));
    EXPECT_NE(std::ranges::find(left, copies.front()), left.end());
    EXPECT_EQ(left.size(), 2u);
}

TEST(OutdatedCopies, OfTheFutureAreNone)
{
    // A clock that was wrong once.
    const std::vector<SafetyCopy> copies = {Made(On(2031, 6, 2)), Made(On(2031, 6, 2), "10:00:00")};
    EXPECT_EQ(Left(copies, On(2011, 6, 30)), copies);
}

TEST(OutdatedCopies, LetGoDayByDayComeToTheSameInTheEnd)
{
    // Who thins every day for three years keeps what the rules say, and never loses the last good one.
    std::mt19937 random(20110630);
    std::vector<SafetyCopy> kept, all;
    std::set<std::chrono::year_month> months;
    const Day first = On(2010, 4, 6), last = On(2013, 4, 5);
    for (Day today = first; today <= last; today += std::chrono::days(1)) {
        for (unsigned made = random() % 4; made > 0; --made) {
            const auto reason = static_cast<CopyReason>(random() % (static_cast<unsigned>(CopyReason::Salvaged) + 1));
            const SafetyCopy copy = Made(today, fmt::format("{:02}:00:00", 20 - made), reason);
            kept.push_back(copy);
            all.push_back(copy);
            const std::chrono::year_month_day date{today};
            if (copy.IsGood())
                months.insert(date.year() / date.month());
        }
        kept = Left(kept, today);
        const auto lastGood = std::ranges::find_if(all.rbegin(), all.rend(), &SafetyCopy::IsGood);
        if (lastGood != all.rend()) {
            ASSERT_NE(std::ranges::find(kept, *lastGood), kept.end());
        }
        ASSERT_LE(kept.size(), 7u * 3 + 2 * 30 + 2 * months.size() + 2);
    }
    EXPECT_EQ(kept, Left(all, last)) << "as if it had been thinned once";
    std::set<std::chrono::year_month> left;
    for (const SafetyCopy& copy : kept)
        if (copy.IsGood())
            left.insert(std::chrono::year_month_day{copy.day}.year() / std::chrono::year_month_day{copy.day}.month());
    EXPECT_EQ(left, months);
}

// ---- the making

class SafetyCopying : public StoreFixture {
protected:
    SafetyCopying() : StoreFixture(QuickFolder())
    {
        Database database = Open();
        CreateEmployee(database, {"Acme", "Jane", "Smith", "1"});
        CreateEmployee(database, {"Acme", "Peter", "Cooper", "1"});
        CreateEmployee(database, {"Beta", "Jane", "Smith", "1"});
    }

    std::set<std::string> Copies() const
    {
        return std::filesystem::exists(CopiesFolder(file)) ? NamesIn(CopiesFolder(file)) : std::set<std::string>();
    }
    /// True if the making of a copy fails and leaves nothing.
    bool Fails() const
    {
        try {
            MakeSafetyCopy(file, Made(On(2011, 6, 30)));
            return false;
        } catch (const Failure&) {
            return Copies().empty();
        }
    }
};

TEST_F(SafetyCopying, MakesADatabaseThatOpensWithEverybody)
{
    const DatabaseState state = CopyDatabase(file, folder / "copy.mdb");
    EXPECT_EQ(state.employees, 3);
    EXPECT_EQ(state.employers, 2);
    EXPECT_EQ(LookAtDatabase(folder / "copy.mdb"), state);
    EXPECT_EQ(InWords(state), "opened, 3 employees, complete");
    EXPECT_EQ(NamesIn(folder.path), (std::set<std::string>{"clients", "copy.mdb"}));
    Database copy = Database::OpenDatabase(folder / "copy.mdb");
    EXPECT_EQ(ListEmployees(copy, "Acme"), (std::vector<std::string>{"Jane Smith", "Peter Cooper"}));
}

TEST_F(SafetyCopying, GoesOnWhileOthersRead)
{
    Database other = Open();
    const ReadBatch reads(other);
    EXPECT_EQ(ListEmployers(other).size(), 2U);
    EXPECT_NO_THROW(CopyDatabase(file, folder / "copy.mdb"));
}

TEST_F(SafetyCopying, HoldsOnlyWhatIsStored)
{
    Database other = Open();
    const WriteBatch batch(other);
    Recordset records = other.OpenRecordset("P11D");
    for (records.MoveFirst(); !records.AtEnd(); records.MoveNext())
        records.Delete();
    EXPECT_EQ(CopyDatabase(file, folder / "copy.mdb").employees, 3);
}

TEST_F(SafetyCopying, TwiceInASecondMakesTwo)
{
    MakeSafetyCopy(file, Made(On(2011, 6, 30)));
    MakeSafetyCopy(file, Made(On(2011, 6, 30)));
    EXPECT_EQ(Copies(), (std::set<std::string>{"clients 2011-06-30 09-00-00 before Delete.mdb",
                                               "clients 2011-06-30 09-00-00 before Delete (2).mdb"}));
    const std::vector<SafetyCopy> found = SafetyCopiesOf(file);
    ASSERT_EQ(found.size(), 2u);
    EXPECT_EQ(found.front().number, 2) << "the latest first";
}

TEST_F(SafetyCopying, LetsGoWhatIsOutdatedAndWhatAKillHasLeft)
{
    for (const int hour : {9, 10})
        MakeSafetyCopy(file, Made(On(2011, 6, 1), fmt::format("{:02}:00:00", hour)));
    Store(CopiesFolder(file) / "letter.txt", "Dear Sirs");
    const std::filesystem::path half = CopiesFolder(file) / "clients 2011-06-01 11-00-00 before Delete.mdb.17-1.tmp";
    Store(half, "half a copy");
    std::filesystem::last_write_time(half, std::filesystem::file_time_type::clock::now() - std::chrono::hours(2));
    MakeSafetyCopy(file, Made(On(2011, 6, 30)));
    EXPECT_EQ(Copies(), (std::set<std::string>{"clients 2011-06-01 10-00-00 before Delete.mdb",
                                               "clients 2011-06-30 09-00-00 before Delete.mdb", "letter.txt"}));
}

TEST_F(SafetyCopying, OfADamagedDatabaseIsNoneAndNoOtherGoes)
{
    for (const int hour : {9, 10})
        MakeSafetyCopy(file, Made(On(2011, 6, 1), fmt::format("{:02}:00:00", hour)));
    const std::set<std::string> before = Copies();
    const std::string whole = Content(file);
    constexpr std::size_t pageSize = 4096;
    for (std::size_t page = 0; page < whole.size(); page += pageSize) {
        Store(file, whole.substr(0, page) + std::string(pageSize, '\xA5') + whole.substr(page + pageSize));
        try {
            MakeSafetyCopy(file, Made(On(2011, 6, 30)));
            ADD_FAILURE() << "page " << page / pageSize;
        } catch (const StoreError& failure) {
            EXPECT_TRUE(failure.IsDamage()) << failure.what();
        }
        ASSERT_EQ(Copies(), before);
    }
}

TEST_F(SafetyCopying, WhereThereIsNoRoomLeavesNothing)
{
    const pid_t child = ::fork();
    if (child == 0) {
        ::signal(SIGXFSZ, SIG_IGN);
        const rlimit limit{.rlim_cur = 30'000, .rlim_max = 30'000};
        ::setrlimit(RLIMIT_FSIZE, &limit);
        ::_exit(Fails() ? 0 : 1);
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0);
    EXPECT_TRUE(Copies().empty());
}

// ---- putting back

TEST_F(SafetyCopying, PutBackIsTheDatabaseAsItWas)
{
    CopyDatabase(file, folder / "copy.mdb");
    {
        Database database = Open();
        DeleteEmployer(database, "Acme");
        CreateEmployee(database, {"Gamma", "Ann", "Lee", "1"});
    }
    PutBackDatabase(folder / "copy.mdb", file);
    Database database = Open();
    EXPECT_EQ(ListEmployers(database), (std::vector<std::string>{"Acme", "Beta"}));
    EXPECT_EQ(NamesIn(folder.path), (std::set<std::string>{"clients", "copy.mdb"}));
}

TEST_F(SafetyCopying, PutBackIsSeenByADeskThatHasTheDatabaseOpen)
{
    CopyDatabase(file, folder / "copy.mdb");
    Database desk = Open();
    DeleteEmployer(desk, "Acme");
    EXPECT_EQ(ListEmployers(desk), (std::vector<std::string>{"Beta"}));
    PutBackDatabase(folder / "copy.mdb", file);
    EXPECT_EQ(ListEmployers(desk), (std::vector<std::string>{"Acme", "Beta"}));
    CreateEmployee(desk, {"Gamma", "Ann", "Lee", "1"});
    Database another = Open();
    EXPECT_EQ(ListEmployers(another), (std::vector<std::string>{"Acme", "Beta", "Gamma"}))
        << "and what it stores then is not lost";
}

TEST_F(SafetyCopying, PutBackWaitsForNobodyWhoHoldsTheDatabase)
{
    CopyDatabase(file, folder / "copy.mdb");
    const std::string before = Content(file);
    sqlite3* other = nullptr;
    ASSERT_EQ(sqlite3_open_v2(file.c_str(), &other, SQLITE_OPEN_READWRITE, nullptr), SQLITE_OK);
    ASSERT_EQ(sqlite3_exec(other, "BEGIN EXCLUSIVE", nullptr, nullptr, nullptr), SQLITE_OK);
    try {
        PutBackDatabase(folder / "copy.mdb", file);
        ADD_FAILURE();
    } catch (const StoreError& failure) {
        EXPECT_TRUE(failure.OutOfReach()) << failure.what();
    }
    sqlite3_exec(other, "ROLLBACK", nullptr, nullptr, nullptr);
    sqlite3_close(other);
    EXPECT_EQ(Content(file), before);
}

TEST_F(SafetyCopying, PutBackWritesOverADatabaseThatIsDamagedAnywhere)
{
    CopyDatabase(file, folder / "copy.mdb");
    const DatabaseState wanted = LookAtDatabase(folder / "copy.mdb");
    const std::string whole = Content(file);
    std::vector<std::string> damaged{"this is no database", "", whole.substr(0, whole.size() - 1),
                                     whole.substr(0, 5000), whole + whole};
    constexpr std::size_t pageSize = 4096;
    for (std::size_t page = 0; page < whole.size(); page += pageSize)
        for (const char sign : {'\0', '\xA5'})
            damaged.push_back(whole.substr(0, page) + std::string(pageSize, sign) + whole.substr(page + pageSize));
    for (std::size_t at = 0; at < 100; ++at) {
        std::string header = whole;
        header[at] = static_cast<char>(header[at] ^ 0x55);
        damaged.push_back(header);
    }
    for (const std::string& content : damaged) {
        Store(file, content);
        PutBackDatabase(folder / "copy.mdb", file);
        ASSERT_EQ(LookAtDatabase(file), wanted);
    }
    std::filesystem::remove(file);
    PutBackDatabase(folder / "copy.mdb", file);
    EXPECT_EQ(LookAtDatabase(file), wanted);
}

TEST_F(SafetyCopying, PutBackOfADamagedCopyChangesNothing)
{
    CopyDatabase(file, folder / "copy.mdb");
    const std::string before = Content(file), whole = Content(folder / "copy.mdb");
    Store(folder / "copy.mdb", whole.substr(0, 8192) + std::string(4096, '\xA5') + whole.substr(12288));
    EXPECT_THROW(PutBackDatabase(folder / "copy.mdb", file), StoreError);
    EXPECT_EQ(Content(file), before);
}

TEST_F(SafetyCopying, PutBackThatIsKilledLeavesTheOldOrTheNewWhole)
{
    // Enough pages that a kill comes in the middle.
    {
        Database database = Open();
        WriteBatch batch(database);
        for (int i = 0; i < 150; ++i)
            CreateEmployee(database, {"Many", "First", fmt::format("Surname {}", i), "1"});
        batch.Commit();
    }
    CopyDatabase(file, folder / "copy.mdb");
    {
        Database database = Open();
        DeleteEmployer(database, "Acme");
        DeleteEmployer(database, "Many");
    }
    const std::string old = Content(file);
    const DatabaseState before = LookAtDatabase(file), after = LookAtDatabase(folder / "copy.mdb");
    std::mt19937 random(20110630);
    std::map<std::string, int> outcomes;
    for (int round = 0; round < 60; ++round) {
        Store(file, old);
        std::filesystem::remove(file.string() + "-journal");
        const pid_t child = ::fork();
        if (child == 0) {
            PutBackDatabase(folder / "copy.mdb", file);
            ::_exit(0);
        }
        // Most are killed once it is being written, the others at any moment before.
        pid_t ended = 0;
        if (round % 6 != 0)
            while (!std::filesystem::exists(file.string() + "-journal") && ended == 0) {
                ::usleep(100);
                ended = ::waitpid(child, nullptr, WNOHANG);
            }
        if (ended == 0) {
            ::usleep(static_cast<unsigned>(random() % 4'000));
            ::kill(child, SIGKILL);
            ::waitpid(child, nullptr, 0);
        }
        const bool half = std::filesystem::exists(file.string() + "-journal");
        const DatabaseState found = LookAtDatabase(file);
        EXPECT_TRUE(found == before || found == after) << InWords(found);
        ++outcomes[half ? "in the middle" : found == before ? "before" : "after"];
    }
    EXPECT_GT(outcomes["in the middle"], 0);
    for (const auto& [outcome, times] : outcomes)
        RecordProperty(outcome, times);
}

// ---- as the program goes on

class KeptCopies : public ProgramFixture {
protected:
    std::vector<std::string> Kept()
    {
        std::vector<std::string> words;
        for (const SafetyCopy& copy : SafetyCopiesOf(Now().ClientDatabasePath()))
            words.emplace_back(WordsOf(copy.reason));
        return words;
    }
    std::string Note() { return At("MDIForm1", "StatusNote").Text(); }
    using Words = std::vector<std::string>;
};

TEST_F(KeptCopies, OfADatabaseWithNobodyAreNone)
{
    Now().screens.RunDeferred();
    KeepCopy(Now(), CopyReason::Transfer);
    EXPECT_EQ(NamesIn(Now().ClientDatabasePath().parent_path()).contains("Copies"), false);
    EXPECT_EQ(Note(), "");
}

TEST_F(KeptCopies, OfADayBeginWithOne)
{
    Create("Acme", "Jane", "Smith");
    Now().screens.RunDeferred();
    EXPECT_EQ(Kept(), Words{"first of the day"});
    KeepDailyCopy(Now());
    EXPECT_EQ(Kept(), Words{"first of the day"});
    // The program has stayed open over midnight.
    door.today += std::chrono::days(1);
    OpenEmployee();
    EXPECT_EQ(Kept().size(), 1u) << "nobody waits for it";
    Now().screens.RunDeferred();
    EXPECT_EQ(Kept(), (Words{"first of the day", "first of the day"}));
}

TEST_F(KeptCopies, OfAFolderThatLeavesThemToItsServerAreNone)
{
    lent.PutAt(Now().ClientDatabasePath());
    Create("Acme", "Jane", "Smith");
    ServerService service = *ReadService(Now().ClientDatabasePath());
    service.copies = ServerService::Copies::ByServer;
    WriteService(service);
    KeepDailyCopy(Now());
    KeepCopy(Now(), CopyReason::Delete);
    EXPECT_EQ(Kept(), Words());
    EXPECT_EQ(Note(), "");
    service.copies = ServerService::Copies::ByDesks;
    WriteService(service);
    KeepCopy(Now(), CopyReason::Delete);
    EXPECT_EQ(Kept(), Words{"before Delete"});
}

TEST_F(KeptCopies, ThatCannotBeMadeAreToldOfOnce)
{
    Create("Acme", "Jane", "Smith");
    Store(CopiesFolder(Now().ClientDatabasePath()), "not a folder");
    KeepCopy(Now(), CopyReason::Delete);
    EXPECT_TRUE(Note().starts_with("No safety copy, before Delete: ")) << Note();
    At("MDIForm1", "StatusNote").SetText({});
    KeepCopy(Now(), CopyReason::Delete);
    EXPECT_EQ(Note(), "") << "told once";
    std::filesystem::remove(CopiesFolder(Now().ClientDatabasePath()));
    KeepCopy(Now(), CopyReason::Delete);
    EXPECT_EQ(Kept(), Words{"before Delete"});
    std::filesystem::remove_all(CopiesFolder(Now().ClientDatabasePath()));
    Store(CopiesFolder(Now().ClientDatabasePath()), "not a folder");
    KeepCopy(Now(), CopyReason::Rename);
    EXPECT_TRUE(Note().starts_with("No safety copy, before Rename: ")) << "and again when it is another failure";
    EXPECT_TRUE(door.messages.empty()) << "no box";
}

/// Puts the first copy back, which is in its place although something fails then; that is what is told.
class PutBackIsDoubtful : public KeptCopies {
protected:
    PutBackIsDoubtful() : database(Now().ClientDatabasePath())
    {
        Create("Acme", "Jane", "Smith");
        KeepCopy(Now(), CopyReason::Delete);
        Create("Acme", "Joe", "Miller");
    }
    ~PutBackIsDoubtful() override { SetStoreFaultHook({}); }

    void PutsBack(std::string_view why)
    {
        door.answers = {Answer::Yes};
        EXPECT_TRUE(PutBack(Now(), KeptCopiesOf(database).back()));
        ASSERT_EQ(door.messages.size(), 2U);
        const std::string told = door.TakeText();
        EXPECT_TRUE(told.starts_with("The copy has been put back, but the disk has not confirmed it")) << told;
        EXPECT_NE(told.find(why), std::string::npos) << told;
        EXPECT_EQ(Note(), "Put back: 30/06/2011 12:00, before Delete");
        SetStoreFaultHook({});
        Database clients = Clients();
        EXPECT_EQ(ListEmployees(clients, "Acme"), Words{"Jane Smith"});
    }
    std::filesystem::path database;
};

TEST_F(PutBackIsDoubtful, IfTheNameOfAFileThatWasNotThereIsNotSynced)
{
    std::filesystem::remove(database);
    FailNextFolderSync();
    PutsBack("Input/output error");
    EXPECT_FALSE(AwaitsFolderSync());
}

TEST_F(PutBackIsDoubtful, IfItCannotBeLookedThrough)
{
    // The copy, the present state, the copy of that, the copy once more; and what has been put back.
    SetStoreFaultHook([looks = 0](std::string_view statement) mutable {
        constexpr int LookOfWhatIsBack = 5;
        return statement.starts_with("PRAGMA integrity_check") && ++looks == LookOfWhatIsBack ? SQLITE_IOERR
                                                                                              : SQLITE_OK;
    });
    PutsBack("disk I/O error");
}

} // namespace
} // namespace quillmere::test
