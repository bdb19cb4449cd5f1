#pragma once

#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtWidgets/QWidget>

namespace LCD::RepairMode {

/// The pages behind the menu's containers as their host drives them: the component "lcd.repair.mode". The host keeps
/// the widget where it shows containers, and shows and hides it itself. All operations belong on the GUI thread. The
/// order of the virtual operations is part of the interface.
class ILcdRepairMode : public QWidget
{
    Q_OBJECT

public:
    using QWidget::QWidget;
    ~ILcdRepairMode() override = default;

    /// The container keys that have a page, such as "container.factorytest.repairmode.screenlight".
    virtual QStringList containerKeys() const = 0;
    /// Enters the page of @p containerKey, after leaving the one that is open. False, and no change, when there is no
    /// such page.
    virtual bool showPage(const QString &containerKey) = 0;
    /// Ends the test of the open page and puts the hardware back to how it was. Does nothing when no page is open.
    virtual void leavePage() = 0;

Q_SIGNALS:
    /// The operator went back; the host answers with leavePage() and shows the factory menu again.
    void backRequested();
};

static_assert(sizeof(ILcdRepairMode) == sizeof(QWidget), "the interface holds no data");

}
