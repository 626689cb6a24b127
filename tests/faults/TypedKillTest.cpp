#include "app/Program.h"
#include "clientdb/EmployerScreens.h"
#include "support/ProgramFixture.h"

#include <charconv>
#include <chrono>
#include <csignal>
#include <random>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace quillmere::test {
namespace {

/// A run of the program that types, is killed while it keeps what it has typed, and is followed by another one in the
/// same folder.
class TypedKill : public ::testing::Test {
protected:
    TypedKill()
    {
        std::filesystem::create_directories(places.programFolder);
        ScriptedDoor door;
        Program program(door, nullptr, places);
        EXPECT_TRUE(program.Main());
        database = program.TheSession().ClientDatabasePath();
        Database opened = Database::OpenDatabase(database);
        CreateEmployee(opened, {"Acme", "Jane", "Smith", "123/A456"});
    }

    /// Types one number after the other on page 1 and tells each through the pipe once it is kept.
    [[noreturn]] void TypeForEver(int pipe) const
    {
        ScriptedDoor door;
        Program program(door, nullptr, places);
        if (!program.Main() || !OpenEmployee(program.TheSession(), "Acme", "Jane Smith"))
            ::_exit(2);
        Screen& page = *program.TheSession().screens.Find("Form3");
        for (int number = 1;; ++number) {
            page.TypeIn(page.box("WorkNumberBox"), std::to_string(number));
            door.LetTimePass();
            const std::string told = std::to_string(number) + "\n";
            if (::write(pipe, told.data(), told.size()) < 0)
                ::_exit(3);
        }
    }

    /// The last number that a run has told before it was killed.
    int TypeAndKill(std::chrono::microseconds after) const
    {
        int ends[2];
        if (::pipe(ends) != 0)
            throw std::runtime_error("no pipe");
        const pid_t child = ::fork();
        if (child == 0) {
            ::close(ends[0]);
            TypeForEver(ends[1]);
        }
        ::close(ends[1]);
        std::string told;
        char piece[4096];
        if (const ssize_t size = ::read(ends[0], piece, sizeof piece); size > 0)
            told.assign(piece, static_cast<std::size_t>(size));
        std::this_thread::sleep_for(after);
        ::kill(child, SIGKILL);
        int status = 0;
        ::waitpid(child, &status, 0);
        EXPECT_TRUE(WIFSIGNALED(status)) << "the run ended by itself: " << WEXITSTATUS(status);
        for (ssize_t size; (size = ::read(ends[0], piece, sizeof piece)) > 0;)
            told.append(piece, static_cast<std::size_t>(size));
        ::close(ends[0]);
        told.resize(told.rfind('\n') == std::string::npos ? 0 : told.rfind('\n'));
        const std::size_t line = told.rfind('\n') == std::string::npos ? 0 : told.rfind('\n') + 1;
        return Number(std::string_view(told).substr(line));
    }

    static int Number(std::string_view text)
    {
        int number = 0;
        std::from_chars(text.data(), text.data() + text.size(), number);
        return number;
    }

    TemporaryFolder root{QuickFolder()};
    ProgramPlaces places{.programFolder = root.path / edition::ProductFolder,
                         .resourceFolder = std::filesystem::path(BINARY_DIR) / edition::ProductFolder};
    std::filesystem::path database;
};

TEST_F(TypedKill, LosesNothingThatWasKept)
{
    std::mt19937 random(20110706);
    for (int round = 0; round < 25; ++round) {
        const int told = TypeAndKill(std::chrono::microseconds(random() % 20'000));
        ScriptedDoor door;
        Program program(door, nullptr, places);
        ASSERT_TRUE(program.Main());
        Session& session = program.TheSession();
        ASSERT_TRUE(OpenEmployee(session, "Acme", "Jane Smith"));
        EXPECT_EQ(session.screens.FindBox("Form3", "WorkNumberBox")->Text(), "") << "nothing is stored";
        Screen* strip = session.screens.Find("TypedStrip");
        ASSERT_NE(strip, nullptr) << told << " was told";
        EXPECT_EQ(strip->box("StripWords").Text(), "1 box typed on 30 June 12:00 was not stored");
        strip->Click(strip->box("StripBack"));
        const int back = Number(session.screens.FindBox("Form3", "WorkNumberBox")->Text());
        EXPECT_GE(back, told);
        EXPECT_LE(back, told + 1);
        // The round ends as it began.
        Screen* page = session.screens.Find("Form3");
        page->TypeIn(page->box("WorkNumberBox"), "");
        program.Close();
        EXPECT_TRUE(program.Ended());
        EXPECT_TRUE(door.messages.empty());
        EXPECT_FALSE(std::filesystem::exists(std::filesystem::path(database).replace_extension(".typed")));
    }
}

} // namespace
} // namespace quillmere::test
