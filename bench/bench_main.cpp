// The benchmark program: Qt brought up without a display, the fonts and the setup loaded, and the
// benchmarks registered here, one per example and step, and one family per step over polynomials
// of 10 to 10,000 terms with the growth of time fitted by benchmark's complexity report; and the cost
// of a keystroke in an editor of such a polynomial.
#include <QGuiApplication>

#include <cstdlib>

#include "formula_bench.h"
#include "tools/tavi-render/resources.h"

namespace {

void register_benchmarks()
{
    using namespace TaviBench;
    for (Formula const &f : examples()) {
        std::string const text = f.text;
        benchmark::RegisterBenchmark(("read/" + f.name).c_str(), [text](benchmark::State &s) { read(s, text); });
        benchmark::RegisterBenchmark(("typeset/" + f.name).c_str(),
                                     [text](benchmark::State &s) { typeset(s, text, 0.0); });
        benchmark::RegisterBenchmark(("write_svg/" + f.name).c_str(), [text](benchmark::State &s) { write_svg(s, text); });
        benchmark::RegisterBenchmark(("read_typeset_paint/" + f.name).c_str(),
                                     [text](benchmark::State &s) { read_typeset_paint(s, text); });
    }
    struct Family
    {
        char const *name;
        void (*run)(benchmark::State &);
        long largest;
    };
    // Reading and typesetting go to 100,000 terms; the others stop at 10,000, where a run of the
    // largest already takes seconds.
    Family const families[] = {
        {"read/polynomial", read_polynomial, 100000},
        {"typeset/polynomial", typeset_polynomial, 100000},
        {"wrap/polynomial", wrap_polynomial, 10000},
        {"write_svg/polynomial", write_svg_polynomial, 10000},
    };
    for (Family const &family : families)
        benchmark::RegisterBenchmark(family.name, family.run)
            ->RangeMultiplier(10)
            ->Range(10, family.largest)
            ->Unit(benchmark::kMicrosecond)
            ->Complexity();
    benchmark::RegisterBenchmark("typeset/nested_fractions", typeset_nested_fractions)
        ->RangeMultiplier(2)
        ->Range(100, 1600)
        ->Unit(benchmark::kMicrosecond)
        ->Complexity();
    benchmark::RegisterBenchmark("heap/polynomial", heap_per_node)
        ->Arg(1000)
        ->Arg(100000)
        ->Iterations(1)
        ->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark("keystroke/polynomial", keystroke)
        ->ArgsProduct({{10, 100, 1000, 10000}, {0, 1, 2}})
        ->ArgNames({"terms", "caret"})
        ->Unit(benchmark::kMicrosecond);
}

}  // namespace

int main(int argc, char **argv)
{
    setenv("QT_QPA_PLATFORM", "offscreen", 0);
    QGuiApplication app(argc, argv);
    TaviRender::register_formula_fonts();
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    if (!TaviBench::load_setup())
        return 1;
    register_benchmarks();
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
