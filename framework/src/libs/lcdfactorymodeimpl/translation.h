#pragma once

#include "lcd/translate/lcdfwtranslatemanager.h"
#include "veltor/trans/translate.h"

#include <QtCore/QString>

namespace LCD::FactoryModeImpl {

/// The operator's word for @p key. Fetched at each use: a change of language shows at the next update.
inline QString translated(QLatin1String key)
{
    return veltor::trans::translate(LCDFWTranslateManager::instance()->translator(), QStringLiteral("LCD::HomeWidgets"),
                                    QStringLiteral("Global"), key);
}

}
