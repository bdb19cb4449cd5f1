#include "window/timemenu.h"

#include "panel/theme.h"
#include "panel/translated.h"
#include "window/speedbar.h"

#include <QtWidgets/QActionGroup>

namespace panelhost {

TimeMenu::TimeMenu(QWidget *parent) : QMenu(parent), m_speeds(new QActionGroup(this))
{
    theme::applyTo(this);
    addSpeed(SpeedBar::Paused, "Ctrl+P");
    addSpeed(1, "Ctrl+1");
    addSpeed(10, "Ctrl+2");
    addSpeed(0, "Ctrl+3");
    addSeparator();
    QAction *step = addAction(QString(), this, &TimeMenu::stepTriggered, QKeySequence(QStringLiteral("Ctrl+.")));
    step->setObjectName(QStringLiteral("time-step"));
    keepTranslated(this, [this, step] {
        setTitle(tr("&Time"));
        const QStringList names{tr("&Pause"), tr("&Real time"), tr("&10 times as fast"), tr("&Full speed")};
        for (int index = 0; index < names.size(); ++index)
            m_speeds->actions().at(index)->setText(names[index]);
        step->setText(tr("&Step to the next event"));
    });
}

// The shortcut of the pause continues at the speed before it.
void TimeMenu::addSpeed(double factor, const char *shortcut)
{
    const auto select = [this, factor] {
        const bool continues = factor == SpeedBar::Paused && m_speed == SpeedBar::Paused;
        Q_EMIT speedSelected(continues ? m_running : factor);
    };
    QAction *action = addAction(QString(), this, select, QKeySequence(QString::fromLatin1(shortcut)));
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
