#include "panel/lcdbay.h"

#include "panel/lcdoverlay.h"
#include "panel/look.h"

#include <QtGui/QPainter>

namespace panelhost {

constexpr int Bezel = 2 * look::Grid;

LcdBay::LcdBay(QWidget *lcd, QWidget *parent) : QWidget(parent), m_lcd(lcd), m_glass(new LcdOverlay(lcd, this))
{
    setObjectName(QStringLiteral("lcd-bay"));
    const QRect place(QPoint(Bezel, Bezel), m_lcd->size());
    setFixedSize(place.size() + QSize(2 * Bezel, 2 * Bezel));
    m_lcd->setParent(this);
    m_lcd->setGeometry(place);
    m_lcd->show();
    m_glass->setGeometry(place);
    m_glass->raise();
}

// The LCD belongs to the session, which ends after the window.
LcdBay::~LcdBay()
{
    m_lcd->setParent(nullptr);
}

void LcdBay::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    look::drawWell(painter, rect(), look::Black);
}

}
