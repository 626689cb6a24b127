// The preview as the toolkit shows it: what is painted where, and what keys, wheel and mouse do.
#include "RunningProgram.h"
#include "desktop/Look.h"
#include "desktop/PrinterSetup.h"
#include "printing/jobs/PrintJobs.h"
#include "printing/jobs/frmVSPrint.h"

#include <QAbstractScrollArea>
#include <QApplication>
#include <QImage>
#include <QPointer>
#include <QProgressBar>
#include <QPushButton>
#include <QScrollBar>
#include <QStatusBar>
#include <QTest>
#include <QWheelEvent>
#include <gtest/gtest.h>

#include <cmath>

namespace quillmere {
namespace {

using test::RunningProgram;

constexpr double SheetMillimetresAcross = 210;
constexpr double SheetMillimetresDown = 297;
/// What the page layer adds above every page, mm.
constexpr double TopMargin = 2;

/// A place on a sheet, mm.
struct Spot {
    double x, y;
};
constexpr Spot InTheBox{75, 75 + TopMargin};
constexpr Spot LeftOfTheBox{40, 75 + TopMargin};
constexpr Spot InTheMargin{4, 4};
/// In the mark that a page has and no other.
Spot MarkOf(int page)
{
    return {15.0 + 30 * page, 130 + TopMargin};
}

class PreviewWindowTest : public ::testing::Test {
protected:
    /// Draws so many pages, each with a black box from 50 to 100 mm both ways and a mark of its own, and opens the
    /// preview on them in a window of 1000 by 700 pixels.
    void Open(int pages)
    {
        Session& session = running.program.TheSession();
        session.settings.vsPreviewMaximised = false;
        session.settings.vsPreviewTop = session.settings.vsPreviewLeft = 20;
        session.settings.vsPreviewWidth = 1000;
        session.settings.vsPreviewHeight = 700;
        PrintSystem& printing = running.program.Printing();
        PageLayer& layer = printing.page;
        ASSERT_EQ(printing.document.OpenPrintJob("Acme Ltd - Jane Smith"), Opening::Open);
        for (int page = 1; page <= pages; ++page) {
            layer.NextPrintPage();
            layer.vsFillBox(layer.ColBlack, layer.ColBlack, 0.2, 50, 50, 100, 100);
            const double mark = MarkOf(page).x;
            layer.vsFillBox(layer.ColBlack, layer.ColBlack, 0.2, mark - 8, 122, mark + 8, 138);
        }
        printing.document.vsEndDoc();
        preview = static_cast<frmVSPrint*>(session.screens.Show("frmVSPrint"));
        ASSERT_NE(preview, nullptr);
        window = running.host.WindowOf(*preview);
        surface = qobject_cast<QAbstractScrollArea*>(Widget("vp"));
        ASSERT_NE(surface, nullptr);
        QCoreApplication::processEvents();
    }

    QWidget* Widget(std::string_view box) const { return running.host.WidgetOf(*preview, preview->box(box)); }
    std::string PageShown() const { return preview->box("lblPage").Text(); }
    void Choose(ZoomMode mode)
    {
        preview->Choose(preview->box("cmbZoomMode"), static_cast<int>(mode));
        QCoreApplication::processEvents();
    }
    void ChoosePercent(std::string_view percent)
    {
        Choose(ZoomMode::Percentage);
        const auto& entries = preview->box("cmbPercent").Entries();
        const auto found = std::ranges::find(entries, percent);
        ASSERT_NE(found, entries.end());
        preview->Choose(preview->box("cmbPercent"), static_cast<int>(found - entries.begin()));
        QCoreApplication::processEvents();
    }

    /// Where a spot of a page lies on the surface, pixels at scale 1.
    QPointF PlaceOf(int page, Spot spot) const
    {
        const PreviewPicture whole = PlaceSheets(preview->View());
        for (const PreviewSheet& sheet : whole.sheets)
            if (sheet.page == page)
                return {sheet.x + Shift(*surface->horizontalScrollBar(), whole.width, surface->viewport()->width()) +
                            spot.x / SheetMillimetresAcross * sheet.width,
                        sheet.y + Shift(*surface->verticalScrollBar(), whole.height, surface->viewport()->height()) +
                            spot.y / SheetMillimetresDown * sheet.height};
        ADD_FAILURE() << "page " << page << " is not shown";
        return {};
    }
    static double Shift(const QScrollBar& bar, double extent, int room)
    {
        return bar.maximum() > 0 ? -bar.value() : std::floor(std::max(0.0, (room - extent) / 2));
    }

    /// The surface as it is painted at so many device pixels to a pixel.
    void Paint(double newRatio)
    {
        ratio = newRatio;
        QWidget& viewport = *surface->viewport();
        picture = QImage((QSizeF(viewport.size()) * ratio).toSize(), QImage::Format_RGB32);
        picture.setDevicePixelRatio(ratio);
        picture.fill(Qt::magenta);
        viewport.render(&picture);
    }
    QColor ColourAt(QPointF place) const { return picture.pixelColor((place * ratio).toPoint()); }
    QColor ColourOf(int page, Spot spot) const { return ColourAt(PlaceOf(page, spot)); }

    /// The page is painted: ink where its box and its mark are, white beside them and in the margin.
    void ExpectPainted(int page)
    {
        EXPECT_EQ(ColourOf(page, InTheBox), QColor(Qt::black)) << page;
        EXPECT_EQ(ColourOf(page, LeftOfTheBox), QColor(Qt::white)) << page;
        EXPECT_EQ(ColourOf(page, InTheMargin), QColor(Qt::white)) << page;
        for (int other = 1; other <= 5; ++other)
            EXPECT_EQ(ColourOf(page, MarkOf(other)), QColor(other == page ? Qt::black : Qt::white))
                << page << ", mark of " << other;
    }

    void Wheel(int down, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QWidget& viewport = *surface->viewport();
        const QPointF place = viewport.rect().center();
        QWheelEvent event(place, viewport.mapToGlobal(place), {}, {0, -120 * down}, Qt::NoButton, modifiers,
                          Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(&viewport, &event);
        QCoreApplication::processEvents();
    }

    RunningProgram running;
    frmVSPrint* preview = nullptr;
    QWidget* window = nullptr;
    QAbstractScrollArea* surface = nullptr;
    QImage picture;
    double ratio = 1;
};

constexpr auto Ratios = std::to_array<double>({1, 1.5});

TEST_F(PreviewWindowTest, PaintsAPageAtEveryPercentageAndOnEveryKindOfDisplay)
{
    ASSERT_NO_FATAL_FAILURE(Open(5));
    for (const std::string_view percent : {"25%", "75%", "100%"}) {
        ASSERT_NO_FATAL_FAILURE(ChoosePercent(percent));
        for (const double display : Ratios) {
            SCOPED_TRACE(std::string(percent) + " at " + std::to_string(display));
            Paint(display);
            ExpectPainted(1);
        }
    }
    // A sheet of its true size: as far from edge to edge as it is on paper.
    EXPECT_NEAR(PlaceOf(1, {SheetMillimetresAcross, 0}).x() - PlaceOf(1, {0, 0}).x(), 210 / 25.4 * 96, 0.5);
}

TEST_F(PreviewWindowTest, PaintsTheEdgesOfABoxWhereTheyAre)
{
    ASSERT_NO_FATAL_FAILURE(Open(1));
    ASSERT_NO_FATAL_FAILURE(ChoosePercent("100%"));
    for (const double display : Ratios) {
        Paint(display);
        constexpr double near = 0.5; // mm: two pixels
        for (const auto& [inside, outside] : {std::pair(Spot{50 + near, 77}, Spot{50 - near, 77}),
                                              std::pair(Spot{100 - near, 77}, Spot{100 + near, 77}),
                                              std::pair(Spot{75, 52 + near}, Spot{75, 52 - near}),
                                              std::pair(Spot{75, 102 - near}, Spot{75, 102 + near})}) {
            EXPECT_EQ(ColourOf(1, inside), QColor(Qt::black)) << inside.x << ' ' << inside.y << " at " << display;
            EXPECT_EQ(ColourOf(1, outside), QColor(Qt::white)) << outside.x << ' ' << outside.y << " at " << display;
        }
    }
}

TEST_F(PreviewWindowTest, PaintsWhatItsModeShows)
{
    ASSERT_NO_FATAL_FAILURE(Open(5));
    preview->TurnTo(2);
    for (const double display : Ratios) {
        SCOPED_TRACE(display);
        for (const ZoomMode mode : {ZoomMode::WholePage, ZoomMode::PageWidth, ZoomMode::Stretch}) {
            SCOPED_TRACE(static_cast<int>(mode));
            Choose(mode);
            if (mode == ZoomMode::PageWidth)
                surface->verticalScrollBar()->setValue(0);
            Paint(display);
            EXPECT_EQ(ColourOf(2, InTheBox), QColor(Qt::black));
            EXPECT_EQ(ColourOf(2, LeftOfTheBox), QColor(Qt::white));
            EXPECT_EQ(ColourOf(2, InTheMargin), QColor(Qt::white));
        }
        // Stretched, the sheet takes the whole surface; its shape gives way.
        const double across = PlaceOf(2, {SheetMillimetresAcross, 0}).x() - PlaceOf(2, {0, 0}).x();
        const double down = PlaceOf(2, {0, SheetMillimetresDown}).y() - PlaceOf(2, {0, 0}).y();
        EXPECT_NEAR(across, surface->viewport()->width() - 24, 1);
        EXPECT_NEAR(down, surface->viewport()->height() - 24, 1);

        Choose(ZoomMode::TwoPages);
        Paint(display);
        ExpectPainted(2);
        ExpectPainted(3);
        EXPECT_LT(PlaceOf(2, {SheetMillimetresAcross, 0}).x(), PlaceOf(3, {0, 0}).x());
        EXPECT_EQ(PlaceOf(2, {0, 0}).y(), PlaceOf(3, {0, 0}).y());
        EXPECT_EQ(ColourAt(PlaceOf(3, {0, 100}) - QPointF(3, 0)), look::TonesInUse().desk) << "between the two";
    }
}

TEST_F(PreviewWindowTest, PaintsAllThumbnailsAndAClickOnOneTurnsToIt)
{
    ASSERT_NO_FATAL_FAILURE(Open(5));
    Choose(ZoomMode::Thumbnail);
    for (const double display : Ratios) {
        SCOPED_TRACE(display);
        Paint(display);
        for (int page = 1; page <= 5; ++page)
            ExpectPainted(page);
    }
    QTest::mouseClick(surface->viewport(), Qt::LeftButton, {}, PlaceOf(4, {105, 150}).toPoint());
    EXPECT_EQ(PageShown(), "4 of 5");
    Paint(1);
    EXPECT_NE(ColourAt(PlaceOf(4, {0, 150}) - QPointF(2, 0)), look::TonesInUse().desk) << "the page shown has an edge";
    EXPECT_EQ(ColourAt(PlaceOf(1, {0, 150}) - QPointF(2, 0)), look::TonesInUse().desk);
    QTest::mouseClick(surface->viewport(), Qt::LeftButton, {}, QPoint(3, 3)); // beside them
    EXPECT_EQ(PageShown(), "4 of 5");
}

TEST_F(PreviewWindowTest, ObeysItsKeysWhereverTheFocusStands)
{
    ASSERT_NO_FATAL_FAILURE(Open(3));
    for (const char* focused : {"vp", "cmbPrint", "cmbZoomMode", "cmdPrint"}) {
        SCOPED_TRACE(focused);
        QWidget* widget = Widget(focused);
        widget->setFocus();
        const auto after = [&](Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
            QTest::keyClick(widget, key, modifiers);
            return PageShown();
        };
        EXPECT_EQ(after(Qt::Key_PageDown), "2 of 3");
        EXPECT_EQ(after(Qt::Key_End), "3 of 3");
        EXPECT_EQ(after(Qt::Key_PageUp), "2 of 3");
        EXPECT_EQ(after(Qt::Key_Home), "1 of 3");
        Choose(ZoomMode::WholePage); // of this window: between 50% and 75%
        after(Qt::Key_Plus);
        EXPECT_EQ(preview->box("cmbPercent").Text(), "75%");
        after(Qt::Key_Minus);
        EXPECT_EQ(preview->box("cmbPercent").Text(), "50%");
        Choose(ZoomMode::PageWidth);
    }
    const Screens& screens = running.program.TheSession().screens;
    QTest::keyClick(Widget("vp"), Qt::Key_P, Qt::ControlModifier);
    EXPECT_TRUE(screens.IsShown("frmVSPrintDialog"));
    QTest::keyClick(running.host.WindowOf(*screens.Find("frmVSPrintDialog")), Qt::Key_Escape);
    EXPECT_FALSE(screens.IsShown("frmVSPrintDialog"));
    QTest::keyClick(Widget("vp"), Qt::Key_Escape);
    EXPECT_FALSE(screens.IsShown("frmVSPrint"));
}

TEST_F(PreviewWindowTest, TheWheelScrollsThePageThenTurnsIt)
{
    ASSERT_NO_FATAL_FAILURE(Open(3));
    QScrollBar& bar = *surface->verticalScrollBar();
    ASSERT_GT(bar.maximum(), 0);
    Wheel(1);
    EXPECT_EQ(PageShown(), "1 of 3");
    EXPECT_GT(bar.value(), 0);
    bar.setValue(bar.maximum());
    Wheel(1);
    EXPECT_EQ(PageShown(), "2 of 3");
    EXPECT_EQ(bar.value(), 0) << "a page begins at its top";
    Wheel(-1);
    EXPECT_EQ(PageShown(), "1 of 3");
    EXPECT_EQ(bar.value(), bar.maximum()) << "going back, at its foot";
    bar.setValue(0);
    Wheel(-1);
    EXPECT_EQ(PageShown(), "1 of 3");
    EXPECT_EQ(bar.value(), 0);

    Choose(ZoomMode::WholePage);
    Wheel(1, Qt::ControlModifier); // away from the eye
    EXPECT_EQ(preview->box("cmbZoomMode").Text(), "Percentage");
    EXPECT_EQ(preview->box("cmbPercent").Text(), "50%");
    Wheel(-1, Qt::ControlModifier);
    EXPECT_EQ(preview->box("cmbPercent").Text(), "75%");
    EXPECT_EQ(PageShown(), "1 of 3");
}

TEST_F(PreviewWindowTest, StripAndSurfaceFollowTheWindow)
{
    ASSERT_NO_FATAL_FAILURE(Open(2));
    constexpr int twips60 = 4;
    for (const QSize size : {QSize(1000, 700), QSize(760, 540), QSize(420, 400)}) {
        window->resize(size);
        QCoreApplication::processEvents();
        ASSERT_EQ(window->size(), size);
        const QRect strip = Widget("picControls")->geometry();
        EXPECT_EQ(strip.left(), twips60);
        EXPECT_EQ(strip.top(), twips60);
        EXPECT_EQ(strip.width(), size.width() - 2 * twips60);
        const QRect sheet = surface->geometry();
        EXPECT_EQ(sheet.left(), twips60);
        EXPECT_EQ(sheet.width(), size.width() - 2 * twips60);
        EXPECT_GT(sheet.top(), strip.bottom());
        EXPECT_EQ(sheet.bottom() + 1, size.height() - twips60);
        for (const char* control : {"cmbPrint", "cmdFirst", "lblPage", "cmdLast", "cmbPercent", "cmdClose"})
            EXPECT_TRUE(Widget("picControls")->rect().contains(Widget(control)->geometry()))
                << control << " at " << size.width();
    }
}

TEST_F(PreviewWindowTest, ShowsAllOfItsWordsWhole)
{
    ASSERT_NO_FATAL_FAILURE(Open(2));
    preview->box("cmdInside").SetVisible(true);
    const std::array<std::pair<const char*, const char*>, 3> all{
        {{"lblEdge", "Outside what the printer on the first floor prints"},
         {"lblLook", "12 things to look at"},
         {"lblDocument", "Saved: Acme Ltd - Jane Smith - P11D 2010-11.pdf"}}};
    for (const QSize size : {QSize(1366, 700), QSize(1000, 700), QSize(420, 400)}) {
        window->resize(size);
        QCoreApplication::processEvents();
        for (const auto& [name, words] : all) {
            preview->box(name).SetText("-");
            preview->box(name).SetVisible(true);
            preview->box(name).SetText(words);
        }
        for (const auto& [name, words] : all) {
            EXPECT_GE(Widget(name)->width(), Widget(name)->sizeHint().width()) << name << " at " << size.width();
            EXPECT_TRUE(Widget("picControls")->rect().contains(Widget(name)->geometry()))
                << name << " at " << size.width();
        }
    }
}

TEST_F(PreviewWindowTest, OpensWhereItWasAndThePrintDialogInItsMiddle)
{
    ASSERT_NO_FATAL_FAILURE(Open(2));
    EXPECT_EQ(window->geometry(), QRect(20, 20, 1000, 700));
    window->setGeometry(60, 40, 800, 600);
    QCoreApplication::processEvents();
    preview->Click(preview->box("cmdPrint"));
    const Screens& screens = running.program.TheSession().screens;
    const QWidget* dialog = running.host.WindowOf(*screens.Find("frmVSPrintDialog"));
    const QPoint apart = dialog->geometry().center() - window->geometry().center();
    constexpr int frame = 4; // of the windows, at most
    EXPECT_LE(std::abs(apart.x()), frame);
    EXPECT_LE(std::abs(apart.y()), frame);
}

TEST_F(PreviewWindowTest, WhatTheToolkitSendsAfterItsEndReachesNothing)
{
    ASSERT_NO_FATAL_FAILURE(Open(2));
    const QPointer<QWidget> kept(window);
    QWidget* viewport = surface->viewport();
    running.program.TheSession().screens.Unload("frmVSPrint");
    ASSERT_FALSE(kept.isNull()) << "it goes with the next round of events";
    QResizeEvent resized(QSize(700, 500), window->size());
    QCoreApplication::sendEvent(window, &resized);
    QResizeEvent within(QSize(600, 400), viewport->size());
    QCoreApplication::sendEvent(viewport, &within);
    QTest::keyClick(window, Qt::Key_PageDown);
    QTest::mouseClick(viewport, Qt::LeftButton);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(kept.isNull());
}

TEST_F(PreviewWindowTest, ThePointerIsBusyUntilTheDocumentHasBeenPainted)
{
    Session& session = running.program.TheSession();
    session.printJob(PrintedDocument::Employee);
    ASSERT_TRUE(session.screens.IsShown("frmVSPrint"));
    EXPECT_TRUE(running.door.busy);
    EXPECT_TRUE(QTest::qWaitFor([this] { return !running.door.busy; }, 1500));
}

TEST_F(PreviewWindowTest, APreviewOutOfSightDoesNotKeepThePointerBusy)
{
    Session& session = running.program.TheSession();
    session.printJob(PrintedDocument::Employee);
    running.host.WindowOf(*session.screens.Find("frmVSPrint"))->hide();
    EXPECT_TRUE(running.door.busy);
    EXPECT_TRUE(QTest::qWaitFor([this] { return !running.door.busy; }, 5000));
}

TEST_F(PreviewWindowTest, ABatchMovesTheBarInTheStatusBar)
{
    Session& session = running.program.TheSession();
    running.door.printers = {"Office"};
    QWidget* main = running.host.WindowOf(*session.screens.Find("MDIForm1"));
    auto* bar = main->findChild<QProgressBar*>();
    ASSERT_NE(bar, nullptr);
    EXPECT_EQ(bar->parentWidget(), main->findChild<QStatusBar*>());
    EXPECT_TRUE(bar->isHidden());
    std::vector<std::string> seen;
    running.door.progressShown = [&] {
        seen.push_back(bar->isHidden() ? "gone" : std::to_string(bar->value()) + "/" + std::to_string(bar->maximum()));
    };
    BatchSelection selection;
    selection.Set(BatchTick::P11D);
    selection.Set(BatchTick::P11DB);
    PrintBatchJob(session, running.program.Printing(), "Acme Ltd", selection);
    EXPECT_EQ(seen, (std::vector<std::string>{"0/2", "1/2", "2/2", "gone"}));
}

TEST(PrinterSetupTest, OpensThePageOfTheChosenPrinter)
{
    std::vector<std::string> opened;
    PrinterSetup dialog(
        {{.name = "Office"}, {.name = "Attic"}}, [&](const std::string& printer) { opened.push_back(printer); },
        look::CaptionFont({.size = 13}), nullptr);
    EXPECT_EQ(dialog.Chosen(), "Office");
    for (QPushButton* button : dialog.findChildren<QPushButton*>())
        if (button->text() == QStringLiteral("P&roperties..."))
            button->click();
    EXPECT_EQ(opened, (std::vector<std::string>{"Office"}));
}

} // namespace
} // namespace quillmere
