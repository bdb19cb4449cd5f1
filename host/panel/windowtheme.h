#pragma once

#include <QtGui/QColor>

/// The colors of the window around the front panel, which has the same colors in both schemes.
namespace panelhost::theme {

enum class Scheme {
    Dark,
    Light
};

struct Colors
{
    QRgb window;
    QRgb panel;
    QRgb edge;
    QRgb recess;
    QRgb cap;
    QRgb text;
    QRgb dimText;
    QRgb accent;
    QRgb onAccent; ///< text on the accent, and on red and green
    QRgb red;
    QRgb green;
    QRgb blue;
    QRgb amber;
};

/// Returns the colors of the current scheme, which is dark at first. GUI thread.
const Colors &colors();
Scheme scheme();
/// Changes the colors of all widgets to which applyTo() was applied, and of all tool tips.
void setScheme(Scheme scheme);

}
