#include "window/timemenu.h"

#include "panel/theme.h"
#include "window/speedbar.h"

#include <QtWidgets/QActionGroup>

namespace panelhost {

TimeMenu::TimeMenu(QWidget *parent) : QMenu(tr("&Time"), parent), m_speeds(new QActionGroup(this))
{
    theme::applyTo(this);
    addSpeed(tr("&Pause"), SpeedBar::Paused, "Ctrl+P");
    addSpeed(tr("&Real time"), 1, "Ctrl+1");
    addSpeed(tr("&10 times as fast"), 10, "Ctrl+2");
    addSpeed(tr("&Full speed"), 0, "Ctrl+3");
    addSeparator();
    addAction(tr("&Step to the next event"), this, &TimeMenu::stepTriggered, QKeySequence(QStringLiteral("Ctrl+.")))
        ->setObjectName(QStringLiteral("time-step"));
}

// The shortcut of the pause continues at the speed before it.
void TimeMenu::addSpeed(const QString &text, double factor, const char *shortcut)
{
    const auto select = [this, factor] {
        const bool continues = factor == SpeedBar::Paused && m_speed == SpeedBar::Paused;
        Q_EMIT speedSelected(continues ? m_running : factor);
    };
    QAction *action = addAction(text, this, select, QKeySequence(QString::fromLatin1(shortcut)));
    action->setCheckable(true);
    action->setData(factor);
    m_speeds->addAction(action);
}

void TimeMenu::setSpeed(double factor)
{
    m_speed = factor;
    if (factor != SpeedBar::Paused)
        m_running = factor;
    const auto actions = m_speeds->actions();
    for (QAction *action : actions)
        action->setChecked(action->data().toDouble() == factor);
}

}
