#pragma once

#include "journal/journal.h"
#include "scenario/result.h"

namespace panelhost {

/// Which page the LCD showed when, from the changes of the screen in the journal.
QVector<PageSpan> pagesOf(const QVector<Journal::Entry> &entries, Instant end);

}
