// What the hands meet in a window: the first click into a figure, a second click on an option, a click that a message
// comes in between, the wheel over a drop-down list, Enter and Escape, and lists in which nothing is chosen yet.
#include "RunningProgram.h"
#include "app/MDIForm1.h"
#include "clientdb/EmployerScreens.h"
#include "desktop/BoxWidgets.h"
#include "desktop/DesktopPlatform.h"
#include "desktop/Look.h"
#include "desktop/MainWindow.h"
#include "desktop/layouts/Layout.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QApplication>
#include <QComboBox>
#include <QImage>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QTest>
#include <QTimer>
#include <QToolButton>
#include <QWhatsThis>
#include <QWheelEvent>
#include <gtest/gtest.h>

#include <map>
#include <set>
#include <utility>

namespace quillmere {
namespace {

using test::RunningProgram;

/// A button of the mouse as the window system sends it.
void Mouse(QWidget& widget, QPoint point, QEvent::Type type)
{
    QWidget* window = widget.window();
    const QPoint place = widget.mapTo(window, point);
    const Qt::MouseButtons held = type == QEvent::MouseButtonPress ? Qt::LeftButton : Qt::NoButton;
    static int time = 0;
    time += 1000; // no double click
    qt_handleMouseEvent(window->windowHandle(), place, window->mapToGlobal(place), held, Qt::LeftButton, type,
                        Qt::NoModifier, time);
    QCoreApplication::processEvents();
}

void Click(QWidget& widget, QPoint point)
{
    Mouse(widget, point, QEvent::MouseButtonPress);
    Mouse(widget, point, QEvent::MouseButtonRelease);
}

void Click(QWidget& widget)
{
    Click(widget, widget.rect().center());
}

class Hands : public ::testing::Test {
protected:
    Screen& Open(std::string_view name)
    {
        Screen* screen = running.Show(name);
        if (screen == nullptr)
            throw std::runtime_error(std::string(name) + " does not open");
        running.host.WindowOf(*screen)->window()->activateWindow();
        QCoreApplication::processEvents();
        return *screen;
    }
    template<class Widget = QWidget>
    Widget& WidgetOf(const Screen& screen, std::string_view box, int index = Box::NoIndex)
    {
        return dynamic_cast<Widget&>(*running.host.WidgetOf(screen, screen.box(box, index)));
    }

    RunningProgram running;
};

class HandsOnEveryScreen : public ::testing::TestWithParam<std::string_view> {
protected:
    void SetUp() override
    {
        screen = running.Show(GetParam());
        ASSERT_NE(screen, nullptr) << GetParam() << " does not open";
        QWidget* window = running.host.WindowOf(*screen)->window();
        window->showNormal();
        window->resize(1366, 768); // everything in sight
        window->activateWindow();
        QCoreApplication::processEvents();
        running.door.messages.clear();
    }
    QWidget* WidgetOf(const Box& box) const { return running.host.WidgetOf(*screen, box); }
    bool InReach(const Box& box) const
    {
        const QWidget* widget = WidgetOf(box);
        return widget != nullptr && widget->isVisible() && widget->isEnabled();
    }

    bool IsAfterAllThatTakesTyping(const Box& picture) const
    {
        bool after = true;
        for (const auto& box : screen->Boxes()) {
            if (box.get() == &picture)
                after = true;
            else if (box->Kind() == BoxKind::Text && !box->ReadOnly() && InReach(*box))
                after = false;
        }
        return after;
    }

    RunningProgram running;
    Screen* screen = nullptr;
};

INSTANTIATE_TEST_SUITE_P(Screens, HandsOnEveryScreen, ::testing::ValuesIn(ScreensWithLayout()),
                         [](const auto& parameter) { return std::string(parameter.param); });

// ---- figures

bool IsFigure(const Box& box)
{
    return box.IsAmount() || box.Filter() == DateKeyFilter || box.Filter() == WholeNumberKeyFilter ||
           box.Filter() == MoneyKeyFilter || box.Filter() == SignedMoneyKeyFilter;
}

TEST_P(HandsOnEveryScreen, ChoosesAFigureWholeByTheFirstClickAndPlacesTheCaretByTheSecond)
{
    for (const auto& box : screen->Boxes()) {
        if (box->Kind() != BoxKind::Text || !IsFigure(*box) || box->ReadOnly() || !InReach(*box))
            continue;
        auto& edit = dynamic_cast<QLineEdit&>(*WidgetOf(*box));
        if (QWidget* used = QApplication::focusWidget())
            used->clearFocus(); // leaving it may work the others out
        QCoreApplication::processEvents();
        box->SetText("    500.00");
        Mouse(edit, edit.rect().center(), QEvent::MouseButtonPress);
        Mouse(edit, edit.rect().center() + QPoint(2, 0), QEvent::MouseMove);
        Mouse(edit, edit.rect().center(), QEvent::MouseButtonRelease);
        ASSERT_EQ(edit.selectedText(), "500.00") << box->FullName();
        Click(edit);
        EXPECT_FALSE(edit.hasSelectedText()) << box->FullName();
        EXPECT_GE(edit.cursorPosition(), 4) << box->FullName() << ": the caret stands among the blanks";
        return; // one of a screen: every box has the same edit
    }
}

TEST_P(HandsOnEveryScreen, ChoosesAFigureWholeHoweverTheFocusComesToIt)
{
    for (const auto& box : screen->Boxes()) {
        if (box->Kind() != BoxKind::Text || !IsFigure(*box) || box->ReadOnly() || !InReach(*box))
            continue;
        auto& edit = dynamic_cast<QLineEdit&>(*WidgetOf(*box));
        for (const Qt::FocusReason reason : {Qt::OtherFocusReason, Qt::TabFocusReason, Qt::ShortcutFocusReason}) {
            if (QWidget* used = QApplication::focusWidget())
                used->clearFocus();
            QCoreApplication::processEvents();
            box->SetText("    500.00");
            edit.setFocus(reason);
            ASSERT_EQ(edit.selectedText(), "500.00") << box->FullName() << ", reason " << reason;
            Click(edit);
            ASSERT_EQ(edit.selectedText(), "500.00") << box->FullName() << ", reason " << reason << ", then a click";
        }
        return; // one of a screen: every box has the same edit
    }
}

TEST_F(Hands, TypeOverAFigureThatAClickHasChosen)
{
    Screen& page = Open("Form3");
    Box& box = page.box("ACostMarketBox");
    auto& edit = WidgetOf<QLineEdit>(page, "ACostMarketBox");
    box.SetText("    500.00");
    Click(edit);
    QTest::keyClicks(&edit, "7");
    EXPECT_EQ(box.Text(), "7");
    EXPECT_EQ(edit.text(), "7");
}

TEST_F(Hands, KeepAFigureChosenWhenTheKeyIsRefused)
{
    Screen& page = Open("Form3");
    Box& box = page.box("ACostMarketBox");
    auto& edit = WidgetOf<QLineEdit>(page, "ACostMarketBox");
    box.SetText("    500.00");
    Click(edit);
    QTest::keyClicks(&edit, "x");
    EXPECT_EQ(box.Text(), "    500.00");
    QTest::keyClicks(&edit, "7");
    EXPECT_EQ(box.Text(), "7");
}

TEST_F(Hands, NeverTypeAmongTheBlanksInFrontOfAFigure)
{
    Screen& page = Open("Form3");
    Box& box = page.box("ACostMarketBox");
    auto& edit = WidgetOf<QLineEdit>(page, "ACostMarketBox");
    box.SetText("    500.00");
    edit.setFocus(Qt::OtherFocusReason);
    QTest::keyClick(&edit, Qt::Key_Home);
    QTest::keyClicks(&edit, "7");
    EXPECT_EQ(box.Text(), "7500.00");
    box.SetText("    500.00");
    QTest::keyClick(&edit, Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(edit.selectedText(), "500.00");
    QTest::keyClick(&edit, Qt::Key_Delete);
    EXPECT_EQ(box.Text(), "");
}

TEST_F(Hands, TickByAScreenReaderAsByTheMouse)
{
    Screen& page = Open("Form3");
    Box& director = page.box("DirectorTick");
    auto& tick = WidgetOf<QAbstractButton>(page, "DirectorTick");
    QAccessibleActionInterface& spoken = *QAccessible::queryAccessibleInterface(&tick)->actionInterface();
    for (const QString& action : {spoken.toggleAction(), spoken.pressAction()}) {
        const bool before = director.Ticked();
        spoken.doAction(action);
        QCoreApplication::processEvents();
        EXPECT_NE(director.Ticked(), before) << action.toStdString();
        EXPECT_EQ(tick.isChecked(), director.Ticked()) << action.toStdString();
    }
}

/// Puts a text into an edit as a screen reader does that takes dictation.
void PutIn(QWidget& edit, const QString& text)
{
    QAccessibleInterface& spoken = *QAccessible::queryAccessibleInterface(&edit);
    ASSERT_NE(spoken.editableTextInterface(), nullptr);
    spoken.editableTextInterface()->replaceText(0, spoken.textInterface()->characterCount(), text);
    QCoreApplication::processEvents();
}

TEST_P(HandsOnEveryScreen, TakesWhatAScreenReaderPutsInAsItTakesTyping)
{
    for (const auto& box : screen->Boxes()) {
        auto* edit = dynamic_cast<QLineEdit*>(WidgetOf(*box));
        if (edit == nullptr || !InReach(*box))
            continue;
        const std::string before = box->Text();
        PutIn(*edit, "#7");
        ASSERT_EQ(edit->text().toStdString(), box->Text()) << box->FullName();
        if (box->ReadOnly()) {
            EXPECT_EQ(box->Text(), before) << box->FullName();
            continue;
        }
        std::u32string expected;
        for (const char32_t typed : U"#7")
            if (typed != 0 && (box->Filter() == nullptr || box->Filter()(typed).key != 0))
                expected += typed;
        if (!expected.empty() && IsFigure(*box)) { // a guard may refuse more in others
            EXPECT_EQ(edit->text().toStdU32String(), expected) << box->FullName();
        }
        EXPECT_EQ(QApplication::focusWidget(), edit) << box->FullName();
        return; // of a screen the first: each goes the same way
    }
}

TEST_F(Hands, PutATextInByAScreenReaderAsByTheKeys)
{
    Screen& page = Open("Form3");
    auto& cost = WidgetOf<QLineEdit>(page, "ACostMarketBox");
    WidgetOf(page, "NatIns").setFocus(Qt::TabFocusReason);
    PutIn(cost, "12x.5");
    EXPECT_EQ(page.box("ACostMarketBox").Text(), "12.5") << "the box's filter";
    EXPECT_EQ(page.InUse(), &page.box("ACostMarketBox"));
    QAccessible::queryAccessibleInterface(&cost)->editableTextInterface()->insertText(0, "3");
    EXPECT_EQ(page.box("ACostMarketBox").Text(), "312.5");
    PutIn(WidgetOf(page, "AAmountGood"), "2.5");
    EXPECT_EQ(page.box("ACostMarketBox").Text(), "    312.50") << "what leaving does";
    WidgetOf(page, "NatIns").setFocus(Qt::TabFocusReason);
    EXPECT_EQ(page.box("ACashEqu").Text(), "    310.00");
    page.box("EmployerNameBox").SetText("Acme Ltd"); // which is closed to entry
    PutIn(WidgetOf(page, "EmployerNameBox"), "Other Ltd");
    EXPECT_EQ(page.box("EmployerNameBox").Text(), "Acme Ltd");
    EXPECT_EQ(WidgetOf<QLineEdit>(page, "EmployerNameBox").text(), "Acme Ltd");
    PutIn(cost, "");
    EXPECT_EQ(page.box("ACostMarketBox").Text(), "");
}

/// True if some of what the widget shows is underlined as having no room.
bool ShowsTheMark(QWidget& widget)
{
    const QImage picture = widget.grab().toImage();
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x)
            if (picture.pixelColor(x, y) == look::TonesInUse().fault)
                return true;
    return false;
}

TEST_F(Hands, SeeWhileTheyTypeWhatThePaperHasNoRoomFor)
{
    for (const auto& [name, box] : {std::pair("Form3", "FMakeModel2"), std::pair("Form5_6", "FMakeModel6")}) {
        Screen& screen = Open(name);
        auto& edit = WidgetOf<BoxEdit>(screen, box);
        edit.setFocus(Qt::TabFocusReason);
        QTest::keyClicks(&edit, "An estate car with leather seat");
        EXPECT_EQ(edit.MarkedAtEnd(), 0U) << box;
        EXPECT_FALSE(ShowsTheMark(edit)) << box;
        QTest::keyClicks(&edit, "s");
        EXPECT_EQ(edit.MarkedAtEnd(), 1U) << box;
        EXPECT_TRUE(ShowsTheMark(edit)) << box;
        QTest::keyClick(&edit, Qt::Key_Backspace);
        EXPECT_FALSE(ShowsTheMark(edit)) << box;
    }
}

TEST_F(Hands, SeeWhatOfAStoredTextThePaperHasNoRoomFor)
{
    Screen& page = Open("Form3");
    auto& edit = WidgetOf<BoxEdit>(page, "ADescriptionAsset");
    page.box("ADescriptionAsset").SetText(std::string(60, 'W'));
    EXPECT_GT(edit.MarkedAtEnd(), 0U);
    page.box("ADescriptionAsset").Clear();
    EXPECT_EQ(edit.MarkedAtEnd(), 0U);
}

TEST_F(Hands, BringTheOldTextBackByEscapeBeforeItCloses)
{
    Screen& notepad = Open("ANotepad");
    Box& box = notepad.box("CostMark", 1);
    auto& edit = WidgetOf<QLineEdit>(notepad, "CostMark", 1);
    edit.setFocus(Qt::TabFocusReason);
    QTest::keyClicks(&edit, "500");
    WidgetOf(notepad, "Tax", 1).setFocus(Qt::TabFocusReason);
    ASSERT_EQ(box.Text(), "    500.00");
    edit.setFocus(Qt::TabFocusReason);
    QTest::keyClicks(&edit, "7");
    ASSERT_EQ(box.Text(), "7");
    QTest::keyClick(&edit, Qt::Key_Escape);
    EXPECT_EQ(box.Text(), "    500.00");
    EXPECT_EQ(edit.text(), "    500.00");
    ASSERT_NE(running.program.TheSession().screens.Find("ANotepad"), nullptr);
    QTest::keyClick(&edit, Qt::Key_Escape);
    EXPECT_EQ(running.program.TheSession().screens.Find("ANotepad"), nullptr);
}

// ---- the keys of a window

TEST_P(HandsOnEveryScreen, KeepsTheFocusWhereItIsWhenAKeyPressesAButton)
{
    const std::vector<Screen*> open = running.program.TheSession().screens.Open();
    for (const auto& box : screen->Boxes()) {
        if (box->Kind() != BoxKind::Button || box->Key().empty() || !InReach(*box))
            continue;
        QWidget* window = running.host.WindowOf(*screen)->window();
        QWidget* before = window->focusWidget();
        const QKeySequence key(look::Text(box->Key()), QKeySequence::PortableText);
        QTest::keyClick(window, static_cast<Qt::Key>(key[0].key()), key[0].keyboardModifiers());
        if (running.program.TheSession().screens.Open() != open)
            return; // it leads elsewhere
        EXPECT_EQ(window->focusWidget(), before) << box->FullName();
    }
}

TEST_F(Hands, SeeWhereTheLinesOfAListBeginInANarrowWindow)
{
    for (const auto& [name, list] : {std::pair("Explanation", "Steps"), std::pair("OverviewList", "Lines")}) {
        Screen& screen = Open(name);
        QWidget& window = *running.host.WindowOf(screen);
        QWidget& widget = WidgetOf(screen, list);
        window.resize(600, 300);
        window.setFocus();
        widget.clearFocus();
        widget.setFocus(Qt::TabFocusReason);
        QCoreApplication::processEvents();
        EXPECT_GE(widget.mapTo(&window, QPoint(0, 0)).x(), 0) << name;
    }
}

// ---- options, drop-down lists

TEST_P(HandsOnEveryScreen, LeavesAnOptionChosenHoweverOftenItIsClicked)
{
    for (const auto& box : screen->Boxes()) {
        if (box->Kind() != BoxKind::Option || !InReach(*box))
            continue;
        auto& option = dynamic_cast<QAbstractButton&>(*WidgetOf(*box));
        for (int time = 1; time <= 3; ++time) {
            Click(option, QPoint(8, option.height() / 2));
            EXPECT_TRUE(box->Ticked()) << box->FullName();
            EXPECT_TRUE(option.isChecked()) << box->FullName() << ", click " << time;
        }
        option.setFocus();
        QTest::keyClick(&option, Qt::Key_Space);
        EXPECT_TRUE(option.isChecked()) << box->FullName() << ", Space";
    }
}

TEST_P(HandsOnEveryScreen, LeavesADropDownListAloneUnderTheWheel)
{
    for (const auto& box : screen->Boxes()) {
        auto* list = qobject_cast<QComboBox*>(WidgetOf(*box));
        if (list == nullptr || !InReach(*box))
            continue;
        EXPECT_FALSE(list->focusPolicy() == Qt::WheelFocus) << box->FullName();
        if (list->count() < 2)
            box->SetEntries({"one", "two", "three"});
        box->Select(1);
        for (const bool focused : {false, true}) {
            if (focused)
                list->setFocus();
            for (const int turn : {-120, 120, 120}) {
                QWheelEvent wheel(QPointF(5, 5), list->mapToGlobal(QPointF(5, 5)), QPoint(), QPoint(0, turn),
                                  Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
                QApplication::sendEvent(list, &wheel);
            }
            EXPECT_EQ(box->Selected(), 1) << box->FullName();
            EXPECT_EQ(list->currentIndex(), 1) << box->FullName();
        }
    }
}

// ---- a message between press and release

/// Shows messages in their boxes, over which the pressed button of the mouse is let go; then Enter.
class MessagesInBetween : public Hands {
protected:
    MessagesInBetween()
    {
        running.door.messageShown = [this](const Message& message) {
            QTimer::singleShot(0, [this] {
                auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
                ASSERT_NE(box, nullptr);
                QWidget* below = running.host.Main();
                for (QWidget* window : QApplication::topLevelWidgets())
                    if (window->isVisible() && window != box && window->objectName() == pressedIn)
                        below = window;
                qt_handleMouseEvent(below->windowHandle(), QPoint(5, 5), below->mapToGlobal(QPoint(5, 5)), Qt::NoButton,
                                    Qt::LeftButton, QEvent::MouseButtonRelease, Qt::NoModifier, 0);
                QTest::keyClick(box, Qt::Key_Return);
            });
            DesktopPlatform(running.host).ShowMessage(message);
        };
    }
    QString pressedIn;
};

TEST_F(MessagesInBetween, DoNotSwallowTheClickOnAButton)
{
    Screen& page = Open("Form3");
    auto& number = WidgetOf<QLineEdit>(page, "NatIns");
    number.setFocus(Qt::TabFocusReason);
    QTest::keyClicks(&number, "wrong");
    auto& tab = WidgetOf<QAbstractButton>(page, "Page2");
    Mouse(tab, tab.rect().center(), QEvent::MouseButtonPress);
    QCoreApplication::processEvents();
    ASSERT_EQ(running.door.messages.size(), 1u);
    EXPECT_EQ(running.door.messages[0].text, "Invalid National Insurance Number");
    EXPECT_FALSE(tab.isDown());
    EXPECT_TRUE(running.program.TheSession().screens.IsShown("Side2Form1"));
}

TEST_F(MessagesInBetween, DoNotSwallowTheClickOnATickBox)
{
    Screen& page = Open("Form3");
    auto& number = WidgetOf<QLineEdit>(page, "NatIns");
    number.setFocus(Qt::TabFocusReason);
    QTest::keyClicks(&number, "wrong");
    auto& tick = WidgetOf<QAbstractButton>(page, "DirectorTick");
    Mouse(tick, QPoint(8, tick.height() / 2), QEvent::MouseButtonPress);
    QCoreApplication::processEvents();
    EXPECT_EQ(running.door.messages.size(), 1u);
    EXPECT_FALSE(tick.isDown());
    EXPECT_TRUE(tick.isChecked());
    EXPECT_TRUE(page.box("DirectorTick").Ticked());
}

// ---- Enter, Space and F4

TEST_P(HandsOnEveryScreen, GoesOnToTheNextBoxThatTakesTypingByEnter)
{
    if (screen->DefaultButton() != nullptr)
        return; // Enter presses it
    const Box* before = nullptr;
    for (const auto& box : screen->Boxes()) {
        if (box->Kind() != BoxKind::Text || box->ReadOnly() || !InReach(*box))
            continue;
        if (before != nullptr) {
            WidgetOf(*before)->setFocus(Qt::TabFocusReason);
            QTest::keyClick(WidgetOf(*before), Qt::Key_Return);
            if (!InReach(*box))
                continue; // leaving has closed it
            ASSERT_EQ(QApplication::focusWidget(), WidgetOf(*box)) << "after " << before->FullName();
        }
        before = box.get();
    }
}

TEST_P(HandsOnEveryScreen, OpensNothingByTypingOnAPicture)
{
    const std::vector<Screen*> open = running.program.TheSession().screens.Open();
    for (const auto& box : screen->Boxes()) {
        if (box->Kind() != BoxKind::Picture || !InReach(*box))
            continue;
        QWidget* picture = WidgetOf(*box);
        picture->setFocus(Qt::TabFocusReason);
        QTest::keyClick(picture, Qt::Key_Return);
        EXPECT_NE(QApplication::focusWidget(), picture) << box->FullName() << ", Enter";
        picture->setFocus(Qt::TabFocusReason);
        QTest::keyClick(picture, Qt::Key_7);
        if (qobject_cast<QLineEdit*>(QApplication::focusWidget()) != nullptr)
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);
        else
            EXPECT_TRUE(IsAfterAllThatTakesTyping(*box)) << box->FullName();
        EXPECT_EQ(running.program.TheSession().screens.Open(), open) << box->FullName();
    }
}

TEST_F(Hands, OpenASectionsPictureFromItsBoxesByF4)
{
    struct {
        std::string_view screen, box, opened;
    } const cases[] = {
        {"Form3", "ADescriptionAsset", "ANotepad"},
        {"Form3", "ACashEqu", "ANotepad"},
        {"Form3", "Image1", "ANotepad"},
        {"Form3", "BNotTax", "BNotepad"},
        {"Form3", "DCashEqu", "DNotepad"},
        {"Form3", "NatIns", ""},
        {"Form3", "FListPrice1", ""},
        {"Side2Form1", "GVanFuel", "GNotepad"},
        {"Side2Form1", "HMaxLoan2", "HNotepad"},
        {"Side2Form1", "MShareTick", ""},
        {"Side2Form1", "NCostYou1", "NNotepad1"},
        {"Side2Form1", "NDescriptItems2", "NNotepad2"},
        {"Side2Form1", "NTaxPaid", "NNotepad3"},
        {"Side2Form1", "OCostYou2", "ONotepad2"},
        {"Side2Form1", "ODescExpenses", "ONotepad6"},
    };
    for (const auto& [name, box, opened] : cases) {
        Screen& page = Open(name);
        Screens& screens = running.program.TheSession().screens;
        const std::size_t before = screens.Open().size();
        QWidget& widget = WidgetOf(page, box);
        widget.setFocus(Qt::TabFocusReason);
        QTest::keyClick(&widget, Qt::Key_F4);
        if (opened.empty()) {
            EXPECT_EQ(screens.Open().size(), before) << box;
        } else {
            EXPECT_TRUE(screens.IsShown(opened)) << box;
            screens.Unload(opened);
        }
    }
}

// ---- what is at hand

TEST_F(Hands, PutLettersOrDaysBelowABoxThatHasThemAndNothingElse)
{
    Screen& page = Open("Form3");
    const auto popupOf = [&](std::string_view box, Qt::Key key, Qt::KeyboardModifiers held) {
        QWidget& widget = WidgetOf(page, box);
        widget.setFocus(Qt::TabFocusReason);
        QTest::keyClick(&widget, key, held);
        QWidget* popup = QApplication::activePopupWidget();
        const QString name = popup == nullptr ? QString() : popup->objectName();
        if (popup != nullptr)
            popup->close();
        running.host.WindowOf(page)->window()->activateWindow();
        QCoreApplication::processEvents();
        return name;
    };
    EXPECT_EQ(popupOf("FFuel1", Qt::Key_F4, Qt::NoModifier), "Letters");
    EXPECT_EQ(popupOf("FRegDate1", Qt::Key_Down, Qt::AltModifier), "Days");
    EXPECT_EQ(popupOf("FListPrice1", Qt::Key_Down, Qt::AltModifier), "");
    EXPECT_EQ(popupOf("FRegDate1", Qt::Key_Down, Qt::NoModifier), "");
    ASSERT_NE(page.InUse(), nullptr);
    EXPECT_EQ(page.InUse()->Name(), "FRegDate1") << "the box in use stays so below a popup";
    page.box("FRegDate1").SetReadOnly(true);
    EXPECT_EQ(popupOf("FRegDate1", Qt::Key_F4, Qt::NoModifier), "") << "what cannot be typed in has nothing at hand";
}

TEST_F(Hands, SayWhatABoxIsAtShiftF1)
{
    Screen& page = Open("Form3");
    QWidget& widget = WidgetOf(page, "FListPrice1");
    widget.setFocus(Qt::TabFocusReason);
    QTest::keyClick(&widget, Qt::Key_F1, Qt::ShiftModifier);
    const auto windows = QApplication::topLevelWidgets();
    EXPECT_TRUE(std::ranges::any_of(
        windows, [](QWidget* window) { return window->isVisible() && window->inherits("QWhatsThat"); }));
    EXPECT_TRUE(widget.whatsThis().contains("The published price when it was new"));
    EXPECT_EQ(page.InUse(), &page.box("FListPrice1"));
    QWhatsThis::hideText();
}

TEST_P(HandsOnEveryScreen, KnowsOfEveryBoxWhatItIs)
{
    for (const auto& box : screen->Boxes()) {
        const bool isAsked =
            box->Kind() == BoxKind::Text || box->Kind() == BoxKind::Tick || box->Kind() == BoxKind::Option;
        if (const QWidget* widget = WidgetOf(*box); isAsked && widget != nullptr) {
            EXPECT_FALSE(widget->whatsThis().isEmpty()) << box->FullName();
        }
    }
}

TEST_F(Hands, LeaveTheKeysOfTheMenusToThemButThoseThatWorkOnAText)
{
    Screen& page = Open("Form3");
    auto& edit = WidgetOf<QLineEdit>(page, "ADescriptionAsset");
    page.box("ADescriptionAsset").SetText("Desk");
    edit.selectAll();
    const auto takes = [&](Qt::Key key) {
        QKeyEvent asked(QEvent::ShortcutOverride, key, Qt::ControlModifier);
        asked.ignore();
        QCoreApplication::sendEvent(&edit, &asked);
        return asked.isAccepted();
    };
    // The toolkit moves the caret with these, and with others on other desktops.
    for (const Qt::Key key : {Qt::Key_Right, Qt::Key_End, Qt::Key_E, Qt::Key_B, Qt::Key_F, Qt::Key_H, Qt::Key_Z})
        EXPECT_FALSE(takes(key)) << key;
    for (const Qt::Key key : {Qt::Key_A, Qt::Key_C, Qt::Key_V, Qt::Key_X})
        EXPECT_TRUE(takes(key)) << key;
}

// ---- letters

/// The letter with Alt that an own shortcut or a marked caption gives.
QString LetterOf(const QAbstractButton& button)
{
    return button.shortcut().toString(QKeySequence::PortableText);
}

TEST_P(HandsOnEveryScreen, HasALetterOfItsOwnForEveryButtonAndOption)
{
    std::map<QString, std::string> taken;
    if (screen->Mode() == ShowMode::Child || IsAtFoot(screen->Mode())) {
        for (const QAction* menu : running.host.Main()->menuBar()->actions())
            taken[QKeySequence::mnemonic(menu->text()).toString(QKeySequence::PortableText)] =
                menu->text().toStdString();
        for (const auto& box : running.host.Main()->Shown().Boxes())
            if (const auto* tool = qobject_cast<QAbstractButton*>(running.host.Main()->WidgetOf(*box));
                tool != nullptr && !tool->shortcut().isEmpty()) {
                EXPECT_TRUE(taken.emplace(LetterOf(*tool), box->FullName()).second) << box->FullName();
            }
    }
    // What stands at the foot of the main window shares its letters with the page above it, too.
    if (IsAtFoot(screen->Mode())) {
        const Screen* page = running.Show("Form3");
        for (const auto& box : page->Boxes())
            if (const auto* button = qobject_cast<const QAbstractButton*>(running.host.WidgetOf(*page, *box));
                button != nullptr && !button->shortcut().isEmpty())
                taken.emplace(LetterOf(*button), box->FullName());
    }
    for (const auto& box : screen->Boxes()) {
        const BoxKind kind = box->Kind();
        const auto* button = qobject_cast<const QAbstractButton*>(WidgetOf(*box));
        if (button == nullptr || !box->Visible() || !button->isVisible() || kind == BoxKind::Tick ||
            kind == BoxKind::Picture)
            continue;
        const QString letter = LetterOf(*button);
        EXPECT_TRUE(letter.startsWith("Alt+")) << box->FullName() << " " << box->Text() << " has no letter";
        const auto [other, own] = taken.emplace(letter, box->FullName());
        EXPECT_TRUE(own) << box->FullName() << " and " << other->second << " share " << letter.toStdString();
    }
}

/// The letter is underlined in the caption, or the tooltip says it.
void ExpectLetterSeen(const QAbstractButton& button)
{
    if (button.shortcut().isEmpty())
        return;
    const bool underlined = QKeySequence::mnemonic(button.text()) == button.shortcut();
    EXPECT_TRUE(underlined || button.toolTip().contains("(" + LetterOf(button) + ")"))
        << button.objectName().toStdString() << " \"" << button.text().toStdString() << "\", "
        << button.toolTip().toStdString();
}

TEST_P(HandsOnEveryScreen, ShowsTheLetterOfEveryButtonAndOption)
{
    for (const auto& box : screen->Boxes())
        if (const auto* button = qobject_cast<const QAbstractButton*>(WidgetOf(*box)))
            ExpectLetterSeen(*button);
}

TEST_F(Hands, SeeTheLettersOfTheToolbar)
{
    int seen = 0;
    for (const auto& box : running.host.Main()->Shown().Boxes())
        if (const auto* button = qobject_cast<const QAbstractButton*>(running.host.Main()->WidgetOf(*box))) {
            ExpectLetterSeen(*button);
            seen += button->shortcut().isEmpty() ? 0 : 1;
        }
    EXPECT_EQ(seen, 3) << "Close File, Backup and Exit";
}

// ---- the focus when something closes

/// The tool button that has the focus, if one has.
std::string FocusedTool()
{
    const auto* tool = qobject_cast<QToolButton*>(QApplication::focusWidget());
    return tool == nullptr ? "" : tool->accessibleName().toStdString();
}

TEST_P(HandsOnEveryScreen, LeavesTheFocusToNoButtonOfTheToolbar)
{
    Screens& screens = running.program.TheSession().screens;
    for (const bool withPage : {false, true}) {
        for (Screen* other : screens.Open())
            if (other->Mode() != ShowMode::Main)
                screens.Unload(other->Name());
        if (withPage)
            running.Show("Form3");
        running.Show(GetParam());
        QCoreApplication::processEvents();
        screens.Unload(GetParam());
        running.host.Main()->activateWindow();
        QCoreApplication::processEvents();
        EXPECT_EQ(FocusedTool(), "");
        if (withPage && GetParam() != "Form3" && screens.IsShown("Form3")) {
            EXPECT_TRUE(running.host.WindowOf(*screens.Find("Form3"))->isAncestorOf(QApplication::focusWidget()));
        }
    }
}

TEST_F(Hands, MakeNoEmployeeBySpaceAfterCloseFile)
{
    Screens& screens = running.program.TheSession().screens;
    QCoreApplication::processEvents();
    EXPECT_EQ(FocusedTool(), "") << "at the start";
    for (const bool byKey : {false, true}) {
        ASSERT_TRUE(OpenEmployee(running.program.TheSession(), "Acme Ltd", "Jane Smith"));
        running.host.Main()->activateWindow();
        QCoreApplication::processEvents();
        const Box& close = running.host.Main()->Shown().box("cmdFile", 4);
        QWidget& button = *running.host.WidgetOf(running.host.Main()->Shown(), close);
        if (byKey) {
            button.setFocus(Qt::TabFocusReason);
            QTest::keyClick(&button, Qt::Key_Space);
        } else {
            Click(button);
        }
        QCoreApplication::processEvents();
        ASSERT_FALSE(screens.IsShown("Form3"));
        EXPECT_EQ(FocusedTool(), "");
        const std::size_t open = screens.Open().size();
        if (QWidget* focused = QApplication::focusWidget())
            QTest::keyClick(focused, Qt::Key_Space);
        EXPECT_EQ(screens.Open().size(), open) << "Space does nothing";
    }
}

TEST_F(Hands, FindALetterOfItsOwnForEveryMenuAndEntry)
{
    std::map<QString, QString> titles;
    for (const QAction* title : running.host.Main()->menuBar()->actions()) {
        const auto mark = [](const QAction* action) {
            return QKeySequence::mnemonic(action->text()).toString(QKeySequence::PortableText);
        };
        EXPECT_FALSE(mark(title).isEmpty()) << title->text().toStdString();
        EXPECT_TRUE(titles.emplace(mark(title), title->text()).second) << title->text().toStdString();
        std::map<QString, QString> entries;
        for (const QAction* entry : title->menu()->actions()) {
            if (entry->isSeparator() || !entry->isVisible())
                continue;
            EXPECT_FALSE(mark(entry).isEmpty()) << entry->text().toStdString();
            EXPECT_TRUE(entries.emplace(mark(entry), entry->text()).second) << entry->text().toStdString();
        }
    }
    EXPECT_EQ(titles.at("Alt+F"), "&File");
}

TEST_F(Hands, PressAButtonByTheLetterThatItsCaptionDoesNotMark)
{
    Screen& page = Open("Form3");
    QTest::keyClick(running.host.Main(), Qt::Key_2, Qt::AltModifier);
    QTest::qWait(200);
    EXPECT_TRUE(running.program.TheSession().screens.IsShown("Side2Form1"));
    EXPECT_EQ(page.box("Page2").Text(), "Page 2");
}

// ---- lists

TEST_P(HandsOnEveryScreen, ShowsNothingAsChosenInAListUntilItIs)
{
    for (const auto& box : screen->Boxes()) {
        auto* list = qobject_cast<QListWidget*>(WidgetOf(*box));
        if (list == nullptr || !InReach(*box))
            continue;
        if (list->count() < 2)
            box->SetEntries({"", "", ""});
        ASSERT_LT(box->Selected(), 0) << box->FullName();
        list->clearFocus();
        list->setFocus(Qt::OtherFocusReason);
        QCoreApplication::processEvents();
        for (int number = 0; number < 2; ++number)
            list->item(number)->setText({});
        const QImage blank = list->viewport()->grab().toImage();
        const QRect first = list->visualItemRect(list->item(0)).adjusted(2, 2, -2, -2);
        const QRect second = list->visualItemRect(list->item(1)).adjusted(2, 2, -2, -2);
        EXPECT_EQ(blank.copy(first), blank.copy(second)) << box->FullName() << ": its first row is shaded";
    }
}

struct UnchosenCase {
    std::string_view screen, button, list;
    EmployerListPurpose mode = EmployerListPurpose::Open;
};

class Unchosen : public Hands, public ::testing::WithParamInterface<UnchosenCase> {};

TEST_P(Unchosen, ListHasTheFocusAfterTheMessageAndArrowsAndEnterWorkThere)
{
    const auto& [name, button, listBox, mode] = GetParam();
    running.program.TheSession().EmployerListMode = mode;
    Screen& screen = Open(name);
    auto& list = WidgetOf<QListWidget>(screen, listBox);
    Click(WidgetOf(screen, button));
    ASSERT_EQ(running.door.messages.size(), 1u);
    EXPECT_EQ(QApplication::focusWidget(), &list);
    QTest::keyClick(&list, Qt::Key_Down);
    EXPECT_EQ(screen.box(listBox).Selected(), 0);
}

INSTANTIATE_TEST_SUITE_P(
    Lists, Unchosen,
    ::testing::Values(UnchosenCase{"EmployerList", "EmpOpen", "EmployerList"},
                      UnchosenCase{"EmployerList", "EmpSelect", "EmployerList"},
                      UnchosenCase{"EmployerList", "EmpSelect2", "EmployerList", EmployerListPurpose::RenameEmployee},
                      UnchosenCase{"EmployerList", "EmpOpen2", "EmployerList", EmployerListPurpose::NewEmployee},
                      UnchosenCase{"EmployerList", "EmpDelete", "EmployerList", EmployerListPurpose::DeleteEmployer},
                      UnchosenCase{"EmployeeList", "EmployeeOpen", "EmployeeList"},
                      UnchosenCase{"EmployeeList", "EmpeDelete", "EmployeeList", EmployerListPurpose::DeleteEmployee},
                      UnchosenCase{"RenameEmp", "Rename", "RenameE"},
                      UnchosenCase{"RenameEmp", "Rename2", "RenameEmployee", EmployerListPurpose::RenameEmployee},
                      UnchosenCase{"PrePrint", "Print", "EmpList"},
                      UnchosenCase{"TransferList", "Transfer", "TransferListbox"}),
    [](const auto& parameter) { return std::string(parameter.param.button) + std::string(parameter.param.screen); });

TEST_P(HandsOnEveryScreen, KeepsAListAsLargeAsItsWindowWasMade)
{
    const Layout& layout = LayoutOf(GetParam());
    if (layout.growing.empty() || screen->Mode() == ShowMode::Panel) // which the dock makes as large as it likes
        return;
    Screens& screens = running.program.TheSession().screens;
    QWidget* window = running.host.WindowOf(*screen);
    const QSize more(80, 100);
    const QSize larger = QSize(layout.width, layout.height) + more;
    window->resize(larger - more);
    QCoreApplication::processEvents();
    const QSize list = WidgetOf(screen->box(layout.growing))->size();
    window->resize(larger);
    QCoreApplication::processEvents();
    EXPECT_EQ(WidgetOf(screen->box(layout.growing))->size(), list + more);
    const QRect room = window->rect();
    for (const auto& box : screen->Boxes())
        if (const QWidget* widget = WidgetOf(*box); box->Visible() && widget != nullptr) {
            EXPECT_TRUE(room.contains(QRect(widget->mapTo(window, QPoint(0, 0)), widget->size()))) << box->FullName();
        }
    screens.Unload(GetParam());
    screen = running.Show(GetParam());
    ASSERT_NE(screen, nullptr);
    EXPECT_EQ(running.host.WindowOf(*screen)->size(), larger);
    EXPECT_EQ(WidgetOf(screen->box(layout.growing))->size(), list + more);
}

/// Controls of a screen that lie on one another, by their names.
std::set<std::pair<std::string, std::string>> Overlaps(const RunningProgram& running, const Screen& screen)
{
    std::set<std::pair<std::string, std::string>> found;
    const QWidget* window = running.host.WindowOf(screen);
    const auto placeOf = [&](const Box& box) {
        const QWidget* widget = running.host.WidgetOf(screen, box);
        return widget == nullptr ? QRect() : QRect(widget->mapTo(window, QPoint(0, 0)), widget->size());
    };
    for (const auto& one : screen.Boxes())
        for (const auto& other : screen.Boxes())
            if (one != other && placeOf(*one).intersects(placeOf(*other)))
                found.emplace(one->FullName(), other->FullName());
    return found;
}

TEST_P(HandsOnEveryScreen, PutsNothingOnSomethingElseInAWindowOfAnotherSize)
{
    const Layout& layout = LayoutOf(GetParam());
    if (layout.growing.empty() || screen->Mode() == ShowMode::Panel) // which the dock makes as large as it likes
        return;
    QWidget* window = running.host.WindowOf(*screen);
    const QSize drawn(layout.width, layout.height);
    window->resize(drawn);
    QCoreApplication::processEvents();
    const auto asDrawn = Overlaps(running, *screen);
    for (const QSize& size : {drawn + QSize(90, 120), drawn - QSize(60, 60), drawn / 2}) {
        window->resize(size);
        QCoreApplication::processEvents();
        EXPECT_EQ(Overlaps(running, *screen), asDrawn) << size.width() << " x " << size.height();
    }
}

} // namespace
} // namespace quillmere
