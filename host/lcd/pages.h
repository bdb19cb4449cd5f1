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

/// The page of a container: a page of the device that the component only requests by name.
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

/// The page that the LCD shows outside factory mode.
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
