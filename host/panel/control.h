#pragma once

#include "operator/operatoraction.h"
#include "panel/scaledwidget.h"

namespace panelhost {

/// A control of the front panel. It only emits actionTriggered(). The window performs the action, and then updates the
/// control with the new state of the device. GUI thread.
class Control : public ScaledWidget
{
    Q_OBJECT

public:
    /// @p name is the object name, such as "key-33" or "net1". @p description is the accessible name and the tool tip.
    Control(const QString &name, const QString &description, QWidget *parent);

Q_SIGNALS:
    /// Emitted when the operator uses the control.
    void actionTriggered(const panelhost::OperatorAction &action);
};

}
