#pragma once

#include "lcd/translate/lcdfwtranslatemanager.h"
#include "veltor/trans/translate.h"

#include <QtCore/QString>
#include <QtGui/QColor>

namespace LCD::RepairPages {

/// Returns the text of @p key in the current language.
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

}
