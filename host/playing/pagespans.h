#pragma once

#include "journal/journal.h"
#include "playing/firstandlast.h"
#include "playing/scenarioresult.h"

namespace panelhost {

/// Returns a name for the page on @p screen, the content of the LCD as the journal has it: its title without a level,
/// or its kind if it has no title.
QString pageTitle(const QVariantMap &screen);

/// Determines when the LCD showed which page, from the screen entries of the journal.
class PageSpans
{
public:
    void add(const Journal::Entry &entry);
    /// Returns the spans up to @p end. If there are very many, one span replaces those in the middle.
    QVector<PageSpan> spans(Milliseconds end) const;

private:
    FirstAndLast<PageSpan> m_spans{200};
    QVariantMap m_screen;
};

}
