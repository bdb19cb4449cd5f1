#include "handwritten.h"
#include "linkhost.h"
#include "netporttestbiz.h"
#include "usbporttestbiz.h"

#include <benchmark/benchmark.h>

using namespace LCD::FactoryModeImpl;

namespace {

constexpr auto Requester = "bench";

void hearState(int state)
{
    benchmark::DoNotOptimize(state);
}

void hearLinks(const std::vector<bool> &links)
{
    benchmark::DoNotOptimize(links.size());
}

void hearNetLinks(const std::vector<bool> &links, bool)
{
    hearLinks(links);
}

void netComponent(benchmark::State &bench)
{
    LinkHost host;
    NetPortTestBiz biz;
    biz.registerStateCallback(Requester, hearState);
    biz.registerLinkStatusCallback(Requester, hearNetLinks);
    biz.setCurRequester(Requester);
    biz.startTest();
    const std::any report = netReport(static_cast<int>(bench.range(0)));
    for (auto _ : bench)
        host.network.changed(report);
    bench.SetComplexityN(bench.range(0));
}

void netHandwritten(benchmark::State &bench)
{
    HandwrittenNet net;
    net.stateListener = hearState;
    net.linkListener = hearNetLinks;
    const std::any report = netReport(static_cast<int>(bench.range(0)));
    for (auto _ : bench)
        net.onLinkChanged(report);
    bench.SetComplexityN(bench.range(0));
}

void usbComponent(benchmark::State &bench)
{
    LinkHost host;
    UsbPortTestBiz biz;
    biz.registerLinkStatusCallback(Requester, hearLinks);
    biz.setCurRequester(Requester);
    biz.startTest();
    const std::any report = usbReport(static_cast<int>(bench.range(0)));
    for (auto _ : bench)
        host.usb.changed(report);
    bench.SetComplexityN(bench.range(0));
}

void usbHandwritten(benchmark::State &bench)
{
    HandwrittenUsb usb;
    usb.linkListener = hearLinks;
    const std::any report = usbReport(static_cast<int>(bench.range(0)));
    for (auto _ : bench)
        usb.onUsbChanged(report);
    bench.SetComplexityN(bench.range(0));
}

void sizes(benchmark::internal::Benchmark *bench)
{
    bench->Arg(8)->Arg(64)->Arg(4096)->Complexity();
}

BENCHMARK(netComponent)->Apply(sizes);
BENCHMARK(netHandwritten)->Apply(sizes);
BENCHMARK(usbComponent)->Apply(sizes);
BENCHMARK(usbHandwritten)->Apply(sizes);

}

BENCHMARK_MAIN();
