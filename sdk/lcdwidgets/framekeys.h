#pragma once

#include <QtCore/QEvent>

class QKeyEvent;

namespace LCD::Widget {

/// The function of a key on a test page.
enum class FrameKey {
    None,
    Back,
    Activate,
    Left,
    Right,
    Up,
    Down,
};

FrameKey frameKey(int qtKey);

/// Returns true for key presses, key releases and shortcut overrides, which Qt sends before a key press.
bool isKeyEvent(const QEvent &event);

/// Returns true if @p event is an auto-repeat that must be ignored. A held key may repeat moves, but not clicks.
bool isUnwantedRepeat(const QKeyEvent &event, FrameKey key);

}
