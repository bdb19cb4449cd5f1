#pragma once

#include <QtCore/QStringList>
#include <QtCore/QVariantMap>

class QWidget;

namespace panelhost {

/// Returns what an operator sees on the LCD, read from its visible widgets. The LCD itself needn't be visible. Keys:
///   page        "hidden", "menu", "aging", "machine", "repair" or "container"
///   menu.level  1 or 2; menu.items (list of titles); menu.row (int); menu.current (title)
///   title, titleIcon, stepTitle (empty when not visible), steps (list of {text, color, mark}; mark is "pass",
///   "notpass" or "none"), statusIcon (empty when not visible), left, right (caption, empty when the button is
///   hidden), leftEnabled, focus ("left", "right", "none"), log (list of lines)          on the test pages and "repair"
///   container   key of the container on "container"
QVariantMap readScreen(QWidget *lcd);

/// The visible page of the LCD.
struct ShownPage
{
    QString name;   ///< as readScreen() returns it as "page", except that the menu counts as "hidden"
    QWidget *frame; ///< the frame that readScreen() reads; nullptr if there is none
};

ShownPage findShownPage(QWidget *lcd);

/// Adds to @p screen what readScreen() returns for the values that depend on one property of a test page's frame.
void readFrameProperty(const QWidget &frame, const QByteArray &property, QVariantMap &screen);

/// Returns all values that "page" can have.
QStringList pageNames();

/// Returns the frame of the visible test page; nullptr if there is none.
QWidget *findTestFrame(QWidget *lcd);

}
