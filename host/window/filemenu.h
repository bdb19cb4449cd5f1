#pragma once

#include "scenario/scenariowriter.h"

#include <QtWidgets/QMenu>

#include <functional>
#include <memory>

namespace panelhost {

class ScenarioOpener;
class Session;

/// The menu that opens scenarios and saves what happened in the session: a recording, the journal, a report, and
/// pictures.
class FileMenu : public QMenu
{
    Q_OBJECT

public:
    FileMenu(Session &session, QWidget *window);
    ~FileMenu() override;

    /// Sets whether a recording can be started; not if the session is being recorded already.
    void setCanRecord(bool canRecord);
    /// Adds the entries that open files with @p opener, which must outlive the menu.
    void setOpener(ScenarioOpener *opener);

Q_SIGNALS:
    /// Emitted when a file was saved, or couldn't be: @p text is a sentence.
    void messageChanged(const QString &text);
    /// Emitted when a recording was started in the menu, and with an empty name when it has ended.
    void recordingChanged(const QString &fileName);
    /// Emitted when this session shall end and a new one begin.
    void newSessionTriggered();

private:
    using Content = std::function<QByteArray()>;

    QAction *addSave(const QString &name, const QString &fileName, const Content &content,
                     const QKeySequence &shortcut = {});
    void updateRecordText();
    void save(const QString &path, const Content &content);
    bool isFree(const QString &path, QString *error) const;
    void askForFile(const QString &title, const QString &fileName, const std::function<void(const QString &)> &use);
    void toggleRecording();
    void startRecording(const QString &path);
    void stopRecording();
    QAction *addFirst(const char *name, const QKeySequence &shortcut);
    void listRecentFiles();

    Session &m_session;
    QVector<ScenarioWriter::PerformedAction> m_performed; ///< since the session began
    std::unique_ptr<ScenarioWriter> m_recording;
    QString m_recordingPath;
    QAction *m_record = nullptr;
    QMenu *m_recent = nullptr;
    ScenarioOpener *m_opener = nullptr; ///< not owned; nullptr if no files can be opened
};

}
