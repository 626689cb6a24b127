#include "frame/CheckedFile.h"

#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <chrono>
#include <csignal>
#include <functional>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace quillmere {
namespace {

using test::Content;
using test::NamesIn;
using test::Store;
using test::TemporaryFolder;

/// The number of the failure that the work ends in; 0 if it succeeds.
int FailureOf(const std::function<void()>& work)
{
    try {
        work();
    } catch (const FileError& error) {
        return error.Number();
    }
    return 0;
}

/// The same, found in a child process that `prepare` has put into a worse position.
int FailureInChild(const std::function<void()>& prepare, const std::function<void()>& work)
{
    const pid_t child = ::fork();
    if (child == 0) {
        prepare();
        ::_exit(FailureOf(work));
    }
    int status = 0;
    EXPECT_EQ(::waitpid(child, &status, 0), child);
    EXPECT_TRUE(WIFEXITED(status)) << "the child crashed";
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

/// From now on no file may grow past the limit, as on a disk that is full.
void FillTheDiskAfter(rlim_t bytes)
{
    ::signal(SIGXFSZ, SIG_IGN);
    const rlimit limit{.rlim_cur = bytes, .rlim_max = bytes};
    ::setrlimit(RLIMIT_FSIZE, &limit);
}

/// The superuser may write anywhere; from now on this process may not.
void BecomeNobody()
{
    constexpr uid_t nobody = 65534;
    if (::geteuid() == 0 && (::setgid(nobody) != 0 || ::setuid(nobody) != 0))
        ::_exit(255);
}

TEST(CheckedFile, ContentIsWrittenAndReadByteForByte)
{
    const TemporaryFolder folder;
    std::string content("\0\xFF\r\n", 4);
    content += std::string(700'000, 'x');
    WriteFileChecked(folder / "a", content);
    EXPECT_EQ(Content(folder / "a"), content);
    EXPECT_EQ(ReadFile(folder / "a"), content);
    WriteFileChecked(folder / "a", "");
    EXPECT_EQ(ReadFile(folder / "a"), "");
    EXPECT_EQ(NamesIn(folder.path), std::set<std::string>{"a"});
}

TEST(CheckedFile, ACopyIsTheSameByteForByte)
{
    const TemporaryFolder folder;
    std::string content;
    for (int number = 0; content.size() < 1'000'000; ++number)
        content += std::to_string(number) + '\0';
    Store(folder / "source", content);
    Store(folder / "target", "old");
    CopyFileChecked(folder / "source", folder / "target");
    EXPECT_EQ(Content(folder / "target"), content);
    EXPECT_EQ(Content(folder / "source"), content);
    EXPECT_EQ(NamesIn(folder.path), (std::set<std::string>{"source", "target"}));
}

TEST(CheckedFile, ACopyOfAReadOnlyFileCanBeWritten)
{
    const TemporaryFolder folder;
    Store(folder / "template", "empty");
    std::filesystem::permissions(folder / "template", std::filesystem::perms(0444));
    CopyFileChecked(folder / "template", folder / "database");
    struct stat made {};
    ASSERT_EQ(::stat((folder / "database").c_str(), &made), 0);
    EXPECT_NE(made.st_mode & 0200U, 0U);
}

TEST(CheckedFile, ANewFileIsItsOwnersAlone)
{
    const TemporaryFolder folder;
    WriteFileChecked(folder / "a", "new");
    CopyFileChecked(folder / "a", folder / "b");
    for (const char* name : {"a", "b"})
        EXPECT_EQ(std::filesystem::status(folder / name).permissions(), std::filesystem::perms(0600)) << name;
}

TEST(CheckedFile, AReplacedFileKeepsItsPermissions)
{
    const TemporaryFolder folder;
    Store(folder / "a", "old");
    std::filesystem::permissions(folder / "a", std::filesystem::perms(0602));
    WriteFileChecked(folder / "a", "new");
    EXPECT_EQ(std::filesystem::status(folder / "a").permissions(), std::filesystem::perms(0602));
}

TEST(CheckedFile, ALinkStaysALink)
{
    const TemporaryFolder folder;
    Store(folder / "real", "old");
    std::filesystem::create_symlink("real", folder / "link");
    WriteFileChecked(folder / "link", "new");
    EXPECT_TRUE(std::filesystem::is_symlink(folder / "link"));
    EXPECT_EQ(Content(folder / "real"), "new");
}

TEST(CheckedFile, AFullDiskLeavesTheOldFileAndNothingBesideIt)
{
    const TemporaryFolder folder;
    Store(folder / "a", "old");
    const std::string large(300'000, 'x');
    for (const rlim_t room : {rlim_t{0}, rlim_t{1}, rlim_t{100'000}, rlim_t{299'999}}) {
        EXPECT_EQ(FailureInChild([&] { FillTheDiskAfter(room); }, [&] { WriteFileChecked(folder / "a", large); }),
                  EFBIG);
        EXPECT_EQ(Content(folder / "a"), "old");
        EXPECT_EQ(NamesIn(folder.path), std::set<std::string>{"a"});
    }
    EXPECT_EQ(FailureInChild([&] { FillTheDiskAfter(300'000); }, [&] { WriteFileChecked(folder / "a", large); }), 0);
    EXPECT_EQ(Content(folder / "a"), large);
}

TEST(CheckedFile, ACopyToAFullDiskLeavesTheOldFileAndNothingBesideIt)
{
    const TemporaryFolder folder;
    Store(folder / "source", std::string(600'000, 'x'));
    Store(folder / "target", "old");
    const auto copy = [&](std::string_view name) {
        return FailureInChild([] { FillTheDiskAfter(300'000); },
                              [&] { CopyFileChecked(folder / "source", folder / name); });
    };
    EXPECT_EQ(copy("target"), EFBIG);
    EXPECT_EQ(copy("new"), EFBIG);
    EXPECT_EQ(Content(folder / "target"), "old");
    EXPECT_EQ(NamesIn(folder.path), (std::set<std::string>{"source", "target"}));
}

TEST(CheckedFile, AFolderThatMayNotBeWrittenIsAFailure)
{
    const TemporaryFolder folder;
    std::filesystem::create_directory(folder / "closed");
    Store(folder / "closed/a", "old");
    std::filesystem::permissions(folder / "closed/a", std::filesystem::perms(0666));
    std::filesystem::permissions(folder / "closed", std::filesystem::perms(0555));
    const auto write = [&](std::string_view name) {
        return FailureInChild(BecomeNobody, [&] { WriteFileChecked(folder / name, "new"); });
    };
    EXPECT_EQ(write("closed/a"), EACCES);
    EXPECT_EQ(write("closed/b"), EACCES);
    EXPECT_EQ(Content(folder / "closed/a"), "old");
    EXPECT_EQ(NamesIn(folder / "closed"), std::set<std::string>{"a"});
    std::filesystem::permissions(folder / "closed", std::filesystem::perms(0755));
}

TEST(CheckedFile, AFileThatMayNotBeWrittenIsLeftAlone)
{
    const TemporaryFolder folder;
    Store(folder / "a", "old");
    std::filesystem::permissions(folder / "a", std::filesystem::perms(0444));
    EXPECT_EQ(FailureOf([&] { WriteFileChecked(folder / "a", "new"); }), EACCES);
    EXPECT_EQ(Content(folder / "a"), "old");
    EXPECT_EQ(NamesIn(folder.path), std::set<std::string>{"a"});
}

TEST(CheckedFile, MissingPlacesAreFailuresThatNameTheFile)
{
    const TemporaryFolder folder;
    Store(folder / "a", "x");
    EXPECT_EQ(FailureOf([&] { WriteFileChecked(folder / "missing/a", "x"); }), ENOENT);
    EXPECT_EQ(FailureOf([&] { WriteFileChecked(folder / "a/b", "x"); }), ENOTDIR);
    EXPECT_EQ(FailureOf([&] { WriteFileChecked(folder.path, "x"); }), EISDIR);
    EXPECT_EQ(FailureOf([&] { ReadFile(folder / "missing"); }), ENOENT);
    EXPECT_EQ(FailureOf([&] { ReadFile(folder.path); }), EISDIR);
    EXPECT_EQ(FailureOf([&] { CopyFileChecked(folder / "missing", folder / "b"); }), ENOENT);
    EXPECT_EQ(FailureOf([&] { CopyFileChecked(folder.path, folder / "b"); }), EISDIR);
    EXPECT_EQ(NamesIn(folder.path), std::set<std::string>{"a"});
    EXPECT_FALSE(std::filesystem::exists(folder.path.string() + ".tmp"));
    try {
        ReadFile(folder / "missing");
        FAIL();
    } catch (const FileError& error) {
        EXPECT_EQ(error.what(), (folder / "missing").string() + ": No such file or directory");
    }
}

TEST(CheckedFile, WhatAKilledProcessLeftBehindIsNotInTheWay)
{
    const TemporaryFolder folder;
    Store(folder / ("a." + std::to_string(::getpid()) + "-1.tmp"), "half");
    WriteFileChecked(folder / "a", "whole");
    EXPECT_EQ(Content(folder / "a"), "whole");
}

TEST(CheckedFile, WhatKilledProcessesLeftBehindGoesWithTheNextWriteOnceItIsOld)
{
    const TemporaryFolder folder;
    const auto old = std::filesystem::file_time_type::clock::now() - std::chrono::hours(2);
    for (const char* name : {"a.17-1.tmp", "a.4194304-12.tmp", "b.17-1.tmp", "a.17.tmp", "a.x-1.tmp", "a.-1.tmp",
                             "aa.17-1.tmp", "a.17-1.tmp.mdb", "a..tmp"}) {
        Store(folder / name, "half");
        std::filesystem::last_write_time(folder / name, old);
    }
    Store(folder / "a.18-1.tmp", "being written");
    WriteFileChecked(folder / "a", "whole");
    EXPECT_EQ(NamesIn(folder.path), (std::set<std::string>{"a", "a.18-1.tmp", "b.17-1.tmp", "a.17.tmp", "a.x-1.tmp",
                                                           "a.-1.tmp", "aa.17-1.tmp", "a.17-1.tmp.mdb", "a..tmp"}));
}

TEST(CheckedFile, AKillInTheMiddleLeavesAWholeFile)
{
    const TemporaryFolder folder;
    const std::string first(400'000, 'a');
    const std::string second(500'000, 'b');
    WriteFileChecked(folder / "file", first);
    for (int run = 0; run < 20; ++run) {
        const pid_t child = ::fork();
        if (child == 0)
            for (;;) {
                WriteFileChecked(folder / "file", second);
                WriteFileChecked(folder / "file", first);
            }
        ::usleep(static_cast<useconds_t>(1000 * (run % 7) + 500));
        ::kill(child, SIGKILL);
        ::waitpid(child, nullptr, 0);
        const std::string content = Content(folder / "file");
        ASSERT_TRUE(content == first || content == second) << content.size();
    }
}

TEST(FolderWriterTest, GivesNoFileItsNameBeforeItIsOnTheDisk)
{
    const TemporaryFolder folder;
    const auto never = [](const FileError& error) { ADD_FAILURE() << error.what(); };
    {
        FolderWriter writer(folder.path);
        for (const char* name : {"one", "two", "three"})
            writer.Write(name, name, never);
        for (const char* name : {"one", "two", "three"})
            EXPECT_FALSE(std::filesystem::exists(folder / name)) << name;
        writer.Sync();
        for (const char* name : {"one", "two", "three"})
            EXPECT_EQ(Content(folder / name), name);
        writer.Write("four", "4", never);
    }
    EXPECT_EQ(NamesIn(folder.path).size(), 3U) << "what was not synced is dropped";
}

TEST(FolderWriterTest, GivesNamesOnTheWaySoThatNotTooMuchWaits)
{
    const TemporaryFolder folder;
    FolderWriter writer(folder.path);
    for (int file = 1; file <= 600; ++file)
        writer.Write(std::to_string(file), "content", [](const FileError& error) { ADD_FAILURE() << error.what(); });
    EXPECT_TRUE(std::filesystem::exists(folder / "1"));
    EXPECT_TRUE(std::filesystem::exists(folder / "512"));
    EXPECT_FALSE(std::filesystem::exists(folder / "600"));
    writer.Sync();
    EXPECT_EQ(NamesIn(folder.path).size(), 600U);
}

TEST(FolderWriterTest, TellsOfAFileThatDoesNotGetItsName)
{
    const TemporaryFolder folder;
    FolderWriter writer(folder.path);
    std::string failed;
    for (const std::string name : {"one", "two"})
        writer.Write(name, name, [&failed, name](const FileError&) { failed += name; });
    std::filesystem::create_directories(folder / "two" / "inside"); // nothing can be renamed over it
    writer.Sync();
    EXPECT_EQ(failed, "two");
    EXPECT_EQ(Content(folder / "one"), "one");
}

} // namespace
} // namespace quillmere
