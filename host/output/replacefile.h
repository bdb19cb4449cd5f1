#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

namespace panelhost {

/// Gives the file at @p path @p content, all of it or nothing: it is written beside the file, as partialPath(), and
/// renamed. A device or a pipe is written to instead and never replaced. Returns false, with the path and the
/// system's reason in @p error, if it can't be written; an existing file keeps its content then.
bool replaceFile(const QString &path, const QByteArray &content, QString *error);

/// Where replaceFile() writes before it renames.
QString partialPath(const QString &path);

}
