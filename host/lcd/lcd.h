#pragma once

#include <QtCore/QPointer>
#include <QtWidgets/QWidget>

namespace panelhost {

class ContainerPage;
class HomePage;

/// The screen of the device that the component shows itself on, at the device's size and in its look. Beside the
/// component it holds two pages of the host: a container's, and the one outside factory mode.
class Lcd : public QWidget
{
    Q_OBJECT

public:
    explicit Lcd(const QSize &size);
    ~Lcd() override;

    /// Takes the component's widget in; it still belongs to the component, which may end it at any time.
    void setComponent(QWidget *component);
    /// Takes the widget of the repair mode in, on the same terms.
    void setRepairMode(QWidget *repairMode);
    void showComponent();
    void showRepairMode();
    void showContainer(const QString &containerKey);
    void showHome();

Q_SIGNALS:
    void containerLeft();
    void factoryModeWanted();

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    void takeIn(QWidget *widget);
    void showPage(QWidget *page);
    QList<QWidget *> pages() const;

    QPointer<QWidget> m_component;
    QPointer<QWidget> m_repairMode;
    ContainerPage *m_container;
    HomePage *m_home;
};

}
