// The throughput of render_formulas: the examples repeated (100 times by default: 4,700 formulas)
// drawn into PNG and SVG in one call, on one thread and on one per core, in formulas per second of
// real time. The drawings stay in memory, so that the file system's cost of making thousands of
// files (which grows for a while after as many were deleted) is no part of it; tavi-render writes
// files in bench/batch_throughput.sh, beside one process per formula.
#include <benchmark/benchmark.h>

#include <QFile>

#include <string>
#include <vector>

#include "formula_bench.h"
#include "tavi/qt/batchrender.h"
#include "tools/tavi-render/outputs.h"

namespace {

using namespace Tavi;

std::string read_setup()
{
    QFile file(TAVI_SOURCE_DIR "/data/mathsetup.xml");
    return file.open(QIODevice::ReadOnly) ? file.readAll().toStdString() : std::string();
}

// Arguments: how many times the examples are repeated, and the threads.
void batch(benchmark::State &state, TaviRender::Format format)
{
    std::vector<BatchItem> items;
    std::vector<TaviBench::Formula> const examples = TaviBench::examples();
    for (long r = 0; r < state.range(0); ++r)
        for (TaviBench::Formula const &f : examples)
            items.push_back(BatchItem{std::string(), f.text, std::string(), f.name});
    BatchOptions options;
    options.setup = read_setup();
    options.threads = static_cast<int>(state.range(1));
    if (format == TaviRender::Format::png)
        options.format = OutputFormat::png;  // the library's own drawing
    else
        options.renderer = [format](RenderHost &host, QByteArray &out, std::string &error) {
            return TaviRender::render(host, format, 96, out, error);
        };
    for (auto _ : state) {
        BatchReport const report = render_formulas(items, options);
        if (report.failed > 0) {
            state.SkipWithError("some formulas failed");
            return;
        }
    }
    state.counters["formulas/s"] =
        benchmark::Counter(static_cast<double>(items.size() * state.iterations()), benchmark::Counter::kIsRate);
}

void batch_png(benchmark::State &state) { batch(state, TaviRender::Format::png); }
void batch_svg(benchmark::State &state) { batch(state, TaviRender::Format::svg); }

BENCHMARK(batch_png)
    ->ArgsProduct({{100}, {1, core_count()}})
    ->ArgNames({"repeats", "threads"})
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();
BENCHMARK(batch_svg)
    ->ArgsProduct({{100}, {1, core_count()}})
    ->ArgNames({"repeats", "threads"})
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();

}  // namespace
