#include "yaml/duration.h"

#include <QtCore/QRegularExpression>

namespace panelhost {

namespace {

qint64 millisecondsOf(const QString &unit)
{
    if (unit == QLatin1String("ms"))
        return 1;
    if (unit == QLatin1String("s"))
        return 1000;
    return unit == QLatin1String("min") ? 60 * 1000 : 3600 * 1000;
}

}

std::optional<qint64> durationFromText(const QString &text)
{
    static const QRegularExpression form(QStringLiteral("^(\\d{1,9}(?:\\.\\d{1,3})?)\\s*(ms|s|min|h)$"));
    const auto match = form.match(text);
    if (!match.hasMatch())
        return std::nullopt;
    return qRound64(match.captured(1).toDouble() * static_cast<double>(millisecondsOf(match.captured(2))));
}

QString durationText(qint64 milliseconds)
{
    if (milliseconds % 1000 == 0)
        return QStringLiteral("%1s").arg(milliseconds / 1000);
    return QStringLiteral("%1ms").arg(milliseconds);
}

}
