#pragma once

#include "device/device.h"

#include <QtWidgets/QWidget>

class QPainter;

namespace panelhost {

/// Draws what a screen shows for @p pattern: type 1 one colour, type 3 greys up to the level, else nothing special.
void drawTestPattern(QPainter &painter, const QRect &rect, const TestPattern &pattern);

/// One of the panel's three screens, as bright as the device has made it.
class ScreenView : public QWidget
{
    Q_OBJECT

public:
    ScreenView(int index, QWidget *parent);

    void setState(int brightness, const TestPattern &pattern);
    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    void drawIdle(QPainter &painter, const QRect &screenRect) const;

    int m_index;
    int m_brightness = 100;
    TestPattern m_pattern;
};

}
