#pragma once

#include <QtCore/QSet>
#include <QtCore/QString>

namespace panelhost {

/// Returns the last parts of the keys for which the factory menu has a title, in lower case. The component doesn't
/// export them, so this is a copy; a test compares it with the component's table.
const QSet<QString> &knownTitles();

/// Returns true if the factory menu has a title for an item whose key ends in @p tail, ignoring case.
bool isKnownTitle(const QString &tail);

}
