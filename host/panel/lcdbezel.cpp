#include "panel/lcdbezel.h"

#include "panel/lcdinput.h"
#include "panel/lcdview.h"
#include "panel/theme.h"

#include <QtGui/QPainter>

namespace panelhost {

constexpr int BezelWidth = 2 * theme::Grid;
constexpr QSize MaxLcdSize(1024, 600); ///< at scale 1

static QSize shownSize(const QSize &lcd)
{
    const bool fits = lcd.width() <= MaxLcdSize.width() && lcd.height() <= MaxLcdSize.height();
    return fits ? lcd : lcd.scaled(MaxLcdSize, Qt::KeepAspectRatio);
}

LcdBezel::LcdBezel(QWidget *lcd, QWidget *parent)
    : ScaledWidget(parent), m_lcdSize(shownSize(lcd->size())), m_view(new LcdView(lcd, this)),
      m_input(new LcdInput(lcd, this))
{
    setObjectName(QStringLiteral("lcd-bezel"));
    m_input->raise();
}

QSize LcdBezel::naturalSize() const
{
    return m_lcdSize + QSize(2 * BezelWidth, 2 * BezelWidth);
}

void LcdBezel::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    const QRect place = scaled(area().adjusted(BezelWidth, BezelWidth, -BezelWidth, -BezelWidth));
    m_view->setGeometry(place);
    m_input->setGeometry(place);
}

void LcdBezel::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.scale(scale(), scale());
    theme::drawRecess(painter, area(), theme::Black);
}

}
