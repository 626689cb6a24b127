// What a page turned in the preview costs, beside a QPicture of the same page replayed in the same run. "Turned" makes
// the page ready and paints it, "Repainted" paints it once more, as scrolling does.
#include "QtPages.h"
#include "desktop/PageReplay.h"
#include "printing/forms/P11DPages.h"
#include "printing/jobs/JobDocument.h"
#include "printing/paper/PageEngine.h"
#include "support/ScriptedDoor.h"

#include <QApplication>
#include <QFontDatabase>
#include <QImage>
#include <QPainter>
#include <QPicture>
#include <benchmark/benchmark.h>

namespace {

using namespace quillmere;

constexpr double PixelsPerPoint = 96.0 / 72.0;

/// Both sides of the form with something in every field.
std::shared_ptr<const Document> TheForm()
{
    quillmere::test::ScriptedDoor door;
    Settings settings = SetDefaultConfiguration({});
    PageEngine engine(door);
    PdfConverter converter;
    const std::filesystem::path root;
    PageLayer layer(settings);
    JobDocument job(door, settings, root, layer);
    job.vsBindEngine(engine, converter);
    const auto read = [](std::string_view) { return std::string("    250.00"); };
    if (job.OpenPrintJob("Bench") != Opening::Open)
        return nullptr;
    layer.NextPrintPage();
    PrintP11D1(layer, read);
    layer.NextPrintPage();
    PrintP11D2(layer, read);
    job.vsEndDoc();
    return engine.Ended();
}

QImage Sheet()
{
    QImage sheet(qRound(PageReplay::Width * PixelsPerPoint), qRound(PageReplay::Height * PixelsPerPoint),
                 QImage::Format_RGB32);
    sheet.fill(Qt::white);
    return sheet;
}

/// Paints a page in points, with the fonts of the desktop.
class PageInPoints : public QtShapes {
public:
    explicit PageInPoints(QPainter& painter) : QtShapes(painter, TwipsPerPoint, Qt::RoundCap) {}

    void Text(const TextStyle& style, const Operation& text, std::string_view words)
    {
        QFont font(FamilyOf(style.face) == "Arial" ? "Liberation Sans" : "Liberation Mono");
        font.setPointSizeF(style.size);
        font.setBold(IsBold(style.face));
        font.setItalic(IsItalic(style.face));
        Write(style, font, text, words);
    }
};

/// The page as the toolkit's own recording.
QPicture Recorded(const Document& document, int page)
{
    QPicture picture;
    QPainter painter(&picture);
    PageInPoints device(painter);
    Replay(document, page, device);
    return picture;
}

void PageTurned(benchmark::State& state)
{
    const auto document = TheForm();
    QImage sheet = Sheet();
    ReplayFonts fonts;
    int page = 0;
    for (auto _ : state) {
        page = page % document->PageCount() + 1;
        const PageReplay replay(document, page, fonts);
        QPainter painter(&sheet);
        painter.fillRect(sheet.rect(), Qt::white);
        painter.scale(PixelsPerPoint, PixelsPerPoint);
        replay.Paint(painter, QRectF(0, 0, PageReplay::Width, PageReplay::Height));
    }
}
BENCHMARK(PageTurned)->Unit(benchmark::kMicrosecond);

void PageRepainted(benchmark::State& state)
{
    const auto document = TheForm();
    ReplayFonts fonts;
    const PageReplay first(document, 1, fonts), second(document, 2, fonts);
    QImage sheet = Sheet();
    int page = 0;
    for (auto _ : state) {
        page = page % 2 + 1;
        QPainter painter(&sheet);
        painter.fillRect(sheet.rect(), Qt::white);
        painter.scale(PixelsPerPoint, PixelsPerPoint);
        (page == 1 ? first : second).Paint(painter, QRectF(0, 0, PageReplay::Width, PageReplay::Height));
    }
}
BENCHMARK(PageRepainted)->Unit(benchmark::kMicrosecond);

void PictureReplayed(benchmark::State& state)
{
    const auto document = TheForm();
    // The painter of a picture takes the picture's own resolution for that of the font sizes.
    const std::array<QPicture, 2> pictures{Recorded(*document, 1), Recorded(*document, 2)};
    QImage sheet = Sheet();
    std::size_t page = 0;
    for (auto _ : state) {
        page = 1 - page;
        QPainter painter(&sheet);
        painter.fillRect(sheet.rect(), Qt::white);
        painter.scale(PixelsPerPoint, PixelsPerPoint);
        painter.drawPicture(0, 0, pictures.at(page));
    }
}
BENCHMARK(PictureReplayed)->Unit(benchmark::kMicrosecond);

} // namespace

int main(int argumentCount, char** arguments)
{
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argumentCount, arguments);
    benchmark::Initialize(&argumentCount, arguments);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
}
