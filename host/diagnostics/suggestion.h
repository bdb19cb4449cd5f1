#pragma once

#include <QtCore/QStringList>

namespace panelhost {

/// Returns the word of @p candidates that was probably meant by the misspelled @p word; empty if none is similar.
QString closestWord(const QString &word, const QStringList &candidates);

/// Returns the end of a message about an unknown @p word, such as "; did you mean \"steps\"?". Empty if no word of
/// @p candidates is similar.
QString suggestionFor(const QString &word, const QStringList &candidates);

}
