#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

namespace panelhost {

/// Returns the value of the attribute of sysfs at @p path, read with one system call, without the line end. Sets
/// @p number to 0, or to the errno value of a failure.
QByteArray readAttribute(const QString &path, int *number);

/// Writes the value of the attribute at @p path with one system call. Returns 0 or the errno value of a failure.
int writeAttribute(const QString &path, const QByteArray &value);

}
