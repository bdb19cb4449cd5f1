#pragma once

#include "device/device.h"
#include "device/faults.h"
#include "operator/operatoraction.h"

#include <QtCore/QHash>
#include <QtWidgets/QMenu>

class QFormLayout;

namespace panelhost {

/// A menu of all faults. A fault that is on is checked. A fault with arguments opens a dialog for them.
class FaultMenu : public QMenu
{
    Q_OBJECT

public:
    FaultMenu(const Faults &faults, const Device &device, QWidget *parent);

Q_SIGNALS:
    /// Emitted when a fault was switched.
    void actionTriggered(const panelhost::OperatorAction &action);

private:
    void addFault(const FaultInfo &fault);
    void setTexts();
    void updateCheckedActions();
    void switchFault(const FaultInfo &fault, bool on);
    void openArgumentDialog(const FaultInfo &fault);
    void triggerWithArguments(const FaultInfo &fault, const QHash<QString, QWidget *> &fields);
    QWidget *addField(QFormLayout *form, const QString &argument) const;

    const Faults &m_faults;
    const Device &m_device;
};

}
