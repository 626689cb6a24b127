// Every page of a full record as a picture, painted by the preview and drawn from the PDF file by another program: they
// differ by no more than the smoothing of edges.
#include "desktop/PageReplay.h"
#include "printing/jobs/PrintJobs.h"
#include "support/PrintDesk.h"

#include <QImage>
#include <QPainter>
#include <QProcess>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <fmt/format.h>
#include <fstream>
#include <vector>

namespace quillmere {
namespace {

constexpr int DotsPerInch = 144;
constexpr double DotsPerPoint = DotsPerInch / 72.0;

/// An edge may lie in the next pixel, and be smoothed by this much. The preview draws lines on whole pixels and none
/// thinner than one, where the file's are a part of one.
constexpr int Smoothing = 110;

constexpr std::string_view Employer = "Marlow & Sons Ltd";
constexpr std::string_view Employee = "Jane Smith";

QImage Previewed(const std::shared_ptr<const Document>& document, int page, double shift = 0)
{
    ReplayFonts fonts;
    QImage image(static_cast<int>(std::ceil(PageReplay::Width * DotsPerPoint)),
                 static_cast<int>(std::ceil(PageReplay::Height * DotsPerPoint)), QImage::Format_Grayscale8);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.translate(shift, 0);
    painter.scale(DotsPerPoint, DotsPerPoint);
    PageReplay(document, page, fonts).Paint(painter, QRectF(0, 0, PageReplay::Width, PageReplay::Height));
    return image;
}

/// A picture as rows of levels.
struct Levels {
    explicit Levels(const QImage& image) : width(image.width()), height(image.height())
    {
        for (int y = 0; y < height; ++y)
            all.insert(all.end(), image.constScanLine(y), image.constScanLine(y) + width);
    }
    std::size_t At(int x, int y) const
    {
        return static_cast<std::size_t>(y) * static_cast<std::size_t>(width) + static_cast<std::size_t>(x);
    }

    int width, height;
    std::vector<uchar> all;
};

/// Each level and its neighbours of one direction, by the darkest or the lightest of them.
template<typename Pick>
void Spread(std::vector<uchar>& levels, std::size_t step, Pick pick)
{
    const std::vector<uchar> before = levels;
    for (std::size_t at = step; at + step < levels.size(); ++at)
        levels[at] = pick(pick(before[at - step], before[at]), before[at + step]);
}

/// Marks the pixels of `one` that nothing around them in the other picture accounts for.
void MarkUnaccounted(const Levels& one, const Levels& other, std::vector<bool>& marks)
{
    std::vector<uchar> darkest = other.all;
    std::vector<uchar> lightest = other.all;
    for (const std::size_t step : {std::size_t{1}, static_cast<std::size_t>(other.width)}) {
        Spread(darkest, step, [](uchar a, uchar b) { return std::min(a, b); });
        Spread(lightest, step, [](uchar a, uchar b) { return std::max(a, b); });
    }
    for (std::size_t at = 0; at < one.all.size(); ++at)
        if (one.all[at] < darkest[at] - Smoothing || one.all[at] > lightest[at] + Smoothing)
            marks[at] = true;
}

/// Places at which two neighbours differ. A pixel by itself is a dot or the corner of a triangle, which one program
/// smooths away.
std::string Differences(const QImage& one, const QImage& other)
{
    EXPECT_EQ(one.size(), other.size());
    const Levels levels(one);
    const Levels otherLevels(other);
    std::vector<bool> marks(levels.all.size());
    MarkUnaccounted(levels, otherLevels, marks);
    MarkUnaccounted(otherLevels, levels, marks);
    std::string found;
    for (int y = 0; y + 1 < levels.height; ++y)
        for (int x = 0; x + 1 < levels.width; ++x)
            if (marks[levels.At(x, y)] && (marks[levels.At(x + 1, y)] || marks[levels.At(x, y + 1)]))
                found += fmt::format("{},{} ", x, y);
    return found;
}

class PreviewAgrees : public ::testing::Test {
protected:
    PreviewAgrees()
    {
        desk.Add(Employer, "Jane", "Smith");
        desk.FillAll(Employer, Employee);
        desk.FillDeclaration(Employer);
    }
    std::shared_ptr<const Document> Print(PrintedDocument document)
    {
        PrintEmployeeJob(desk.session, desk.printing, Employer, Employee, document);
        desk.session.screens.Unload("frmVSPrint");
        return desk.TakeLast();
    }
    /// The document's pages out of its PDF file.
    std::vector<QImage> AsPdfFile(const Document& document)
    {
        const std::filesystem::path pdf = desk.folder / "document.pdf";
        std::ofstream(pdf, std::ios::binary) << PdfWriter().Write(document);
        const QString pictures = QString::fromStdString((desk.folder / "page").string());
        QProcess::execute("pdftoppm", {"-q", "-gray", "-r", QString::number(DotsPerInch),
                                       QString::fromStdString(pdf.string()), pictures});
        std::vector<QImage> pages;
        for (int page = 1; page <= document.PageCount(); ++page) {
            const int digits = document.PageCount() < 10 ? 1 : 2;
            pages.push_back(QImage(QStringLiteral("%1-%2.pgm").arg(pictures).arg(page, digits, 10, QLatin1Char('0')))
                                .convertToFormat(QImage::Format_Grayscale8));
        }
        return pages;
    }

    test::ScriptedDoor door;
    test::PrintDesk desk{door};
};

TEST_F(PreviewAgrees, WithThePdfFileOnEveryPageOfAFullRecord)
{
    for (const PrintedDocument kind : {PrintedDocument::Employee, PrintedDocument::Declaration}) {
        const auto document = Print(kind);
        const std::vector<QImage> pages = AsPdfFile(*document);
        for (int page = 1; page <= document->PageCount(); ++page) {
            const QImage& drawn = pages[static_cast<std::size_t>(page - 1)];
            ASSERT_FALSE(drawn.isNull()) << page;
            EXPECT_EQ(Differences(Previewed(document, page), drawn), "") << document->name << ", page " << page;
        }
    }
}

TEST_F(PreviewAgrees, AndADifferenceOfAThirdOfAMillimetreIsSeen)
{
    const auto document = Print(PrintedDocument::Employee);
    constexpr double Shift = 0.33 / 25.4 * DotsPerInch;
    EXPECT_GT(Differences(Previewed(document, 1, Shift), AsPdfFile(*document).front()).size(), 1000U);
}

} // namespace
} // namespace quillmere
