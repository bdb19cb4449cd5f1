#pragma once

#include <string>

namespace LCD::FactoryModeImpl {

// Functions by which both drivers set up their single tests at the start of a run. The link tests read these values on
// the threads of their services, also while a run begins again. So a value is written only if it changes, which happens
// before the first subscription.

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
