#pragma once

#include <QtWidgets/QStatusBar>

namespace panelhost {

class ElidedLabel;

/// The status bar of the window: a message, files that could not be written, the recording, and runs that wait to be
/// sent.
class WindowStatus : public QStatusBar
{
    Q_OBJECT

public:
    explicit WindowStatus(QWidget *parent);

    /// Shows @p text, such as why an action wasn't possible. An empty text removes the message.
    void setMessage(const QString &text);
    /// Adds @p text permanently: a file could not be written.
    void addFailure(const QString &text);
    /// Shows that @p fileName is being recorded; shows nothing if it is empty.
    void setRecording(const QString &fileName);
    /// Shows that @p count saved runs wait to be sent to the server; shows nothing if it is 0.
    void setPendingRuns(int count);

private:
    ElidedLabel *m_message;
    ElidedLabel *m_pending;
    ElidedLabel *m_recording;
    int m_pendingCount = 0;
};

}
