#include "window/windowstatus.h"

#include "panel/theme.h"
#include "panel/translated.h"
#include "window/elidedlabel.h"

namespace panelhost {

WindowStatus::WindowStatus(QWidget *parent)
    : QStatusBar(parent), m_message(new ElidedLabel(QStringLiteral("message"))), m_pending(new QLabel),
      m_recording(new ElidedLabel(QStringLiteral("recording")))
{
    m_pending->setObjectName(QStringLiteral("pending-runs"));
    theme::applyTo(this);
    setSizeGripEnabled(false);
    keepTranslated(this, [this] {
        m_pending->setToolTip(tr("Saved runs that the server doesn't have yet"));
        setPendingRuns(m_pendingCount);
    });
    addWidget(m_message, 1);
    for (QLabel *label : {m_pending, static_cast<QLabel *>(m_recording)}) {
        label->hide();
        addPermanentWidget(label);
    }
}

void WindowStatus::setMessage(const QString &text)
{
    m_message->setText(text);
    m_message->setToolTip(text);
}

QLabel *WindowStatus::makeFailure(const QString &text)
{
    auto *failure = new ElidedLabel(QStringLiteral("failure"));
    failure->setText(text);
    addPermanentWidget(failure);
    return failure;
}

void WindowStatus::addFailure(const QString &text)
{
    if (m_failures.contains(text))
        return;
    m_failures << text;
    makeFailure(text);
}

void WindowStatus::setSendingProblem(const QString &text)
{
    delete m_sendingProblem;
    m_sendingProblem = text.isEmpty() ? nullptr : makeFailure(text);
}

void WindowStatus::setRecording(const QString &fileName)
{
    m_recording->setText(tr("● REC %1").arg(fileName));
    m_recording->setVisible(!fileName.isEmpty());
}

void WindowStatus::setPendingRuns(int count)
{
    m_pendingCount = count;
    m_pending->setText(count == 1 ? tr("1 run to send") : tr("%1 runs to send").arg(count));
    m_pending->setVisible(count > 0);
    if (count == 0)
        setSendingProblem({});
}

}
