#include "panel/lcdbezel.h"

#include "panel/lcdinput.h"
#include "panel/theme.h"

#include <QtGui/QPainter>

namespace panelhost {

constexpr int BezelWidth = 2 * theme::Grid;

LcdBezel::LcdBezel(QWidget *lcd, QWidget *parent) : QWidget(parent), m_lcd(lcd), m_input(new LcdInput(lcd, this))
{
    setObjectName(QStringLiteral("lcd-bezel"));
    const QRect place(QPoint(BezelWidth, BezelWidth), m_lcd->size());
    setFixedSize(place.size() + QSize(2 * BezelWidth, 2 * BezelWidth));
    m_lcd->setParent(this);
    m_lcd->setGeometry(place);
    m_lcd->show();
    m_input->setGeometry(place);
    m_input->raise();
}

// The LCD belongs to the session, which ends after the window.
LcdBezel::~LcdBezel()
{
    m_lcd->setParent(nullptr);
}

void LcdBezel::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    theme::drawRecess(painter, rect(), theme::Black);
}

}
