#pragma once

#include <QtCore/QString>

namespace panelhost {

/// Looks at the file at @p path without opening it as a database. Returns why it isn't a store of this version or an
/// earlier one, in one sentence; empty if it is.
QString storeFileProblem(const QString &path);

/// Makes the store at @p path in one go: it is there whole or not at all. One that somebody else has made meanwhile is
/// left as it is. Returns false, with one sentence in @p error, if there is none afterwards.
bool createStoreFile(const QString &path, QString *error);

/// "/a/runs-2.sqlite" for "/a/runs.sqlite" and 2.
QString numberedPath(const QString &path, int number);

}
