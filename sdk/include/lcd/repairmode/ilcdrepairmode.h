#pragma once

#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtWidgets/QWidget>

namespace LCD::RepairMode {

/// The pages behind the menu's containers: the interface of the component "lcd.repair.mode". The host places the widget
/// where it shows containers, and shows and hides it. Call all functions on the GUI thread. The order of the virtual
/// functions is part of the interface.
class ILcdRepairMode : public QWidget
{
    Q_OBJECT

public:
    using QWidget::QWidget;
    ~ILcdRepairMode() override = default;

    /// Returns the container keys that have a page, such as "container.factorytest.repairmode.screenlight".
    virtual QStringList containerKeys() const = 0;
    /// Leaves the open page and enters the page of @p containerKey. Returns false and changes nothing if there is no
    /// such page.
    virtual bool showPage(const QString &containerKey) = 0;
    /// Ends the test of the open page and restores the hardware. Does nothing if no page is open.
    virtual void leavePage() = 0;

Q_SIGNALS:
    /// Emitted when the operator goes back. The host calls leavePage() and shows the menu.
    void backRequested();
};

static_assert(sizeof(ILcdRepairMode) == sizeof(QWidget), "the interface holds no data");

}
