#pragma once

#include "device/device.h"
#include "panel/control.h"
#include "time/realtimetimer.h"
#include "time/virtualclock.h"

namespace panelhost {

/// Returns @p text as the caption of a key at @p scale: on one or two lines in @p room, in unscaled pixels, elided if
/// it is longer.
QString keyCaption(const QString &text, const QSize &room, double scale = 1);

/// A key of the panel with its LED. A click presses the key, a long press holds it until the mouse button is released,
/// and the right mouse button holds it until the next click.
class KeyButton : public Control
{
    Q_OBJECT

public:
    static constexpr int HoldAfter = 400; ///< how long a press lasts until it holds the key, in real milliseconds

    KeyButton(const KeyState &key, QWidget *parent);

    void setState(const KeyState &key, Milliseconds now);
    int halKey() const { return m_key.halKey; }
    /// Returns the level that the LED shows, in percent.
    int level() const { return m_level; }
    bool isDown() const { return m_key.isDown || m_isMouseDown; }
    QSize naturalSize() const override;
    void activate() override;
    void activateOther() override;
    QString stateText() const override;
    bool isChecked() const override { return isDown(); }

protected:
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void hideEvent(QHideEvent *event) override;

private:
    void trigger(OperatorAction::Kind kind);
    void setMouseDown(bool down);
    void toggleHold();
    QString caption() const;
    QColor capColor() const;

    KeyState m_key;
    int m_level = 0;
    bool m_isMouseDown = false;
    bool m_isHolding = false;
    RealTimeTimer m_holdTimer;
};

}
