#include "playing/pagespans.h"

#include <QtCore/QRegularExpression>

namespace panelhost {

QString pageTitle(const QVariantMap &screen)
{
    const auto page = screen.value(QStringLiteral("page")).toString();
    static const QRegularExpression level(QStringLiteral(" \\d+%$"));
    const auto title = screen.value(QStringLiteral("title")).toString().remove(level);
    if (page == QLatin1String("menu"))
        return QStringLiteral("menu, level %1").arg(screen.value(QStringLiteral("menu.level")).toInt());
    if (page == QLatin1String("container"))
        return screen.value(QStringLiteral("container")).toString();
    return title.isEmpty() ? page : title;
}

void PageSpans::add(const Journal::Entry &entry)
{
    if (entry.kind != Journal::Kind::Screen)
        return;
    for (auto it = entry.data.begin(); it != entry.data.end(); ++it)
        m_screen.insert(it.key(), it.value().toVariant());
    const auto title = pageTitle(m_screen);
    if (!m_spans.isEmpty() && m_spans.last().title == title)
        return;
    if (!m_spans.isEmpty())
        m_spans.last().until = entry.at;
    m_spans.append({entry.at, entry.at, title});
}

QVector<PageSpan> PageSpans::spans(Milliseconds end) const
{
    QVector<PageSpan> spans(m_spans.head().begin(), m_spans.head().end());
    if (m_spans.leftOut() > 0)
        spans.append(
            {spans.last().until, m_spans.tail().front().from, QStringLiteral("… %1 pages …").arg(m_spans.leftOut())});
    for (const auto &span : m_spans.tail())
        spans.append(span);
    if (!spans.isEmpty())
        spans.last().until = end;
    return spans;
}

}
