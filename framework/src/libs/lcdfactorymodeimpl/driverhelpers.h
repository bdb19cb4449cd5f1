#pragma once

#include <string>

namespace LCD::FactoryModeImpl {

// Functions with which both drivers set up their single tests at the start of a run. The link tests read these values
// on the threads of their services, even while the next run begins. Therefore a value is written only if it changes.
// This happens once, before the first subscription.

/// Makes @p requester the current requester of all @p tests.
template <class... Tests>
void setCurrentRequester(const std::string &requester, Tests &...tests)
{
    const auto set = [&requester](auto &test) {
        if (test.getCurRequester() != requester)
            test.setCurRequester(requester);
    };
    (set(tests), ...);
}

/// Sets whether the link @p tests handle report events. They always handle changed events.
template <class... Tests>
void setReportsReceived(bool receive, Tests &...tests)
{
    const auto set = [receive](auto &test) {
        if (test.isRecvReport() != receive)
            test.setRecvReport(receive);
    };
    (set(tests), ...);
}

}
