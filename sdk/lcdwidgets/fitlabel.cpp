#include "fitlabel.h"

#include "textfit.h"

namespace LCD::Widget {

FitLabel::FitLabel(QWidget *parent) : QLabel(parent)
{
    setTextFormat(Qt::PlainText);
    setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
}

void FitLabel::setLine(const QString &text)
{
    if (text == this->text())
        return;
    setText(text);
    fit();
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
    fit();
}

void FitLabel::resizeEvent(QResizeEvent *event)
{
    QLabel::resizeEvent(event);
    fit();
}

void FitLabel::fit()
{
    const QFont fitted = fittedToLine(font(), text(), contentsRect().size(), m_wantedFont);
    if (fitted != font())
        setFont(fitted);
}

}
