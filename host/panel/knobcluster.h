#pragma once

#include <QtWidgets/QWidget>

class QLayout;

namespace panelhost {

struct OperatorAction;
class Control;

/// What the operator's right hand rests on: joystick, knob and the Back key.
class KnobCluster : public QWidget
{
    Q_OBJECT

public:
    explicit KnobCluster(QWidget *parent);

Q_SIGNALS:
    void actionTriggered(const panelhost::OperatorAction &action);

private:
    Control *forwardActions(Control *control);
    QLayout *makeJoystick();
    QLayout *makeKnobRow();
};

}
