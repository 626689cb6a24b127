#include "frame/SingleInstance.h"

#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <csignal>
#include <fcntl.h>
#include <optional>
#include <sys/wait.h>
#include <unistd.h>

namespace quillmere {
namespace {

using test::TemporaryFolder;

TEST(SingleInstance, ASecondOneIsRefusedWhileTheFirstIsThere)
{
    const TemporaryFolder folder;
    {
        const SingleInstance first(folder.path);
        EXPECT_TRUE(first.IsFirst());
        EXPECT_FALSE(SingleInstance(folder.path).IsFirst());
        EXPECT_FALSE(SingleInstance(folder.path).IsFirst()) << "the refused one did not free the place";
    }
    EXPECT_TRUE(SingleInstance(folder.path).IsFirst());
}

TEST(SingleInstance, ProgramsOfTwoFoldersDoNotMeet)
{
    const TemporaryFolder one, other;
    const SingleInstance first(one.path);
    EXPECT_TRUE(SingleInstance(other.path).IsFirst());
}

TEST(SingleInstance, AKilledProcessLeavesThePlaceFree)
{
    const TemporaryFolder folder;
    int ready[2];
    ASSERT_EQ(::pipe(ready), 0);
    const pid_t child = ::fork();
    if (child == 0) {
        const SingleInstance instance(folder.path);
        const char answer = instance.IsFirst() ? 'y' : 'n';
        if (::write(ready[1], &answer, 1) != 1)
            ::_exit(1);
        for (;;)
            ::pause();
    }
    char answer = 0;
    ASSERT_EQ(::read(ready[0], &answer, 1), 1);
    EXPECT_EQ(answer, 'y');
    EXPECT_FALSE(SingleInstance(folder.path).IsFirst()) << "another process holds it";
    ::kill(child, SIGKILL);
    ::waitpid(child, nullptr, 0);
    EXPECT_TRUE(SingleInstance(folder.path).IsFirst());
    ::close(ready[0]);
    ::close(ready[1]);
}

TEST(SingleInstance, AProgramStartedFromThisOneDoesNotHoldThePlace)
{
    const TemporaryFolder folder;
    std::optional<SingleInstance> first(std::in_place, folder.path);
    ASSERT_TRUE(first->IsFirst());
    // The pipe closes when the child has become the other program, and only then is the question fair.
    int started[2];
    ASSERT_EQ(::pipe2(started, O_CLOEXEC), 0);
    const pid_t viewer = ::fork();
    if (viewer == 0) {
        ::execlp("sleep", "sleep", "60", static_cast<char*>(nullptr));
        ::_exit(127);
    }
    ::close(started[1]);
    char nothing = 0;
    EXPECT_EQ(::read(started[0], &nothing, 1), 0);
    ::close(started[0]);
    first.reset();
    EXPECT_TRUE(SingleInstance(folder.path).IsFirst());
    ::kill(viewer, SIGKILL);
    ::waitpid(viewer, nullptr, 0);
}

/// What a process that may not write the lock file is told: 1 for first, 0 for not.
int AnswerToAnotherUser(const std::filesystem::path& folder)
{
    const pid_t child = ::fork();
    if (child == 0) {
        constexpr uid_t nobody = 65534;
        if (::geteuid() == 0 && (::setgid(nobody) != 0 || ::setuid(nobody) != 0))
            ::_exit(255);
        ::_exit(SingleInstance(folder).IsFirst() ? 1 : 0);
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

TEST(SingleInstance, AnotherUsersLockCountsToo)
{
    const TemporaryFolder folder;
    std::optional<SingleInstance> first(std::in_place, folder.path);
    ASSERT_TRUE(first->IsFirst());
    for (const auto& entry : std::filesystem::directory_iterator(folder.path))
        std::filesystem::permissions(entry.path(), std::filesystem::perms(0444));
    EXPECT_EQ(AnswerToAnotherUser(folder.path), 0);
    first.reset();
    EXPECT_EQ(AnswerToAnotherUser(folder.path), 1);
}

TEST(SingleInstance, AFolderWithoutRoomForALockDoesNotKeepTheProgramFromStarting)
{
    const TemporaryFolder folder;
    EXPECT_TRUE(SingleInstance(folder / "missing").IsFirst());
}

} // namespace
} // namespace quillmere
