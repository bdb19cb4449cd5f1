#include "fitlabel.h"

namespace LCD::Widget {

FitLabel::FitLabel(QWidget *parent) : QLabel(parent)
{
    setTextFormat(Qt::PlainText);
    setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
}

void FitLabel::setLine(const QString &text)
{
    if (text != this->text())
        setText(text);
}

void FitLabel::setBold()
{
    QFont bold = font();
    bold.setBold(true);
    setFont(bold);
}

void FitLabel::setColor(const QColor &color)
{
    if (palette().color(QPalette::WindowText) == color)
        return;
    QPalette colors = palette();
    colors.setColor(QPalette::WindowText, color);
    setPalette(colors);
}

void FitLabel::setWantedFont(int pixelSize)
{
    if (m_wantedFont == pixelSize)
        return;
    m_wantedFont = pixelSize;
    update();
}

// The font is chosen when it is needed: each size that is tried loads a font, and a page sets its texts before it has
// its size.
void FitLabel::paintEvent(QPaintEvent *event)
{
    fit();
    QLabel::paintEvent(event);
}

void FitLabel::fit()
{
    const QFont fitted = fittedToLine(m_sizes, font(), text(), contentsRect().size(), m_wantedFont);
    if (fitted != font())
        setFont(fitted);
}

}
