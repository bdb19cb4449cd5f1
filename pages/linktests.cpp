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

const std::string PageRequester = "RepairPages";

/// The largest number of ports that a page shows. A report may name more.
constexpr std::size_t MaxShownPorts = 16;

/// What differs by the kind of the ports. Texts are keys of the catalogs.
struct PortKind
{
    const char *step;
    const char *port;
    bool keepsLinks; ///< a port that was linked once has passed
};

template <class Biz>
class LinkTest : public SingleTestAdapter<Biz>
{
public:
    explicit LinkTest(const PortKind &kind) : m_kind(kind)
    {
        QObject::connect(this, &PageTest::changed, this, [this] { passIfAllLinked(); });
        this->m_biz->setCurRequester(PageRequester);
        this->m_biz->registerLinkStatusCallback(PageRequester,
                                                [this](const std::vector<bool> &links, auto...) { onLinks(links); });
    }

    // Waits for reports that are being handled on the service's thread, while the members that they use still exist.
    ~LinkTest() override { this->m_biz.reset(); }

    void reTest() override
    {
        setJudged(false);
        SingleTestAdapter<Biz>::reTest();
    }
    void setPass() override
    {
        setJudged(true);
        SingleTestAdapter<Biz>::setPass();
    }
    void setNotPass() override
    {
        setJudged(true);
        SingleTestAdapter<Biz>::setNotPass();
    }

    int failCount() const override { return this->m_biz->failCount(); }
    QVector<PageLine> lines() const override;
    QVector<PageLine> remarks() const override;
    QString leftCaption() const override { return text("FCNoPass"); }
    void pressLeft() override { this->setNotPass(); }

private:
    void setJudged(bool isJudged)
    {
        const std::lock_guard locker(m_mutex);
        m_isJudged = isJudged;
    }
    void onLinks(std::vector<bool> links);
    void passIfAllLinked();
    QString portText(std::size_t port) const;

    const PortKind m_kind;
    mutable std::mutex m_mutex;
    bool m_isJudged = false;
    std::vector<bool> m_links;
    std::vector<bool> m_passed; ///< as long as m_links
};

// On the thread of the port service. A verdict isn't changed by later reports.
template <class Biz>
void LinkTest<Biz>::onLinks(std::vector<bool> links)
{
    {
        std::vector<bool> passed = links;
        const std::lock_guard locker(m_mutex);
        if (m_isJudged)
            return;
        for (std::size_t port = 0; m_kind.keepsLinks && port < std::min(passed.size(), m_passed.size()); ++port)
            passed[port] = passed[port] || m_passed[port];
        m_links.swap(links);
        m_passed.swap(passed);
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
QString LinkTest<Biz>::portText(std::size_t port) const
{
    return QStringLiteral("%1: %2").arg(text(m_kind.port).arg(port + 1),
                                        text(m_links[port] ? "RepairLinked" : "RepairNotLinked"));
}

template <class Biz>
QVector<PageLine> LinkTest<Biz>::lines() const
{
    const std::lock_guard locker(m_mutex);
    QVector<PageLine> lines{{text(m_kind.step)}};
    if (m_links.empty())
        lines << PageLine{text("RepairNoPort")};
    const std::size_t shown = std::min(MaxShownPorts, m_links.size());
    for (std::size_t port = 0; port < shown; ++port)
        lines << PageLine{portText(port), Qt::white, m_passed[port] ? PageLine::Mark::Pass : PageLine::Mark::None};
    if (m_links.size() > shown)
        lines << PageLine{text("RepairMorePorts").arg(m_links.size() - shown)};
    return lines;
}

// The ports that failed.
template <class Biz>
QVector<PageLine> LinkTest<Biz>::remarks() const
{
    if (this->state() != TestState::Failed)
        return {};
    const std::lock_guard locker(m_mutex);
    if (m_links.empty())
        return {{text("RepairNoPort"), notPassColor()}};
    const auto failed = static_cast<std::size_t>(std::count(m_passed.begin(), m_passed.end(), false));
    const std::size_t shown = std::min(MaxShownPorts, failed);
    QVector<PageLine> lines;
    for (std::size_t port = 0; static_cast<std::size_t>(lines.size()) < shown; ++port) {
        if (!m_passed[port])
            lines << PageLine{portText(port), notPassColor(), PageLine::Mark::NotPass};
    }
    if (failed > shown)
        lines << PageLine{text("RepairMorePorts").arg(failed - shown), notPassColor()};
    return lines;
}

}

std::unique_ptr<PageTest> makeNetTest()
{
    return std::make_unique<LinkTest<FactoryModeImpl::NetPortTestBiz>>(
        PortKind{"RepairNetStep", "RepairNetPort", false});
}

std::unique_ptr<PageTest> makeUsbTest()
{
    return std::make_unique<LinkTest<FactoryModeImpl::UsbPortTestBiz>>(
        PortKind{"RepairUSBStep", "RepairUSBPort", true});
}

}
