#include "services/factorymodebizservice.h"

#include "device/device.h"

namespace panelhost {

void FactoryModeBizService::setFactoryTestType(int testType)
{
    m_journal.add(Journal::Kind::Call, QStringLiteral("lcdFactoryModeBiz.setFactoryTestType"),
                  {{QStringLiteral("testType"), testType}});
    m_device.setTestType(testType);
}

void FactoryModeBizService::setMachineTestKind(int kind)
{
    m_journal.add(Journal::Kind::Call, QStringLiteral("lcdFactoryModeBiz.setMachineTestKind"),
                  {{QStringLiteral("kind"), kind}});
    m_device.setMachineTestKind(kind);
}

}
