#include "window/speedbar.h"

#include "panel/theme.h"
#include "panel/translated.h"
#include "time/timetext.h"

#include <QtCore/QVariant>
#include <QtWidgets/QBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QToolButton>

namespace panelhost {

constexpr Milliseconds MaxWithMilliseconds = 1000LL * 3600 * 1000; ///< there is no room for them from then on

SpeedBar::SpeedBar(QWidget *parent) : QWidget(parent), m_clock(new QLabel)
{
    setObjectName(QStringLiteral("speed-bar"));
    m_clock->setObjectName(QStringLiteral("clock"));
    m_clock->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    // The buttons don't move while the time gets longer.
    m_clock->setMinimumWidth(QFontMetrics(theme::font(13, true)).horizontalAdvance(QStringLiteral("100:00:00.000")));
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(theme::Grid, theme::Grid / 2, 2 * theme::Grid, theme::Grid / 2);
    row->setSpacing(theme::Grid / 2);
    row->addWidget(m_clock);
    row->addSpacing(theme::Grid);
    addSpeed(row, QStringLiteral("speed-pause"), Paused);
    addSpeed(row, QStringLiteral("speed-1"), 1);
    addSpeed(row, QStringLiteral("speed-10"), 10);
    addSpeed(row, QStringLiteral("speed-max"), 0);
    keepTranslated(this, [this] { setTexts(); });
}

void SpeedBar::setTexts()
{
    m_clock->setToolTip(tr("Time on the device since it started"));
    const QStringList names{tr("Pause"), tr("Real time"), tr("10×"), tr("Full speed")};
    const QStringList help{tr("The clock of the device stands still (Ctrl+P)"),
                           tr("The clock of the device follows real time (Ctrl+1)"),
                           tr("The clock of the device runs ten times as fast (Ctrl+2)"),
                           tr("The clock of the device jumps from one event to the next (Ctrl+3)")};
    for (int index = 0; index < m_speeds.size(); ++index) {
        m_speeds[index]->setText(names[index]);
        m_speeds[index]->setToolTip(help[index]);
    }
}

void SpeedBar::addSpeed(QHBoxLayout *row, const QString &name, double factor)
{
    auto *button = new QToolButton(this);
    button->setObjectName(name);
    button->setCheckable(true);
    button->setFocusPolicy(Qt::TabFocus);
    button->setProperty("factor", factor);
    // Not exclusive, because Tab would then reach only the one that is checked.
    connect(button, &QToolButton::clicked, this, [this, factor] { Q_EMIT speedSelected(factor); });
    m_speeds.append(button);
    row->addWidget(button);
}

void SpeedBar::setSpeed(double factor)
{
    for (QToolButton *button : qAsConst(m_speeds))
        button->setChecked(button->property("factor").toDouble() == factor);
}

void SpeedBar::setNow(Milliseconds now)
{
    const bool isShort = now < MaxWithMilliseconds;
    m_clock->setText(isShort ? timeText(now) : timeText(now).section(QLatin1Char('.'), 0, 0));
}

}
