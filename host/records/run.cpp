#include "records/run.h"

#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>

#include <array>

namespace panelhost {

namespace {

constexpr std::array<const char *, 3> kindTexts = {"machine", "aging", "repair"};
constexpr std::array<const char *, 3> outcomeTexts = {"passed", "failed", "aborted"};
constexpr std::array<const char *, 4> sourceTexts = {"", "operator", "test", "report"};

template <class Enum, std::size_t Size>
std::optional<Enum> find(const std::array<const char *, Size> &texts, const QString &text)
{
    for (std::size_t index = 0; index < Size; ++index) {
        if (text == QLatin1String(texts[index]))
            return static_cast<Enum>(index);
    }
    return std::nullopt;
}

QString utcText(const QDateTime &time)
{
    return time.toUTC().toString(Qt::ISODateWithMs);
}

QJsonValue textOrNull(const QString &text)
{
    return text.isEmpty() ? QJsonValue() : QJsonValue(text);
}

QJsonValue timeOrNull(const QDateTime &time)
{
    return time.isValid() ? QJsonValue(utcText(time)) : QJsonValue();
}

QJsonObject toJson(const RunPhase &phase)
{
    return {{QStringLiteral("name"), phase.name},
            {QStringLiteral("outcome"), toText(phase.outcome)},
            {QStringLiteral("begin"), phase.begin},
            {QStringLiteral("duration"), phase.duration},
            {QStringLiteral("source"), textOrNull(toText(phase.source))}};
}

QJsonObject toJson(const AgingFailure &failure)
{
    return {{QStringLiteral("at"), failure.at}, {QStringLiteral("ports"), QJsonArray::fromStringList(failure.ports)}};
}

QJsonArray toJson(const QVector<int> &numbers)
{
    QJsonArray array;
    for (const int number : numbers)
        array.append(number);
    return array;
}

template <class Value>
QJsonArray toJsonArray(const QVector<Value> &values)
{
    QJsonArray array;
    for (const Value &value : values)
        array.append(toJson(value));
    return array;
}

QJsonObject toJson(const QMap<QString, QString> &map)
{
    QJsonObject object;
    for (auto entry = map.begin(); entry != map.end(); ++entry)
        object.insert(entry.key(), entry.value());
    return object;
}

}

QString toText(RunKind kind)
{
    return QString::fromLatin1(kindTexts.at(static_cast<std::size_t>(kind)));
}

QString toText(RunOutcome outcome)
{
    return QString::fromLatin1(outcomeTexts.at(static_cast<std::size_t>(outcome)));
}

QString toText(VerdictSource source)
{
    return QString::fromLatin1(sourceTexts.at(static_cast<std::size_t>(source)));
}

std::optional<RunKind> runKindFromText(const QString &text)
{
    return find<RunKind>(kindTexts, text);
}

std::optional<RunOutcome> runOutcomeFromText(const QString &text)
{
    return find<RunOutcome>(outcomeTexts, text);
}

std::optional<VerdictSource> verdictSourceFromText(const QString &text)
{
    return find<VerdictSource>(sourceTexts, text);
}

QDateTime Run::beginUtc() const
{
    return session.begin.isValid() ? session.begin.addMSecs(begin) : QDateTime();
}

QDateTime Run::endUtc() const
{
    return session.begin.isValid() ? session.begin.addMSecs(end) : QDateTime();
}

QString Run::failedPhase() const
{
    for (const RunPhase &phase : phases) {
        if (phase.outcome == RunOutcome::Failed)
            return phase.name;
    }
    return {};
}

QJsonObject Run::toJson() const
{
    return {
        {QStringLiteral("id"), id.toString(QUuid::WithoutBraces)},
        {QStringLiteral("unit"), textOrNull(session.unit)},
        {QStringLiteral("station"), textOrNull(session.station)},
        {QStringLiteral("operator"), textOrNull(session.operatorName)},
        {QStringLiteral("kind"), toText(kind)},
        {QStringLiteral("outcome"), toText(outcome)},
        {QStringLiteral("attempt"), attempt > 0 ? QJsonValue(attempt) : QJsonValue()},
        {QStringLiteral("begin"), timeOrNull(beginUtc())},
        {QStringLiteral("end"), timeOrNull(endUtc())},
        {QStringLiteral("deviceBegin"), begin},
        {QStringLiteral("deviceEnd"), end},
        {QStringLiteral("language"), textOrNull(session.language)},
        {QStringLiteral("panelhost"), textOrNull(session.panelhostVersion)},
        {QStringLiteral("component"), textOrNull(session.componentVersion)},
        {QStringLiteral("configuration"), textOrNull(session.configuration)},
        {QStringLiteral("phases"), toJsonArray(phases)},
        {QStringLiteral("rounds"), rounds},
        {QStringLiteral("failureCount"), failureCount},
        {QStringLiteral("failures"), toJsonArray(failures)},
        {QStringLiteral("wrongKeyCount"), wrongKeyCount},
        {QStringLiteral("wrongKeys"), panelhost::toJson(wrongKeys)},
        {QStringLiteral("skippedKeys"), panelhost::toJson(skippedKeys)},
        {QStringLiteral("ports"), panelhost::toJson(ports)},
    };
}

}
