#pragma once

#include "device/device.h"
#include "panel/scaledwidget.h"

class QPainter;

namespace panelhost {

/// Returns whether there is a test pattern to draw.
bool hasTestPattern(const TestPattern &pattern);
/// Draws the test pattern @p pattern: one color for type 1, greys up to the level for type 3, none otherwise.
void drawTestPattern(QPainter &painter, const QRect &rect, const TestPattern &pattern);

/// One of the three screens of the panel, with its brightness and test pattern.
class ScreenView : public ScaledWidget
{
    Q_OBJECT

public:
    ScreenView(int index, QWidget *parent);

    void setState(int brightness, const TestPattern &pattern);
    QSize naturalSize() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    void drawIdle(QPainter &painter, const QRect &screenRect) const;

    int m_index;
    int m_brightness = 100;
    TestPattern m_pattern;
};

}
