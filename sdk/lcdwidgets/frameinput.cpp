// Keys and focus of the frame.

#include "frameimpl.h"
#include "framekeys.h"
#include "softbutton.h"

#include <QtGui/QKeyEvent>
#include <QtWidgets/QApplication>
#include <QtWidgets/QGraphicsProxyWidget>
#include <QtWidgets/QGraphicsScene>
#include <QtWidgets/QGraphicsView>

#include <algorithm>

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
        // In a graphics view, setting the focus again would send this event again, without end.
        if (shownFocus() != FocusNone)
            takeKeyboard();
        break;
    case QEvent::DynamicPropertyChange:
        if (static_cast<const QDynamicPropertyChangeEvent &>(event).propertyName() == "dangerousButton")
            showDanger();
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

// Key events that the frame accepts never reach the menu. While the keys belong to the test, the frame accepts all of
// them: a key press then answers the test and must not operate the pages behind it.
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

// A slot may delete the frame, so don't use it after the signal.
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

// Pages set the property by its name: another SDK's frame ignores it.
void FactoryTestFrame::Impl::showDanger()
{
    const QString dangerous = m_frame->property("dangerousButton").toString();
    m_left->setDangerous(dangerous == QLatin1String("left"));
    m_right->setDangerous(dangerous == QLatin1String("right"));
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

// If no button can have the focus, the frame itself takes it, so that Back still works.
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

// A host that scales the LCD shows it in a graphics view, which is then Qt's focus widget.
static bool isShownIn(const QWidget &view, const QWidget &window)
{
    const QGraphicsProxyWidget *proxy = window.graphicsProxyWidget();
    const auto views = proxy ? proxy->scene()->views() : QList<QGraphicsView *>();
    return std::find(views.cbegin(), views.cend(), &view) != views.cend();
}

// An update of the page must not take the focus from another part of the host's window.
bool FactoryTestFrame::Impl::mayTakeKeyboard() const
{
    const QWidget *holder = QApplication::focusWidget();
    return !holder || !holder->isVisible() || isShownIn(*holder, *m_frame->window()) || holder->isAncestorOf(m_frame)
        || m_frame->isAncestorOf(holder);
}

}
