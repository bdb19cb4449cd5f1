#include "handwritten.h"
#include "netporttestbiz.h"
#include "quiethost.h"
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
    QuietHost host;
    NetPortTestBiz biz;
    biz.registerStateCallback(Requester, hearState);
    biz.registerLinkStatusCallback(Requester, hearNetLinks);
    biz.setCurRequester(Requester);
    biz.startTest();
    const std::any report = netReport(static_cast<int>(bench.range(0)));
    for (auto _ : bench)
        host.network.changed(report);
}

void netHandwritten(benchmark::State &bench)
{
    HandwrittenNet net;
    net.stateListener = hearState;
    net.linkListener = hearNetLinks;
    const std::any report = netReport(static_cast<int>(bench.range(0)));
    for (auto _ : bench)
        net.onLinkChanged(report);
}

void usbComponent(benchmark::State &bench)
{
    QuietHost host;
    UsbPortTestBiz biz;
    biz.registerLinkStatusCallback(Requester, hearLinks);
    biz.setCurRequester(Requester);
    biz.startTest();
    const std::any report = usbReport(static_cast<int>(bench.range(0)));
    for (auto _ : bench)
        host.usb.changed(report);
}

void usbHandwritten(benchmark::State &bench)
{
    HandwrittenUsb usb;
    usb.linkListener = hearLinks;
    const std::any report = usbReport(static_cast<int>(bench.range(0)));
    for (auto _ : bench)
        usb.onUsbChanged(report);
}

void sizes(benchmark::internal::Benchmark *bench)
{
    bench->Arg(8)->Arg(64)->Arg(4096);
}

BENCHMARK(netComponent)->Name("net report/component")->Apply(sizes);
BENCHMARK(netHandwritten)->Name("net report/bare")->Apply(sizes);
BENCHMARK(usbComponent)->Name("USB report/component")->Apply(sizes);
BENCHMARK(usbHandwritten)->Name("USB report/bare")->Apply(sizes);

}

BENCHMARK_MAIN();
