#pragma once

#include "time/realtimetimer.h"

#include <QtCore/QObject>
#include <QtCore/QPoint>
#include <QtCore/QPointer>

class QWidget;

namespace panelhost {

/// Shows and hides tool tips by the wall clock, as long as it exists. Qt's own timers run by the virtual clock, so that
/// Qt shows no tool tip while the window is paused. GUI thread.
class RealTimeToolTips : public QObject
{
    Q_OBJECT

public:
    explicit RealTimeToolTips(QObject *parent);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void showTip();
    void hideTipOf(const QWidget *other);

    RealTimeTimer m_wakeUp;
    QPoint m_place;               ///< of the mouse pointer on the screen
    QPointer<QWidget> m_tipOwner; ///< the widget whose tool tip was shown last
};

}
