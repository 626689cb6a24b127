#include "app/Program.h"
#include "clientdb/EmployerScreens.h"
#include "frame/Amount.h"
#include "support/Process.h"
#include "support/ProgramFixture.h"

#include <random>
#include <stdexcept>

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

    /// Types one number after the other on page 1 and tells each once it is kept.
    [[noreturn]] void TypeForEver(int tell) const
    {
        ScriptedDoor door;
        Program program(door, nullptr, places);
        if (!program.Main() || !OpenEmployee(program.TheSession(), "Acme", "Jane Smith"))
            throw std::runtime_error("the employee does not open");
        Screen& page = *program.TheSession().screens.Find("Form3");
        for (int number = 1;; ++number) {
            page.TypeIn(page.box("WorkNumberBox"), std::to_string(number));
            door.LetTimePass();
            Tell(tell, std::to_string(number));
        }
    }

    /// The last number that a run has told before it was killed.
    int TypeAndKill(std::chrono::microseconds after) const
    {
        const Ending ending = InAProcess([this](int tell) { TypeForEver(tell); }, after, Patience::FromTheFirstWord);
        EXPECT_TRUE(ending.WasStopped()) << "the run " << ending.words << " by itself: " << ending.told;
        return static_cast<int>(LastNumberTold(ending.told));
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
        const int back = ReadWholeNumber(session.screens.FindBox("Form3", "WorkNumberBox")->Text());
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
