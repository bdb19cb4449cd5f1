#pragma once

#include <QtWidgets/QStatusBar>

class QLabel;

namespace panelhost {

class ElidedLabel;

/// The status bar of the window: a message, files that could not be written, the recording, and runs that wait to be
/// sent. Longer texts leave room for the number of these runs.
class WindowStatus : public QStatusBar
{
    Q_OBJECT

public:
    explicit WindowStatus(QWidget *parent);

    /// Shows @p text, such as why an action wasn't possible. An empty text removes the message.
    void setMessage(const QString &text);
    /// Adds @p text permanently: a file could not be written. Does nothing if the same text was added before.
    void addFailure(const QString &text);
    /// Shows that @p fileName is being recorded; shows nothing if it is empty.
    void setRecording(const QString &fileName);
    /// Shows that @p count saved runs wait to be sent to the server. If it is 0, shows nothing and removes the problem.
    void setPendingRuns(int count);
    /// Shows why runs can't be sent to the server, instead of the previous reason. An empty text removes the reason.
    void setSendingProblem(const QString &text);

private:
    QLabel *makeFailure(const QString &text);

    ElidedLabel *m_message;
    QLabel *m_pending;
    ElidedLabel *m_recording;
    QLabel *m_sendingProblem = nullptr;
    QStringList m_failures; ///< those that stay
    int m_pendingCount = 0;
};

}
