// The frame on the desktop: the main window's menus, message boxes, where the program's folder is, and what the close
// box of a window does.
#include "RunningProgram.h"
#include "clientdb/CurrentRecord.h"
#include "desktop/DesktopPlatform.h"
#include "desktop/MainWindow.h"
#include "desktop/ProgramFolder.h"
#include "support/Variable.h"

#include <QApplication>
#include <QMenuBar>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <gtest/gtest.h>

#include <sys/wait.h>

namespace quillmere {
namespace {

using test::RunningProgram;

TEST(MainWindowMenus, StandInTheirOrder)
{
    RunningProgram running;
    QStringList titles, file;
    const auto read = [](const QAction* action) { return action->text().remove(u'&'); };
    for (const QAction* menu : running.host.Main()->menuBar()->actions()) {
        titles << read(menu);
        if (titles.size() == 1)
            for (const QAction* entry : menu->menu()->actions())
                file << (entry->isSeparator() ? QString("-") : read(entry));
    }
    // What stands beside the form comes behind.
    const QStringList ofForm({"File", "Folder", "View", "Settings"});
    EXPECT_EQ(titles.mid(0, ofForm.size()), ofForm);
    EXPECT_EQ(file.mid(0, 15), QStringList({"New", "Open", "Transfer", "P11D(b)", "-", "Delete Employer",
                                            "Delete Employee", "Rename Employer/PAYE", "Rename Employee", "-", "Print ",
                                            "Employer Batch Print", "Print Setup...", "-", "Exit"}));
}

TEST(MainWindowPlace, IsKeptOnAnyOfTheScreensAndFoundAgainWhenTheScreenIsGone)
{
    const QRect first(0, 0, 1366, 768), second(1366, 0, 1920, 1080);
    const QRect wanted(1500, 100, 1400, 900);
    EXPECT_EQ(InSight(wanted, {first, second}), wanted);
    EXPECT_EQ(InSight(wanted, {second}), wanted);
    EXPECT_EQ(InSight(wanted, {first}), first) << "in the corner, cut to the room there is";
    EXPECT_EQ(InSight(QRect(-900, -900, 800, 600), {first, second}), QRect(0, 0, 800, 600));
}

// ---- message boxes --------------------------------------------------------------------------------

struct BoxCase {
    Icon icon;
    QMessageBox::Icon shown;
};

/// What a message box on the desktop looks like, and the answer that a key gives.
struct ShownBox {
    QMessageBox::Icon icon = QMessageBox::NoIcon;
    QMessageBox::StandardButtons buttons;
    int shownButtons = 0;
    QString title, text;
    bool defaultIsNo = false;
    Answer answer = Answer::Cancel;
};

ShownBox ShowAndPress(const Message& message, Qt::Key key)
{
    DesktopHost host;
    DesktopPlatform platform(host);
    ShownBox shown;
    QTimer::singleShot(0, [&] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        ASSERT_NE(box, nullptr);
        box->activateWindow();
        shown.icon = box->icon();
        shown.buttons = box->standardButtons();
        for (const QAbstractButton* button : box->buttons())
            shown.shownButtons += button->isVisible() ? 1 : 0;
        shown.title = box->windowTitle();
        shown.text = box->text();
        shown.defaultIsNo =
            box->defaultButton() != nullptr && box->standardButton(box->defaultButton()) == QMessageBox::No;
        QTest::keyClick(box, key);
    });
    shown.answer = platform.ShowMessage(message);
    return shown;
}

TEST(DesktopMessages, HaveTheirIconAndTheirButtons)
{
    constexpr BoxCase cases[] = {{Icon::None, QMessageBox::NoIcon},
                                 {Icon::Information, QMessageBox::Information},
                                 {Icon::Question, QMessageBox::Question},
                                 {Icon::Exclamation, QMessageBox::Warning},
                                 {Icon::Critical, QMessageBox::Critical}};
    for (const auto& [icon, expected] : cases) {
        const ShownBox told = ShowAndPress({.title = "T <b>", .text = "A <i>text</i>", .icon = icon}, Qt::Key_Escape);
        EXPECT_EQ(told.icon, expected);
        EXPECT_EQ(told.buttons, QMessageBox::Ok);
        EXPECT_EQ(told.title, "T <b>");
        EXPECT_EQ(told.text, "A <i>text</i>");
        EXPECT_EQ(told.answer, Answer::Ok);
        EXPECT_EQ(ShowAndPress({.icon = icon, .buttons = Buttons::YesNo}, Qt::Key_Escape).icon, expected);
    }
}

TEST(DesktopMessages, EnterPressesTheDefaultAndEscapeSaysNo)
{
    for (const Answer standard : {Answer::Yes, Answer::No}) {
        const Message question{.title = "T", .text = "Q", .buttons = Buttons::YesNo, .defaultAnswer = standard};
        const ShownBox entered = ShowAndPress(question, Qt::Key_Return);
        EXPECT_EQ(entered.buttons, QMessageBox::Yes | QMessageBox::No);
        EXPECT_EQ(entered.defaultIsNo, standard == Answer::No);
        EXPECT_EQ(entered.answer, standard);
        EXPECT_EQ(ShowAndPress(question, Qt::Key_Escape).answer, Answer::No);
    }
    EXPECT_EQ(ShowAndPress({.title = "T", .text = "Q"}, Qt::Key_Return).answer, Answer::Ok);
}

TEST(DesktopMessages, ABoxThatMayBeLeftShowsTheSameButtonsAndIsLeftWithEscape)
{
    for (const Buttons buttons : {Buttons::Ok, Buttons::YesNo}) {
        Message message{.title = "T", .text = "Q", .buttons = buttons, .defaultAnswer = Answer::Yes, .mayLeave = true};
        const ShownBox left = ShowAndPress(message, Qt::Key_Escape);
        EXPECT_EQ(left.answer, Answer::Cancel);
        EXPECT_EQ(left.shownButtons, buttons == Buttons::Ok ? 1 : 2);
        EXPECT_EQ(ShowAndPress(message, Qt::Key_Return).answer, buttons == Buttons::Ok ? Answer::Ok : Answer::Yes);
    }
}

TEST(DesktopViewer, SaysWhyAFileCannotBeOpened)
{
    DesktopHost host;
    DesktopPlatform platform(host);
    const test::TemporaryFolder folder;
    EXPECT_EQ(platform.OpenWithDesktop(folder.path / "missing.pdf"), 2);
    EXPECT_EQ(platform.OpenWithDesktop(folder.path / std::string(5000, 'x')), 3);
    EXPECT_EQ(platform.OpenWithDesktop(folder.path / "a" / std::string("b\0c", 3)), 2);
}

TEST(DesktopViewer, IsGivenAFilesNameByteForByte)
{
    EXPECT_EQ(AddressOf("/a b/100%.pdf").toEncoded(), "file:///a%20b/100%25.pdf");
    EXPECT_EQ(AddressOf("/M\xC3\xBCller?#.pdf").toEncoded(), "file:///M%C3%BCller%3F%23.pdf");
    EXPECT_EQ(AddressOf("/M\xFCller/\xE9.pdf").toEncoded(), "file:///M%FCller/%E9.pdf");
}

// ---- where the files are --------------------------------------------------------------------------

TEST(ProgramFolder, IsTheExecutablesOwnWhereThatCanBeWritten)
{
    const test::TemporaryFolder folder;
    const ProgramPlaces places = FindPlaces(folder.path, 1080, 1920);
    EXPECT_EQ(places.programFolder, folder.path);
    EXPECT_EQ(places.resourceFolder, folder.path);
    EXPECT_EQ(places.screenHeight, 1080);
    EXPECT_EQ(places.screenWidth, 1920);
}

TEST(ProgramFolder, IsInTheUsersDataWhereTheExecutablesIsTheSystems)
{
    const test::TemporaryFolder data;
    const test::Variable home("XDG_DATA_HOME", data.path.c_str());
    // The superuser may write there, and must not.
    const ProgramPlaces places = FindPlaces("/usr/lib", 1080, 1920);
    EXPECT_EQ(places.programFolder, data.path / edition::ProductFolder);
    EXPECT_EQ(places.resourceFolder, "/usr/lib");
}

TEST(ProgramFolder, IsInTheUsersDataWhereTheExecutablesCannotBeWritten)
{
    const test::TemporaryFolder folder;
    const std::filesystem::path executable = folder.path / "opt", data = folder.path / "data";
    std::filesystem::create_directory(executable);
    std::filesystem::create_directory(data);
    std::filesystem::permissions(folder.path, std::filesystem::perms(0755));
    std::filesystem::permissions(executable, std::filesystem::perms(0555));
    std::filesystem::permissions(data, std::filesystem::perms(0777));
    const test::Variable home("XDG_DATA_HOME", data.c_str());
    const pid_t child = ::fork();
    if (child == 0) {
        // The superuser may write everywhere.
        constexpr uid_t nobody = 65534;
        if (::geteuid() == 0 && (::setgid(nobody) != 0 || ::setuid(nobody) != 0))
            ::_exit(3);
        const ProgramPlaces places = FindPlaces(executable, 768, 1366);
        const bool right = places.programFolder == data / edition::ProductFolder &&
                           places.resourceFolder == executable && std::filesystem::is_directory(places.programFolder);
        ::_exit(right ? 0 : 1);
    }
    int status = -1;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << status;
}

// ---- the close box --------------------------------------------------------------------------------

class CloseBox : public ::testing::TestWithParam<std::string_view> {};

TEST_P(CloseBox, LeavesTheScreenAsItsCancelDoes)
{
    RunningProgram running;
    Session& session = running.program.TheSession();
    const Settings before = session.settings;
    Screen* screen = running.Show(GetParam());
    ASSERT_NE(screen, nullptr);
    for (const auto& box : screen->Boxes())
        if (box->Kind() == BoxKind::Text && !box->ReadOnly())
            box->SetText("7");
    running.host.WindowOf(*screen)->close();
    QCoreApplication::processEvents();
    EXPECT_EQ(session.screens.Find(GetParam()), nullptr);
    EXPECT_EQ(session.settings.folder, before.folder);
    EXPECT_EQ(session.settings.path, before.path);
    Database database = Database::OpenDatabase(session.ClientDatabasePath());
    Recordset notepad = OpenCurrent(database, "ANotepad", session);
    EXPECT_EQ(notepad.Field("Description1"), "");
    Recordset employees = database.OpenRecordset("P11D");
    employees.MoveFirst();
    employees.MoveNext();
    EXPECT_TRUE(employees.AtEnd()) << "nobody was added";
    if (GetParam() == "frmBackup") {
        ASSERT_EQ(running.door.messages.size(), 1u);
        EXPECT_EQ(running.door.messages[0].text, "The client database backup file was not saved");
        EXPECT_EQ(running.door.messages[0].icon, Icon::Information);
    } else {
        EXPECT_TRUE(running.door.messages.empty());
    }
}

INSTANTIATE_TEST_SUITE_P(Screens, CloseBox, ::testing::Values("ANotepad", "frmFolderManager", "frmBackup", "NewFile"),
                         [](const auto& parameter) { return std::string(parameter.param); });

} // namespace
} // namespace quillmere
