#pragma once

#include "output/linefile.h"
#include "scenario/scenariowriter.h"
#include "session/session.h"

#include <memory>

namespace panelhost {

class PanelWindow;
struct WindowOptions;

/// The journal and the recording that are written while the window is open. Failures are shown in the window and
/// written to the standard error output immediately. GUI thread.
class WindowFiles
{
public:
    /// Opens the journal. Returns false and sets @p error to a sentence if that is impossible or an input file would be
    /// overwritten.
    bool open(const Session::Options &device, const WindowOptions &options, const QString &recording, QString *error);
    /// Starts recording @p session if a recording was requested. The session must outlive the recording.
    bool beginRecording(Session &session, QString *error);
    /// Shows the recording and failures in @p window from now on.
    void showIn(PanelWindow &window);
    /// Writes failures to the standard error output from now on, for a window that can't show them.
    void reportFailures();
    /// Closes both files.
    void close(Session &session);
    /// Returns the sink for the journal of the session; empty if no journal was requested.
    Journal::Sink journalSink();
    /// Adds the line that the journal of a session begins with; empty if there is none.
    void addSessionLine(const QByteArray &line);
    bool hasFailed() const;

private:
    void watchJournal(PanelWindow &window);
    void watchRecording(PanelWindow &window);

    QString m_recording;
    LineFile::IfExists m_ifExists = LineFile::IfExists::Refuse;
    LineFile m_journal;
    std::unique_ptr<ScenarioWriter> m_writer;
};

}
