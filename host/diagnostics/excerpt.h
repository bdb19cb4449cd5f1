#pragma once

#include <QtCore/QString>

namespace panelhost {

/// Returns the beginning of @p text, for a message or a line of limited width: at most @p size UTF-16 code units, and
/// no half of a character that takes two of them.
QString beginningOf(const QString &text, int size);

}
