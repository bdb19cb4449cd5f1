#include "machineoperator.h"

#include "singletestsupport.h"
#include "virtualtime.h"

MachineOperator::MachineOperator(RecordingHost &host, std::function<void()> pressRight)
    : m_host(host), m_pressRight(std::move(pressRight))
{
}

QList<QPair<int, QString>> MachineOperator::keys()
{
    return {{10, QStringLiteral("ONE")}, {27, QStringLiteral("TWO")}, {33, QStringLiteral("CUT")}};
}

void MachineOperator::bringToVerdict(int phase) const
{
    switch (phase) {
    case 0:
    case 2:
        return VirtualTime::advance(20000);
    case 1:
        return repeat(12, m_pressRight);
    case 3:
        return pressKeys();
    case 4:
        return repeat(7, m_pressRight);
    case 5:
        m_pressRight();
        return netReport({{0, true}, {1, true}});
    case 6:
        return usbReport({{1}, {2}});
    default:
        return;
    }
}

void MachineOperator::pressKeys() const
{
    for (const auto &key : keys())
        m_host.keyboard.press(static_cast<unsigned>(key.first));
}

void MachineOperator::netReport(const std::vector<std::pair<int, bool>> &ports) const
{
    m_host.networkPort.report.fire(RecordingNetworkPort::payload(ports));
}

void MachineOperator::usbReport(const std::vector<RecordingUsb::Node> &nodes) const
{
    m_host.usb.report.fire(RecordingUsb::payload(nodes));
}
