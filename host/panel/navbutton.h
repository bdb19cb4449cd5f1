#pragma once

#include "panel/control.h"

namespace panelhost {

/// One way of the joystick, Enter or Back: a cap with a sign that navigates the page.
class NavButton : public Control
{
    Q_OBJECT

public:
    /// @p key is what Navigate takes: up, down, left, right, enter or back.
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

/// The knob: turned by the wheel or a click on its side it goes up and down the page, pressed in the middle it enters.
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
