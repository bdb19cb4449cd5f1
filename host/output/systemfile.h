#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

namespace panelhost {

/// Returns "path: reason" with the system's text for @p number, an errno value.
QString fileError(const QString &path, int number);

/// Writes all of @p content to @p descriptor. Returns 0, or the errno value of the failure. After a failure, a part of
/// it may have been written.
int writeAll(int descriptor, const QByteArray &content);

}
