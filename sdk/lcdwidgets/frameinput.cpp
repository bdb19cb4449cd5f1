// Keys and focus of the frame.

#include "frameimpl.h"
#include "framekeys.h"
#include "softbutton.h"

#include <QtGui/QKeyEvent>
#include <QtWidgets/QApplication>

namespace LCD::Widget {

namespace {

QString focusName(FocusType focus)
{
    switch (focus) {
    case FocusLeftButton:
        return QStringLiteral("left");
    case FocusRightButton:
        return QStringLiteral("right");
    case FocusNone:
        break;
    }
    return QStringLiteral("none");
}

}

bool FactoryTestFrame::Impl::eventFilter(QObject *watched, QEvent *event)
{
    if (isKeyEvent(*event))
        return filterKey(static_cast<QKeyEvent *>(event));
    return watched == m_frame && filterFrameEvent(*event);
}

bool FactoryTestFrame::Impl::filterFrameEvent(const QEvent &event)
{
    switch (event.type()) {
    case QEvent::Show:
        arrange();
        if (!event.spontaneous())
            takeKeyboard();
        break;
    case QEvent::FocusIn:
        takeKeyboard();
        break;
    case QEvent::LayoutRequest:
    case QEvent::Resize:
    case QEvent::FontChange:
        arrange();
        break;
    default:
        break;
    }
    return false;
}

// What the frame takes never travels up to the menu. While the test has the keys it takes them all: a press on the
// panel answers the test then, and mustn't work the screens behind it.
bool FactoryTestFrame::Impl::filterKey(QKeyEvent *event)
{
    const FrameKey key = frameKey(event->key());
    const bool claimed = key != FrameKey::None || (!m_keyEventsEnabled && event->type() != QEvent::ShortcutOverride);
    if (!claimed)
        return false;
    event->accept();
    if (event->type() == QEvent::KeyPress && m_keyEventsEnabled && !isUnwantedRepeat(*event, key))
        act(key);
    return true;
}

// A handler of the frame's signals may delete the frame: nothing may come after the signal.
void FactoryTestFrame::Impl::act(FrameKey key)
{
    switch (key) {
    case FrameKey::Back:
        if (m_respondsToBack)
            Q_EMIT m_frame->signalBackPrevious();
        break;
    case FrameKey::Activate:
        activateFocused();
        break;
    case FrameKey::Up:
        if (m_steps->scroll(-1))
            break;
        [[fallthrough]];
    case FrameKey::Left:
        moveFocus(m_left);
        break;
    case FrameKey::Down:
        if (m_steps->scroll(1))
            break;
        [[fallthrough]];
    case FrameKey::Right:
        moveFocus(m_right);
        break;
    case FrameKey::None:
        break;
    }
}

void FactoryTestFrame::Impl::activateFocused()
{
    switch (shownFocus()) {
    case FocusLeftButton:
        m_left->click();
        break;
    case FocusRightButton:
        m_right->click();
        break;
    case FocusNone:
        break;
    }
}

void FactoryTestFrame::Impl::moveFocus(SoftButton *towards)
{
    SoftButton *other = towards == m_left ? m_right : m_left;
    SoftButton *target = towards->isUsable() ? towards : other;
    if (target->isUsable())
        setWantedFocus(target == m_left ? FocusLeftButton : FocusRightButton);
}

void FactoryTestFrame::Impl::setWantedFocus(FocusType focus)
{
    m_wantedFocus = focus;
    applyFocus();
}

FocusType FactoryTestFrame::Impl::shownFocus() const
{
    if (m_wantedFocus == FocusLeftButton && m_left->isUsable())
        return FocusLeftButton;
    if (m_wantedFocus == FocusRightButton && m_right->isUsable())
        return FocusRightButton;
    return FocusNone;
}

void FactoryTestFrame::Impl::applyFocus()
{
    const FocusType focus = shownFocus();
    m_left->setFocusShown(focus == FocusLeftButton);
    m_right->setFocusShown(focus == FocusRightButton);
    publish("controlFocus", focusName(focus));
    if (m_frame->isVisible() && mayTakeKeyboard())
        takeKeyboard();
}

// With no button to hold it the frame itself holds the keyboard, so that Back still works.
void FactoryTestFrame::Impl::takeKeyboard()
{
    const FocusType focus = shownFocus();
    QWidget *holder = m_frame;
    if (focus == FocusLeftButton)
        holder = m_left;
    else if (focus == FocusRightButton)
        holder = m_right;
    holder->setFocus(Qt::OtherFocusReason);
}

// An update of the page mustn't take the keyboard from another part of the host's window.
bool FactoryTestFrame::Impl::mayTakeKeyboard() const
{
    const QWidget *holder = QApplication::focusWidget();
    return !holder || !holder->isVisible() || holder->isAncestorOf(m_frame) || m_frame->isAncestorOf(holder);
}

}
