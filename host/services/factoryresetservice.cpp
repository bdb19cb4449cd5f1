#include "services/factoryresetservice.h"

#include "device/device.h"

namespace panelhost {

void FactoryResetService::resetDevice(const Listener &listener)
{
    m_journal.add(Journal::Kind::Call, QStringLiteral("lcdFactoryReset.resetDevice"));
    m_device.resetToFactoryState([this, listener](bool ok, const std::string &message) {
        m_journal.add(Journal::Kind::Event, QStringLiteral("lcdFactoryReset.result"),
                      {{QStringLiteral("ok"), ok}, {QStringLiteral("message"), QString::fromStdString(message)}});
        if (listener)
            listener(ok, message);
    });
}

}
