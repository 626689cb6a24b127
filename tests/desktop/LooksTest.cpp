// What the user sees: our own colours on any desktop, every word readable and whole, and what counts in sight on a
// small screen.
#include "EveryScreen.h"
#include "desktop/BoxWidgets.h"
#include "desktop/DesktopPlatform.h"
#include "desktop/Look.h"
#include "desktop/ScreenWindow.h"
#include "desktop/layouts/Layout.h"
#include "frame/Text.h"
#include "review/BoxHelp.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QScreen>
#include <QScrollArea>
#include <QStatusBar>
#include <QStyle>
#include <QTabWidget>
#include <QTextEdit>
#include <QTimer>
#include <QToolBar>
#include <QToolButton>
#include <QToolTip>
#include <QTreeView>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <map>
#include <set>

namespace quillmere {
namespace {

using test::EveryScreen;
using test::RunningProgram;

// ---- colours --------------------------------------------------------------------------------------

constexpr double Readable = 4.5;
constexpr double Outlined = 3.0;

double Luminance(const QColor& colour)
{
    const auto part = [](double value) {
        return value <= 0.03928 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * part(colour.redF()) + 0.7152 * part(colour.greenF()) + 0.0722 * part(colour.blueF());
}

double Contrast(const QColor& one, const QColor& other)
{
    const auto [low, high] = std::minmax({Luminance(one), Luminance(other)});
    return (high + 0.05) / (low + 0.05);
}

/// What the desktop's theme does to the program: it has colours for all, and others for kinds of widgets.
void MakeTheDesktop(look::Shade shade)
{
    const QColor ground = shade == look::Shade::Dark ? QColor(0x20, 0x20, 0x20) : QColor(0xD8, 0xD0, 0xC0);
    const QColor ink = shade == look::Shade::Dark ? Qt::white : Qt::darkBlue;
    QPalette theirs(ground, ground);
    for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        theirs.setColor(role, ink);
    QApplication::setPalette(theirs);
    for (const char* kind : {"QMenu", "QMenuBar", "QAbstractButton", "QCheckBox", "QRadioButton", "QLabel", "QGroupBox",
                             "QComboBox", "QLineEdit", "QAbstractItemView", "QMessageBox", "QTabBar"})
        QApplication::setPalette(theirs, kind);
    QToolTip::setPalette(theirs);
}

constexpr look::Shade Shades[] = {look::Shade::Light, look::Shade::Dark};

/// The looks of a test in one shade; afterwards those of all the others.
class InShade {
public:
    explicit InShade(look::Shade shade) : shade(shade)
    {
        MakeTheDesktop(shade);
        look::Dress();
    }
    InShade(const InShade&) = delete;
    InShade& operator=(const InShade&) = delete;
    ~InShade()
    {
        MakeTheDesktop(look::Shade::Light);
        look::Dress();
    }
    friend std::ostream& operator<<(std::ostream& out, const InShade& one)
    {
        return out << (one.shade == look::Shade::Dark ? "dark" : "light");
    }

private:
    look::Shade shade;
};

void ExpectOurColours(QWidget& widget, const QPalette& ours)
{
    widget.ensurePolished();
    for (int role = 0; role < QPalette::NColorRoles; ++role)
        for (const QPalette::ColorGroup group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
            const auto which = static_cast<QPalette::ColorRole>(role);
            EXPECT_EQ(widget.palette().color(group, which), ours.color(group, which))
                << widget.metaObject()->className() << ", role " << role << ", group " << group;
        }
}

template<class... Kinds>
void ExpectOurColoursIn(const QPalette& ours)
{
    (ExpectOurColours(*std::make_unique<Kinds>(), ours), ...);
}

TEST(Colours, AreOursForEveryKindOfWidgetOnAnyDesktop)
{
    for (const look::Shade shade : Shades) {
        const InShade dressed(shade);
        SCOPED_TRACE(dressed);
        EXPECT_EQ(look::ShadeInUse(), shade);
        const QPalette& ours = look::WholePalette(shade);
        ExpectOurColoursIn<QWidget, QCheckBox, QComboBox, QDialog, QDialogButtonBox, QGroupBox, QLabel, QLineEdit,
                           QListWidget, QMenu, QMenuBar, QMessageBox, QProgressBar, QPushButton, QRadioButton,
                           QScrollArea, QStatusBar, QTabBar, QTabWidget, QTextEdit, QToolBar, QToolButton, QTreeView>(
            ours);
        QFileDialog file;
        for (const QWidget* part : file.findChildren<QWidget*>())
            EXPECT_EQ(part->palette().color(QPalette::Active, QPalette::Base),
                      ours.color(QPalette::Active, QPalette::Base))
                << part->metaObject()->className();
        EXPECT_TRUE(QCoreApplication::testAttribute(Qt::AA_DontUseNativeDialogs)) << "the desktop's have its colours";
        EXPECT_EQ(QToolTip::palette().color(QPalette::ToolTipText), ours.color(QPalette::ToolTipText));
    }
}

TEST(Colours, AreAllSaidAndReadable)
{
    struct {
        QPalette::ColorRole text, ground;
    } const pairs[] = {
        {QPalette::WindowText, QPalette::Window},       {QPalette::Text, QPalette::Base},
        {QPalette::Text, QPalette::AlternateBase},      {QPalette::ButtonText, QPalette::Button},
        {QPalette::ToolTipText, QPalette::ToolTipBase}, {QPalette::HighlightedText, QPalette::Highlight},
        {QPalette::PlaceholderText, QPalette::Base},    {QPalette::Link, QPalette::Base},
        {QPalette::LinkVisited, QPalette::Base},
    };
    for (const look::Shade shade : Shades) {
        const QPalette& ours = look::WholePalette(shade);
        for (const QPalette::ColorGroup group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
            for (int role = 0; role < QPalette::NColorRoles; ++role)
                EXPECT_TRUE(ours.isBrushSet(group, static_cast<QPalette::ColorRole>(role))) << group << " " << role;
            for (const auto& [text, ground] : pairs)
                EXPECT_GE(Contrast(ours.color(group, text), ours.color(group, ground)), Readable)
                    << "text " << text << " on " << ground << ", group " << group;
        }
        const look::Tones& tones = look::TonesOf(shade);
        for (const QColor& ground : {tones.ground, tones.panel, tones.sheet, tones.workedOut, tones.computed})
            EXPECT_GE(Contrast(tones.ink, ground), Readable);
        for (const QColor& ground : {tones.panel, tones.sheet, tones.workedOut, tones.computed, tones.ground})
            EXPECT_GE(Contrast(tones.mark, ground), Outlined);
        EXPECT_GE(Contrast(tones.deskInk, tones.desk), Readable);
        EXPECT_GE(Contrast(tones.letterInk, tones.letter), Readable);
    }
}

// ---- every screen ---------------------------------------------------------------------------------

class ScreenLooks : public EveryScreen {
protected:
    /// A figure in every amount and words in every other box.
    void Fill()
    {
        for (const auto& box : screen->Boxes())
            if (box->Kind() == BoxKind::Text || (box->Kind() == BoxKind::Label && box->IsAmount()))
                box->SetText(box->IsAmount() ? "   1234.56" : "Sample");
        QCoreApplication::processEvents();
    }

    /// The window as large as its layout, without scroll bars.
    void ShowWhole()
    {
        const Layout& layout = LayoutOf(GetParam());
        window->resize(layout.width, layout.height);
        QCoreApplication::processEvents();
    }

    /// Every word stands out from its ground.
    void ExpectReadable();
    /// So does the outline of every tick and option, chosen or not.
    void ExpectMarksToStandOut();
    /// Every label has room for its words, also at this size of the windows.
    void ExpectLabelsWhole(int percent) const;

    bool IsText(const QWidget& widget) const
    {
        return qobject_cast<const QLabel*>(&widget) != nullptr ||
               qobject_cast<const QAbstractButton*>(&widget) != nullptr ||
               qobject_cast<const QLineEdit*>(&widget) != nullptr;
    }
};

/// The contrast of a part of a picture: of the ground, which most of it is, and of what stands out from it most.
double ContrastIn(const QImage& picture, const QRect& part)
{
    std::map<QRgb, int> count;
    const QRect inside = part.intersected(picture.rect());
    for (int y = inside.top(); y <= inside.bottom(); ++y)
        for (int x = inside.left(); x <= inside.right(); ++x)
            ++count[picture.pixel(x, y)];
    if (count.size() < 2)
        return 0;
    const QRgb ground = std::ranges::max_element(count, {}, [](const auto& one) { return one.second; })->first;
    double highest = 0;
    for (const auto& [colour, times] : count)
        highest = std::max(highest, Contrast(QColor(colour), QColor(ground)));
    return highest;
}

void ScreenLooks::ExpectReadable()
{
    ASSERT_NO_FATAL_FAILURE(Open());
    if (GetParam() == "frmVSPrint") // its strip is laid out by its window
        return;
    Fill();
    ShowWhole();
    const QImage picture = window->grab().toImage();
    const Layout& layout = LayoutOf(GetParam());
    for (const Layout::Drawn& drawn : layout.drawn) {
        using What = Layout::Drawn::What;
        const bool words = drawn.what == What::Text || drawn.what == What::Letter || drawn.what == What::Tag;
        if (!words || drawn.page > 0 || Trim(drawn.text).empty())
            continue;
        EXPECT_GE(ContrastIn(picture, QRect(drawn.x, drawn.y, drawn.width, drawn.height)), Readable) << drawn.text;
    }
    for (const auto& box : screen->Boxes()) {
        const QWidget* widget = WidgetOf(*box);
        if (widget == nullptr || !widget->isVisible() || !IsText(*widget) || Trim(box->Text()).empty())
            continue;
        const bool marked = box->Kind() == BoxKind::Tick || box->Kind() == BoxKind::Option;
        const QRect whole(widget->mapTo(window, QPoint(0, 0)), widget->size());
        EXPECT_GE(ContrastIn(picture, whole.adjusted(marked ? 20 : 4, 4, -4, -4)), Readable) << box->FullName();
    }
}

TEST_P(ScreenLooks, EveryWordIsReadableOnALightDesktop)
{
    const InShade dressed(look::Shade::Light);
    ExpectReadable();
}

TEST_P(ScreenLooks, EveryWordIsReadableOnADarkDesktop)
{
    const InShade dressed(look::Shade::Dark);
    ExpectReadable();
}

void ScreenLooks::ExpectMarksToStandOut()
{
    ASSERT_NO_FATAL_FAILURE(Open());
    ShowWhole();
    for (const auto& box : screen->Boxes()) {
        const auto* button = qobject_cast<const QAbstractButton*>(WidgetOf(*box));
        if (button == nullptr || !button->isVisible() || !button->isEnabled() ||
            (box->Kind() != BoxKind::Tick && box->Kind() != BoxKind::Option))
            continue;
        for (const bool set : {false, true}) {
            box->SetTicked(set);
            QCoreApplication::processEvents();
            const QImage picture = window->grab().toImage();
            const QPoint corner = button->mapTo(window, QPoint(0, 0));
            const int side = button->style()->pixelMetric(QStyle::PM_IndicatorWidth);
            const QRect mark(corner.x(), corner.y() + (button->height() - side) / 2, side, side);
            EXPECT_GE(ContrastIn(picture, mark), Outlined) << box->FullName() << (set ? ", set" : "");
            // The same line on the ground outside.
            const QColor ground = picture.pixelColor(mark.right() + 3, mark.center().y());
            double highest = 0;
            for (int x = mark.left(); x < mark.left() + 3; ++x)
                highest = std::max(highest, Contrast(picture.pixelColor(x, mark.center().y()), ground));
            EXPECT_GE(highest, Outlined) << box->FullName() << ", outside";
        }
    }
}

TEST_P(ScreenLooks, EveryTickAndOptionStandsOutOnALightDesktop)
{
    const InShade dressed(look::Shade::Light);
    ExpectMarksToStandOut();
}

TEST_P(ScreenLooks, EveryTickAndOptionStandsOutOnADarkDesktop)
{
    const InShade dressed(look::Shade::Dark);
    ExpectMarksToStandOut();
}

/// How far two colours lie apart to the eye, roughly: of 255 in the channel that differs most.
int Apart(const QColor& one, const QColor& other)
{
    return std::max({std::abs(one.red() - other.red()), std::abs(one.green() - other.green()),
                     std::abs(one.blue() - other.blue())});
}

TEST_P(ScreenLooks, TellsBoxesToFillInFromThoseThatAreWorkedOutAndThoseThatAreClosed)
{
    for (const look::Shade shade : Shades) {
        const InShade dressed(shade);
        ASSERT_NO_FATAL_FAILURE(Open());
        const look::Tones& tones = look::TonesOf(shade);
        for (const auto& box : screen->Boxes()) {
            const auto* edit = dynamic_cast<const BoxEdit*>(WidgetOf(*box));
            if (edit == nullptr || !edit->isVisible())
                continue;
            const review::BoxHelp* help = review::HelpOf(screen->Name(), box->Name());
            const bool closed = box->ReadOnly() || !box->Enabled();
            const bool result = box->IsComputed() || (help != nullptr && help->worksOut);
            const QColor ground = edit->palette().color(QPalette::Active, QPalette::Base);
            const QColor expected = closed ? tones.computed : result ? tones.workedOut : tones.sheet;
            EXPECT_EQ(ground, expected) << box->FullName() << dressed;
        }
        constexpr int ToBeSeen = 12;
        EXPECT_GE(Apart(tones.workedOut, tones.sheet), ToBeSeen);
        EXPECT_GE(Apart(tones.workedOut, tones.computed), ToBeSeen);
        EXPECT_GE(Apart(tones.sheet, tones.computed), ToBeSeen);
        running.program.TheSession().screens.Unload(GetParam());
    }
}

/// A widget's picture with a note on its control and without one differ, at every zoom, and the words stay readable.
TEST_P(ScreenLooks, MarksWhatThereIsSomethingToTellOf)
{
    for (const look::Shade shade : Shades) {
        const InShade dressed(shade);
        ASSERT_NO_FATAL_FAILURE(Open());
        auto* shown = dynamic_cast<ScreenWindow*>(window);
        if (shown == nullptr)
            return;
        Fill();
        std::string note;
        shown->SetNotes([&](const Box&) { return note; });
        for (const int percent : {80, 100, 200}) {
            running.host.Zoom(percent);
            ShowWhole();
            for (const auto& box : screen->Boxes()) {
                QWidget* widget = WidgetOf(*box);
                const bool marks = dynamic_cast<const BoxEdit*>(widget) != nullptr ||
                                   dynamic_cast<const PictureButton*>(widget) != nullptr;
                if (!marks || !widget->isVisible())
                    continue;
                note.clear();
                shown->BoxChanged(*box);
                const QImage before = widget->grab().toImage();
                const QString tip = widget->toolTip();
                note = "3 lines, total 300.00";
                shown->BoxChanged(*box);
                const QImage after = widget->grab().toImage();
                EXPECT_NE(before, after) << box->FullName();
                EXPECT_TRUE(widget->toolTip().startsWith(tip)) << box->FullName();
                EXPECT_TRUE(widget->toolTip().endsWith("3 lines, total 300.00")) << box->FullName();
                if (!Trim(box->Text()).empty() && box->Kind() == BoxKind::Text) {
                    EXPECT_GE(ContrastIn(after, after.rect().adjusted(4, 4, -4, -4)), Readable) << box->FullName();
                }
                break; // one of a screen and zoom: all are of these two kinds
            }
        }
        running.host.Zoom(100);
        running.program.TheSession().screens.Unload(GetParam());
    }
}

TEST_P(ScreenLooks, KeepsButtonsAndTotalsInSightOnASmallScreen)
{
    ASSERT_NO_FATAL_FAILURE(Open());
    Fill();
    if (screen->Mode() == ShowMode::Panel)
        window->window()->resize(1004, 540);
    else
        window->resize(QSize(LayoutOf(GetParam()).width + 16, LayoutOf(GetParam()).height).boundedTo(QSize(1004, 540)));
    QCoreApplication::processEvents();
    static const std::set<std::string_view> results{"FCashEqu3", "FCashEqu4", "FCashEqu5", "FCashEqu6",
                                                    "FFuelEqu3", "FFuelEqu4", "FFuelEqu5", "FFuelEqu6"};
    for (const auto& box : screen->Boxes()) {
        const bool total = (box->Kind() == BoxKind::Label && box->IsAmount()) ||
                           (screen->Mode() == ShowMode::Modal && results.contains(box->Name())) ||
                           (GetParam() == "GNotepad" && (box->Name() == "MBox" || box->Name() == "XBox"));
        const QWidget* widget = WidgetOf(*box);
        if ((!total && box->Kind() != BoxKind::Button) || widget == nullptr || !widget->isVisible())
            continue;
        if (const auto* tabs = window->findChild<QTabWidget*>(); tabs != nullptr && tabs->isAncestorOf(widget))
            continue;
        EXPECT_EQ(widget->visibleRegion().boundingRect(), widget->rect()) << box->FullName() << " is out of sight";
    }
}

/// A window whose list gives the room that a small screen does not have has everything else between its edges.
TEST_P(ScreenLooks, CutsNothingAtItsEdgesWhereItsListGivesTheRoom)
{
    ASSERT_NO_FATAL_FAILURE(Open());
    if (LayoutOf(GetParam()).growing.empty() || !window->isWindow())
        return;
    running.host.Zoom(200);
    window->resize(QSize(2 * LayoutOf(GetParam()).width, 2 * LayoutOf(GetParam()).height).boundedTo(QSize(1346, 708)));
    QCoreApplication::processEvents();
    for (const auto& box : screen->Boxes())
        if (const QWidget* widget = WidgetOf(*box); widget != nullptr && widget->isVisible()) {
            EXPECT_LE(widget->geometry().right(), widget->parentWidget()->width()) << box->FullName();
        }
    running.host.Zoom(100);
}

TEST_P(ScreenLooks, ShowsEveryLabelWhole)
{
    ASSERT_NO_FATAL_FAILURE(Open());
    if (Box* folder = screen->FindBox("lblFolderName"))
        folder->SetText("Clients of the northern branch, first half of the alphabet, from A to M without the agencies");
    for (const int percent : {100, 80, 125, 200}) {
        running.host.Zoom(percent);
        ExpectLabelsWhole(percent);
    }
}

void ScreenLooks::ExpectLabelsWhole(int percent) const
{
    for (const QLabel* label : window->findChildren<QLabel*>()) {
        if (!label->isVisible() || label->objectName() == "frmVSPrint.lblDocument")
            continue;
        const int wrap = label->wordWrap() ? Qt::TextWrapAnywhere : 0;
        const QRect room = label->contentsRect();
        const QRect words =
            label->fontMetrics().boundingRect(room, static_cast<int>(label->alignment()) | wrap, label->text());
        EXPECT_TRUE(words.width() <= room.width() && words.height() <= room.height())
            << label->objectName().toStdString() << ": " << label->text().toStdString() << " at " << percent << " %";
    }
}

/// Words of a control beside words that are drawn have their size.
TEST_P(ScreenLooks, HasWordsOfOneSizeInALine)
{
    ASSERT_NO_FATAL_FAILURE(Open());
    const Layout& layout = LayoutOf(GetParam());
    for (const Layout::Placed& place : layout.placed) {
        const Box& box = screen->box(place.box, place.index);
        const QWidget* widget = WidgetOf(box);
        const bool words = box.Kind() == BoxKind::Tick || box.Kind() == BoxKind::Option ||
                           (box.Kind() == BoxKind::Label && !box.IsAmount() && !screen->IsClickable(box));
        if (!words || Trim(box.Text()).empty() || place.y < layout.headerHeight)
            continue;
        for (const Layout::Drawn& drawn : layout.drawn) {
            const int middle = place.y + place.height / 2;
            if (drawn.what != Layout::Drawn::What::Text || drawn.page != place.page || drawn.look.bold ||
                drawn.y > middle || drawn.y + drawn.height < middle || drawn.look.size < 12)
                continue;
            EXPECT_EQ(widget->font().pixelSize(), drawn.look.size) << box.FullName() << " beside " << drawn.text;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Screens, ScreenLooks, ::testing::ValuesIn(ScreensWithLayout()),
                         [](const auto& parameter) { return std::string(parameter.param); });

// ---- the pages ------------------------------------------------------------------------------------

TEST(PageHead, SaysThePagesCaption)
{
    RunningProgram running;
    for (const std::string_view page : {"Form3", "Side2Form1"}) {
        Screen* screen = running.Show(page);
        ASSERT_NE(screen, nullptr);
        QWidget* window = running.host.WindowOf(*screen);
        const auto* words = window->findChild<QLabel*>(look::Text(std::string(page) + ".Caption"));
        ASSERT_NE(words, nullptr);
        EXPECT_TRUE(words->isVisible());
        EXPECT_EQ(words->text().toStdString(), screen->Caption());
        EXPECT_FALSE(screen->Caption().empty());
        screen->SetCaption("P11D Form Page1 - Jane Smith (Acme Ltd)");
        EXPECT_EQ(words->text().toStdString(), "P11D Form Page1 - Jane Smith (Acme Ltd)");
        for (const char* neighbour : {"Page2", "Label65", "lblPage"})
            if (const Box* box = screen->FindBox(neighbour)) {
                EXPECT_FALSE(running.host.WidgetOf(*screen, *box)->geometry().intersects(words->geometry()))
                    << neighbour;
            }
    }
}

// ---- windows --------------------------------------------------------------------------------------

TEST(FolderManager, OpensInTheMiddleOfTheScreen)
{
    RunningProgram running;
    MainWindow& main = *running.host.Main();
    main.setWindowState(Qt::WindowNoState);
    main.setGeometry(0, 0, 640, 400);
    constexpr int FrameOfAWindow = 8;
    const auto middleOf = [&](std::string_view name) {
        return running.host.WindowOf(*running.Show(name))->geometry().center();
    };
    const QPoint middle = QGuiApplication::primaryScreen()->geometry().center();
    EXPECT_LE((middleOf("frmFolderManager") - middle).manhattanLength(), FrameOfAWindow);
    running.program.TheSession().screens.Unload("frmFolderManager");
    EXPECT_LE((middleOf("NewFileCheck") - main.geometry().center()).manhattanLength(), FrameOfAWindow)
        << "as all the others";
}

TEST(Windows, HaveThePictureOfTheProgram)
{
    const RunningProgram running;
    EXPECT_FALSE(running.host.Main()->windowIcon().isNull());
    EXPECT_FALSE(running.host.Main()->windowIcon().pixmap(16, 16).isNull());
}

TEST(Pictures, TellTheCommandsOfTheToolbarApart)
{
    const std::vector<std::string> commands{"New File", "Open File", "Close File", "Backup database",
                                            "Print",    "Exit",      "any notepad"};
    for (std::size_t one = 0; one < commands.size(); ++one)
        for (std::size_t other = one + 1; other < commands.size(); ++other)
            EXPECT_NE(look::Picture(commands[one]).pixmap(24, 24).toImage(),
                      look::Picture(commands[other]).pixmap(24, 24).toImage())
                << commands[one] << ", " << commands[other];
}

// ---- message boxes --------------------------------------------------------------------------------

/// Looks at a message box while it is open.
template<class Look>
void ShowMessageAnd(const Message& message, Look look)
{
    DesktopHost host;
    DesktopPlatform platform(host);
    QTimer::singleShot(0, [&] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        ASSERT_NE(box, nullptr);
        look(*box);
        box->close();
    });
    platform.ShowMessage(message);
}

TEST(Pictures, AreDrawnForTheSizeAtWhichTheyAreWanted)
{
    const QIcon icon = look::Picture("Print");
    for (const int side : {20, 24, 30, 48}) {
        const QImage picture = icon.pixmap(side, side).toImage();
        ASSERT_EQ(picture.size(), QSize(side, side));
        // It fills the size: something of it stands in each of the four quarters.
        for (const QPoint corner :
             {QPoint(0, 0), QPoint(side / 2, 0), QPoint(0, side / 2), QPoint(side / 2, side / 2)}) {
            const QImage quarter = picture.copy(QRect(corner, QSize(side / 2, side / 2)));
            QImage empty(quarter.size(), quarter.format());
            empty.fill(Qt::transparent);
            EXPECT_NE(quarter, empty) << side;
        }
        EXPECT_NE(icon.pixmap(side, side, QIcon::Disabled).toImage(), picture) << side;
    }
}

TEST(MessageBoxes, HaveRoomForTheirTitleBesideThreeButtons)
{
    const std::string title = "Quillmere Program Closing - Please restart from the desktop";
    ShowMessageAnd({.title = title, .text = "Short"}, [&](QMessageBox& box) {
        constexpr int ThreeButtons = 3 * 48;
        QFont bold = QApplication::font();
        bold.setBold(true);
        EXPECT_GE(box.width(), QFontMetrics(bold).horizontalAdvance(look::Text(title)) + ThreeButtons);
    });
}

TEST(MessageBoxes, BreakNoLineThatHasBeenBroken)
{
    const QString line = QString("mmmm ").repeated(12);
    const std::string text = line.toStdString() + "\nnnnn nnnn\n\nDo you wish to proceed?";
    ShowMessageAnd({.title = "T", .text = text, .buttons = Buttons::YesNo}, [&](QMessageBox& box) {
        const auto* label = box.findChild<QLabel*>("qt_msgbox_label");
        ASSERT_NE(label, nullptr);
        EXPECT_LT(label->height(), 6 * label->fontMetrics().lineSpacing()) << "four lines";
        EXPECT_GE(label->width(), label->fontMetrics().horizontalAdvance(line));
    });
}

} // namespace
} // namespace quillmere
