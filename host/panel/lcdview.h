#pragma once

#include <QtWidgets/QGraphicsScene>
#include <QtWidgets/QGraphicsView>

class QGraphicsProxyWidget;

namespace panelhost {

/// Shows the LCD at any size. The LCD keeps its own size in pixels and is scaled as a whole. It isn't owned and is
/// taken out when the view is deleted.
class LcdView : public QGraphicsView
{
    Q_OBJECT

public:
    LcdView(QWidget *lcd, QWidget *parent);
    ~LcdView() override;

protected:
    void focusInEvent(QFocusEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    QGraphicsScene m_scene;
    QGraphicsProxyWidget *m_proxy;
};

/// Returns whether @p widget is the view that shows @p lcd. The view has the focus whenever a widget of the LCD has it.
bool isViewOfLcd(const QWidget &widget, const QWidget &lcd);
/// Gives the keyboard focus to the widget of @p lcd that had it last, also if the LCD is in a view.
void focusLcd(QWidget &lcd);

}
