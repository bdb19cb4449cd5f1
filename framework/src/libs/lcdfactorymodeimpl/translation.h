#pragma once

#include "lcd/translate/lcdfwtranslatemanager.h"
#include "veltor/trans/translate.h"

#include <QtCore/QString>

namespace LCD::FactoryModeImpl {

/// Returns the text for @p key in the current language. It is fetched at each use, so the next update of a page shows
/// a new language.
inline QString translated(const QString &key)
{
    return veltor::trans::translate(LCDFWTranslateManager::instance()->translator(), QStringLiteral("LCD::HomeWidgets"),
                                    QStringLiteral("Global"), key);
}

}
