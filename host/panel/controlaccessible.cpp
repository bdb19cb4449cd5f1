#include "panel/controlaccessible.h"

#include "panel/control.h"
#include "panel/tbarwidget.h"

#include <QtWidgets/QAccessibleWidget>

namespace panelhost {

namespace {

// The interface can be created while the control is being constructed, so it asks the control each time.
class ControlAccessible : public QAccessibleWidget, public QAccessibleValueInterface
{
public:
    explicit ControlAccessible(Control *control) : QAccessibleWidget(control) {}

    QAccessible::Role role() const override { return control()->accessibleRole(); }

    QString text(QAccessible::Text kind) const override
    {
        if (kind == QAccessible::Description || kind == QAccessible::Value)
            return control()->stateText();
        return kind == QAccessible::Help ? control()->toolTip() : QAccessibleWidget::text(kind);
    }

    QAccessible::State state() const override
    {
        QAccessible::State state = QAccessibleWidget::state();
        state.checkable = control()->isCheckable();
        state.checked = control()->isChecked();
        return state;
    }

    QStringList actionNames() const override
    {
        return QStringList(control()->isCheckable() ? toggleAction() : pressAction())
            + QAccessibleWidget::actionNames();
    }

    void doAction(const QString &name) override
    {
        if (name == pressAction() || name == toggleAction())
            control()->activate();
        else
            QAccessibleWidget::doAction(name);
    }

    void *interface_cast(QAccessible::InterfaceType type) override
    {
        if (type == QAccessible::ValueInterface)
            return bar() ? static_cast<QAccessibleValueInterface *>(this) : nullptr;
        return QAccessibleWidget::interface_cast(type);
    }

    // The position of the T-Bar in percent.
    QVariant currentValue() const override { return bar() ? qRound(bar()->position() * 100) : QVariant(); }
    void setCurrentValue(const QVariant &value) override
    {
        if (bar())
            bar()->moveTo(value.toDouble() / 100);
    }
    QVariant maximumValue() const override { return 100; }
    QVariant minimumValue() const override { return 0; }
    QVariant minimumStepSize() const override { return 1; }

private:
    Control *control() const { return static_cast<Control *>(object()); }
    TBarWidget *bar() const { return qobject_cast<TBarWidget *>(object()); }
};

QAccessibleInterface *createInterface(const QString &, QObject *object)
{
    auto *control = qobject_cast<Control *>(object);
    return control ? new ControlAccessible(control) : nullptr;
}

}

void installControlAccessibility()
{
    static const bool isInstalled = [] {
        QAccessible::installFactory(createInterface);
        return true;
    }();
    Q_UNUSED(isInstalled)
}

}
