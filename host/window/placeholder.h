#pragma once

class QLineEdit;

namespace panelhost {

/// Lets the placeholder of @p edit be dimmed by the style sheet of the window, which gives it the color of the text
/// otherwise. Call it once. GUI thread.
void dimPlaceholder(QLineEdit &edit);

}
