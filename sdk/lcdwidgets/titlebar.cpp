#include "titlebar.h"

#include "fitlabel.h"
#include "frametheme.h"
#include "iconlabel.h"
#include "iconstore.h"

#include <QtGui/QPainter>

#include <algorithm>

namespace LCD::Widget {

TitleBar::TitleBar(QWidget *parent) : QWidget(parent), m_icon(new IconLabel(this)), m_title(new FitLabel(this))
{
    setObjectName(QStringLiteral("FactoryTitleBar"));
    setAccessibleName(QStringLiteral("Title bar"));
    m_icon->setObjectName(QStringLiteral("FactoryIconLabel"));
    m_title->setObjectName(QStringLiteral("FactoryTitleLabel"));
    m_title->setBold();
    m_title->setColor(QColor(Theme::Text));
}

QString TitleBar::title() const
{
    return m_title->text();
}

void TitleBar::setTitle(const QString &title)
{
    m_title->setLine(title);
    m_title->setAccessibleName(title);
}

void TitleBar::setIcon(const QString &objectName, const QString &iconKey)
{
    m_icon->setObjectName(objectName);
    m_icon->setKey(iconKey);
    arrange();
}

void TitleBar::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.fillRect(rect(), QColor(Theme::Bar));
    painter.fillRect(0, height() - 1, width(), 1, QColor(Theme::Line));
}

void TitleBar::resizeEvent(QResizeEvent *)
{
    arrange();
}

void TitleBar::arrange()
{
    const int side = height() * 2 / 3;
    const int margin = std::max(height() / 3, (height() - side) / 2);
    const bool named = !m_icon->key().isEmpty() && !IconStore::contains(m_icon->key());
    const int iconWidth = m_icon->key().isEmpty() ? 0 : named ? std::min(width() / 4, 3 * side) : side;
    m_icon->setGeometry(margin, (height() - side) / 2, iconWidth, side);
    const int left = iconWidth ? margin + iconWidth + side / 3 : margin;
    m_title->setGeometry(left, 0, std::max(0, width() - margin - left), height() - 1);
    m_title->setWantedFont(height() * 45 / 100);
}

}
