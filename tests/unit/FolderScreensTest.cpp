// The folder manager and the backup as screens: icons, the pointer, and what the close box of their windows does.
#include "clientdb/store/StoreFaults.h"
#include "frame/CheckedFile.h"
#include "support/ProgramFixture.h"

namespace quillmere::test {
namespace {

class FolderScreens : public ProgramFixture {
protected:
    ~FolderScreens() override { SetStoreFaultHook({}); }
};

TEST_F(FolderScreens, TheFolderManagersCloseBoxChangesNothing)
{
    const auto before = Now().settings.path;
    Menu("mnuFolderManager");
    At("frmFolderManager", "txtPath", 2).SetText("/elsewhere");
    At("frmFolderManager", "txtName", 2).SetText("Elsewhere");
    Now().screens.Find("frmFolderManager")->RequestClose();
    EXPECT_FALSE(Shows("frmFolderManager"));
    EXPECT_EQ(Now().settings.path, before);
    EXPECT_FALSE(At("MDIForm1", "mnuAltFolder", 2).Visible());
}

TEST_F(FolderScreens, ABackupIsToldWithTheIconOfInformation)
{
    Click("MDIForm1", "cmdFile", 8);
    const std::filesystem::path copy = root.path / "copy.mdb";
    door.savePath = copy.string();
    bool busyAtOnce = true;
    int statements = 0;
    SetStoreFaultHook([&](std::string_view) {
        ++statements;
        busyAtOnce = busyAtOnce && door.busy;
        return 0;
    });
    Click("frmBackup", "cmdSave");
    EXPECT_GT(statements, 0);
    EXPECT_TRUE(busyAtOnce) << "the pointer is busy while the copy is made";
    EXPECT_FALSE(door.busy);
    const Message message = TakeMessage();
    EXPECT_EQ(message.title, edition::AppTitle);
    EXPECT_EQ(message.text,
              "A backup copy of your client database has been saved in the following file:\n\n" + copy.string());
    EXPECT_EQ(message.icon, Icon::Information);
    EXPECT_FALSE(Shows("frmBackup"));
    if (OnServer())
        EXPECT_NO_THROW(static_cast<void>(Database::OpenDatabase(copy)));
    else
        EXPECT_EQ(ReadFile(copy), ReadFile(Now().ClientDatabasePath()));
}

TEST_F(FolderScreens, AnOlderBackupIsAskedAboutWithTheIconOfAQuestion)
{
    const std::filesystem::path copy = root.path / "copy.mdb";
    WriteFileChecked(copy, "the old backup");
    door.savePath = copy.string();
    door.answers = {Answer::No};
    Click("MDIForm1", "cmdFile", 8);
    Click("frmBackup", "cmdSave");
    const Message question = TakeMessage();
    EXPECT_EQ(question.text, "The file:\n\n" + copy.string() + "\n\nalready exits. Do you wish to replace it?");
    EXPECT_EQ(question.icon, Icon::Question);
    EXPECT_EQ(question.buttons, Buttons::YesNo);
    const Message notSaved = TakeMessage();
    EXPECT_EQ(notSaved.text, "The client database backup file was not saved");
    EXPECT_EQ(notSaved.icon, Icon::Information);
    EXPECT_TRUE(Shows("frmBackup"));
    EXPECT_EQ(ReadFile(copy), "the old backup");
    // The close box is the Cancel button.
    Now().screens.Find("frmBackup")->RequestClose();
    EXPECT_EQ(TakeMessage().icon, Icon::Information);
    EXPECT_FALSE(Shows("frmBackup"));
}

} // namespace
} // namespace quillmere::test
