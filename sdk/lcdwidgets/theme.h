#pragma once

#include <QtCore/QSize>
#include <QtGui/QColor>

namespace LCD::Widget {

/// The colours of the test pages: light on dark, with one accent for what has the focus.
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

/// Lengths of the frame in pixels, in proportion to a frame of 800x480.
struct Metrics
{
    explicit Metrics(const QSize &frame);

    /// The content font for what setContentFontSize() asks for.
    int contentFont(int size) const;
    int length(int designed) const;

    int titleBar;
    int buttonBar;
    int padding;
    int gap;
    /// Width of the log at the side; 0 when the frame is too narrow for it.
    int logColumn;
    /// Height of the log below the content, for a frame too narrow for a column.
    int logStrip;
    int smallestFont;

private:
    double m_scale;
};

}
