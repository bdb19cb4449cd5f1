#include "records/runprinter.h"

#include "output/standardoutput.h"

#include <QtCore/QJsonDocument>

#include <algorithm>

namespace panelhost {

namespace {

QString tableLine(const QString &begin, const QString &unit, const QString &kind, const QString &outcome,
                  const QString &duration, const QString &detail, const QString &id)
{
    return QStringLiteral("%1  %2  %3  %4  %5  %6  %7\n")
        .arg(begin, -19)
        .arg(unit, -16)
        .arg(kind, -7)
        .arg(outcome, -7)
        .arg(duration, 10)
        .arg(detail, -19)
        .arg(id);
}

QString orDash(const QString &text)
{
    return text.isEmpty() ? QStringLiteral("-") : text;
}

QString beginText(const Run &run)
{
    const QDateTime begin = run.beginUtc();
    return begin.isValid() ? begin.toString(QStringLiteral("yyyy-MM-dd HH:mm:ss")) : QStringLiteral("-");
}

// Returns the most important detail of a run of its kind.
QString detailText(const Run &run)
{
    switch (run.kind) {
    case RunKind::Machine:
        return run.failedPhase();
    case RunKind::Aging:
        return QStringLiteral("%1 rounds, %2 bad").arg(run.rounds).arg(run.failureCount);
    case RunKind::Repair:
        break;
    }
    return run.phases.isEmpty() ? QString() : run.phases.first().name;
}

QString utcOrEmpty(const QDateTime &time)
{
    return time.isValid() ? time.toString(Qt::ISODateWithMs) : QString();
}

}

QString runDurationText(qint64 milliseconds)
{
    const qint64 tenths = milliseconds / 100;
    const qint64 hours = tenths / 36000;
    const QString rest = QStringLiteral("%1:%2.%3")
                             .arg(tenths / 600 % 60, hours > 0 ? 2 : 1, 10, QLatin1Char('0'))
                             .arg(tenths / 10 % 60, 2, 10, QLatin1Char('0'))
                             .arg(tenths % 10);
    return hours > 0 ? QStringLiteral("%1:%2").arg(hours).arg(rest) : rest;
}

QStringList csvColumns()
{
    return {QStringLiteral("id"),           QStringLiteral("unit"),         QStringLiteral("station"),
            QStringLiteral("operator"),     QStringLiteral("kind"),         QStringLiteral("outcome"),
            QStringLiteral("attempt"),      QStringLiteral("begin"),        QStringLiteral("end"),
            QStringLiteral("deviceBegin"),  QStringLiteral("deviceEnd"),    QStringLiteral("failedPhase"),
            QStringLiteral("rounds"),       QStringLiteral("failureCount"), QStringLiteral("wrongKeyCount"),
            QStringLiteral("skippedCount"), QStringLiteral("language")};
}

QStringList csvValues(const Run &run)
{
    return {run.id.toString(QUuid::WithoutBraces),
            run.session.unit,
            run.session.station,
            run.session.operatorName,
            toText(run.kind),
            toText(run.outcome),
            run.attempt > 0 ? QString::number(run.attempt) : QString(),
            utcOrEmpty(run.beginUtc()),
            utcOrEmpty(run.endUtc()),
            QString::number(run.begin),
            QString::number(run.end),
            run.failedPhase(),
            QString::number(run.rounds),
            QString::number(run.failureCount),
            QString::number(run.wrongKeyCount),
            QString::number(run.skippedKeys.size()),
            run.session.language};
}

QString csvLine(const QStringList &values)
{
    QStringList fields;
    for (QString value : values) {
        const bool isPlain = std::none_of(value.begin(), value.end(), [](QChar character) {
            return character == QLatin1Char(',') || character == QLatin1Char('"') || character == QLatin1Char('\n')
                || character == QLatin1Char('\r');
        });
        if (!isPlain)
            value = QLatin1Char('"') + value.replace(QLatin1Char('"'), QLatin1String("\"\"")) + QLatin1Char('"');
        fields << value;
    }
    return fields.join(QLatin1Char(',')) + QLatin1Char('\n');
}

void RunPrinter::printHeader()
{
    if (m_hasHeader)
        return;
    m_hasHeader = true;
    if (m_format == Format::Csv)
        print(csvLine(csvColumns()));
    else if (m_format == Format::Table)
        print(tableLine(QStringLiteral("BEGIN (UTC)"), QStringLiteral("UNIT"), QStringLiteral("KIND"),
                        QStringLiteral("OUTCOME"), QStringLiteral("DURATION"), QStringLiteral("FAILED PHASE"),
                        QStringLiteral("ID")));
}

void RunPrinter::add(const Run &run)
{
    printHeader();
    ++m_count;
    switch (m_format) {
    case Format::Json:
        return print(QString::fromUtf8(QJsonDocument(run.toJson()).toJson(QJsonDocument::Compact)) + QLatin1Char('\n'));
    case Format::Csv:
        return print(csvLine(csvValues(run)));
    case Format::Table:
        return print(tableLine(beginText(run), orDash(run.session.unit), toText(run.kind), toText(run.outcome),
                               runDurationText(run.end - run.begin), orDash(detailText(run)),
                               run.id.toString(QUuid::WithoutBraces)));
    }
}

void RunPrinter::finish()
{
    if (m_format == Format::Csv || m_count > 0)
        printHeader();
    else if (m_format == Format::Table)
        print(QStringLiteral("No runs.\n"));
}

}
