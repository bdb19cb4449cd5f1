#pragma once

#include "output/linefile.h"
#include "scenario/scenariowriter.h"
#include "session/session.h"

#include <memory>

namespace panelhost {

class PanelWindow;
struct WindowOptions;

/// The two files that grow while the window is open. What can't be written is told at once, in the window and on the
/// standard error output. GUI thread.
class WindowFiles
{
public:
    /// Opens the journal. Returns false, with a sentence in @p error, if that is impossible or a file would be written
    /// over one that is read.
    bool open(const Session::Options &device, const WindowOptions &options, const QString &recording, QString *error);
    /// Opens the recording, if one is wanted, and begins to listen to @p session, which must outlive the recording.
    bool beginRecording(Session &session, QString *error);
    /// Shows in @p window what is recorded, and from then on what could not be written.
    void showIn(PanelWindow &window);
    /// Ends both files.
    void close(Session &session);
    /// What takes the entries of the session's journal.
    Journal::Sink journalSink();
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
