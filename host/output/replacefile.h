#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

namespace panelhost {

/// Replaces the content of the file at @p path by @p content. The content is written to partialPath() and the file is
/// renamed, so that an existing file is never half-written. A device or a pipe is written directly. Returns false and
/// sets @p error to the path and the system's reason on failure; an existing file keeps its content then.
bool replaceFile(const QString &path, const QByteArray &content, QString *error);

/// Like replaceFile(), but also waits until the new content is on the disk: after a power cut, the file has either its
/// old or its new content.
bool replaceFileDurably(const QString &path, const QByteArray &content, QString *error);

/// Returns the path to which replaceFile() writes before it renames the file.
QString partialPath(const QString &path);

}
