#pragma once

#include "lcd/hostpage.h"

namespace panelhost {

/// The home page: the page that the LCD shows outside factory mode.
class HomePage : public HostPage
{
    Q_OBJECT

public:
    explicit HomePage(QWidget *parent);

    void translate() override;

Q_SIGNALS:
    void factoryModeWanted();

protected:
    void keyPressEvent(QKeyEvent *event) override;
};

}
