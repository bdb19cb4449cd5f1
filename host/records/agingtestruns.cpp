#include "records/agingtestruns.h"

namespace panelhost {

namespace {

constexpr int BrightnessTestType = 0;
constexpr int UsbTestType = 9;

}

void AgingTestRuns::add(const Journal::Entry &entry)
{
    if (entry.kind == Journal::Kind::Screen)
        readScreen();
    else if (entry.name == QLatin1String("lcdFactoryModeBiz.setFactoryTestType"))
        readTestType(entry.data.value(QLatin1String("testType")).toInt(-1));
    else if (entry.kind == Journal::Kind::Event && entry.name.endsWith(QLatin1String(".changed")))
        readLinkChange(entry);
}

void AgingTestRuns::endSession()
{
    if (m_run)
        m_session.close(*m_run, RunOutcome::Aborted);
    m_run.reset();
}

// The page has a left button while the test runs, and no button after it was stopped.
void AgingTestRuns::readScreen()
{
    const LcdState &lcd = m_session.lcd();
    if (lcd.page() != QLatin1String("aging"))
        return;
    const bool hasLeftButton = !lcd.text("left").isEmpty();
    if (hasLeftButton && !m_hasLeftButton) {
        endSession();
        m_run = m_session.open(RunKind::Aging);
        m_failedAt = -1;
    } else if (m_run && !hasLeftButton && lcd.text("right").isEmpty()) {
        const RunOutcome verdict = m_run->rounds > 0 ? RunOutcome::Passed : RunOutcome::Aborted;
        m_session.close(*m_run, m_run->failureCount > 0 ? RunOutcome::Failed : verdict);
        m_run.reset();
    }
    m_hasLeftButton = hasLeftButton;
}

void AgingTestRuns::readTestType(int type)
{
    if (m_run && m_testType == UsbTestType && type == BrightnessTestType)
        ++m_run->rounds;
    m_testType = type;
}

// A change is written once for each subscriber.
void AgingTestRuns::readLinkChange(const Journal::Entry &entry)
{
    const PortFamily family = portFamily(entry.name);
    if (!m_run || family == PortFamily::None)
        return;
    const auto states = portStates(family, entry.data);
    QStringList down = portsDown(states);
    if (family == PortFamily::Usb) {
        for (const QString &port : m_session.knownPorts(family)) {
            if (!states.contains(port))
                down << port;
        }
    }
    if (down.isEmpty() || (entry.at == m_failedAt && down == m_failedPorts))
        return;
    m_failedAt = entry.at;
    m_failedPorts = down;
    if (++m_run->failureCount <= Run::MaxListed)
        m_run->failures.append({entry.at, down});
}

}
