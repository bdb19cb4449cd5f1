#pragma once

#include <QtWidgets/QWidget>

namespace LCD::Widget {

class FitLabel;
class IconLabel;

/// The title bar of a page with icon and title.
class TitleBar : public QWidget
{
    Q_OBJECT

public:
    explicit TitleBar(QWidget *parent);

    QString title() const;
    void setTitle(const QString &title);
    void setIcon(const QString &objectName, const QString &iconKey);

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    void arrange();

    IconLabel *m_icon;
    FitLabel *m_title;
};

}
