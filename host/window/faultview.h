#pragma once

#include "device/device.h"
#include "device/faults.h"
#include "operator/operatoraction.h"

#include <QtWidgets/QDockWidget>

class QTreeWidget;
class QTreeWidgetItem;

namespace panelhost {

/// A dock with all faults and what they apply to. A check mark switches a fault, or a fault for one value of its
/// argument, such as one key.
class FaultView : public QDockWidget
{
    Q_OBJECT

public:
    FaultView(const Faults &faults, const Device &device, QWidget *parent);

    /// Shows which faults are on.
    void poll();

Q_SIGNALS:
    /// Emitted when a fault was switched.
    void actionTriggered(const panelhost::OperatorAction &action);

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    void setTexts();
    void addFault(const FaultInfo &fault, const DeviceState &device);
    void addValue(QTreeWidgetItem *parent, const QString &text, const QVariant &value);
    bool isOn(const QTreeWidgetItem &item) const;
    void update(QTreeWidgetItem *item) const;
    void switchItem(QTreeWidgetItem *item);
    void clearAll();
    void emitSwitch(const QString &name, bool on, const QVariantMap &arguments);

    const Faults &m_faults;
    QTreeWidget *m_tree;
};

}
