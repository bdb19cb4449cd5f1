#include "window/speedbar.h"

#include "panel/theme.h"

#include <QtCore/QVariant>
#include <QtWidgets/QBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QToolButton>

namespace panelhost {

static QString clockText(Milliseconds now)
{
    const QChar zero = QLatin1Char('0');
    return QStringLiteral("%1:%2:%3.%4")
        .arg(now / 3600000, 2, 10, zero)
        .arg(now / 60000 % 60, 2, 10, zero)
        .arg(now / 1000 % 60, 2, 10, zero)
        .arg(now / 100 % 10);
}

static QLabel *makeLabel(const QString &name)
{
    auto *label = new QLabel;
    label->setObjectName(name);
    return label;
}

SpeedBar::SpeedBar(QWidget *parent)
    : QWidget(parent), m_message(makeLabel(QStringLiteral("message"))),
      m_recording(makeLabel(QStringLiteral("recording"))), m_pending(makeLabel(QStringLiteral("pending-runs"))),
      m_clock(makeLabel(QStringLiteral("clock")))
{
    setObjectName(QStringLiteral("speed-bar"));
    m_recording->hide();
    m_pending->hide();
    m_pending->setToolTip(QStringLiteral("Saved runs that the server doesn't have yet"));
    m_clock->setToolTip(QStringLiteral("Time on the device since it started"));
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(theme::Grid, theme::Grid / 2, 2 * theme::Grid, theme::Grid / 2);
    row->setSpacing(theme::Grid / 2);
    for (QLabel *label : {m_message, m_recording, m_pending, m_clock}) {
        row->addWidget(label);
        row->addSpacing(theme::Grid);
    }
    addSpeed(row, QStringLiteral("speed-pause"), QStringLiteral("Pause"), Paused);
    addSpeed(row, QStringLiteral("speed-1"), QStringLiteral("Real time"), 1);
    addSpeed(row, QStringLiteral("speed-10"), QStringLiteral("10×"), 10);
    addSpeed(row, QStringLiteral("speed-max"), QStringLiteral("Full speed"), 0);
}

void SpeedBar::addSpeed(QHBoxLayout *row, const QString &name, const QString &text, double factor)
{
    auto *button = new QToolButton(this);
    button->setObjectName(name);
    button->setText(text);
    button->setCheckable(true);
    button->setAutoExclusive(true);
    button->setFocusPolicy(Qt::NoFocus);
    button->setProperty("factor", factor);
    connect(button, &QToolButton::toggled, this, [this, factor](bool on) {
        if (on)
            Q_EMIT speedSelected(factor);
    });
    m_speeds.append(button);
    row->addWidget(button);
}

void SpeedBar::setSpeed(double factor)
{
    for (QToolButton *button : qAsConst(m_speeds))
        if (button->property("factor").toDouble() == factor)
            button->setChecked(true);
}

void SpeedBar::setNow(Milliseconds now)
{
    m_clock->setText(clockText(now));
}

void SpeedBar::setMessage(const QString &text)
{
    m_message->setText(text);
    m_message->setToolTip(text);
    Q_EMIT widthChanged();
}

void SpeedBar::fitToWidth(int width)
{
    constexpr int MinMessageWidth = 32 * theme::Grid;
    const QString text = m_message->toolTip();
    m_message->setText(text);
    const int room = width - (sizeHint().width() - m_message->sizeHint().width());
    m_message->setText(m_message->fontMetrics().elidedText(text, Qt::ElideRight, qMax(room, MinMessageWidth)));
}

void SpeedBar::setRecording(const QString &fileName)
{
    m_recording->setText(QStringLiteral("● REC %1").arg(fileName));
    m_recording->setVisible(!fileName.isEmpty());
    Q_EMIT widthChanged();
}

void SpeedBar::setPendingRuns(int count)
{
    m_pending->setText(count == 1 ? QStringLiteral("1 run to send") : QStringLiteral("%1 runs to send").arg(count));
    m_pending->setVisible(count > 0);
    Q_EMIT widthChanged();
}

}
