#include "window/faultmenu.h"

#include "panel/theme.h"
#include "panel/translated.h"

#include <QtWidgets/QComboBox>
#include <QtWidgets/QDialog>
#include <QtWidgets/QDialogButtonBox>
#include <QtWidgets/QFormLayout>
#include <QtWidgets/QLineEdit>

namespace panelhost {

// The names of the arguments, as the dialog shows them.
[[maybe_unused]] static const char *const ArgumentNames[] = {
    QT_TRANSLATE_NOOP("panelhost::FaultMenu", "key"),
    QT_TRANSLATE_NOOP("panelhost::FaultMenu", "step"),
    QT_TRANSLATE_NOOP("panelhost::FaultMenu", "service"),
};

static QComboBox *keyBox(const QList<KeyState> &keys)
{
    auto *box = new QComboBox;
    for (const KeyState &key : keys)
        box->addItem(QStringLiteral("%1 (%2)").arg(key.name).arg(key.halKey), key.halKey);
    return box;
}

static QComboBox *portBox(const QList<PortState> &ports)
{
    auto *box = new QComboBox;
    for (const PortState &port : ports)
        box->addItem(port.name, port.name);
    return box;
}

static QVariant numberOrText(const QString &text)
{
    bool isNumber = false;
    const int number = text.toInt(&isNumber);
    return isNumber ? QVariant(number) : QVariant(text);
}

static QComboBox *valueBox(const QStringList &values)
{
    auto *box = new QComboBox;
    for (const QString &value : values)
        box->addItem(value, numberOrText(value));
    return box;
}

static QVariant valueOf(const QWidget *field)
{
    if (const auto *box = qobject_cast<const QComboBox *>(field))
        return box->currentData();
    return numberOrText(qobject_cast<const QLineEdit *>(field)->text());
}

FaultMenu::FaultMenu(const Faults &faults, const Device &device, QWidget *parent)
    : QMenu(parent), m_faults(faults), m_device(device)
{
    setToolTipsVisible(true);
    for (const FaultInfo &fault : Faults::all())
        addFault(fault);
    connect(this, &QMenu::aboutToShow, this, &FaultMenu::updateCheckedActions);
    keepTranslated(this, [this] { setTexts(); });
}

void FaultMenu::addFault(const FaultInfo &fault)
{
    QAction *action = addAction(QString());
    action->setObjectName(QStringLiteral("fault-") + fault.name);
    action->setData(fault.name);
    action->setCheckable(true);
    connect(action, &QAction::triggered, this, [this, fault](bool on) { switchFault(fault, on); });
}

void FaultMenu::setTexts()
{
    setTitle(tr("Fa&ults"));
    const auto all = actions();
    for (QAction *action : all) {
        const FaultInfo &fault = *Faults::find(action->data().toString());
        const QString dots = fault.arguments.isEmpty() ? QString() : QStringLiteral("…");
        action->setText(translatedFault(fault.description) + dots);
        action->setToolTip(QStringLiteral("%1: %2").arg(fault.name, translatedFault(fault.where)));
    }
}

void FaultMenu::updateCheckedActions()
{
    const auto all = actions();
    for (QAction *action : all)
        action->setChecked(m_faults.isOn(action->data().toString()));
}

void FaultMenu::switchFault(const FaultInfo &fault, bool on)
{
    if (on && !fault.arguments.isEmpty())
        return openArgumentDialog(fault);
    Q_EMIT actionTriggered(
        {OperatorAction::Kind::Fault, {{QStringLiteral("name"), fault.name}, {QStringLiteral("on"), on}}});
}

QWidget *FaultMenu::addField(QFormLayout *form, const QString &argument) const
{
    const DeviceState device = m_device.state();
    QWidget *field = nullptr;
    if (argument == QLatin1String("key"))
        field = keyBox(device.keys);
    else if (argument == QLatin1String("port"))
        field = portBox(device.netPorts + device.usbPorts);
    else if (const QStringList values = Faults::allowedValues(argument); !values.isEmpty())
        field = valueBox(values);
    else
        field = new QLineEdit;
    field->setObjectName(argument);
    form->addRow(tr(argument.toUtf8().constData()), field);
    return field;
}

// Emits the signal after the dialog has finished, because performing the action can delete the dialog.
void FaultMenu::triggerWithArguments(const FaultInfo &fault, const QHash<QString, QWidget *> &fields)
{
    QVariantMap arguments{{QStringLiteral("name"), fault.name}, {QStringLiteral("on"), true}};
    for (auto field = fields.cbegin(); field != fields.cend(); ++field)
        arguments.insert(field.key(), valueOf(field.value()));
    const OperatorAction action{OperatorAction::Kind::Fault, arguments};
    QMetaObject::invokeMethod(
        this, [this, action] { Q_EMIT actionTriggered(action); }, Qt::QueuedConnection);
}

void FaultMenu::openArgumentDialog(const FaultInfo &fault)
{
    auto *dialog = new QDialog(parentWidget());
    dialog->setObjectName(QStringLiteral("fault-dialog"));
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setWindowTitle(translatedFault(fault.description));
    theme::applyTo(dialog);
    auto *form = new QFormLayout(dialog);
    QHash<QString, QWidget *> fields;
    for (const QString &argument : fault.arguments)
        fields.insert(argument, addField(form, argument));
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    form->addRow(buttons);
    connect(buttons, &QDialogButtonBox::rejected, dialog, &QDialog::reject);
    connect(buttons, &QDialogButtonBox::accepted, dialog, &QDialog::accept);
    connect(dialog, &QDialog::accepted, this, [this, fault, fields] { triggerWithArguments(fault, fields); });
    dialog->open();
}

}
