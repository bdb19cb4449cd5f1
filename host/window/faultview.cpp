#include "window/faultview.h"

#include "panel/theme.h"
#include "panel/translated.h"

#include <QtWidgets/QBoxLayout>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QTreeWidget>

namespace panelhost {

namespace {

enum Column {
    DescriptionColumn,
    WhereColumn
};

enum Role {
    NameRole = Qt::UserRole,
    ValueRole
};

QList<QPair<QString, QVariant>> valuesOf(const QString &argument, const DeviceState &device)
{
    QList<QPair<QString, QVariant>> values;
    if (argument == QLatin1String("key")) {
        for (const KeyState &key : device.keys)
            values.append({QStringLiteral("%1 (%2)").arg(key.name).arg(key.halKey), key.halKey});
    }
    const QStringList allowed = Faults::allowedValues(argument);
    for (const QString &value : allowed) {
        bool isNumber = false;
        const int number = value.toInt(&isNumber);
        values.append({value, isNumber ? QVariant(number) : QVariant(value)});
    }
    return values;
}

}

FaultView::FaultView(const Faults &faults, const Device &device, QWidget *parent)
    : QDockWidget(parent), m_faults(faults), m_tree(new QTreeWidget)
{
    setObjectName(QStringLiteral("faults"));
    theme::applyTo(this);
    m_tree->setObjectName(QStringLiteral("fault-tree"));
    m_tree->setColumnCount(2);
    m_tree->header()->setStretchLastSection(false);
    m_tree->header()->setSectionResizeMode(DescriptionColumn, QHeaderView::Stretch);
    const DeviceState state = device.state();
    for (const FaultInfo &fault : Faults::all())
        addFault(fault, state);
    connect(m_tree, &QTreeWidget::itemChanged, this, &FaultView::switchItem);
    auto *clear = new QPushButton;
    clear->setObjectName(QStringLiteral("faults-clear"));
    keepTranslated(this, [this, clear] {
        clear->setText(tr("Clear all"));
        clear->setToolTip(tr("Switches all faults off"));
        setTexts();
    });
    connect(clear, &QPushButton::clicked, this, &FaultView::clearAll);
    auto *content = new QWidget(this);
    content->setObjectName(QStringLiteral("faults-content"));
    content->setAttribute(Qt::WA_StyledBackground);
    auto *column = new QVBoxLayout(content);
    column->addWidget(m_tree);
    column->addWidget(clear, 0, Qt::AlignRight);
    setWidget(content);
}

// What a fault applies to is elided only in a narrow dock, where the faults need the room.
void FaultView::resizeEvent(QResizeEvent *event)
{
    m_tree->header()->resizeSection(WhereColumn, qMax(16 * theme::Grid, width() / 3));
    QDockWidget::resizeEvent(event);
}

void FaultView::setTexts()
{
    const QSignalBlocker blocker(m_tree);
    setWindowTitle(tr("Faults"));
    m_tree->setHeaderLabels({tr("Fault"), tr("Applies to")});
    for (int row = 0; row < m_tree->topLevelItemCount(); ++row) {
        QTreeWidgetItem *item = m_tree->topLevelItem(row);
        const FaultInfo &fault = *Faults::find(item->data(DescriptionColumn, NameRole).toString());
        const QString where = translatedFault(fault.where);
        item->setText(DescriptionColumn, translatedFault(fault.description));
        item->setText(WhereColumn, where);
        const QString help = QStringLiteral("%1\n%2: %3").arg(item->text(DescriptionColumn), fault.name, where);
        item->setToolTip(DescriptionColumn, help);
        item->setToolTip(WhereColumn, help);
    }
}

void FaultView::addFault(const FaultInfo &fault, const DeviceState &device)
{
    auto *item = new QTreeWidgetItem(m_tree);
    item->setData(DescriptionColumn, NameRole, fault.name);
    item->setCheckState(DescriptionColumn, Qt::Unchecked);
    for (const QString &argument : fault.arguments) {
        // A fault with values is switched on by one of them, and off for all.
        const auto values = valuesOf(argument, device);
        for (const auto &value : values)
            addValue(item, value.first, value.second);
    }
}

void FaultView::addValue(QTreeWidgetItem *parent, const QString &text, const QVariant &value)
{
    auto *item = new QTreeWidgetItem(parent, QStringList(text));
    item->setData(DescriptionColumn, NameRole, parent->data(DescriptionColumn, NameRole));
    item->setData(DescriptionColumn, ValueRole, value);
    item->setCheckState(DescriptionColumn, Qt::Unchecked);
}

bool FaultView::isOn(const QTreeWidgetItem &item) const
{
    const QString name = item.data(DescriptionColumn, NameRole).toString();
    const QVariant value = item.data(DescriptionColumn, ValueRole);
    if (!value.isValid())
        return m_faults.isOn(name);
    return m_faults.isOn(name, Faults::find(name)->arguments.constFirst(), value);
}

void FaultView::update(QTreeWidgetItem *item) const
{
    const Qt::CheckState state = isOn(*item) ? Qt::Checked : Qt::Unchecked;
    if (item->checkState(DescriptionColumn) != state)
        item->setCheckState(DescriptionColumn, state);
    for (int row = 0; row < item->childCount(); ++row)
        update(item->child(row));
}

void FaultView::poll()
{
    const QSignalBlocker blocker(m_tree);
    for (int row = 0; row < m_tree->topLevelItemCount(); ++row)
        update(m_tree->topLevelItem(row));
}

void FaultView::emitSwitch(const QString &name, bool on, const QVariantMap &arguments)
{
    QVariantMap all{{QStringLiteral("name"), name}, {QStringLiteral("on"), on}};
    for (auto argument = arguments.cbegin(); argument != arguments.cend(); ++argument)
        all.insert(argument.key(), argument.value());
    Q_EMIT actionTriggered({OperatorAction::Kind::Fault, all});
}

// Checking a fault that needs a value opens its values instead.
void FaultView::switchItem(QTreeWidgetItem *item)
{
    const QString name = item->data(DescriptionColumn, NameRole).toString();
    const QVariant value = item->data(DescriptionColumn, ValueRole);
    const bool on = item->checkState(DescriptionColumn) == Qt::Checked;
    if (on == isOn(*item))
        return;
    if (value.isValid())
        emitSwitch(name, on, {{Faults::find(name)->arguments.constFirst(), value}});
    else if (on && item->childCount() > 0)
        item->setExpanded(true);
    else
        emitSwitch(name, on, {});
    poll();
}

void FaultView::clearAll()
{
    for (const FaultInfo &fault : Faults::all()) {
        if (m_faults.isOn(fault.name))
            emitSwitch(fault.name, false, {});
    }
    poll();
}

}
