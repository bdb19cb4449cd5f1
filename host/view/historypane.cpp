#include "view/historypane.h"

#include "panel/frontpanel.h"
#include "panel/theme.h"
#include "panel/windowtheme.h"

#include <QtGui/QPainter>

namespace panelhost {

/// Shows a picture of the LCD in its place.
class LcdPicture : public QWidget
{
public:
    explicit LcdPicture(const QImage &picture) : QWidget(nullptr) { setPicture(picture); }

    void setPicture(const QImage &picture)
    {
        m_picture = picture;
        setFixedSize(picture.size() / picture.devicePixelRatio());
    }

protected:
    void paintEvent(QPaintEvent *) override { QPainter(this).drawImage(0, 0, m_picture); }

private:
    QImage m_picture;
};

HistoryPane::HistoryPane(const SessionHistory &history, QWidget *parent)
    : QWidget(parent), m_history(history), m_lcd(std::make_unique<LcdPicture>(history.lcd(0))),
      m_panel(std::make_unique<FrontPanel>(history.device(0), m_lcd.get(), nullptr))
{
    setObjectName(QStringLiteral("history-pane"));
    showLine(0);
}

HistoryPane::~HistoryPane() = default;

void HistoryPane::showLine(qint64 line)
{
    m_lcd->setPicture(m_history.lcd(line));
    m_panel->setState(m_history.device(line), m_history.timeOf(line));
    update();
}

QSize HistoryPane::sizeHint() const
{
    return m_panel->sizeHint();
}

QSize HistoryPane::minimumSizeHint() const
{
    return m_panel->minimumSizeHint();
}

void HistoryPane::resizeEvent(QResizeEvent *)
{
    m_panel->resize(size());
}

void HistoryPane::paintEvent(QPaintEvent *)
{
    QPainter(this).drawPixmap(0, 0, m_panel->grab());
}

}
