#pragma once

#include "operator/operatoraction.h"
#include "panel/scaledwidget.h"

#include <QtGui/QAccessible>

namespace panelhost {

/// A control of the front panel. It only emits actionTriggered(). The window performs the action, and then updates the
/// control with the new state of the device. Tab gives it the focus, and Space uses it like a click. GUI thread.
class Control : public ScaledWidget
{
    Q_OBJECT

public:
    /// @p name is the object name, such as "key-33" or "net1".
    Control(const QString &name, QWidget *parent);

    /// Sets the accessible name, which is also the first line of the tool tip.
    void setDescription(const QString &description);
    /// Sets the lines of the tool tip that say what the control does.
    void setHelp(const QString &help);
    /// Shows a marker while @p faults, one per line, isn't empty. The tool tip lists them.
    void setFaults(const QString &faults);
    const QString &faults() const { return m_faults; }

    /// Uses the control as a click does. Space calls it.
    virtual void activate() {}
    /// Does the other thing that the control can do, such as holding a key. Shift+Space calls it.
    virtual void activateOther() {}
    /// Handles a key that has a meaning of its own for this control. Returns false if it has none.
    virtual bool handleKey(int key);

    virtual QAccessible::Role accessibleRole() const { return QAccessible::PushButton; }
    /// Returns what an assistive technology says about the state, such as "plugged".
    virtual QString stateText() const { return {}; }
    /// Returns whether the control has two positions, and is in the second.
    virtual bool isCheckable() const { return false; }
    virtual bool isChecked() const { return false; }

Q_SIGNALS:
    /// Emitted when the operator uses the control.
    void actionTriggered(const panelhost::OperatorAction &action);

protected:
    bool event(QEvent *event) override;
    /// Sets a line of the tool tip that belongs to the current state; none if it is empty.
    void setStateHelp(const QString &help);
    /// Tells assistive technologies when stateText() has changed.
    void announceState();

private:
    void updateToolTip();
    void drawFocusRing();
    void drawFaultMarker();

    QString m_help;
    QString m_stateHelp;
    QString m_faults;
    QString m_announced;
};

}
