#include "framekeys.h"

#include <QtGui/QKeyEvent>

namespace LCD::Widget {

FrameKey frameKey(int qtKey)
{
    switch (qtKey) {
    case Qt::Key_Escape:
        return FrameKey::Back;
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Space:
        return FrameKey::Activate;
    case Qt::Key_Left:
    case Qt::Key_Backtab:
        return FrameKey::Left;
    case Qt::Key_Right:
    case Qt::Key_Tab:
        return FrameKey::Right;
    case Qt::Key_Up:
        return FrameKey::Up;
    case Qt::Key_Down:
        return FrameKey::Down;
    default:
        return FrameKey::None;
    }
}

bool isKeyEvent(const QEvent &event)
{
    return event.type() == QEvent::KeyPress || event.type() == QEvent::KeyRelease
        || event.type() == QEvent::ShortcutOverride;
}

bool isUnwantedRepeat(const QKeyEvent &event, FrameKey key)
{
    return event.isAutoRepeat() && (key == FrameKey::Back || key == FrameKey::Activate);
}

}
