#pragma once

#include "panel/control.h"

namespace panelhost {

/// A navigation button: a direction of the joystick, Enter or Back.
class NavButton : public Control
{
    Q_OBJECT

public:
    /// @p key is the argument of the action Navigate: up, down, left, right, enter or back.
    NavButton(const QString &key, const QString &sign, QWidget *parent);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;

private:
    QString m_key;
    QString m_sign;
    bool m_isDown = false;
};

/// The knob. The mouse wheel or a click on a side turns it, which navigates up or down. A click in the middle is Enter.
class Knob : public Control
{
    Q_OBJECT

public:
    explicit Knob(QWidget *parent);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;

private:
    void navigate(const QString &key, int turn);
    QRectF disc() const;

    int m_turn = 0; ///< degrees
};

}
