#pragma once

#include "journal/journal.h"
#include "playing/excerpt.h"
#include "playing/result.h"

namespace panelhost {

/// Which page the LCD showed when, from the changes of the screen in the journal.
class PageSpans
{
public:
    void add(const Journal::Entry &entry);
    /// The spans up to @p end. Where there are very many, one in the middle stands for those that are left out.
    QVector<PageSpan> spans(Milliseconds end) const;

private:
    Excerpt<PageSpan> m_spans{200};
    QVariantMap m_screen;
};

}
