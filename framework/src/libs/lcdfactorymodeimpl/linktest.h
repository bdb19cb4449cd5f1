#pragma once

#include "statecodes.h"
#include "testobject.h"

#include <algorithm>
#include <any>
#include <atomic>
#include <functional>
#include <limits>
#include <string>
#include <vector>

namespace LCD::FactoryModeImpl {

// What both link tests do, on the members as each of them has them.

/// Goes from @p from to @p to; false, and no change, in any other state.
inline bool moveState(std::atomic<int> &state, int from, int to)
{
    return state.compare_exchange_strong(from, to);
}

/// Forgets links and failures.
template <class Test>
void enterLinkTest(Test &test, int testType)
{
    test.failCount = 0;
    test.reset();
    setTestType(test.factoryBizService, testType);
    test.notifyStateChanged(test.state);
}

/// Starts an idle test; false when it is in another state.
template <class Test>
bool startLinkTest(Test &test)
{
    const bool started = moveState(test.state, StateIdle, StateRunning);
    if (started)
        test.notifyStateChanged(test.state);
    return started;
}

/// The verdicts of a running test. In any other state nothing happens.
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

/// Both subscriptions of a link service, the reports first. Neither ever ends.
template <class Service>
void subscribeToLinks(Service &service, const std::string &subscriber, const std::function<void(std::any)> &report,
                      const std::function<void(std::any)> &changed)
{
    constexpr int Mode = 2;
    service.registerReportCallback(subscriber, Mode, report);
    service.registerChangedCallback(subscriber, Mode, changed);
}

/// The number of entries of @p ports; the highest int when there are more.
template <class Value>
int countOf(const std::vector<Value> &ports)
{
    return static_cast<int>(std::min<std::size_t>(ports.size(), std::numeric_limits<int>::max()));
}

/// Whether there are links and each of them is up.
inline bool allLinked(const std::vector<bool> &links)
{
    return !links.empty() && std::find(links.begin(), links.end(), false) == links.end();
}

}
