// What the preview shows is what the PDF file shows: every character at the same place.
#include "desktop/PageReplay.h"

#include "frame/Text.h"
#include "printing/forms/P11DBPages.h"
#include "printing/forms/P11DPages.h"
#include "support/PrintRoom.h"

#include <QImage>
#include <QPainter>
#include <QProcess>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <cmath>
#include <fstream>
#include <memory>

namespace quillmere {
namespace {

constexpr int DotsPerInch = 288;
constexpr double DotsPerPoint = DotsPerInch / 72.0;

/// The texts of a page alone, in black, so that nothing lies on or under them.
std::shared_ptr<const Document> TextsOf(const Document& document)
{
    auto texts = std::make_shared<Document>();
    texts->AddPage();
    for (const Operation& operation : document.Page(1)) {
        if (operation.kind != OperationKind::Text)
            continue;
        TextStyle style = document.TextStyleOf(operation);
        style.colour = Black;
        texts->AddText(style, operation.alignment, operation.x1, operation.y1, document.TextOf(operation));
    }
    return texts;
}

QImage Previewed(const std::shared_ptr<const Document>& document)
{
    ReplayFonts fonts;
    QImage image(static_cast<int>(std::ceil(PageReplay::Width * DotsPerPoint)),
                 static_cast<int>(std::ceil(PageReplay::Height * DotsPerPoint)), QImage::Format_Grayscale8);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.scale(DotsPerPoint, DotsPerPoint);
    PageReplay(document, 1, fonts).Paint(painter, QRectF(0, 0, PageReplay::Width, PageReplay::Height));
    return image;
}

QImage AsPdfFile(const Document& document)
{
    const QTemporaryDir folder;
    const QString pdf = folder.filePath("page.pdf");
    const QString picture = folder.filePath("page.png");
    const std::string bytes = PdfWriter().Write(document);
    std::ofstream(pdf.toStdString(), std::ios::binary) << bytes;
    QProcess::execute("mutool",
                      {"draw", "-q", "-c", "gray", "-r", QString::number(DotsPerInch), "-o", picture, pdf, "1"});
    return QImage(picture).convertToFormat(QImage::Format_Grayscale8);
}

/// How much ink lies in a part of a picture, and where its middle is.
struct Ink {
    double amount = 0, x = 0, y = 0;
};

Ink InkIn(const QImage& image, const QRect& part)
{
    Ink ink;
    const QRect within = part.intersected(image.rect());
    for (int y = within.top(); y <= within.bottom(); ++y) {
        const uchar* const line = image.constScanLine(y);
        for (int x = within.left(); x <= within.right(); ++x) {
            const double dark = 255 - line[x];
            ink.amount += dark;
            ink.x += dark * x;
            ink.y += dark * y;
        }
    }
    if (ink.amount > 0) {
        ink.x /= ink.amount;
        ink.y /= ink.amount;
    }
    return ink;
}

/// The pixels over which a character of a text has its place, with a little room for slanted ones.
QRect PlaceOf(const TextStyle& style, const Operation& text, std::string_view before, std::string_view character)
{
    const double left = (text.x1 + TextWidth(style.face, style.size, before)) / TwipsPerPoint * DotsPerPoint;
    const double width = TextWidth(style.face, style.size, character) / TwipsPerPoint * DotsPerPoint;
    const double top = text.y1 / TwipsPerPoint * DotsPerPoint;
    const double height = TextHeight(style.face, style.size) / TwipsPerPoint * DotsPerPoint;
    return QRectF(left, top, width, height).toAlignedRect().adjusted(-1, 0, 1, 0);
}

struct PageCase {
    const char* name;
    void (*print)(PageLayer&, const FieldReader&);
};

void PrintDeclaration(PageLayer& page, const FieldReader& read)
{
    PrintP11DBDeclaration(page, DeclarationVariant::Record, read);
}
void PrintNotes(PageLayer& page, const FieldReader& read)
{
    PrintP11DBNotes(page, DeclarationVariant::Record, read);
}
/// Texts that begin with blanks, in every way in which they can be placed, and one that has nothing else.
void PrintBlanks(PageLayer& page, const FieldReader&)
{
    page.vsFontName("Arial");
    for (const double size : {7.5, 8.0, 10.0, 60.0}) {
        const double y = size * 4;
        page.vsFont(size, size == 10.0, size < 10.0);
        page.vsTextLeft(5, y, "  Left");
        page.vsTextRun("  Run");
        page.vsTextRun("   ");
        page.vsTextRun("After");
        page.vsTextRight(200, y, "  12.50");
    }
}

class PreviewAndPdf : public ::testing::TestWithParam<PageCase> {};

TEST_P(PreviewAndPdf, HaveEveryCharacterAtTheSamePlace)
{
    test::PrintRoom room;
    room.settings = SetDefaultConfiguration({.programFolder = "/nowhere", .screenHeight = 768, .screenWidth = 1366});
    ASSERT_EQ(room.job.OpenPrintJob("Document"), Opening::Open);
    GetParam().print(room.page, [](std::string_view field) { return std::string(field.substr(0, 9)); });
    const auto texts = TextsOf(room.Ended());
    const QImage preview = Previewed(texts);
    const QImage file = AsPdfFile(*texts);
    ASSERT_FALSE(file.isNull()) << "mutool is needed";
    for (const Operation& text : texts->Page(1)) {
        const std::u32string characters = CodePoints(texts->TextOf(text));
        for (std::size_t at = 0; at < characters.size(); ++at) {
            if (characters[at] == U' ') // Its place holds no more than what slanted neighbours reach into it.
                continue;
            const QRect place =
                PlaceOf(texts->TextStyleOf(text), text, Utf8(std::u32string_view(characters).substr(0, at)),
                        Utf8(std::u32string_view(characters).substr(at, 1)));
            const Ink shown = InkIn(preview, place);
            const Ink filed = InkIn(file, place);
            SCOPED_TRACE(std::string(texts->TextOf(text)) + ", character " + std::to_string(at + 1));
            EXPECT_NEAR(shown.amount, filed.amount, 0.3 * std::max(shown.amount, filed.amount) + 4 * 255);
            // A pixel is 0.09 mm.
            EXPECT_NEAR(shown.x, filed.x, 1);
            EXPECT_NEAR(shown.y, filed.y, 1);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Every, PreviewAndPdf,
                         ::testing::Values(PageCase{"P11D1", PrintP11D1}, PageCase{"P11D2", PrintP11D2},
                                           PageCase{"Declaration", PrintDeclaration}, PageCase{"Notes", PrintNotes},
                                           PageCase{"Blanks", PrintBlanks}),
                         [](const auto& one) { return std::string(one.param.name); });

} // namespace
} // namespace quillmere
