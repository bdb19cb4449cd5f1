#include "history/sessionhistory.h"

#include "history/devicestatedata.h"
#include "history/lcdpicturedata.h"
#include "records/journalreader.h"

#include <QtCore/QJsonDocument>

#include <algorithm>

namespace panelhost {

qint64 SessionHistory::lineAt(Milliseconds at) const
{
    return std::upper_bound(m_times.begin(), m_times.end(), at) - m_times.begin();
}

Milliseconds SessionHistory::timeOf(qint64 line) const
{
    return line < 1 || line > m_times.size() ? 0 : m_times[static_cast<int>(line) - 1];
}

QByteArray SessionHistory::line(qint64 line) const
{
    return m_lines.read(static_cast<int>(line) - 1);
}

std::optional<Journal::Entry> SessionHistory::entry(qint64 line) const
{
    QString error;
    return entryFromJson(QJsonDocument::fromJson(this->line(line)).object(), &error);
}

Journal::Kind SessionHistory::kindOf(qint64 line) const
{
    return static_cast<Journal::Kind>(m_kinds.at(static_cast<int>(line) - 1));
}

qint64 SessionHistory::findLine(Journal::Kind kind, qint64 line, Direction direction) const
{
    const char wanted = static_cast<char>(kind);
    if (direction == Direction::Forward)
        return m_kinds.indexOf(wanted, static_cast<int>(line)) + 1;
    return line < 2 ? 0 : m_kinds.lastIndexOf(wanted, static_cast<int>(line) - 2) + 1;
}

const SessionHistory::Moment &SessionHistory::momentOf(qint64 line) const
{
    const auto isBefore = [](const Moment &moment, qint64 number) { return moment.lastLine < number; };
    const auto found = std::lower_bound(m_moments.begin(), m_moments.end(), line, isBefore);
    return found == m_moments.end() ? m_moments.constLast() : *found;
}

DeviceState SessionHistory::device(qint64 line) const
{
    return m_moments.isEmpty() ? DeviceState() : deviceStateFromData(m_devices.read(momentOf(line).device));
}

QImage SessionHistory::lcd(qint64 line) const
{
    return m_moments.isEmpty() ? QImage() : pictureFromData(m_pictures.read(momentOf(line).picture));
}

QString SessionHistory::markerText(const Marker &marker) const
{
    if (!marker.text.isEmpty())
        return marker.text;
    const auto entry = this->entry(marker.line);
    return entry ? entry->toText() : QString();
}

const Marker *SessionHistory::findMarker(qint64 line, Direction direction) const
{
    const auto isBefore = [](const Marker &marker, qint64 number) { return marker.line < number; };
    const qint64 first = direction == Direction::Forward ? line + 1 : line;
    const auto found = std::lower_bound(m_markers.begin(), m_markers.end(), first, isBefore);
    if (direction == Direction::Forward)
        return found == m_markers.end() ? nullptr : &*found;
    return found == m_markers.begin() ? nullptr : &*std::prev(found);
}

qint64 SessionHistory::size() const
{
    return m_lines.size() + m_devices.size() + m_pictures.size();
}

qint64 firstDifference(const SessionHistory &a, const SessionHistory &b)
{
    const qint64 shared = qMin(a.lineCount(), b.lineCount());
    for (qint64 line = 1; line <= shared; ++line) {
        if (a.line(line) != b.line(line))
            return line;
    }
    return a.lineCount() == b.lineCount() ? 0 : shared + 1;
}

}
