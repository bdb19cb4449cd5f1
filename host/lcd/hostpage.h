#pragma once

#include <QtWidgets/QWidget>

class QLabel;

namespace panelhost {

/// A page of the host with a title, a text and one button.
class HostPage : public QWidget
{
    Q_OBJECT

public:
    HostPage(const QString &control, QWidget *parent);

Q_SIGNALS:
    void controlUsed();

protected:
    void setTexts(const QString &title, const QString &text);

private:
    QLabel *m_title;
    QLabel *m_text;
};

}
