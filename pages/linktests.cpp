#include "linktests.h"

#include "lcdfactorymodeimpl/netporttestbiz.h"
#include "lcdfactorymodeimpl/usbporttestbiz.h"
#include "singletestadapter.h"
#include "texts.h"

#include <algorithm>
#include <mutex>
#include <string>
#include <vector>

namespace LCD::RepairPages {

namespace {

const std::string requester = "RepairPages";

/// The largest number of ports that a page shows. A report may name more.
constexpr std::size_t MaxShownPorts = 16;

/// The texts for one kind of ports, as keys of the catalogs.
struct PortTexts
{
    const char *step;
    const char *port;
};

template <class Biz>
class LinkTest : public SingleTestAdapter<Biz>
{
public:
    explicit LinkTest(const PortTexts &texts) : m_texts(texts)
    {
        QObject::connect(this, &PageTest::changed, this, [this] { passIfAllLinked(); });
        this->m_biz->setCurRequester(requester);
        this->m_biz->registerLinkStatusCallback(requester,
                                                [this](const std::vector<bool> &links, auto...) { onLinks(links); });
    }

    // Waits for reports that are being handled on the service's thread, while the members that they use still exist.
    ~LinkTest() override { this->m_biz.reset(); }

    void reTest() override
    {
        SingleTestAdapter<Biz>::reTest();
        onLinks({});
    }

    int failCount() const override { return this->m_biz->failCount(); }
    QVector<PageLine> lines() const override;
    QString leftCaption() const override { return text("FCNoPass"); }
    void pressLeft() override { this->setNotPass(); }

private:
    void onLinks(const std::vector<bool> &links);
    void passIfAllLinked();

    const PortTexts m_texts;
    mutable std::mutex m_mutex;
    std::vector<bool> m_links; ///< links of the first ports
    std::size_t m_portCount = 0;
};

// On the thread of the port service.
template <class Biz>
void LinkTest<Biz>::onLinks(const std::vector<bool> &links)
{
    {
        const std::lock_guard locker(m_mutex);
        m_portCount = links.size();
        m_links.assign(links.begin(),
                       links.begin() + static_cast<std::ptrdiff_t>(std::min(MaxShownPorts, links.size())));
    }
    this->announceChange();
}

template <class Biz>
void LinkTest<Biz>::passIfAllLinked()
{
    if (this->state() == TestState::Running && this->m_biz->isAllLinked())
        this->setPass();
}

template <class Biz>
QVector<PageLine> LinkTest<Biz>::lines() const
{
    const std::lock_guard locker(m_mutex);
    QVector<PageLine> lines{{text(m_texts.step)}};
    for (std::size_t port = 0; port < m_links.size(); ++port) {
        const bool isLinked = m_links[port];
        lines << PageLine{QStringLiteral("%1: %2").arg(text(m_texts.port).arg(port + 1),
                                                       text(isLinked ? "RepairLinked" : "RepairNotLinked")),
                          Qt::white, isLinked ? PageLine::Mark::Pass : PageLine::Mark::None};
    }
    if (m_portCount > m_links.size())
        lines << PageLine{text("RepairMorePorts").arg(m_portCount - m_links.size())};
    return lines;
}

}

std::unique_ptr<PageTest> makeNetTest()
{
    return std::make_unique<LinkTest<FactoryModeImpl::NetPortTestBiz>>(PortTexts{"RepairNetStep", "RepairNetPort"});
}

std::unique_ptr<PageTest> makeUsbTest()
{
    return std::make_unique<LinkTest<FactoryModeImpl::UsbPortTestBiz>>(PortTexts{"RepairUSBStep", "RepairUSBPort"});
}

}
