#pragma once

#include <QtCore/QDebug>
#include <QtCore/QLoggingCategory>

namespace LCD::FactoryModeImpl {

/// The category of every line of this component. `qCDebug(componentLog) << ...` writes to "default", as qDebug()
/// does, but formats no text if a logging rule disables the line. Qt deletes its own default category at the end of the
/// process, when a service thread may still deliver a report. So the component has its own category with this name.
inline const QLoggingCategory &componentLog()
{
    if (const QLoggingCategory *category = QLoggingCategory::defaultCategory())
        return *category;
    static const QLoggingCategory &late = *new QLoggingCategory("default");
    return late;
}

}
