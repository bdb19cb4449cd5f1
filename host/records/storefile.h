#pragma once

#include <QtCore/QString>

namespace panelhost {

/// Checks the file at @p path without opening it as a database. Returns why this panelhost can't use it as a store, in
/// one sentence; empty if it can.
QString storeFileProblem(const QString &path);

/// Returns the sentence about a store of a version that this panelhost doesn't know.
QString newerVersionProblem(const QString &name, int version);

/// Creates the store at @p path, as a whole. A file that another process has created in the meantime is left as it is.
/// Returns false and sets @p error to a sentence if there is no store afterwards.
bool createStoreFile(const QString &path, QString *error);

/// Writes the closed store at @p from to the disk and renames it to @p to, which must not exist. Returns false and sets
/// @p error to a sentence on failure.
bool moveStoreFile(const QString &from, const QString &to, QString *error);

/// "/a/runs-2.sqlite" for "/a/runs.sqlite" and 2.
QString numberedPath(const QString &path, int number);

}
