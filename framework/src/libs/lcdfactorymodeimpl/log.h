#pragma once

#include <QtCore/QDebug>
#include <QtCore/QLoggingCategory>

namespace LCD::FactoryModeImpl {

/// The category of every line of this component. `qCDebug(componentLog) << ...` writes to "default", as qDebug()
/// does, but puts no text together while a logging rule has switched the line off.
inline const QLoggingCategory &componentLog()
{
    return *QLoggingCategory::defaultCategory();
}

}
