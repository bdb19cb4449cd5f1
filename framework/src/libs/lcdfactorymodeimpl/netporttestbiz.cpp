#include "netporttestbiz.h"

#include "callbackguard.h"
#include "linkpayload.h"
#include "linktesthelpers.h"
#include "listeners.h"
#include "recordfield.h"
#include "rollback.h"
#include "services.h"

#include "lcd/protocol/records.h"

#include <QtCore/QMutex>

#include <limits>
#include <memory>
#include <new>
#include <optional>
#include <utility>

namespace LCD::FactoryModeImpl {

namespace {

using Records = std::vector<ProtocolImpl::s_NetworkPortLink>;

const std::string NetPortTestBizRequester = "NetPortTestBiz";
constexpr int TestType = 10;
constexpr LinkPayloadTexts PayloadTexts = {
    "NetPortTestBiz: need type std::shared_ptr<s_NetworkPortLinkArray>, got",
    "NetPortTestBiz: s_NetworkPortLinkArray ptr is nullptr",
};

static_assert(sizeof(ProtocolImpl::s_NetworkPortLink) == 20);

/// Returns the number of the port, which is negative if the record belongs to no port.
int portOf(const ProtocolImpl::s_NetworkPortLink &record)
{
    return field<12>(record);
}

bool isLinked(const ProtocolImpl::s_NetworkPortLink &record)
{
    return field<16>(record) != 0;
}

/// Returns one entry for each number up to the highest port. A port is linked if any of its records says so.
std::vector<bool> linksByPort(const Records &records)
{
    std::size_t size = 0;
    for (const auto &record : records) {
        if (portOf(record) >= 0)
            size = std::max(size, static_cast<std::size_t>(portOf(record)) + 1);
    }
    std::vector<bool> links(size, false);
    for (const auto &record : records) {
        if (portOf(record) >= 0 && isLinked(record))
            links[static_cast<std::size_t>(portOf(record))] = true;
    }
    return links;
}

/// Returns the number of entries of @p links, or the highest int if there are more.
int countOf(const std::vector<bool> &links)
{
    return static_cast<int>(std::min<std::size_t>(links.size(), std::numeric_limits<int>::max()));
}

}

class NetPortTestBiz::Impl
{
public:
    explicit Impl(NetPortTestBiz *owner) : q(owner) {}
    void onLinkChanged(std::any &&payload);
    void onReportLinkChanged(std::any &&payload);
    void notifyStateChanged(int code) const;
    void notifyLinkStatus(const std::vector<bool> &links, bool valid) const;
    using Links = std::shared_ptr<const std::vector<bool>>;
    struct TakenLinks
    {
        Links links;
        Links before;
    };
    std::optional<TakenLinks> takeLinks(const Records &records);
    void rollBackLinks(TakenLinks &taken);
    void reset();

    NetPortTestBiz *q;
    FactoryMode::INetworkPort *networkPortService = FactoryModeImpl::networkPortService();
    FactoryMode::IFactoryModeBiz *factoryBizService = factoryModeBizService();
    std::atomic<int> state = StateIdle;
    std::atomic<int> failCount = 0;
    std::atomic<bool> linkValid = true;
    Links portLinks; ///< null: no links have been reported
    QMutex linkMutex;
    Listeners<const std::vector<bool> &, bool> linkStatusCallbacks;
    Listeners<int> stateCallbacks;
    std::string curRequester;
    std::atomic<bool> recvReport = true;
    CallbackGuard m_callbackGuard;
};

void NetPortTestBiz::Impl::onReportLinkChanged(std::any &&payload)
{
    if (recvReport)
        onLinkChanged(std::move(payload));
}

// Runs on the thread of the network service, in every state.
void NetPortTestBiz::Impl::onLinkChanged(std::any &&payload)
{
    const auto records = unpackLinkPayload<ProtocolImpl::s_NetworkPortLink>(std::move(payload), PayloadTexts);
    if (!records)
        return;
    auto taken = takeLinks(*records);
    if (!taken)
        return;
    const auto notify = [&] {
        notifyStateChanged(state);
        notifyLinkStatus(*taken->links, linkValid);
    };
    callOrRollBack(notify, [&] { rollBackLinks(*taken); });
}

/// Stores the links of a report. Returns them together with the links that were stored before. Returns nothing, and
/// stores nothing, if a port number is so high that there is no memory for the links.
std::optional<NetPortTestBiz::Impl::TakenLinks> NetPortTestBiz::Impl::takeLinks(const Records &records)
{
    try {
        const auto links = std::make_shared<const std::vector<bool>>(linksByPort(records));
        const QMutexLocker locker(&linkMutex);
        return TakenLinks{links, std::exchange(portLinks, links)};
    } catch (const std::bad_alloc &) {
        qCWarning(componentLog) << "NetPortTestBiz: no memory for the port numbers of a report, dropped";
        return std::nullopt;
    }
}

// Does nothing if another report has arrived in the meantime.
void NetPortTestBiz::Impl::rollBackLinks(TakenLinks &taken)
{
    const QMutexLocker locker(&linkMutex);
    if (portLinks == taken.links)
        portLinks.swap(taken.before);
}

void NetPortTestBiz::Impl::notifyStateChanged(int code) const
{
    notifyRequester(stateCallbacks, curRequester, code);
}

void NetPortTestBiz::Impl::notifyLinkStatus(const std::vector<bool> &links, bool valid) const
{
    notifyRequester(linkStatusCallbacks, curRequester, links, valid);
}

void NetPortTestBiz::Impl::reset()
{
    state = StateIdle;
    linkValid = true;
    const QMutexLocker locker(&linkMutex);
    portLinks.reset();
}

NetPortTestBiz::NetPortTestBiz() : d(new Impl(this))
{
}

NetPortTestBiz::~NetPortTestBiz()
{
    delete d;
}

void NetPortTestBiz::enter()
{
    enterLinkTest(*d, TestType);
}

void NetPortTestBiz::startTest()
{
    if (!startLinkTest(*d))
        return;
    if (!d->networkPortService) {
        qCWarning(componentLog) << "NetPortTestBiz: INetworkPort is null, cannot start test";
        return;
    }
    const auto report = [impl = d](std::any &&payload) { impl->onReportLinkChanged(std::move(payload)); };
    const auto changed = [impl = d](std::any &&payload) { impl->onLinkChanged(std::move(payload)); };
    subscribeToLinks(*d->networkPortService, NetPortTestBizRequester,
                     d->m_callbackGuard.wrapReport("NetPortTestBiz", report),
                     d->m_callbackGuard.wrapReport("NetPortTestBiz", changed));
}

void NetPortTestBiz::setPass()
{
    passLinkTest(*d);
}

void NetPortTestBiz::setNotPass()
{
    failLinkTest(*d);
}

void NetPortTestBiz::reTest()
{
    d->reset();
    d->notifyStateChanged(d->state);
    d->notifyLinkStatus({}, true);
}

int NetPortTestBiz::state() const
{
    return d->state;
}

int NetPortTestBiz::failCount() const
{
    return d->failCount;
}

int NetPortTestBiz::portCount() const
{
    const QMutexLocker locker(&d->linkMutex);
    return d->portLinks ? countOf(*d->portLinks) : 0;
}

bool NetPortTestBiz::isAllLinked() const
{
    if (!d->linkValid)
        return false;
    const QMutexLocker locker(&d->linkMutex);
    return d->portLinks && allLinked(*d->portLinks);
}

void NetPortTestBiz::setRecvReport(bool receive)
{
    d->recvReport = receive;
}

bool NetPortTestBiz::isRecvReport() const
{
    return d->recvReport;
}

void NetPortTestBiz::setCurRequester(const std::string &requester)
{
    setRequester(d->curRequester, requester);
}

std::string NetPortTestBiz::getCurRequester() const
{
    return currentRequester(d->curRequester);
}

void NetPortTestBiz::registerStateCallback(const std::string &requester, const std::function<void(int)> &callback)
{
    registerNamedListener(d->stateCallbacks, requester, callback);
}

void NetPortTestBiz::registerLinkStatusCallback(const std::string &requester,
                                                const std::function<void(const std::vector<bool> &, bool)> &callback)
{
    registerNamedListener(d->linkStatusCallbacks, requester, callback);
}

}
