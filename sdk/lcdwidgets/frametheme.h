#pragma once

#include <QtCore/QSize>
#include <QtGui/QColor>

namespace LCD::Widget {

/// The colors of the test pages. Accent marks the focus.
namespace Theme {

constexpr QRgb Background = 0xff101418;
constexpr QRgb Bar = 0xff1a2128;
constexpr QRgb LogBackground = 0xff0b0e12;
constexpr QRgb Line = 0xff2e3943;
constexpr QRgb Text = 0xfff2f5f7;
constexpr QRgb QuietText = 0xff9fabb6;
constexpr QRgb DisabledText = 0xff5c6873;
constexpr QRgb Button = 0xff2a343e;
constexpr QRgb ButtonPressed = 0xff1f6fb5;
constexpr QRgb Accent = 0xff3da5ff;
constexpr QRgb AccentText = 0xff06111b;
constexpr QRgb Warning = 0xffffb547;
constexpr QRgb Error = 0xffff483c;

}

/// The lengths of a frame in pixels. They scale with the frame and are designed for 800x480.
struct Metrics
{
    explicit Metrics(const QSize &frame);

    /// Returns the size in pixels of the content font for @p size as passed to setContentFontSize().
    int contentFont(int size) const;
    /// Returns the length in pixels for a length of @p designed pixels in a frame of 800x480.
    int length(int designed) const;

    int titleBar;
    int buttonBar;
    int padding;
    int gap;
    /// The width of the log at the right; 0 if the frame is too narrow for it.
    int logColumn;
    /// The height of the log below the content if the frame is too narrow for a column.
    int logStrip;
    int smallestFont;

private:
    double m_scale;
};

}
