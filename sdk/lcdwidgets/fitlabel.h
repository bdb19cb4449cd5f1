#pragma once

#include "textfit.h"

#include <QtWidgets/QLabel>

namespace LCD::Widget {

/// A label with one line of text. If the text doesn't fit, the font gets smaller when the label is painted.
class FitLabel : public QLabel
{
    Q_OBJECT

public:
    explicit FitLabel(QWidget *parent);

    void setLine(const QString &text);
    void setBold();
    void setColor(const QColor &color);
    /// Sets the font size in pixels that is used if the text fits.
    void setWantedFont(int pixelSize);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    void fit();

    int m_wantedFont = 16;
    FontSizes m_sizes;
};

}
