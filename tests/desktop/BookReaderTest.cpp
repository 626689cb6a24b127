// A text that is read: its pictures and its links.
#include "desktop/BookReader.h"

#include "support/TemporaryFolder.h"

#include <QImage>
#include <QScrollBar>
#include <QTest>
#include <QTextBlock>
#include <QTextCursor>
#include <gtest/gtest.h>

#include <optional>

namespace quillmere {
namespace {

TEST(BookReader, APictureIsNoWiderThanTheTextWhateverItsWidth)
{
    const test::TemporaryFolder folder;
    const QString file = QString::fromStdString((folder / "wide 1.png").string());
    QImage picture(1366, 100, QImage::Format_RGB32);
    picture.fill(Qt::black);
    ASSERT_TRUE(picture.save(file));
    BookReader reader([](int) {}, nullptr);
    reader.Show("<p>A</p><p><img src=\"" + QString(file).replace(' ', "%20") + "\"></p>");
    for (const int width : {600, 900, 400}) {
        reader.resize(width, 300);
        reader.show();
        QTest::qWait(0);
        EXPECT_EQ(reader.horizontalScrollBar()->maximum(), 0) << width;
        // It fills the text, as it is wider than that.
        EXPECT_GT(reader.document()->idealWidth(), width * 0.9) << width;
    }
}

TEST(BookReader, ALinkThatIsClickedTellsItsNumber)
{
    std::optional<int> followed;
    BookReader reader([&](int number) { followed = number; }, nullptr);
    reader.resize(300, 200);
    reader.Show("<p><a href=\"7\">Fuel for private journeys</a></p>");
    reader.show();
    const QRect link = reader.cursorRect(QTextCursor(reader.document()->begin()));
    const QPoint place = link.center() + QPoint(link.height(), 0);
    ASSERT_EQ(reader.anchorAt(place).toStdString(), "7");
    QTest::mouseClick(reader.viewport(), Qt::LeftButton, {}, place);
    EXPECT_EQ(followed, 7);
}

} // namespace
} // namespace quillmere
