#include "panel/lcdview.h"

#include "panel/translated.h"

#include <QtGui/QFocusEvent>
#include <QtWidgets/QGraphicsProxyWidget>

namespace panelhost {

LcdView::LcdView(QWidget *lcd, QWidget *parent) : QGraphicsView(parent), m_proxy(m_scene.addWidget(lcd))
{
    setObjectName(QStringLiteral("lcd-view"));
    setScene(&m_scene);
    keepTranslated(this, [this] { setAccessibleName(tr("LCD")); });
    setFocusPolicy(Qt::TabFocus);
    m_proxy->setPos(0, 0); // the LCD may have been shown elsewhere before
    m_scene.setSceneRect(lcd->rect());
    setFrameShape(QFrame::NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setAlignment(Qt::AlignLeft | Qt::AlignTop);
    setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform | QPainter::TextAntialiasing);
    lcd->show();
}

LcdView::~LcdView()
{
    QWidget *lcd = m_proxy->widget();
    if (!lcd)
        return;
    lcd->hide();
    m_proxy->setWidget(nullptr);
}

// However the view gets the focus, the LCD keeps its own: Tab would otherwise move it to another widget of the LCD.
void LcdView::focusInEvent(QFocusEvent *)
{
    QFocusEvent plain(QEvent::FocusIn, Qt::OtherFocusReason);
    QGraphicsView::focusInEvent(&plain);
    viewport()->update();
}

void LcdView::resizeEvent(QResizeEvent *event)
{
    QGraphicsView::resizeEvent(event);
    const QRectF lcd = sceneRect();
    setTransform(QTransform::fromScale(width() / lcd.width(), height() / lcd.height()));
}

static QWidget *viewOf(const QWidget &lcd)
{
    const QGraphicsProxyWidget *proxy = lcd.graphicsProxyWidget();
    return proxy ? proxy->scene()->views().value(0) : nullptr;
}

bool isViewOfLcd(const QWidget &widget, const QWidget &lcd)
{
    return viewOf(lcd) == &widget;
}

void focusLcd(QWidget &lcd)
{
    QWidget *inner = lcd.focusWidget();
    if (QWidget *view = viewOf(lcd))
        view->setFocus(Qt::OtherFocusReason);
    (inner ? inner : &lcd)->setFocus(Qt::OtherFocusReason);
}

}
