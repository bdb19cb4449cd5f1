#pragma once

#include <QtCore/QVariantMap>

class QWidget;

namespace panelhost {

/// What an operator sees on the LCD, read from the widgets that are visible. Keys:
///   page        "hidden", "menu", "aging", "machine" or "container"
///   menu.level  1 or 2; menu.items (list of titles); menu.row (int); menu.current (title)
///   title, titleIcon, stepTitle, steps (list of {text, color, mark}), statusIcon (empty when not visible),
///   left, right (caption, empty when the button is hidden), leftEnabled, focus ("left", "right", "none"),
///   log (list of lines)                       on the two test pages
///   container   key of the container on "container"
QVariantMap readScreen(QWidget *lcd);

}
