#include "expectations/expectation.h"

namespace panelhost {

namespace {

QString queryText(const JournalQuery &query)
{
    QStringList parts;
    if (!query.name.isEmpty())
        parts.append(query.name);
    for (auto it = query.arguments.begin(); it != query.arguments.end(); ++it)
        parts.append(it.key() + QLatin1Char('=') + textOf(it.value()));
    if (query.times)
        parts.append(QStringLiteral("%1 times").arg(*query.times));
    return parts.join(QLatin1Char(' '));
}

}

QString Expectation::toText() const
{
    QStringList parts;
    for (const auto &condition : conditions)
        parts.append(condition.toText());
    const auto queried = queryText(query);
    if (!queried.isEmpty())
        parts.prepend(queried);
    return property + QStringLiteral(": ") + parts.join(QStringLiteral(" and "));
}

}
