#pragma once

#include <QtCore/QDebug>
#include <QtCore/QLoggingCategory>

namespace LCD::FactoryModeImpl {

/// The category of every line of this component. `qCDebug(componentLog) << ...` writes to "default", as qDebug()
/// does, but puts no text together while a logging rule has switched the line off. Qt's own default category is gone
/// late in the process's exit, when a service thread may still deliver: an own one of the same name serves then.
inline const QLoggingCategory &componentLog()
{
    if (const QLoggingCategory *category = QLoggingCategory::defaultCategory())
        return *category;
    static const QLoggingCategory &late = *new QLoggingCategory("default");
    return late;
}

}
