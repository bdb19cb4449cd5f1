#include "program.h"

#include <benchmark/benchmark.h>

// What loading the component costs, beside a plain plugin.

namespace {

/// The program prints the processor time between loading the library and the first menu, in seconds.
void load(benchmark::State &bench, const QByteArray &library)
{
    for (auto _ : bench) {
        const Usage usage = runProgram({LCD_BUILD_DIR "/bin/bench_loadmenu", LCD_BUILD_DIR "/lib/" + library});
        if (!usage.hasSucceeded)
            return bench.SkipWithError("failed: bench_loadmenu");
        bench.SetIterationTime(usage.output.toDouble());
    }
}

void loadComponent(benchmark::State &bench)
{
    load(bench, "liblcdfactorymodeimpl.so");
}

void loadPlainMenu(benchmark::State &bench)
{
    load(bench, "libbench_plainmenu.so");
}

void once(benchmark::internal::Benchmark *bench)
{
    bench->UseManualTime()->Iterations(1)->Unit(benchmark::kMillisecond);
}

BENCHMARK(loadComponent)->Name("load to the first menu/component")->Apply(once);
BENCHMARK(loadPlainMenu)->Name("load to the first menu/bare")->Apply(once);

}

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
