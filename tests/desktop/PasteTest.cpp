// Whatever is pasted into a box with a filter, wherever in its text: no character that the filter refuses gets in.
#include "RunningProgram.h"

#include <QApplication>
#include <QClipboard>
#include <QLineEdit>
#include <gtest/gtest.h>

#include <random>

namespace quillmere {
namespace {

using test::RunningProgram;

struct PasteCase {
    std::string_view box;
    const char* characters; ///< what it takes
};

class Paste : public ::testing::TestWithParam<PasteCase> {};

QString RandomText(std::mt19937& random, const QString& letters, int most)
{
    QString text;
    const int length = static_cast<int>(random() % static_cast<unsigned>(most + 1));
    for (int place = 0; place < length; ++place)
        text += letters[static_cast<qsizetype>(random() % static_cast<unsigned>(letters.size()))];
    return text;
}

TEST_P(Paste, LetsNoRefusedCharacterIn)
{
    RunningProgram running;
    Screen* page = running.Show("Form3");
    ASSERT_NE(page, nullptr);
    Box& box = page->box(GetParam().box);
    auto* edit = qobject_cast<QLineEdit*>(running.host.WidgetOf(*page, box));
    ASSERT_NE(edit, nullptr);
    const QString accepted = GetParam().characters;
    const QString mixed = accepted + QString::fromUtf8("xq7M.-/( )é£\n\t\r\u2028") + QChar(0x7F);
    std::mt19937 random(11);
    int changed = 0;
    for (int round = 0; round < 400; ++round) {
        const QString before = RandomText(random, accepted, 6);
        box.SetText(before.toStdString());
        ASSERT_EQ(edit->text(), before);
        const int from = static_cast<int>(random() % static_cast<unsigned>(before.size() + 1));
        const int count = static_cast<int>(random() % static_cast<unsigned>(before.size() - from + 1));
        edit->setSelection(from, count);
        edit->setCursorPosition(from);
        if (count > 0)
            edit->setSelection(from, count);
        const QString pasted = RandomText(random, mixed, 8);
        QApplication::clipboard()->setText(pasted);
        edit->paste();

        const QString now = edit->text();
        ASSERT_EQ(now.toStdString(), box.Text());
        QString let;
        for (const QChar character : pasted)
            if (accepted.contains(character))
                let += character;
        for (const QChar character : now)
            ASSERT_TRUE(accepted.contains(character))
                << pasted.toStdString() << " into " << before.toStdString() << " at " << from << " over " << count
                << " gave " << now.toStdString();
        if (let == pasted) {
            ASSERT_EQ(now, before.left(from) + pasted + before.mid(from + count));
        }
        changed += now != before ? 1 : 0;
    }
    EXPECT_GT(changed, 100);
}

INSTANTIATE_TEST_SUITE_P(Boxes, Paste,
                         ::testing::Values(PasteCase{"ACostMarketBox", "0123456789."},
                                           PasteCase{"FFuel1", "BCDEGHLPbcdeghlp"},
                                           PasteCase{"NatIns", "ABCDEFGHIJKLMNOPQRSTUVWXYZ"
                                                               "abcdefghijklmnopqrstuvwxyz0123456789"},
                                           PasteCase{"SexBox", "MFmf"}),
                         [](const auto& parameter) { return std::string(parameter.param.box); });

} // namespace
} // namespace quillmere
