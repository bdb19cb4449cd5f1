#include "panel/keybutton.h"

#include "panel/led.h"
#include "panel/theme.h"

#include <QtGui/QMouseEvent>
#include <QtGui/QPainter>

namespace panelhost {

KeyButton::KeyButton(const KeyState &key, QWidget *parent)
    : Control(QStringLiteral("key-%1").arg(key.halKey), QStringLiteral("%1 (key %2)").arg(key.name).arg(key.halKey),
              parent),
      m_key(key)
{
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    connect(&m_holdTimer, &RealTimeTimer::timeout, this, [this] {
        m_isHolding = true;
        trigger(OperatorAction::Kind::Hold);
    });
}

QSize KeyButton::sizeHint() const
{
    return {6 * theme::Grid, 5 * theme::Grid};
}

void KeyButton::setState(const KeyState &key, Milliseconds now)
{
    const int level = ledLevel(key.led, now);
    const bool isSame = level == m_level && key.isDown == m_key.isDown && key.led.color == m_key.led.color;
    m_key = key;
    m_level = level;
    if (!isSame)
        update();
}

QColor KeyButton::capColor() const
{
    return theme::mix(theme::Cap, ledLight(m_key.led.color), m_level == 0 ? 0 : 0.15 + 0.85 * m_level / 100.0);
}

void KeyButton::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    theme::drawRecess(painter, rect(), theme::RecessEdge);
    theme::drawCap(painter, rect(), capColor(), isDown());
    painter.setPen(theme::textColorOn(capColor()));
    const QString label = m_key.name.isEmpty() ? QString::number(m_key.halKey) : m_key.name;
    painter.setFont(theme::font(label.size() > 5 ? 9 : label.size() > 4 ? 10 : 11, true));
    painter.drawText(rect().adjusted(3, 3, -3, -3), Qt::AlignCenter | Qt::TextWordWrap, label);
}

void KeyButton::trigger(OperatorAction::Kind kind)
{
    Q_EMIT actionTriggered({kind, {{QStringLiteral("key"), m_key.halKey}}});
}

void KeyButton::setMouseDown(bool down)
{
    m_isMouseDown = down;
    update();
}

void KeyButton::mousePressEvent(QMouseEvent *event)
{
    if (event->button() == Qt::RightButton)
        return trigger(m_key.isDown ? OperatorAction::Kind::Release : OperatorAction::Kind::Hold);
    if (event->button() != Qt::LeftButton)
        return;
    if (m_key.isDown)
        return trigger(OperatorAction::Kind::Release);
    setMouseDown(true);
    m_holdTimer.startOnce(HoldAfter);
}

void KeyButton::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton || !m_isMouseDown)
        return;
    m_holdTimer.stop();
    setMouseDown(false);
    const bool wasHolding = std::exchange(m_isHolding, false);
    trigger(wasHolding ? OperatorAction::Kind::Release : OperatorAction::Kind::Press);
}

void KeyButton::hideEvent(QHideEvent *event)
{
    m_holdTimer.stop();
    m_isMouseDown = false;
    Control::hideEvent(event);
}

}
