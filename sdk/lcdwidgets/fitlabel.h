#pragma once

#include <QtWidgets/QLabel>

namespace LCD::Widget {

/// One line of text that takes a smaller font rather than be cut.
class FitLabel : public QLabel
{
    Q_OBJECT

public:
    explicit FitLabel(QWidget *parent);

    void setLine(const QString &text);
    void setBold();
    void setColor(const QColor &color);
    /// The font size in pixels that the text has where there is room for it.
    void setWantedFont(int pixelSize);

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    void fit();

    int m_wantedFont = 16;
};

}
