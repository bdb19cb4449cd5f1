#pragma once

#include "lcd/translate/lcdfwtranslatemanager.h"
#include "veltor/trans/translate.h"

#include <QtCore/QString>
#include <QtGui/QColor>

namespace LCD::RepairPages {

/// The operator's word for @p key, in the present language.
inline QString text(const char *key)
{
    return veltor::trans::translate(LCDFWTranslateManager::instance()->translator(), QStringLiteral("LCD::HomeWidgets"),
                                    QStringLiteral("Global"), QLatin1String(key));
}

inline QColor passColor()
{
    return {18, 154, 55};
}

inline QColor notPassColor()
{
    return {255, 72, 60};
}

} // namespace LCD::RepairPages
