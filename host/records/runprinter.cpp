#include "records/runprinter.h"

#include "output/standardoutput.h"
#include "records/statisticstext.h"

#include <QtCore/QJsonDocument>

#include <algorithm>
#include <utility>

namespace panelhost {

namespace {

constexpr int DurationColumn = 4;

QStringList tableHeader()
{
    return {QStringLiteral("BEGIN (UTC)"), QStringLiteral("UNIT"),     QStringLiteral("KIND"),
            QStringLiteral("OUTCOME"),     QStringLiteral("DURATION"), QStringLiteral("FAILED PHASE"),
            QStringLiteral("ID")};
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
        return QStringLiteral("%1, %2 bad").arg(countText(run.rounds, "round", "rounds")).arg(run.failureCount);
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

void RunPrinter::printCsvHeader()
{
    if (!std::exchange(m_hasHeader, true))
        print(csvLine(csvColumns()));
}

void RunPrinter::printRow(const QStringList &row) const
{
    QStringList cells;
    for (int column = 0; column < row.size(); ++column) {
        const int width = m_widths.at(column);
        cells << (column == DurationColumn ? row.at(column).rightJustified(width)
                                           : row.at(column).leftJustified(width));
    }
    print(cells.join(QStringLiteral("  ")) + QLatin1Char('\n'));
}

void RunPrinter::flush()
{
    if (m_rows.isEmpty())
        return;
    m_rows.prepend(tableHeader());
    m_hasHeader = true;
    m_widths = {19, 16, 7, 7, 10, 19, 0};
    for (const QStringList &row : qAsConst(m_rows)) {
        for (int column = 0; column + 1 < row.size(); ++column)
            m_widths[column] = qMax(m_widths.at(column), row.at(column).size());
    }
    for (const QStringList &row : qAsConst(m_rows))
        printRow(row);
    m_rows.clear();
}

void RunPrinter::addRow(const Run &run)
{
    const QStringList row{beginText(run),
                          orDash(run.session.unit),
                          toText(run.kind),
                          toText(run.outcome),
                          runDurationText(run.end - run.begin),
                          orDash(detailText(run)),
                          run.id.toString(QUuid::WithoutBraces)};
    if (m_hasHeader)
        return printRow(row);
    m_rows << row;
    if (m_rows.size() == MeasuredRows)
        flush();
}

void RunPrinter::add(const Run &run)
{
    ++m_count;
    switch (m_format) {
    case Format::Json:
        return print(QString::fromUtf8(QJsonDocument(run.toJson()).toJson(QJsonDocument::Compact)) + QLatin1Char('\n'));
    case Format::Csv:
        printCsvHeader();
        return print(csvLine(csvValues(run)));
    case Format::Table:
        return addRow(run);
    }
}

void RunPrinter::finish()
{
    if (m_format == Format::Csv)
        printCsvHeader();
    if (m_format == Format::Table && m_count == 0)
        print(QStringLiteral("No runs.\n"));
    flush();
}

}
