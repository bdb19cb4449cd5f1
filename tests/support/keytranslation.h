#pragma once

#include <QtCore/QString>
#include <QtCore/QStringList>

// A translation for tests, compiled into a program that exports its symbols, in the place of the translation library's:
// the text of "FCPass" is "[FCPass]", so that what is translated and what is literal can be told apart. A key that is
// asked for in another context or section comes back with both in front of it.

/// Puts @p language between bracket and key from now on: "[de:FCPass]". Empty at first.
void setTestLanguage(const QString &language);
/// Puts @p ending behind each text from now on. Empty at first.
void setTestEnding(const QString &ending);
/// Appends each key that is looked up from now on to @p keys; with nullptr, as at first, to no list.
void recordLookedUpKeys(QStringList *keys);
