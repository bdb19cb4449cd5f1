#pragma once

#include <QtCore/QEvent>

class QKeyEvent;

namespace LCD::Widget {

/// What a key of the panel means on a test page.
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

/// Key presses, releases and the question of a shortcut, with which Qt announces a press.
bool isKeyEvent(const QEvent &event);

/// A held key repeats a move, and never a decision.
bool isUnwantedRepeat(const QKeyEvent &event, FrameKey key);

}
