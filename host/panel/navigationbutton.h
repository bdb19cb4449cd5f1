#pragma once

#include "panel/control.h"

namespace panelhost {

/// A navigation button: a direction of the joystick, Enter or Back.
class NavigationButton : public Control
{
    Q_OBJECT

public:
    /// @p key is the argument of the action Navigate: up, down, left, right, enter or back.
    NavigationButton(const QString &key, const QString &sign, QWidget *parent);

    QSize naturalSize() const override;
    void activate() override;

protected:
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;

private:
    QFont signFont() const;

    QString m_key;
    QString m_sign;
    bool m_isDown = false;
};

}
