#pragma once

#include "operator/operatoraction.h"

#include <QtWidgets/QWidget>

namespace panelhost {

/// A part of the drawn device that an operator touches. It tells what was done and does nothing by itself: the
/// window hands the action to the operator, and the device's answer comes back as a new state. GUI thread.
class Control : public QWidget
{
    Q_OBJECT

public:
    /// @p name is what tests and assistive tools find the control by, such as "key-33" or "net1".
    Control(const QString &name, const QString &description, QWidget *parent);

Q_SIGNALS:
    void actionTriggered(const panelhost::OperatorAction &action);
};

}
