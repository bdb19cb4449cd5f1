#pragma once

#include <QtGui/QColor>
#include <QtGui/QFont>

class QRectF;
class QPainter;
class QWidget;

/// The colors, distances and fonts of the window. All widgets of the window use them.
namespace panelhost::theme {

constexpr int Grid = 8; ///< all distances are multiples of it or of its half
constexpr int Radius = 4;

constexpr QRgb WindowBackground = 0xff14171b;
constexpr QRgb Panel = 0xff24292f;
constexpr QRgb PanelEdge = 0xff343b43;
constexpr QRgb Recess = 0xff1a1e23;
constexpr QRgb RecessEdge = 0xff0e1114;
constexpr QRgb Cap = 0xff3a424b;
constexpr QRgb CapEdge = 0xff4d5761;
constexpr QRgb CapDown = 0xff2c333a;
constexpr QRgb TextColor = 0xffe8ecef;
constexpr QRgb DimTextColor = 0xff98a3ae;
constexpr QRgb DarkTextColor = 0xff14171b;
constexpr QRgb Accent = 0xff4fb3ff;
constexpr QRgb Metal = 0xffaab4bd;
constexpr QRgb Black = 0xff000000;

constexpr QRgb Red = 0xfff0483e;
constexpr QRgb Green = 0xff35d06a;
constexpr QRgb Blue = 0xff3f8cff;
constexpr QRgb White = 0xfff4f7fa;
constexpr QRgb Amber = 0xffffb02e;

QFont font(int pixels, bool bold = false);
/// Mixes @p a and @p b. Returns @p a if @p share is 0 and @p b if it is 1.
QColor mix(QRgb a, QRgb b, double share);
/// Returns the dark or the light text color, whichever is readable on @p ground.
QColor textColorOn(const QColor &ground);

/// Draws a recess of the panel.
void drawRecess(QPainter &painter, const QRectF &rect, QRgb ground = Recess);
/// Draws a cap with the color @p ground, raised or pressed.
void drawCap(QPainter &painter, const QRectF &rect, const QColor &ground, bool isDown);
/// Returns the font of a caption of the panel with @p pixels at scale 1. At a smaller @p scale it is larger, in the
/// coordinates of the panel, so that it can be read as long as the panel has room for it.
QFont captionFont(double scale, int pixels, bool bold = false);
/// Draws a small caption at the scale of @p painter. Elides a text that is wider than @p rect.
void drawCaption(QPainter &painter, const QRectF &rect, int flags, const QString &text, QRgb color = DimTextColor);

/// Sets the colors of all tool tips.
void applyToToolTips();
/// Sets palette, font and style sheet of a menu, dock or dialog. Not for the LCD, which has its own style.
void applyTo(QWidget *widget);

}
