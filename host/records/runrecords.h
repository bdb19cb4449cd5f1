#pragma once

#include "records/recordsoptions.h"
#include "records/sessionruns.h"
#include "session/session.h"

namespace panelhost {

/// The run records of a command that opens sessions. Saves the runs and supplies the session line of each journal, as
/// the options of the command say. GUI thread only, except for add().
class RunRecords
{
public:
    /// Whether runs are saved if neither --records nor PANELHOST_RECORDS is set.
    enum class Default {
        Save,
        DoNotSave
    };

    ~RunRecords();

    /// Returns the options that say where runs are saved, and --unit, --station and --operator.
    static QList<QCommandLineOption> options();

    /// Sets a function that is called with the number of saved runs that wait to be sent to the server, when it
    /// changes, on any thread. It must not block. Call it before open().
    void setPendingListener(const RunForwarder::PendingListener &listener) { m_pendingListener = listener; }
    /// Sets a function that is called with a sentence when runs can't be sent to the server, on any thread, instead of
    /// the listener of open(). The problem is over when no run waits any more. Call it before open().
    void setSendingListener(const RunSaver::Listener &listener) { m_sendingListener = listener; }
    /// Sets a function that is called with each run when it ends, saved or not, on any thread. Call it before
    /// open().
    void setRunListener(const RunExtractor::Listener &listener) { m_runListener = listener; }
    /// Sets a function that is called with each run when it is on the disk, on any thread. Call it before open().
    void setSavedListener(const std::function<void(const Run &run)> &listener) { m_savedListener = listener; }

    /// Reads the options. Returns false and sets @p error to a sentence if a value isn't valid. Doesn't open a file
    /// yet. If a file can't be opened or a run can't be saved later, @p listener is called with a sentence, on any
    /// thread.
    bool open(const QCommandLineParser &parser, Default fallback, const RunSaver::Listener &listener, QString *error);

    /// Begins a session on @p device. @p unit is tested first; an empty one isn't known. Returns the first line of its
    /// journal, with line end. Empty if runs aren't saved and neither @p unit nor an option says what is tested.
    QByteArray beginSession(const Session::Options &device, const QString &unit);
    void add(const Journal::Entry &entry);
    void endSession();

    /// Returns where runs are saved.
    RecordsLocation location() const { return m_location; }
    /// Returns the number of runs that were saved. Thread-safe.
    int savedCount() const { return m_saver ? m_saver->saved() : 0; }
    /// Returns the number of saved runs that wait to be sent to the server. Thread-safe.
    int pendingCount() const { return m_saver ? m_saver->pending() : 0; }
    /// Returns the unit that the options name; empty if none.
    QString unit() const { return m_unit; }

    /// Waits until all runs are saved, and up to five seconds until a server has them. If some can't be saved, calls
    /// the listener and returns false.
    bool finish();

private:
    std::unique_ptr<RunSaver> m_saver;
    std::unique_ptr<SessionRuns> m_sessionRuns;
    RunSaver::Listener m_listener;
    RunForwarder::PendingListener m_pendingListener;
    RunSaver::Listener m_sendingListener;
    RunExtractor::Listener m_runListener;
    std::function<void(const Run &run)> m_savedListener;
    RecordsLocation m_location;
    QString m_unit;
    QString m_station;
    QString m_operator;
};

}
