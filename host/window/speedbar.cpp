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

SpeedBar::SpeedBar(QWidget *parent) : QWidget(parent), m_clock(new QLabel)
{
    setObjectName(QStringLiteral("speed-bar"));
    m_clock->setObjectName(QStringLiteral("clock"));
    m_clock->setToolTip(QStringLiteral("Time on the device since it started"));
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(theme::Grid, theme::Grid / 2, 2 * theme::Grid, theme::Grid / 2);
    row->setSpacing(theme::Grid / 2);
    row->addWidget(m_clock);
    row->addSpacing(theme::Grid);
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
    m_clock->setText(clockText(now));
}

}
