#pragma once

#include <functional>
#include <string>
#include <vector>

namespace LCD::FactoryModeImpl {

/// The test of the net ports: stores the links of the last report. An invalid payload is logged and dropped.
///
/// Threads: call enter(), startTest(), reTest() and the verdicts on the owner's thread, or on one thread at a time.
/// Reports arrive on the thread of the network service, also at the same time. All other operations are thread-safe.
/// Listeners are called on the thread of the operation or of the report.
class NetPortTestBiz
{
public:
    NetPortTestBiz();
    ~NetPortTestBiz();
    NetPortTestBiz(const NetPortTestBiz &) = delete;
    NetPortTestBiz &operator=(const NetPortTestBiz &) = delete;

    /// Resets the state, the links and the failure count, and tells the device which test is active.
    void enter();
    /// Starts the test and subscribes to the service. Does nothing unless the test is idle. Without the service, logs a
    /// warning and runs without data.
    void startTest();
    /// Sets the verdict and announces 103 (pass) or 102 (not pass). Does nothing unless the test is running.
    /// setNotPass() increments the failure count.
    void setPass();
    void setNotPass();
    /// Resets the state and the links, but not the failure count.
    void reTest();
    /// Returns the state code.
    int state() const;
    /// Returns the number of failures since enter().
    int failCount() const;
    /// Returns the highest port number of the last report plus 1.
    int portCount() const;
    /// Returns true if every port of the last report was linked. Returns false if there is no port.
    bool isAllLinked() const;
    /// Sets whether reports are handled. Changed events are always handled.
    void setRecvReport(bool receive);
    /// Returns true if reports are handled.
    bool isRecvReport() const;

    /// Sets the current requester: the only one whose listeners are called. There is none at first. Calls no listener.
    void setCurRequester(const std::string &requester);
    /// Returns the current requester.
    std::string getCurRequester() const;
    /// Registers @p callback (state code) as the listener of @p requester and replaces an earlier one. An empty name or
    /// function changes nothing.
    void registerStateCallback(const std::string &requester, const std::function<void(int)> &callback);
    /// Like registerStateCallback(). @p callback gets the links of each report, indexed by port number, and true.
    void registerLinkStatusCallback(const std::string &requester,
                                    const std::function<void(const std::vector<bool> &, bool)> &callback);

private:
    class Impl;
    Impl *d;
};

}
