#include "panel/keybutton.h"

#include "panel/led.h"
#include "panel/theme.h"
#include "panel/translated.h"

#include <QtGui/QMouseEvent>
#include <QtGui/QPainter>

namespace panelhost {

constexpr int CaptionSize = 10; ///< the same for all keys, in pixels

// Breaks the caption after the word that still fits, if there is room for two lines. Elides the last line.
QString keyCaption(const QString &text, const QSize &room, double scale)
{
    const QFontMetrics metrics(theme::captionFont(scale, CaptionSize, true));
    const int width = room.width();
    const auto fits = [&](const QString &line) { return metrics.horizontalAdvance(line) <= width; };
    if (fits(text))
        return text;
    int end = 2 * metrics.height() <= room.height() ? text.size() : 0;
    while (end > 0 && !fits(text.left(end).trimmed()))
        end = text.lastIndexOf(QLatin1Char(' '), end - 1);
    if (end <= 0)
        return metrics.elidedText(text, Qt::ElideRight, width);
    return text.left(end).trimmed() + QLatin1Char('\n')
        + metrics.elidedText(text.mid(end).trimmed(), Qt::ElideRight, width);
}

KeyButton::KeyButton(const KeyState &key, QWidget *parent)
    : Control(QStringLiteral("key-%1").arg(key.halKey), parent), m_key(key)
{
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    keepTranslated(this, [this] {
        setDescription(tr("%1 (key %2)").arg(m_key.name).arg(m_key.halKey));
        setHelp(tr("Click or Space: press. Long press: hold. Right button or Shift+Space: hold until the next click."));
    });
    connect(&m_holdTimer, &RealTimeTimer::timeout, this, [this] {
        m_isHolding = true;
        trigger(OperatorAction::Kind::Hold);
    });
}

QSize KeyButton::naturalSize() const
{
    return {6 * theme::Grid + theme::Grid / 2, 5 * theme::Grid};
}

void KeyButton::setState(const KeyState &key, Milliseconds now)
{
    const int level = ledLevel(key.led, now);
    const bool isSame = level == m_level && key.isDown == m_key.isDown && key.led.color == m_key.led.color;
    m_key = key;
    m_level = level;
    if (!isSame)
        update();
    announceState();
}

// A blinking LED is named as such, not by its level at this moment.
QString KeyButton::stateText() const
{
    const QStringList colors{tr("red"), tr("blue"), tr("green"), tr("white")};
    QStringList parts;
    const KeyLed &led = m_key.led;
    if (led.brightness <= 0)
        parts << tr("dark");
    else
        parts << (led.isBlinking() ? tr("blinking") : tr("lit")) << colors.value(led.color, tr("amber"))
              << tr("%1 %").arg(qMin(led.brightness, 100));
    if (m_key.isDown)
        parts << tr("held");
    if (!faults().isEmpty())
        parts << tr("fault");
    return parts.join(QStringLiteral(", "));
}

void KeyButton::activate()
{
    trigger(m_key.isDown ? OperatorAction::Kind::Release : OperatorAction::Kind::Press);
}

void KeyButton::activateOther()
{
    toggleHold();
}

void KeyButton::toggleHold()
{
    trigger(m_key.isDown ? OperatorAction::Kind::Release : OperatorAction::Kind::Hold);
}

QString KeyButton::caption() const
{
    return m_key.name.isEmpty() ? QString::number(m_key.halKey) : m_key.name;
}

QColor KeyButton::capColor() const
{
    return theme::mix(theme::Cap, ledLight(m_key.led.color), m_level == 0 ? 0 : 0.15 + 0.85 * m_level / 100.0);
}

void KeyButton::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.scale(scale(), scale());
    theme::drawRecess(painter, area(), theme::RecessEdge);
    theme::drawCap(painter, area(), capColor(), isDown());
    painter.setPen(theme::textColorOn(capColor()));
    painter.setFont(theme::captionFont(scale(), CaptionSize, true));
    const QSize room = area().size() - QSize(4, 0);
    painter.drawText(area(), Qt::AlignCenter | Qt::TextDontClip, keyCaption(caption(), room, scale()));
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
        return toggleHold();
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
