#pragma once

#include <QtWidgets/QWidget>

class QLabel;

namespace panelhost {

/// A page of the host with a title, a text and one control; Escape does the same as the control of a page to leave.
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

/// Stands for a container of the device: a page outside the component that it only names.
class ContainerPage : public HostPage
{
    Q_OBJECT
    Q_PROPERTY(QString containerKey READ containerKey)

public:
    explicit ContainerPage(QWidget *parent);

    QString containerKey() const { return m_containerKey; }
    void setContainerKey(const QString &key);

Q_SIGNALS:
    void left();

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    QString m_containerKey;
};

/// What the LCD shows outside factory mode.
class HomePage : public HostPage
{
    Q_OBJECT

public:
    explicit HomePage(QWidget *parent);

Q_SIGNALS:
    void factoryModeWanted();

protected:
    void keyPressEvent(QKeyEvent *event) override;
};

}
