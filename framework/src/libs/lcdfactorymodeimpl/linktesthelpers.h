#pragma once

#include "singletesthelpers.h"
#include "statecodes.h"

#include <algorithm>
#include <any>
#include <atomic>
#include <functional>
#include <string>
#include <vector>

namespace LCD::FactoryModeImpl {

// Functions that the two link tests share: net ports and USB ports. They work on the members of the test.

/// Changes @p state from @p from to @p to. Returns false, and changes nothing, if the state is another one.
inline bool moveState(std::atomic<int> &state, int from, int to)
{
    return state.compare_exchange_strong(from, to);
}

/// Returns the test to idle, without links and failures.
template <class Test>
void enterLinkTest(Test &test, int testType)
{
    test.failCount = 0;
    test.reset();
    setTestType(test.factoryBizService, testType);
    test.notifyStateChanged(test.state);
}

/// Starts an idle test. Returns false if it isn't idle.
template <class Test>
bool startLinkTest(Test &test)
{
    const bool started = moveState(test.state, StateIdle, StateRunning);
    if (started)
        test.notifyStateChanged(test.state);
    return started;
}

/// Gives a running test its verdict. Does nothing in any other state.
template <class Test>
void passLinkTest(Test &test)
{
    if (moveState(test.state, StateRunning, StatePass))
        test.notifyStateChanged(test.state);
}

template <class Test>
void failLinkTest(Test &test)
{
    if (!moveState(test.state, StateRunning, StateNotPass))
        return;
    ++test.failCount;
    test.notifyStateChanged(test.state);
}

/// Registers both listeners with the service of the ports, that for reports first. They are never removed.
template <class Service>
void subscribeToLinks(Service &service, const std::string &subscriber, const std::function<void(std::any)> &report,
                      const std::function<void(std::any)> &changed)
{
    constexpr int Mode = 2; // the value that the device requires; its meaning is unknown
    service.registerReportCallback(subscriber, Mode, report);
    service.registerChangedCallback(subscriber, Mode, changed);
}

/// Returns whether @p links has entries and all of them are true.
inline bool allLinked(const std::vector<bool> &links)
{
    return !links.empty() && std::find(links.begin(), links.end(), false) == links.end();
}

}
