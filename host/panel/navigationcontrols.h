#pragma once

#include "panel/scaledwidget.h"

namespace panelhost {

struct OperatorAction;
class Control;

/// The navigation controls: joystick, knob and the Back key.
class NavigationControls : public ScaledWidget
{
    Q_OBJECT

public:
    explicit NavigationControls(QWidget *parent);

    QSize naturalSize() const override;

Q_SIGNALS:
    /// Emitted when the operator uses one of the controls.
    void actionTriggered(const panelhost::OperatorAction &action);

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    struct Place
    {
        Control *control;
        QPoint topLeft;
    };

    void add(Control *control, const QPoint &topLeft);

    QList<Place> m_places;
};

}
