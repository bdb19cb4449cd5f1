#pragma once

#include <QtCore/QPointer>
#include <QtWidgets/QWidget>

namespace panelhost {

class ContainerPage;
class HomePage;

/// The LCD of the device, with its size and style. It shows the component or one of two pages of the host: the page of
/// a container and the home page. At first it shows none of them.
class Lcd : public QWidget
{
    Q_OBJECT

public:
    explicit Lcd(const QSize &size);
    ~Lcd() override;

    /// Adds the component's widget. The component still owns it and can delete it at any time.
    void setComponent(QWidget *component);
    /// Adds the widget of the repair mode, which isn't owned either.
    void setRepairMode(QWidget *repairMode);
    void showComponent();
    void showRepairMode();
    void showContainer(const QString &containerKey);
    void showHome();
    /// Shows the pages of the host in the current language.
    void translate();

Q_SIGNALS:
    void containerLeft();
    void factoryModeWanted();

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    void embed(QWidget *widget);
    void showPage(QWidget *page);
    QList<QWidget *> pages() const;

    QPointer<QWidget> m_component;
    QPointer<QWidget> m_repairMode;
    ContainerPage *m_container;
    HomePage *m_home;
};

}
