#pragma once

#include <functional>
#include <string>
#include <vector>

namespace LCD::FactoryModeImpl {

/// The links of the USB ports: all ports ever seen, and for each place whether it was ever linked. A payload that
/// cannot be read is logged and dropped.
///
/// Threads: enter(), startTest(), reTest() and the verdicts belong on the owner's thread, or on one thread at a time;
/// reports arrive on the thread of the USB service, also at the same time. All other operations may be called on any
/// thread. Listeners are called on the thread of the operation or of the report.
class UsbPortTestBiz
{
public:
    UsbPortTestBiz();
    ~UsbPortTestBiz();
    UsbPortTestBiz(const UsbPortTestBiz &) = delete;
    UsbPortTestBiz &operator=(const UsbPortTestBiz &) = delete;

    /// Back to idle, forgets links and failures, and tells the device which test is active.
    void enter();
    /// Subscribes to the service, from idle only. Without the service it warns and stays running with no data.
    void startTest();
    /// Verdict, 103 or 102, while running only; a failure counts.
    void setPass();
    void setNotPass();
    /// Back to idle and forgets the links; failures stay counted.
    void reTest();
    /// State code.
    int state() const;
    /// Failures since enter().
    int failCount() const;
    /// Number of ports seen since the last reset.
    int portCount() const;
    /// Whether every place was linked at some time since the last reset. False when no port is known.
    bool isAllLinked() const;
    /// Whether the report subscription is listened to; the changed subscription always is.
    void setRecvReport(bool receive);
    bool isRecvReport() const;

    /// Only the listeners registered under this name hear anything; at first nobody. Announces nothing.
    void setCurRequester(const std::string &requester);
    std::string getCurRequester() const;
    /// Puts @p callback (state code) under @p requester in the place of an earlier one; an empty name or function
    /// changes nothing.
    void registerStateCallback(const std::string &requester, const std::function<void(int)> &callback);
    /// As registerStateCallback(); @p callback hears what the report itself showed, one entry for each known port in
    /// ascending order of identifier.
    void registerLinkStatusCallback(const std::string &requester,
                                    const std::function<void(const std::vector<bool> &)> &callback);

private:
    class Impl;
    Impl *d;
};

}
