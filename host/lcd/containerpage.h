#pragma once

#include "lcd/hostpage.h"

namespace panelhost {

/// The page of a container: a page of the device that the component only requests by name.
class ContainerPage : public HostPage
{
    Q_OBJECT
    Q_PROPERTY(QString containerKey READ containerKey)

public:
    explicit ContainerPage(QWidget *parent);

    QString containerKey() const { return m_containerKey; }
    void setContainerKey(const QString &key);
    void translate() override;

Q_SIGNALS:
    void left();

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    QString m_containerKey;
};

}
