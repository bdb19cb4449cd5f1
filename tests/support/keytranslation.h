#pragma once

#include <QtCore/QString>
#include <QtCore/QStringList>

#include <functional>

// Replaces the translation library in tests. Compile it into a program that exports its symbols. The text of "FCPass"
// is
// "[FCPass]", which shows whether a text is translated or literal. If a key is looked up in another context or section,
// both precede the key.

/// Inserts @p language between the bracket and the key: "[de:FCPass]". Empty by default.
void setTestLanguage(const QString &language);
/// Appends @p ending to each text. Empty by default.
void setTestEnding(const QString &ending);
/// Appends each key that is looked up to @p keys. With nullptr, the default, no keys are recorded.
void recordLookedUpKeys(QStringList *keys);
/// Calls @p hook before each look-up, on the thread of the look-up. Without a function, the default, nothing is called.
void setLookUpHook(const std::function<void()> &hook);
