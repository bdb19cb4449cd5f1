#include "scenario/pagespans.h"

#include <QtCore/QRegularExpression>

namespace panelhost {

namespace {

/// What the operator would call the page: its title without a level, or what it is when it has none.
QString titleOf(const QVariantMap &screen)
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

}

QVector<PageSpan> pagesOf(const QVector<Journal::Entry> &entries, Instant end)
{
    QVector<PageSpan> pages;
    QVariantMap screen;
    for (const auto &entry : entries) {
        if (entry.kind != Journal::Kind::Screen)
            continue;
        const auto changed = entry.data.toVariantMap();
        for (auto it = changed.begin(); it != changed.end(); ++it)
            screen.insert(it.key(), it.value());
        const auto title = titleOf(screen);
        if (!pages.isEmpty() && pages.last().title == title)
            continue;
        if (!pages.isEmpty())
            pages.last().until = entry.at;
        pages.append({entry.at, end, title});
    }
    return pages;
}

}
