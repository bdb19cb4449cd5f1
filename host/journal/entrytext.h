#pragma once

#include "journal/journal.h"

namespace panelhost {

/// Returns the data of a journal entry in one readable line, such as "level=debug, count=3".
QString dataText(const QJsonObject &data);

/// Returns @p entry as a line for a list in a window: time, kind and message. The message of a log line is its text
/// alone. The thread and the level are only in Journal::Entry::toText().
QString lineText(const Journal::Entry &entry);

}
