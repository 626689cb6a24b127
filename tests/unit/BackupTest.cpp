#include "clientdb/store/Backup.h"

#include "clientdb/Employees.h"
#include "clientdb/store/DatabaseState.h"
#include "frame/CheckedFile.h"
#include "support/StoreFixture.h"
#include "support/TemporaryFolder.h"

#include <sqlite3.h>

#include <chrono>
#include <csignal>
#include <fcntl.h>
#include <set>
#include <string>
#include <sys/inotify.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace quillmere::test {
namespace {

Day On(int year, unsigned month, unsigned day)
{
    return std::chrono::sys_days(std::chrono::year(year) / static_cast<int>(month) / static_cast<int>(day));
}

TEST(BackupName, IsTheDatabasesWithoutItsEndingAndTheDay)
{
    EXPECT_EQ(ProposedBackupName("/data/Clients.mdb", On(2011, 6, 30)), "/data/Clients-2011-06-30");
    EXPECT_EQ(ProposedBackupName("/data/Clients.mdb", On(2012, 1, 2)), "/data/Clients-2012-01-02");
    EXPECT_EQ(ProposedBackupName("/data/Müller.mdb", On(2011, 12, 31)), "/data/Müller-2011-12-31");
    EXPECT_EQ(ProposedBackupName("a", On(2011, 12, 31)), "-2011-12-31");
}

TEST(BackupName, IsTakenInAnyCase)
{
    const TemporaryFolder folder;
    Store(folder / "Clients-2011-06-30.mdb", "x");
    EXPECT_TRUE(NameIsTaken(folder / "Clients-2011-06-30.mdb"));
    EXPECT_TRUE(NameIsTaken(folder / "clients-2011-06-30.MDB"));
    EXPECT_FALSE(NameIsTaken(folder / "Clients-2011-07-01.mdb"));
    EXPECT_FALSE(NameIsTaken(folder.path / "nowhere" / "Clients-2011-06-30.mdb"));
}

class Backup : public StoreFixture {
protected:
    Backup() : copy(folder.path / "copy.mdb")
    {
        Database database = Open();
        CreateEmployee(database, {"Acme", "Jane", "Smith", "1"});
    }

    /// True if the copying fails; the copy is then what it was.
    bool FailsAndLeaves(const std::string& before) const
    {
        bool failed = false;
        try {
            static_cast<void>(BackUpDatabase(file, copy));
        } catch (const Failure&) {
            failed = true;
        }
        return failed && Content(copy) == before;
    }

    std::filesystem::path copy;
};

TEST_F(Backup, IsTheDatabaseByteForByteAndOpens)
{
    EXPECT_TRUE(BackUpDatabase(file, copy));
    EXPECT_EQ(Content(copy), Content(file));
    Database database = Database::OpenDatabase(copy);
    EXPECT_TRUE(EmployeeExists(database, "Acme", "Jane Smith"));
    EXPECT_EQ(NamesIn(folder.path), (std::set<std::string>{"clients", "copy.mdb"}));
}

TEST_F(Backup, TakesThePlaceOfAnOlderOne)
{
    Store(copy, "the old backup");
    EXPECT_TRUE(BackUpDatabase(file, copy));
    EXPECT_EQ(Content(copy), Content(file));
}

TEST_F(Backup, HoldsWhatACrashLeftInTheJournal)
{
    // A writer that is killed while its change is half in the file: the journal beside it has the way back.
    const std::string before = Content(file);
    const pid_t child = ::fork();
    if (child == 0) {
        sqlite3* handle = nullptr;
        sqlite3_open_v2(file.c_str(), &handle, SQLITE_OPEN_READWRITE, nullptr);
        sqlite3_exec(handle, "PRAGMA cache_size=1; PRAGMA cache_spill=1; BEGIN", nullptr, nullptr, nullptr);
        for (int i = 0; i < 500; ++i)
            sqlite3_exec(handle,
                         ("INSERT INTO [P11D](EmployerName,EmployeeName,Name) VALUES('Half','" + std::to_string(i) +
                          "','Half " + std::to_string(i) + "')")
                             .c_str(),
                         nullptr, nullptr, nullptr);
        ::raise(SIGKILL);
    }
    ::waitpid(child, nullptr, 0);
    ASSERT_TRUE(std::filesystem::exists(file.string() + "-journal"));
    ASSERT_NE(Content(file), before);
    EXPECT_TRUE(BackUpDatabase(file, copy));
    EXPECT_EQ(Content(copy), before);
}

TEST_F(Backup, WaitsForNobodyToWriteWhileItCopies)
{
    sqlite3* other = nullptr;
    ASSERT_EQ(sqlite3_open_v2(file.c_str(), &other, SQLITE_OPEN_READWRITE, nullptr), SQLITE_OK);
    ASSERT_EQ(sqlite3_exec(other, "BEGIN EXCLUSIVE", nullptr, nullptr, nullptr), SQLITE_OK);
    Store(copy, "the old backup");
    EXPECT_TRUE(FailsAndLeaves("the old backup"));
    sqlite3_exec(other, "ROLLBACK", nullptr, nullptr, nullptr);
    sqlite3_close(other);
    EXPECT_TRUE(BackUpDatabase(file, copy));
    EXPECT_EQ(Content(copy), Content(file));
}

TEST_F(Backup, OfNoFileIsNone)
{
    Store(copy, "the old backup");
    std::filesystem::remove(file);
    EXPECT_TRUE(FailsAndLeaves("the old backup"));
    EXPECT_EQ(NamesIn(folder.path), std::set<std::string>{"copy.mdb"});
}

/// The database with each of its pages spoilt in turn, the file that is none, and the one without its end.
std::vector<std::string> DamagedFormsOf(const std::string& whole)
{
    constexpr std::size_t pageSize = 4096;
    std::vector<std::string> damaged{"this is no database", whole.substr(0, whole.size() - 1),
                                     whole.substr(0, whole.size() - pageSize)};
    for (std::size_t page = 0; page < whole.size(); page += pageSize)
        damaged.push_back(whole.substr(0, page) + std::string(pageSize, '\xA5') + whole.substr(page + pageSize));
    return damaged;
}

TEST_F(Backup, OfADamagedDatabaseNeverTakesThePlaceOfAWholeOne)
{
    ASSERT_TRUE(BackUpDatabase(file, copy));
    const std::string good = Content(copy);
    for (const std::string& damaged : DamagedFormsOf(good)) {
        Store(file, damaged);
        EXPECT_THROW(static_cast<void>(BackUpDatabase(file, copy)), OlderCopyKept);
        ASSERT_EQ(Content(copy), good);
        ASSERT_EQ(NamesIn(folder.path), (std::set<std::string>{"clients", "copy.mdb"}));
    }
}

TEST_F(Backup, OfADamagedDatabaseIsMadeWhereNoWholeOneStands)
{
    const std::string whole = Content(file);
    for (const std::string& damaged : DamagedFormsOf(whole)) {
        Store(file, damaged);
        std::filesystem::remove(copy);
        EXPECT_FALSE(BackUpDatabase(file, copy)) << "there was none";
        ASSERT_EQ(Content(copy), damaged);
        Store(copy, "the old backup");
        EXPECT_FALSE(BackUpDatabase(file, copy)) << "there was a damaged one";
        ASSERT_EQ(Content(copy), damaged);
    }
}

TEST_F(Backup, OnAFullDiskLeavesTheOldOne)
{
    Store(copy, "the old backup");
    const pid_t child = ::fork();
    if (child == 0) {
        ::signal(SIGXFSZ, SIG_IGN);
        const rlimit limit{.rlim_cur = 30'000, .rlim_max = 30'000};
        ::setrlimit(RLIMIT_FSIZE, &limit);
        ::_exit(FailsAndLeaves("the old backup") ? 0 : 1);
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0);
    EXPECT_EQ(Content(copy), "the old backup");
    EXPECT_EQ(NamesIn(folder.path), (std::set<std::string>{"clients", "copy.mdb"}));
}

TEST_F(Backup, ThatDoesNotOpenNeverTakesThePlaceOfTheOldOne)
{
    Store(copy, "the old backup");
    EXPECT_THROW(CopyFileChecked(file, copy,
                                 [](const std::filesystem::path& complete) {
                                     EXPECT_TRUE(std::filesystem::exists(complete));
                                     throw FileError(complete, EIO);
                                 }),
                 FileError);
    EXPECT_EQ(Content(copy), "the old backup");
    EXPECT_EQ(NamesIn(folder.path), (std::set<std::string>{"clients", "copy.mdb"}));
}

TEST_F(Backup, IsNotSpoiltByTheJournalOfTheOneBefore)
{
    Store(copy, "the old backup");
    Store(copy.string() + "-journal", "its journal");
    EXPECT_TRUE(BackUpDatabase(file, copy));
    EXPECT_FALSE(std::filesystem::exists(copy.string() + "-journal"));
}

TEST_F(Backup, NeverStandsBesideTheJournalOfTheOneBefore)
{
    Store(copy, "the old backup");
    Store(copy.string() + "-journal", "its journal");
    const int watch = ::inotify_init1(IN_NONBLOCK);
    ASSERT_GE(watch, 0);
    ASSERT_GE(::inotify_add_watch(watch, folder.path.c_str(), IN_DELETE | IN_MOVED_TO), 0);
    EXPECT_TRUE(BackUpDatabase(file, copy));
    std::vector<std::string> changed;
    alignas(inotify_event) char events[4096];
    const ssize_t size = ::read(watch, events, sizeof events);
    for (ssize_t at = 0; at < size;) {
        const auto* event = reinterpret_cast<const inotify_event*>(events + at);
        if (const std::string name = event->name; name.starts_with("copy.mdb"))
            changed.push_back(name);
        at += static_cast<ssize_t>(sizeof(inotify_event) + event->len);
    }
    ::close(watch);
    EXPECT_EQ(changed, (std::vector<std::string>{"copy.mdb-journal", "copy.mdb"}));
}

TEST_F(Backup, OfTheFileItselfIsRecognised)
{
    EXPECT_TRUE(IsSameFile(file, file));
    EXPECT_TRUE(IsSameFile(file, folder.path / "." / "clients"));
    std::filesystem::create_symlink(file, folder.path / "link");
    EXPECT_TRUE(IsSameFile(file, folder.path / "link"));
    EXPECT_FALSE(IsSameFile(file, copy));
}

TEST_F(Backup, CopiesThatAKillHasLeftHalfMadeAreForgottenAndNothingElse)
{
    const std::string database = Content(file);
    const auto leave = [&](const std::string& name, const std::string& content, int hours) {
        Store(folder.path / name, content);
        std::filesystem::last_write_time(folder.path / name,
                                         std::filesystem::file_time_type::clock::now() - std::chrono::hours(hours));
    };
    leave("clients-2011-06-29.mdb.17-1.tmp", database, 2);
    leave("other.bak.17-2.tmp", database.substr(0, 5000), 2);
    leave("clients-2011-06-30.mdb.17-1.tmp", database, 0);
    leave("clients.mdb.x.tmp", database, 2);
    leave("clients.17-1.tmp.mdb", database, 2);
    leave("letter.mdb.17-1.tmp", "Dear Sirs, " + std::string(200, 'x'), 2);
    leave("short.mdb.17-1.tmp", database.substr(0, 60), 2);
    const std::set<std::string> kept = {"clients",
                                        "clients-2011-06-30.mdb.17-1.tmp",
                                        "clients.mdb.x.tmp",
                                        "clients.17-1.tmp.mdb",
                                        "letter.mdb.17-1.tmp",
                                        "short.mdb.17-1.tmp"};
    RemoveForgottenCopies(folder.path);
    EXPECT_EQ(NamesIn(folder.path), kept);
    RemoveForgottenCopies(folder.path / "missing");
    leave("again.mdb.17-1.tmp", database, 2);
    EXPECT_TRUE(BackUpDatabase(file, copy));
    EXPECT_FALSE(std::filesystem::exists(folder.path / "again.mdb.17-1.tmp"));
}

/// True if this process has locked the file: the system tells only others.
bool IsLockedForOthers(const std::filesystem::path& file)
{
    const pid_t child = ::fork();
    if (child == 0) {
        struct flock look {};
        look.l_type = F_WRLCK;
        const int opened = ::open(file.c_str(), O_RDWR);
        ::_exit(opened >= 0 && ::fcntl(opened, F_GETLK, &look) == 0 && look.l_type != F_UNLCK ? 1 : 0);
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    return WEXITSTATUS(status) == 1;
}

/// The system takes every lock of a process on a file away as soon as the process closes the file once.
TEST_F(Backup, OpeningTheDatabaseOnceMoreLeavesALockOnIt)
{
    Database database = Open();
    WriteBatch batch(database);
    batch.Begin();
    Add(database, "ANotepad", "Acme", "Joe Smith");
    ASSERT_TRUE(IsLockedForOthers(file));
    Open(OpenMode::ReadOnly).Close();
    static_cast<void>(LookAtDatabase(file));
    EXPECT_TRUE(IsLockedForOthers(file));
    batch.Commit();
    EXPECT_FALSE(IsLockedForOthers(file));
}

} // namespace
} // namespace quillmere::test
