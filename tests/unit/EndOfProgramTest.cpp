// The end of the program while the store takes nothing: what the user keeps open is kept whole.
#include "clientdb/CurrentRecord.h"
#include "clientdb/store/StoreFaults.h"
#include "support/ProgramFixture.h"

#include <sqlite3.h>

namespace quillmere::test {
namespace {

class EndOfProgram : public ProgramFixture {
protected:
    ~EndOfProgram() override { SetStoreFaultHook({}); }
};

TEST_F(EndOfProgram, GivesUpNothingBeforeItIsCertainThatTheProgramEnds)
{
    Create("Acme Ltd", "Jane", "Smith");
    OpenEmployee();
    Now().screens.Show("P11DDeclaration");
    Now().screens.RunDeferred();
    At("Form3", "WorkNumberBox").SetText("W1");
    At("P11DDeclaration", "AccOfficeRef").SetText("123PA0001");
    const auto refuseWrites = [](std::string_view statement) {
        return statement.starts_with("UPDATE") ? SQLITE_IOERR : SQLITE_OK;
    };
    SetStoreFaultHook(refuseWrites);
    door.answers = {Answer::Yes, Answer::No};
    program.Close();
    EXPECT_TRUE(door.answers.empty()) << "both are asked about";
    SetStoreFaultHook({});
    ASSERT_FALSE(program.Ended());
    EXPECT_EQ(At("Form3", "WorkNumberBox").Text(), "W1");
    Click("P11DDeclaration", "Cancel");
    Click("MDIForm1", "cmdFile", 4);
    Database clients = Clients();
    EXPECT_EQ(OpenCurrent(clients, "P11D", Now()).Field("WorkNumberBox"), "W1");
    Recordset declarations = clients.OpenRecordset("P11DB");
    declarations.MoveFirstOf("Acme Ltd");
    EXPECT_EQ(declarations.Field("AccountsOffReference"), "123PA0001");
}

/// A screen that could be stored goes on with its record when another keeps the program open.
TEST_F(EndOfProgram, StoresAPageOnAfterTheProgramHasNotEnded)
{
    Create("Acme Ltd", "Jane", "Smith");
    OpenEmployee();
    Now().screens.Show("P11DDeclaration");
    Now().screens.RunDeferred();
    At("P11DDeclaration", "AccOfficeRef").SetText("123PA0001");
    SetStoreFaultHook(
        [](std::string_view statement) { return statement.starts_with("UPDATE [P11DB]") ? SQLITE_IOERR : SQLITE_OK; });
    door.answers = {Answer::No};
    program.Close();
    SetStoreFaultHook({});
    ASSERT_FALSE(program.Ended());
    Click("P11DDeclaration", "Cancel");
    At("Form3", "WorkNumberBox").SetText("W1");
    Click("MDIForm1", "cmdFile", 4);
    Database clients = Clients();
    EXPECT_EQ(OpenCurrent(clients, "P11D", Now()).Field("WorkNumberBox"), "W1");
}

} // namespace
} // namespace quillmere::test
