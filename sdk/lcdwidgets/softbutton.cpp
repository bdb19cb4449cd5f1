#include "softbutton.h"

#include "frametheme.h"

#include <QtGui/QPainter>

#include <algorithm>

namespace LCD::Widget {

struct SoftButton::Look
{
    QRgb fill;
    QRgb border;
    QRgb text;
    int borderWidth = 2;
};

SoftButton::SoftButton(const QString &objectName, const QString &nameWithoutCaption, QWidget *parent)
    : QPushButton(parent), m_nameWithoutCaption(nameWithoutCaption)
{
    setObjectName(objectName);
    setAccessibleName(nameWithoutCaption);
    QFont bold = font();
    bold.setBold(true);
    setFont(bold);
}

void SoftButton::setCaption(const QString &caption)
{
    if (caption == m_caption)
        return;
    m_caption = caption;
    // Escape "&": Qt would take it for a shortcut.
    setText(QString(caption).replace(QLatin1Char('&'), QLatin1String("&&")));
    setAccessibleName(caption.trimmed().isEmpty() ? m_nameWithoutCaption : caption);
    update();
}

void SoftButton::setFocusShown(bool shown)
{
    if (shown == m_focusShown)
        return;
    m_focusShown = shown;
    update();
}

void SoftButton::setDangerous(bool dangerous)
{
    if (dangerous == m_dangerous)
        return;
    m_dangerous = dangerous;
    update();
}

QRect SoftButton::captionArea() const
{
    return rect().adjusted(height() / 4, 2, -height() / 4, -2);
}

QFont SoftButton::captionFont() const
{
    return fittedToLine(m_sizes, font(), m_caption, captionArea().size(), height() * 42 / 100);
}

SoftButton::Look SoftButton::look() const
{
    if (!isEnabled())
        return {Theme::Background, Theme::Line, Theme::DisabledText};
    if (isDown())
        return {Theme::ButtonPressed, Theme::Accent, Theme::Text};
    if (m_dangerous)
        return dangerousLook();
    if (m_focusShown)
        return {Theme::Accent, Theme::Accent, Theme::AccentText};
    return {Theme::Button, Theme::Line, Theme::Text};
}

// The focus is shown by a wider border only.
SoftButton::Look SoftButton::dangerousLook() const
{
    return {Theme::Background, Theme::Error, Theme::Error, m_focusShown ? std::max(3, height() / 14) : 2};
}

void SoftButton::paintEvent(QPaintEvent *)
{
    const Look colors = look();
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(QColor(colors.border), colors.borderWidth));
    painter.setBrush(QColor(colors.fill));
    const qreal radius = height() / 6.0;
    const qreal inset = colors.borderWidth / 2.0;
    painter.drawRoundedRect(QRectF(rect()).adjusted(inset, inset, -inset, -inset), radius, radius);

    painter.setFont(captionFont());
    painter.setPen(QColor(colors.text));
    painter.drawText(captionArea(), Qt::AlignCenter | Qt::TextSingleLine, m_caption);
}

}
