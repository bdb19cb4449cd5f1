#pragma once

#include <QtWidgets/QWidget>

class QLayout;

namespace panelhost {

struct OperatorAction;
class Control;

/// The navigation controls: joystick, knob and the Back key.
class NavigationControls : public QWidget
{
    Q_OBJECT

public:
    explicit NavigationControls(QWidget *parent);

Q_SIGNALS:
    /// Emitted when the operator uses one of the controls.
    void actionTriggered(const panelhost::OperatorAction &action);

private:
    Control *forwardActions(Control *control);
    QLayout *makeJoystick();
    QLayout *makeKnobRow();
};

}
