#include "usbporttestbiz.h"

#include "callbackguard.h"
#include "linkpayload.h"
#include "linktesthelpers.h"
#include "listeners.h"
#include "recordfield.h"
#include "rollback.h"
#include "services.h"

#include "lcd/protocol/records.h"

#include <QtCore/QMutex>
#include <QtCore/QVector>

#include <utility>

namespace LCD::FactoryModeImpl {

namespace {

using Records = std::vector<ProtocolImpl::s_NodeUSB>;
using Ports = QVector<int>;

const std::string UsbPortTestBizRequester = "UsbPortTestBiz";
constexpr int TestType = 9;
constexpr LinkPayloadTexts PayloadTexts = {
    "UsbPortTestBiz: need type std::shared_ptr<s_NodeUSBArray>, got",
    "UsbPortTestBiz: s_NodeUSBArray ptr is nullptr",
};

constexpr int PortNodeType = 26;

static_assert(sizeof(ProtocolImpl::s_NodeUSB) == 64);

int portIdOf(const ProtocolImpl::s_NodeUSB &record)
{
    return field<12>(record);
}

bool isPort(const ProtocolImpl::s_NodeUSB &record)
{
    return field<16>(record) == PortNodeType;
}

bool isLinked(const ProtocolImpl::s_NodeUSB &record)
{
    const bool isActive = field<20>(record) != 0;
    const bool isBlocked = field<24>(record) != 0;
    return isPort(record) && isActive && !isBlocked;
}

/// Returns the identifiers in @p known and of the ports in @p records, in ascending order: @p known itself if the
/// records contain no other port, as in most reports.
Ports mergedPorts(const Ports &known, const Records &records)
{
    const auto isNew = [&known](const auto &record) {
        return isPort(record) && !std::binary_search(known.begin(), known.end(), portIdOf(record));
    };
    if (std::none_of(records.begin(), records.end(), isNew))
        return known;
    Ports merged = known;
    for (const auto &record : records) {
        if (isPort(record))
            merged.push_back(portIdOf(record));
    }
    std::sort(merged.begin(), merged.end());
    merged.erase(std::unique(merged.begin(), merged.end()), merged.end());
    return merged;
}

/// Returns for each position in @p ports whether @p records show the port as linked.
std::vector<bool> linksByPosition(const Ports &ports, const Records &records)
{
    std::vector<bool> links(static_cast<std::size_t>(ports.size()), false);
    for (const auto &record : records) {
        if (isLinked(record))
            links[static_cast<std::size_t>(std::lower_bound(ports.begin(), ports.end(), portIdOf(record))
                                           - ports.begin())] = true;
    }
    return links;
}

}

class UsbPortTestBiz::Impl
{
public:
    explicit Impl(UsbPortTestBiz *owner) : q(owner) {}
    void onUsbChanged(std::any &&payload);
    void onReportUsbChanged(std::any &&payload);
    void notifyStateChanged(int code) const;
    void notifyLinkStatus(const std::vector<bool> &links) const;
    Ports portsWith(const Records &records);
    struct Latched
    {
        Ports ports;
        std::vector<bool> links;
    };
    Latched latch(const Ports &ports, const std::vector<bool> &links);
    void rollBackLinks(const Ports &ports, Latched &before);
    void reset();

    UsbPortTestBiz *q;
    FactoryMode::IUSB *nodeUsbService = usbService();
    FactoryMode::IFactoryModeBiz *factoryBizService = factoryModeBizService();
    std::atomic<int> state = StateIdle;
    std::atomic<int> failCount = 0;
    Ports knownPorts;
    std::vector<bool> portLinks;
    QMutex linkMutex;
    Listeners<const std::vector<bool> &> linkStatusCallbacks;
    Listeners<int> stateCallbacks;
    std::string curRequester;
    std::atomic<bool> recvReport = true;
    CallbackGuard m_callbackGuard;
};

void UsbPortTestBiz::Impl::onReportUsbChanged(std::any &&payload)
{
    if (recvReport)
        onUsbChanged(std::move(payload));
}

// Runs on the thread of the USB service, in every state.
void UsbPortTestBiz::Impl::onUsbChanged(std::any &&payload)
{
    const auto records = unpackLinkPayload<ProtocolImpl::s_NodeUSB>(std::move(payload), PayloadTexts);
    if (!records)
        return;
    const Ports ports = portsWith(*records);
    const std::vector<bool> links = linksByPosition(ports, *records);
    Latched before = latch(ports, links);
    callOrRollBack([&] { notifyLinkStatus(links); }, [&] { rollBackLinks(ports, before); });
}

Ports UsbPortTestBiz::Impl::portsWith(const Records &records)
{
    QMutexLocker locker(&linkMutex);
    const Ports known = knownPorts;
    locker.unlock();
    return mergedPorts(known, records);
}

// Once an entry is true, it stays true. Entries belong to positions, not to ports: a new port that is sorted before a
// known port takes over the entry of that port. Returns the previous ports and links.
UsbPortTestBiz::Impl::Latched UsbPortTestBiz::Impl::latch(const Ports &ports, const std::vector<bool> &links)
{
    Latched other = {ports, links};
    const QMutexLocker locker(&linkMutex);
    const std::size_t known = std::min(portLinks.size(), links.size());
    for (std::size_t position = 0; position < known; ++position)
        other.links[position] = portLinks[position] || links[position];
    knownPorts.swap(other.ports);
    portLinks.swap(other.links);
    return other;
}

// Does nothing if another report has arrived in the meantime.
void UsbPortTestBiz::Impl::rollBackLinks(const Ports &ports, Latched &before)
{
    const QMutexLocker locker(&linkMutex);
    if (knownPorts != ports)
        return;
    knownPorts.swap(before.ports);
    portLinks.swap(before.links);
}

void UsbPortTestBiz::Impl::notifyStateChanged(int code) const
{
    notifyRequester(stateCallbacks, curRequester, code);
}

void UsbPortTestBiz::Impl::notifyLinkStatus(const std::vector<bool> &links) const
{
    notifyRequester(linkStatusCallbacks, curRequester, links);
}

void UsbPortTestBiz::Impl::reset()
{
    state = StateIdle;
    const QMutexLocker locker(&linkMutex);
    knownPorts = Ports();
    portLinks.clear();
}

UsbPortTestBiz::UsbPortTestBiz() : d(new Impl(this))
{
}

UsbPortTestBiz::~UsbPortTestBiz()
{
    delete d;
}

void UsbPortTestBiz::enter()
{
    enterLinkTest(*d, TestType);
}

void UsbPortTestBiz::startTest()
{
    if (!startLinkTest(*d))
        return;
    if (!d->nodeUsbService) {
        qCWarning(componentLog) << "UsbPortTestBiz: IUSB is null, cannot start test";
        return;
    }
    const auto report = [impl = d](std::any &&payload) { impl->onReportUsbChanged(std::move(payload)); };
    const auto changed = [impl = d](std::any &&payload) { impl->onUsbChanged(std::move(payload)); };
    subscribeToLinks(*d->nodeUsbService, UsbPortTestBizRequester,
                     d->m_callbackGuard.wrapReport("UsbPortTestBiz", report),
                     d->m_callbackGuard.wrapReport("UsbPortTestBiz", changed));
}

void UsbPortTestBiz::setPass()
{
    passLinkTest(*d);
}

void UsbPortTestBiz::setNotPass()
{
    failLinkTest(*d);
}

void UsbPortTestBiz::reTest()
{
    d->reset();
    d->notifyStateChanged(d->state);
    d->notifyLinkStatus({});
}

int UsbPortTestBiz::state() const
{
    return d->state;
}

int UsbPortTestBiz::failCount() const
{
    return d->failCount;
}

int UsbPortTestBiz::portCount() const
{
    const QMutexLocker locker(&d->linkMutex);
    return d->knownPorts.size();
}

bool UsbPortTestBiz::isAllLinked() const
{
    const QMutexLocker locker(&d->linkMutex);
    return allLinked(d->portLinks);
}

void UsbPortTestBiz::setRecvReport(bool receive)
{
    d->recvReport = receive;
}

bool UsbPortTestBiz::isRecvReport() const
{
    return d->recvReport;
}

void UsbPortTestBiz::setCurRequester(const std::string &requester)
{
    setRequester(d->curRequester, requester);
}

std::string UsbPortTestBiz::getCurRequester() const
{
    return currentRequester(d->curRequester);
}

void UsbPortTestBiz::registerStateCallback(const std::string &requester, const std::function<void(int)> &callback)
{
    registerNamedListener(d->stateCallbacks, requester, callback);
}

void UsbPortTestBiz::registerLinkStatusCallback(const std::string &requester,
                                                const std::function<void(const std::vector<bool> &)> &callback)
{
    registerNamedListener(d->linkStatusCallbacks, requester, callback);
}

}
