#pragma once

#include <string>

namespace LCD::FactoryModeImpl {

// What both drivers tell their single tests at the start of a run. Link tests read it on the threads of their services,
// also while a run begins again, so it is written only where it changes: before the first subscription.

/// Makes @p requester the one that the tests report to.
template <class... Tests>
void listenAs(const std::string &requester, Tests &...tests)
{
    const auto listen = [&requester](auto &test) {
        if (test.getCurRequester() != requester)
            test.setCurRequester(requester);
    };
    (listen(tests), ...);
}

/// Whether link tests hear plain reports, or changes alone.
template <class... Tests>
void hearReports(bool hear, Tests &...tests)
{
    const auto set = [hear](auto &test) {
        if (test.isRecvReport() != hear)
            test.setRecvReport(hear);
    };
    (set(tests), ...);
}

}
