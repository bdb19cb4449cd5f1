#include "services/configservice.h"

namespace panelhost {

QString ConfigService::getFactoryTestKeyMode()
{
    const QString mode = QStringLiteral("standard");
    m_journal.add(Journal::Kind::Call, QStringLiteral("lcdConfig.getFactoryTestKeyMode"),
                  {{QStringLiteral("result"), mode}});
    return mode;
}

}
