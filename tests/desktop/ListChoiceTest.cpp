// Every list of the program, chosen from by arrow key, by letter and by click: the screen's boxes are the same.
#include "RunningProgram.h"
#include "clientdb/EmployerScreens.h"
#include "desktop/layouts/Layout.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QCoreApplication>
#include <QListWidget>
#include <QTest>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <memory>
#include <set>
#include <string>
#include <vector>

namespace quillmere {
namespace {

using test::RunningProgram;

constexpr std::array Purposes = {EmployerListPurpose::Open, EmployerListPurpose::RenameEmployee,
                                 EmployerListPurpose::DeleteEmployee, EmployerListPurpose::NewEmployee,
                                 EmployerListPurpose::DeleteEmployer};

enum class Way { Click, Arrow, Letter };

bool IsList(const Box& box)
{
    return box.Kind() == BoxKind::List || box.Kind() == BoxKind::DropDown;
}

/// The program with two of what its lists are of, and a screen of it on its window.
class ListDesk {
public:
    ListDesk(std::string_view screenName, EmployerListPurpose purpose)
    {
        Session& session = running.program.TheSession();
        {
            Database database = Database::OpenDatabase(session.ClientDatabasePath());
            CreateEmployee(database,
                           {.employer = "Acme Ltd", .firstName = "Walter", .surname = "Brown", .payeReference = "1"});
            CreateEmployee(database,
                           {.employer = "Zinc plc", .firstName = "Ann", .surname = "Other", .payeReference = "77/Z"});
        }
        running.door.printers = {"Office", "Attic"};
        session.EmployerListMode = purpose;
        screen = running.Show(screenName);
        if (screen == nullptr)
            return;
        if (Box* registered = screen->FindBox("CarReg"))
            registered->SetText("12/05/2008");
        QWidget* window = running.host.WindowOf(*screen);
        window->window()->activateWindow();
        RunOut();
    }

    /// Lets what a screen does between the keys come to its end, however long it takes.
    void RunOut()
    {
        QCoreApplication::processEvents();
        for (Screens& screens = running.program.TheSession().screens; screens.HasDeferred();)
            screens.RunDeferred();
        QCoreApplication::processEvents();
    }

    QWidget* WidgetOf(const Box& box) const { return running.host.WidgetOf(*screen, box); }

    /// The list, with a choice made in each list before it, which may be what fills it; nothing if it cannot be used.
    Box* Filled(const std::string& list)
    {
        for (const auto& box : screen->Boxes()) {
            if (!IsList(*box))
                continue;
            if (box->FullName() == list)
                return box->Visible() && box->Enabled() && !box->Entries().empty() ? box.get() : nullptr;
            if (box->Visible() && !box->Entries().empty()) {
                screen->Choose(*box, 0);
                RunOut();
            }
        }
        return nullptr;
    }

    RunningProgram running;
    Screen* screen = nullptr;
};

/// Chooses the second entry, or the only one.
void ChooseBy(Way way, QWidget& widget, const Box& box)
{
    const int row = std::min(1, static_cast<int>(box.Entries().size()) - 1);
    const QString entry = QString::fromStdString(box.Entries()[static_cast<std::size_t>(row)]);
    widget.setFocus(Qt::TabFocusReason);
    if (auto* combo = qobject_cast<QComboBox*>(&widget); combo != nullptr && way == Way::Click) {
        combo->showPopup();
        QTest::keyClick(combo->view(), Qt::Key_Home);
        for (int step = 0; step < row; ++step)
            QTest::keyClick(combo->view(), Qt::Key_Down);
        QTest::keyClick(combo->view(), Qt::Key_Return);
    } else if (auto* list = qobject_cast<QListWidget*>(&widget); list != nullptr && way == Way::Click) {
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualItemRect(list->item(row)).center());
    } else if (way == Way::Arrow) {
        for (int steps = 0; box.Selected() != row && steps < 20; ++steps)
            QTest::keyClick(&widget, box.Selected() < row ? Qt::Key_Down : Qt::Key_Up);
    } else {
        QTest::keyClicks(&widget, entry);
    }
    QCoreApplication::processEvents();
    EXPECT_EQ(box.Text(), entry.toStdString());
}

/// All that the screen shows; the folder of this desk, which no other has, is said as "{folder}".
std::vector<std::string> ShownBy(const ListDesk& desk)
{
    const std::string folder = desk.running.folder.path.string();
    std::vector<std::string> shown;
    for (const auto& box : desk.screen->Boxes()) {
        std::string line = box->FullName() + ": " + box->Text();
        for (const std::string& entry : box->Entries())
            line += " | " + entry;
        line += box->Ticked() ? " ticked" : "";
        line += box->Visible() ? "" : " hidden";
        line += box->Enabled() ? "" : " disabled";
        if (const std::size_t place = line.find(folder); place != std::string::npos)
            line.replace(place, folder.size(), "{folder}");
        shown.push_back(line);
    }
    return shown;
}

struct ShownList {
    std::string screen, list;
    EmployerListPurpose purpose;
};

/// Every list that shows in some way of opening its screen; `unseen` gets the others.
std::vector<ShownList> ShownLists(std::set<std::string>& unseen)
{
    std::vector<ShownList> found;
    for (const std::string_view name : ScreensWithLayout()) {
        std::set<std::string> lists;
        for (const EmployerListPurpose purpose : Purposes) {
            ListDesk desk(name, purpose);
            if (desk.screen == nullptr)
                continue;
            if (purpose == Purposes.front())
                for (const auto& box : desk.screen->Boxes())
                    if (IsList(*box))
                        lists.insert(box->FullName());
            for (auto list = lists.begin(); list != lists.end();) {
                const bool shows = desk.Filled(*list) != nullptr;
                if (shows)
                    found.push_back({std::string(name), *list, purpose});
                list = shows ? lists.erase(list) : std::next(list);
            }
            if (lists.empty())
                break;
        }
        for (const std::string& list : lists)
            unseen.insert(std::string(name) + "." + list);
    }
    return found;
}

TEST(EveryList, ShowsTheSameBoxesHoweverItsEntryIsChosen)
{
    std::set<std::string> unseen;
    const std::vector<ShownList> lists = ShownLists(unseen);
    EXPECT_EQ(unseen, std::set<std::string>{});
    for (const ShownList& list : lists) {
        SCOPED_TRACE(list.screen + "." + list.list);
        std::vector<std::string> clicked;
        for (const Way way : {Way::Click, Way::Arrow, Way::Letter}) {
            SCOPED_TRACE(way == Way::Click ? "by click" : way == Way::Arrow ? "by arrow key" : "by letter");
            ListDesk desk(list.screen, list.purpose);
            Box* box = desk.Filled(list.list);
            ASSERT_NE(box, nullptr);
            ChooseBy(way, *desk.WidgetOf(*box), *box);
            desk.RunOut();
            if (way == Way::Click)
                clicked = ShownBy(desk);
            else
                EXPECT_EQ(ShownBy(desk), clicked);
        }
    }
}

} // namespace
} // namespace quillmere
