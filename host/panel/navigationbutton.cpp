#include "panel/navigationbutton.h"

#include "panel/theme.h"
#include "panel/translated.h"

#include <QtGui/QMouseEvent>
#include <QtGui/QPainter>

namespace panelhost {

using theme::Grid;

// The descriptions of the buttons.
[[maybe_unused]] static const char *const Names[] = {
    QT_TRANSLATE_NOOP("panelhost::NavigationButton", "Up"),
    QT_TRANSLATE_NOOP("panelhost::NavigationButton", "Down"),
    QT_TRANSLATE_NOOP("panelhost::NavigationButton", "Left"),
    QT_TRANSLATE_NOOP("panelhost::NavigationButton", "Right"),
    QT_TRANSLATE_NOOP("panelhost::NavigationButton", "Enter"),
    QT_TRANSLATE_NOOP("panelhost::NavigationButton", "Back"),
};

NavigationButton::NavigationButton(const QString &key, const QString &sign, QWidget *parent)
    : Control(QStringLiteral("nav-") + key, parent), m_key(key), m_sign(sign)
{
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    keepTranslated(this, [this] {
        setDescription(tr((m_key.left(1).toUpper() + m_key.mid(1)).toUtf8().constData()));
        setHelp(tr("Moves in the page that the LCD shows. The arrow keys, Return and Escape do the same."));
    });
}

QSize NavigationButton::naturalSize() const
{
    return {6 * Grid, 5 * Grid};
}

// As large as on the other captions, as long as it fits.
QFont NavigationButton::signFont() const
{
    const int natural = m_sign.size() > 1 ? 11 : 14;
    QFont font = theme::captionFont(scale(), natural, true);
    while (font.pixelSize() > natural && QFontMetrics(font).horizontalAdvance(m_sign) > area().width() - 4)
        font.setPixelSize(font.pixelSize() - 1);
    return font;
}

void NavigationButton::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.scale(scale(), scale());
    theme::drawRecess(painter, area(), theme::RecessEdge);
    theme::drawCap(painter, area(), QColor(theme::Cap), m_isDown);
    painter.setPen(QColor(theme::TextColor));
    painter.setFont(signFont());
    painter.drawText(area(), Qt::AlignCenter, m_sign);
}

void NavigationButton::activate()
{
    Q_EMIT actionTriggered(navigationAction(m_key));
}

void NavigationButton::mousePressEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton)
        return;
    m_isDown = true;
    update();
    activate();
}

void NavigationButton::mouseReleaseEvent(QMouseEvent *)
{
    m_isDown = false;
    update();
}

}
