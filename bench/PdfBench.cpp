// Pages to PDF and the measuring of texts, each beside the same texts and boxes through Qt's PDF writer and Qt's font
// metrics in the same run. Qt is the yardstick here and nothing else.

#include "Forms.h"
#include "LargestMemory.h"
#include "QtPages.h"

#include <QFontMetricsF>
#include <QGuiApplication>
#include <benchmark/benchmark.h>

#include <array>

namespace quillmere {
namespace {

using test::PrintRoom;

using bench::Forms;

QtPages& Yardstick()
{
    static QtPages pages;
    return pages;
}

constexpr std::array<const char*, 4> Texts = {
    "   1234.56", "As per attached",
    "Tax on notional payments not borne by employee within 90 days of receipt of each notional payment", "£12.50"};

void MeasureText(benchmark::State& state)
{
    double width = 0;
    for (auto _ : state)
        for (const char* text : Texts)
            benchmark::DoNotOptimize(width += TextWidth(Face::SansRegular, 8, text));
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(Texts.size()));
}
BENCHMARK(MeasureText);

void MeasureTextQFontMetricsF(benchmark::State& state)
{
    const QFontMetricsF metrics(Yardstick().FontOf({.face = Face::SansRegular, .size = 8}));
    std::vector<QString> texts;
    for (const char* text : Texts)
        texts.push_back(QString::fromUtf8(text));
    double width = 0;
    for (auto _ : state)
        for (const QString& text : texts)
            benchmark::DoNotOptimize(width += metrics.horizontalAdvance(text));
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(Texts.size()));
}
BENCHMARK(MeasureTextQFontMetricsF);

/// Drawing one page from its tables, without a file.
void RecordPage1(benchmark::State& state)
{
    PrintRoom room;
    for (auto _ : state)
        benchmark::DoNotOptimize(Forms(room, 1, 1, 1));
}
BENCHMARK(RecordPage1)->Unit(benchmark::kMicrosecond);

void Page1ToPdf(benchmark::State& state)
{
    PrintRoom room;
    std::size_t bytes = 0;
    for (auto _ : state) {
        Forms(room, 1, 1, 1);
        bytes = room.vp.Pdf().size();
    }
    state.counters["bytes"] = static_cast<double>(bytes);
}
BENCHMARK(Page1ToPdf)->Unit(benchmark::kMicrosecond);

void Page1ToPdfQPdfWriter(benchmark::State& state)
{
    PrintRoom room;
    const auto document = Forms(room, 1, 1, 1);
    qsizetype bytes = 0;
    for (auto _ : state)
        bytes = Yardstick().Write(*document).size();
    state.counters["bytes"] = static_cast<double>(bytes);
}
BENCHMARK(Page1ToPdfQPdfWriter)->Unit(benchmark::kMicrosecond);

constexpr int BatchSize = 200;

void Batch200Documents(benchmark::State& state)
{
    PrintRoom room;
    std::size_t bytes = 0;
    for (auto _ : state) {
        bytes = 0;
        for (int employee = 1; employee <= BatchSize; ++employee) {
            Forms(room, employee, 1);
            bytes += room.vp.Pdf().size();
        }
    }
    state.counters["bytes"] = static_cast<double>(bytes);
}
BENCHMARK(Batch200Documents)->Unit(benchmark::kMillisecond);

void Batch200DocumentsQPdfWriter(benchmark::State& state)
{
    PrintRoom room;
    std::vector<std::shared_ptr<const Document>> documents;
    for (int employee = 1; employee <= BatchSize; ++employee)
        documents.push_back(Forms(room, employee, 1));
    qsizetype bytes = 0;
    for (auto _ : state) {
        bytes = 0;
        for (const auto& document : documents)
            bytes += Yardstick().Write(*document).size();
    }
    state.counters["bytes"] = static_cast<double>(bytes);
}
BENCHMARK(Batch200DocumentsQPdfWriter)->Unit(benchmark::kMillisecond);

constexpr int LongDocument = 250; // employees, of two pages

void Document500Pages(benchmark::State& state)
{
    PrintRoom room;
    std::size_t bytes = 0;
    for (auto _ : state) {
        Forms(room, 1, LongDocument);
        bytes = room.vp.Pdf().size();
    }
    state.counters["bytes"] = static_cast<double>(bytes);
}
BENCHMARK(Document500Pages)->Unit(benchmark::kMillisecond);

void Document500PagesQPdfWriter(benchmark::State& state)
{
    PrintRoom room;
    const auto document = Forms(room, 1, LongDocument);
    qsizetype bytes = 0;
    for (auto _ : state)
        bytes = Yardstick().Write(*document).size();
    state.counters["bytes"] = static_cast<double>(bytes);
}
BENCHMARK(Document500PagesQPdfWriter)->Unit(benchmark::kMillisecond);

void WriteDocuments(int documents, const std::filesystem::path&)
{
    PrintRoom room;
    for (int employee = 1; employee <= documents; ++employee) {
        Forms(room, employee, 1);
        benchmark::DoNotOptimize(room.vp.Pdf());
    }
}

void MemoryOfABatch(benchmark::State& state)
{
    bench::CompareLargestMemory(state, "documents", [](int) { return "-"; });
}
BENCHMARK(MemoryOfABatch)->Iterations(1)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace quillmere

int main(int argc, char** argv)
{
    if (quillmere::bench::HasMeasuredMemory(argc, argv, {{"documents", quillmere::WriteDocuments}}))
        return 0;
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
