#include "linktests.h"

#include "lcdfactorymodeimpl/netporttestbiz.h"
#include "lcdfactorymodeimpl/usbporttestbiz.h"
#include "singletest.h"
#include "texts.h"

#include <algorithm>
#include <mutex>
#include <string>
#include <vector>

namespace LCD::RepairPages {

namespace {

const std::string requester = "RepairPages";

/// A report may name ports without end; the page has room for these.
constexpr std::size_t mostShown = 16;

/// What differs between the kinds of ports. Texts are keys of the catalogues.
struct PortTexts
{
    const char *step;
    const char *port;
};

template <class Biz>
class LinkTest : public SingleTest<Biz>
{
public:
    explicit LinkTest(const PortTexts &texts) : m_texts(texts)
    {
        QObject::connect(this, &PageTest::changed, this, [this] { passIfAllLinked(); });
        this->biz->setCurRequester(requester);
        this->biz->registerLinkStatusCallback(requester,
                                              [this](const std::vector<bool> &links, auto...) { onLinks(links); });
    }

    // Waits for reports that are under way on the service's thread, while what
    // they use is still there.
    ~LinkTest() override { this->biz.reset(); }

    void reTest() override
    {
        SingleTest<Biz>::reTest();
        onLinks({});
    }

    int failCount() const override { return this->biz->failCount(); }
    QVector<PageLine> lines() const override;
    QString leftCaption() const override { return text("FCNoPass"); }
    void pressLeft() override { this->setNotPass(); }

private:
    void onLinks(const std::vector<bool> &links);
    void passIfAllLinked();

    const PortTexts m_texts;
    mutable std::mutex m_mutex;
    std::vector<bool> m_links; // of the first ports
    std::size_t m_portCount = 0;
};

// On the thread of the port service.
template <class Biz>
void LinkTest<Biz>::onLinks(const std::vector<bool> &links)
{
    {
        const std::lock_guard locker(m_mutex);
        m_portCount = links.size();
        m_links.assign(links.begin(), links.begin() + static_cast<std::ptrdiff_t>(std::min(mostShown, links.size())));
    }
    this->announceChange();
}

template <class Biz>
void LinkTest<Biz>::passIfAllLinked()
{
    if (this->state() == TestState::Running && this->biz->isAllLinked())
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

} // namespace

std::unique_ptr<PageTest> makeNetTest()
{
    return std::make_unique<LinkTest<FactoryModeImpl::NetPortTestBiz>>(PortTexts{"RepairNetStep", "RepairNetPort"});
}

std::unique_ptr<PageTest> makeUsbTest()
{
    return std::make_unique<LinkTest<FactoryModeImpl::UsbPortTestBiz>>(PortTexts{"RepairUSBStep", "RepairUSBPort"});
}

} // namespace LCD::RepairPages
