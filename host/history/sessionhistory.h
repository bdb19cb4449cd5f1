#pragma once

#include "device/device.h"
#include "history/contentfile.h"
#include "journal/journal.h"
#include "time/virtualclock.h"

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtCore/QVector>
#include <QtGui/QImage>

#include <optional>

namespace panelhost {

/// Something that stands out in a session.
struct Marker
{
    enum class Kind {
        Phase,   ///< the LCD shows another page, or another step of a test
        Action,  ///< of the operator
        Fault,   ///< is turned on or off
        Failure, ///< of a phase, of a port during an aging test, or of a step of the scenario
    };

    Milliseconds at = 0;
    qint64 line = 0; ///< number of its line in the journal
    Kind kind = Kind::Action;
    QString text; ///< empty: the text of the line
};

/// What a session that was played has shown: the journal, and after each line the state of the device and the picture
/// of the LCD. Equal states and pictures are stored once, in temporary files, so that any moment of a long session can
/// be read at once and the memory use stays small. Lines are numbered from 1, as in the journal. Reading: GUI thread.
class SessionHistory
{
public:
    /// A search for a line.
    enum class Direction {
        Forward,
        Back
    };

    QString title() const { return m_title; }
    /// Returns why the session ended early, such as a failed step or a full disk; empty if it was played to its end.
    QString error() const { return m_error; }
    /// Returns the time at the end of the session.
    Milliseconds duration() const { return m_duration; }
    qint64 lineCount() const { return m_lines.count(); }
    /// Returns the last line that isn't later than @p at; 0 if there is none.
    qint64 lineAt(Milliseconds at) const;
    /// Returns the time of @p line; 0 for line 0.
    Milliseconds timeOf(qint64 line) const;
    /// Returns the line as it is in journals; an empty array if there is no such line.
    QByteArray line(qint64 line) const;
    /// Returns the line as a value; nothing if there is no such line.
    std::optional<Journal::Entry> entry(qint64 line) const;
    Journal::Kind kindOf(qint64 line) const;
    /// Returns the nearest line of @p kind after or before @p line; 0 if there is none.
    qint64 findLine(Journal::Kind kind, qint64 line, Direction direction) const;

    /// Returns the state of the device after everything that happened at once with @p line.
    DeviceState device(qint64 line) const;
    /// Returns the picture of the LCD at that moment.
    QImage lcd(qint64 line) const;

    /// Returns the markers in the order of their lines.
    const QVector<Marker> &markers() const { return m_markers; }
    /// Returns the text of @p marker.
    QString markerText(const Marker &marker) const;
    /// Returns the nearest marker after or before @p line; nullptr if there is none.
    const Marker *findMarker(qint64 line, Direction direction) const;

    /// Returns the number of bytes in the temporary files.
    qint64 size() const;

private:
    friend class HistoryRecorder;

    /// What the device and the LCD showed from a line on.
    struct Moment
    {
        qint64 lastLine = 0; ///< of those that belong to the moment
        int device = 0;
        int picture = 0;
    };

    const Moment &momentOf(qint64 line) const;

    QString m_title;
    QString m_error;
    Milliseconds m_duration = 0;
    ContentFile m_lines;
    ContentFile m_devices;
    ContentFile m_pictures;
    QVector<Milliseconds> m_times; ///< of the lines
    QByteArray m_kinds;            ///< of the lines
    QVector<Moment> m_moments;
    QVector<Marker> m_markers;
};

/// Returns the number of the first line that differs in @p a and @p b, or that only one of them has; 0 if there is
/// none.
qint64 firstDifference(const SessionHistory &a, const SessionHistory &b);

}
