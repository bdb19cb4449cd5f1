#pragma once

#include "textfit.h"

#include <QtWidgets/QWidget>

namespace LCD::Widget {

/// Shows the icon of a key as large as possible. A key without an icon is shown as text.
class IconLabel : public QWidget
{
    Q_OBJECT

public:
    explicit IconLabel(QWidget *parent);

    void setKey(const QString &key);
    QString key() const { return m_key; }

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    void paintName(QPainter &painter);

    QString m_key;
    FontSizes m_sizes;
};

}
