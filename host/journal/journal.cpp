#include "journal/journal.h"

#include "journal/entrytext.h"
#include "time/timetext.h"

#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>

#include <algorithm>

namespace panelhost {

namespace {

// Returns true if @p c is written as it is in a JSON string in UTF-8.
bool isPlain(QChar c)
{
    return c >= QLatin1Char(' ') && c <= QLatin1Char('~') && c != QLatin1Char('"') && c != QLatin1Char('\\');
}

QString threadName(ThreadKind thread)
{
    switch (thread) {
    case ThreadKind::Gui:
        return QStringLiteral("gui");
    case ThreadKind::Device:
        return QStringLiteral("device");
    case ThreadKind::Other:
        break;
    }
    return QStringLiteral("other");
}

// Returns a text as a JSON string, with quotes. Names are nearly always plain and need no JSON document then.
QByteArray quoted(const QString &text)
{
    if (std::all_of(text.begin(), text.end(), isPlain))
        return '"' + text.toLatin1() + '"';
    const QByteArray array = QJsonDocument(QJsonArray{text}).toJson(QJsonDocument::Compact);
    return array.mid(1, array.size() - 2);
}

QString valueText(const QJsonValue &value)
{
    if (value.isString())
        return value.toString();
    if (value.isArray())
        return QString::fromUtf8(QJsonDocument(value.toArray()).toJson(QJsonDocument::Compact));
    if (value.isObject())
        return QString::fromUtf8(QJsonDocument(value.toObject()).toJson(QJsonDocument::Compact));
    return value.isNull() ? QStringLiteral("none") : value.toVariant().toString();
}

}

QString Journal::kindName(Kind kind)
{
    static const char *const names[] = {"call", "event", "signal", "log", "screen", "action"};
    return QString::fromLatin1(names[static_cast<int>(kind)]);
}

QByteArray Journal::Entry::toJsonLine() const
{
    QByteArray line = "{\"seq\":" + QByteArray::number(sequence) + ",\"t\":" + QByteArray::number(at)
        + ",\"thread\":" + quoted(thread) + ",\"kind\":" + quoted(kindName(kind)) + ",\"name\":" + quoted(name);
    if (!data.isEmpty())
        line += ",\"data\":" + QJsonDocument(data).toJson(QJsonDocument::Compact);
    return line + '}';
}

QString dataText(const QJsonObject &data)
{
    QStringList values;
    for (auto value = data.begin(); value != data.end(); ++value)
        values << value.key() + QLatin1Char('=') + valueText(value.value());
    return values.join(QStringLiteral(", "));
}

QString lineText(const Journal::Entry &entry)
{
    const QString key = QStringLiteral("text");
    const bool isLog = entry.kind == Journal::Kind::Log && entry.data.contains(key);
    const QString message =
        isLog ? entry.data.value(key).toString() : entry.name + QLatin1Char(' ') + dataText(entry.data);
    return QStringLiteral("%1  %2  %3").arg(timeText(entry.at), 10).arg(Journal::kindName(entry.kind), -6).arg(message);
}

QString Journal::Entry::toText() const
{
    return QStringLiteral("%1  %2  %3  %4 %5")
        .arg(timeText(at), 12)
        .arg(thread, -6)
        .arg(kindName(kind), -6)
        .arg(name, dataText(data));
}

void Journal::add(Kind kind, const QString &name, const QJsonObject &data)
{
    const VirtualClock &clock = VirtualClock::instance();
    Entry entry{0, clock.now(), threadName(clock.currentThread()), kind, name, data};
    const std::lock_guard lock(m_mutex);
    entry.sequence = ++m_count;
    m_entries.push_back(entry);
    if (m_entries.size() > static_cast<size_t>(m_lineLimit))
        m_entries.pop_front();
    if (m_sink)
        m_sink(entry);
}

qint64 Journal::count() const
{
    const std::lock_guard lock(m_mutex);
    return m_count;
}

// The caller holds the lock.
QVector<Journal::Entry> Journal::range(qint64 first, qint64 count) const
{
    const auto size = static_cast<qint64>(m_entries.size());
    const auto begin = m_entries.begin() + qBound<qint64>(0, first, size);
    return {begin, begin + qBound<qint64>(0, count, m_entries.end() - begin)};
}

QVector<Journal::Entry> Journal::entries() const
{
    const std::lock_guard lock(m_mutex);
    return range(0, m_lineLimit);
}

QVector<Journal::Entry> Journal::tail(int count) const
{
    const std::lock_guard lock(m_mutex);
    return range(static_cast<qint64>(m_entries.size()) - count, count);
}

QVector<Journal::Entry> Journal::entriesFrom(qint64 sequence, int count) const
{
    const std::lock_guard lock(m_mutex);
    const qint64 first = m_count - static_cast<qint64>(m_entries.size()) + 1;
    return range(sequence - first, count);
}

void Journal::setSink(Sink sink)
{
    const std::lock_guard lock(m_mutex);
    m_sink = std::move(sink);
}

QByteArray Journal::toJsonLines() const
{
    QByteArray lines;
    for (const Entry &entry : entries())
        lines += entry.toJsonLine() + '\n';
    return lines;
}

}
