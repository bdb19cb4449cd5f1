#include "program.h"

#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>

#include <benchmark/benchmark.h>

#include <algorithm>

// What `panelhost play` costs, beside an application that does nothing.

namespace {

void measure(benchmark::State &bench, const std::vector<QByteArray> &arguments)
{
    double mebibytes = 0;
    for (auto _ : bench) {
        const Usage usage = runProgram(arguments);
        if (!usage.hasSucceeded)
            return bench.SkipWithError(("failed: " + arguments.front()).constData());
        bench.SetIterationTime(usage.seconds);
        mebibytes = std::max(mebibytes, usage.mebibytes);
    }
    bench.counters["MiB"] = mebibytes;
}

void emptyApplication(benchmark::State &bench)
{
    measure(bench, {LCD_BUILD_DIR "/bin/bench_emptyapplication"});
}

void playMachinePass(benchmark::State &bench)
{
    measure(bench, {LCD_BUILD_DIR "/bin/panelhost", "play", LCD_SOURCE_DIR "/scenarios/machine-pass.yaml"});
}

void playAging(benchmark::State &bench)
{
    constexpr int RoundDuration = 76; // s, without the ports
    const QTemporaryDir directory;
    QFile file(directory.filePath(QStringLiteral("aging.yaml")));
    if (!file.open(QIODevice::WriteOnly))
        return bench.SkipWithError("the scenario can't be written");
    file.write("device: {plugged: [net1, net2, net3, net4, usb1, usb2, usb3, usb4]}\nsteps:\n  - open: AgingMode\n"
               "  - soft: right\n  - wait: "
               + QByteArray::number(qlonglong{bench.range(0)} * RoundDuration) + "s\n  - expect: {page: aging}\n");
    file.close();
    measure(bench, {LCD_BUILD_DIR "/bin/panelhost", "play", QFile::encodeName(file.fileName())});
}

void once(benchmark::internal::Benchmark *bench)
{
    bench->UseManualTime()->Iterations(1)->Unit(benchmark::kMillisecond);
}

void rounds(benchmark::internal::Benchmark *bench)
{
    once(bench);
    bench->Arg(100)->Arg(300)->Arg(1000);
}

BENCHMARK(playMachinePass)->Name("play machine-pass/component")->Apply(once);
BENCHMARK(emptyApplication)->Name("play machine-pass/bare")->Apply(once);
BENCHMARK(playAging)->Name("play aging rounds/component")->Apply(rounds);
BENCHMARK(emptyApplication)->Name("play aging rounds/bare")->Apply(rounds);

}

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("PANELHOST_RECORDS", "none");
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
