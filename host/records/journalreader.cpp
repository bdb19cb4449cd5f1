#include "records/journalreader.h"

#include <QtCore/QIODevice>
#include <QtCore/QJsonDocument>

#include <cmath>

namespace panelhost {

namespace {

constexpr qint64 MaxLine = 64 * 1024 * 1024;

std::optional<Journal::Kind> kindFromName(const QString &name)
{
    for (int kind = int(Journal::Kind::Call); kind <= int(Journal::Kind::Action); ++kind) {
        if (Journal::kindName(static_cast<Journal::Kind>(kind)) == name)
            return static_cast<Journal::Kind>(kind);
    }
    return std::nullopt;
}

std::optional<qint64> wholeNumber(const QJsonValue &value, qint64 least)
{
    const double number = value.toDouble(-1);
    if (number < static_cast<double>(least) || number > 9.007e15 || number != std::floor(number))
        return std::nullopt;
    return static_cast<qint64>(number);
}

bool readLine(const QByteArray &text, RunExtractor &extractor, QString *error)
{
    QJsonParseError parseError;
    const QJsonDocument document = QJsonDocument::fromJson(text, &parseError);
    if (!document.isObject()) {
        *error = QStringLiteral("expected a JSON object");
        if (parseError.error != QJsonParseError::NoError)
            *error += QStringLiteral(" (%1)").arg(parseError.errorString());
        return false;
    }
    const QJsonObject line = document.object();
    if (line.contains(QLatin1String("session"))) {
        const auto info = SessionInfo::fromJson(line, error);
        if (info)
            extractor.beginSession(*info);
        return info.has_value();
    }
    const auto entry = entryFromJson(line, error);
    if (entry)
        extractor.add(*entry);
    return entry.has_value();
}

// QIODevice::readLine() allocates as many bytes as it may read, so a line is read in pieces.
QByteArray nextLine(QIODevice &device)
{
    constexpr qint64 Piece = 16 * 1024;
    QByteArray line;
    while (line.size() < MaxLine && !line.endsWith('\n')) {
        const QByteArray piece = device.readLine(qMin(Piece, MaxLine - line.size()));
        if (piece.isEmpty())
            break;
        line += piece;
    }
    return line;
}

}

std::optional<Journal::Entry> entryFromJson(const QJsonObject &line, QString *error)
{
    const auto sequence = wholeNumber(line.value(QLatin1String("seq")), 1);
    const auto at = wholeNumber(line.value(QLatin1String("t")), 0);
    const auto kind = kindFromName(line.value(QLatin1String("kind")).toString());
    const QJsonValue name = line.value(QLatin1String("name"));
    const QJsonValue data = line.value(QLatin1String("data"));
    if (!sequence)
        *error = QStringLiteral("expected a whole number from 1 on as \"seq\"");
    else if (!at)
        *error = QStringLiteral("expected milliseconds as \"t\"");
    else if (!kind)
        *error = QStringLiteral("expected one of call, event, signal, log, screen, action as \"kind\"");
    else if (!name.isString())
        *error = QStringLiteral("expected a text as \"name\"");
    else if (!data.isUndefined() && !data.isObject())
        *error = QStringLiteral("expected an object as \"data\"");
    else
        return Journal::Entry{
            *sequence, *at, line.value(QLatin1String("thread")).toString(), *kind, name.toString(), data.toObject()};
    return std::nullopt;
}

bool readJournal(QIODevice &device, const QString &name, RunExtractor &extractor, QString *error)
{
    for (qint64 number = 1;; ++number) {
        const QByteArray text = nextLine(device);
        if (text.isEmpty())
            return true;
        QString problem;
        if (!readLine(text, extractor, &problem)) {
            *error = QStringLiteral("%1:%2: %3").arg(name).arg(number).arg(problem);
            return false;
        }
    }
}

}
