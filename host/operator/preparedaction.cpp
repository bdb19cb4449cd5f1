#include "operator/preparedaction.h"

#include "device/faults.h"
#include "operator/operator.h"
#include "operator/operatortarget.h"
#include "operator/sendinput.h"
#include "operator/unitnumber.h"

#include <QtWidgets/QWidget>

namespace panelhost {

namespace {

using Arguments = QVariantMap;

QString key()
{
    return QStringLiteral("key");
}

PreparedAction rejected(const QString &sentence)
{
    return {{}, {}, sentence};
}

PreparedAction accepted(const OperatorAction &action, const Arguments &arguments, std::function<void()> perform)
{
    return {{action.kind, arguments}, std::move(perform), {}};
}

PreparedAction navigate(OperatorTarget &target, const OperatorAction &action)
{
    const QString name = action.arguments.value(key()).toString();
    const std::optional<Qt::Key> code = navigationKey(name);
    if (!code)
        return rejected(Operator::tr("There is no navigation key \"%1\"; available: %2.")
                            .arg(name, navigationKeys().join(QStringLiteral(", "))));
    return accepted(action, {{key(), name}}, [&target, code] { sendKey(*target.lcd(), *code); });
}

// Finds a key by its hal key or by its name.
const KeyState *findKey(const DeviceState &state, const QVariant &wanted)
{
    bool isNumber = false;
    const int halKey = wanted.toInt(&isNumber);
    for (const KeyState &each : state.keys) {
        if (isNumber ? each.halKey == halKey : each.name == wanted.toString())
            return &each;
    }
    return nullptr;
}

PreparedAction panelKey(OperatorTarget &target, const OperatorAction &action)
{
    const QVariant wanted = action.arguments.value(key());
    const DeviceState state = target.device().state();
    const KeyState *found = findKey(state, wanted);
    if (!found)
        return rejected(Operator::tr("The panel has no key \"%1\".").arg(wanted.toString()));
    return accepted(action, {{key(), found->halKey}}, [&target, kind = action.kind, halKey = found->halKey] {
        if (kind != OperatorAction::Kind::Release)
            target.device().setKeyDown(halKey, true);
        if (kind != OperatorAction::Kind::Hold)
            target.device().setKeyDown(halKey, false);
    });
}

// Returns whether a touch in the middle of the button reaches another widget.
bool isCovered(const QWidget &button, const QWidget &lcd)
{
    const QWidget *touched = lcd.childAt(button.mapTo(&lcd, button.rect().center()));
    return touched != &button && !button.isAncestorOf(touched);
}

// The words for the sides in messages.
[[maybe_unused]] const char *const Sides[] = {QT_TRANSLATE_NOOP("panelhost::Operator", "left"),
                                              QT_TRANSLATE_NOOP("panelhost::Operator", "right")};

PreparedAction soft(OperatorTarget &target, const OperatorAction &action)
{
    const QString side = action.arguments.value(QStringLiteral("side")).toString();
    if (side != QLatin1String("left") && side != QLatin1String("right"))
        return rejected(Operator::tr("There is no soft button \"%1\"; available: left, right.").arg(side));
    QWidget *button = findSoftButton(*target.lcd(), side);
    if (!button)
        return rejected(Operator::tr("The page shows no %1 button.").arg(Operator::tr(side.toUtf8().constData())));
    if (isCovered(*button, *target.lcd()))
        return rejected(Operator::tr("The %1 button is covered.").arg(Operator::tr(side.toUtf8().constData())));
    return accepted(action, {{QStringLiteral("side"), side}},
                    [button] { sendTouch(*button, QRect(QPoint(), button->size()).center()); });
}

QPoint pointOf(const Arguments &arguments)
{
    return {arguments.value(QStringLiteral("x")).toInt(), arguments.value(QStringLiteral("y")).toInt()};
}

void touchAt(OperatorTarget &target, OperatorAction::Kind kind, const QPoint &point)
{
    if (kind == OperatorAction::Kind::TouchDown)
        target.finger().putDown(*target.lcd(), point);
    else if (kind == OperatorAction::Kind::TouchMove)
        target.finger().moveTo(point);
    else
        sendTouch(*target.lcd(), point);
}

PreparedAction touch(OperatorTarget &target, const OperatorAction &action)
{
    const QPoint point = pointOf(action.arguments);
    const QWidget *lcd = target.lcd();
    const bool isDown = target.finger().isDown();
    if (isDown && action.kind != OperatorAction::Kind::TouchMove)
        return rejected(Operator::tr("A finger is on the LCD already."));
    if (!isDown && action.kind == OperatorAction::Kind::TouchMove)
        return rejected(Operator::tr("No finger is on the LCD."));
    if (!lcd->rect().contains(point))
        return rejected(Operator::tr("The point %1, %2 is outside the LCD of %3 x %4.")
                            .arg(point.x())
                            .arg(point.y())
                            .arg(lcd->width())
                            .arg(lcd->height()));
    return accepted(action, {{QStringLiteral("x"), point.x()}, {QStringLiteral("y"), point.y()}},
                    [&target, kind = action.kind, point] { touchAt(target, kind, point); });
}

PreparedAction touchUp(OperatorTarget &target, const OperatorAction &action)
{
    if (!target.finger().isDown())
        return rejected(Operator::tr("No finger is on the LCD."));
    return accepted(action, {}, [&target] { target.finger().lift(); });
}

PreparedAction tbar(OperatorTarget &target, const OperatorAction &action)
{
    bool isNumber = false;
    const double position = action.arguments.value(QStringLiteral("position")).toDouble(&isNumber);
    if (!isNumber || !(position >= 0 && position <= 1))
        return rejected(Operator::tr("The T-Bar's position is a number from 0 to 1."));
    return accepted(action, {{QStringLiteral("position"), position}},
                    [&target, position] { target.device().setTBarPosition(position); });
}

PreparedAction port(OperatorTarget &target, const OperatorAction &action)
{
    const QString portKey = QStringLiteral("port");
    const QString speedKey = QStringLiteral("speed");
    const QString name = action.arguments.value(portKey).toString();
    const DeviceState state = target.device().state();
    if (!findPort(state, name))
        return rejected(Operator::tr("The device has no port \"%1\".").arg(name));
    const bool isBlock = action.kind == OperatorAction::Kind::Block || action.kind == OperatorAction::Kind::Unblock;
    if (isBlock && !name.startsWith(QLatin1String("usb")))
        return rejected(Operator::tr("The port \"%1\" can't be blocked; USB ports can.").arg(name));
    const bool on = action.kind == OperatorAction::Kind::Plug || action.kind == OperatorAction::Kind::Block;
    if (isBlock)
        return accepted(action, {{portKey, name}}, [&target, name, on] { target.device().setBlocked(name, on); });
    Arguments arguments{{portKey, name}};
    const double speed = on ? action.arguments.value(speedKey).toDouble() : 0;
    if (speed > 0)
        arguments.insert(speedKey, speed);
    return accepted(action, arguments, [&target, name, on, speed] {
        target.device().setPlugged(name, on);
        target.device().setPortSpeed(name, speed);
    });
}

PreparedAction calibration(OperatorTarget &target, const OperatorAction &action)
{
    const int command = action.arguments.value(QStringLiteral("command")).toInt();
    const bool ok = action.arguments.value(QStringLiteral("ok")).toBool();
    const QString message = action.arguments.value(QStringLiteral("message")).toString();
    return accepted(
        action,
        {{QStringLiteral("command"), command}, {QStringLiteral("ok"), ok}, {QStringLiteral("message"), message}},
        [&target, command, ok, message] { target.device().finishCalibration(command, ok, message); });
}

PreparedAction part(OperatorTarget &target, const OperatorAction &action)
{
    const QString name = action.arguments.value(QStringLiteral("name")).toString();
    const bool present = action.arguments.value(QStringLiteral("present")).toBool();
    if (!boardParts().contains(name))
        return rejected(Operator::tr("A board has no part \"%1\"; there are %2.")
                            .arg(name, boardParts().join(QStringLiteral(", "))));
    return accepted(action, {{QStringLiteral("name"), name}, {QStringLiteral("present"), present}},
                    [&target, name, present] { target.device().setPartPresent(name, present); });
}

// Returns the arguments that the fault needs. A key is given by its hal key, also if @p given has its name.
Arguments faultArguments(const FaultInfo &info, const Arguments &given, const KeyState *faultyKey)
{
    Arguments arguments;
    for (const QString &name : info.arguments) {
        if (given.contains(name))
            arguments.insert(name, given.value(name));
    }
    if (faultyKey)
        arguments.insert(key(), faultyKey->halKey);
    return arguments;
}

PreparedAction fault(OperatorTarget &target, const OperatorAction &action)
{
    const QString name = action.arguments.value(QStringLiteral("name")).toString();
    const bool on = action.arguments.value(QStringLiteral("on"), true).toBool();
    QString error;
    if (!Faults::check(name, on, action.arguments, &error))
        return rejected(error);
    const FaultInfo &info = *Faults::find(name);
    const QVariant wanted = action.arguments.value(key());
    const DeviceState state = target.device().state();
    const bool isOfKey = info.arguments.contains(key()) && wanted.isValid();
    const KeyState *faultyKey = isOfKey ? findKey(state, wanted) : nullptr;
    if (isOfKey && !faultyKey)
        return rejected(Operator::tr("The panel has no key \"%1\".").arg(wanted.toString()));
    const Arguments needed = faultArguments(info, action.arguments, faultyKey);
    Arguments shown = needed;
    shown.insert(QStringLiteral("name"), name);
    shown.insert(QStringLiteral("on"), on);
    return accepted(action, shown, [&target, name, on, needed] { target.faults().set(name, on, needed, nullptr); });
}

PreparedAction language(OperatorTarget &target, const OperatorAction &action)
{
    const QString code = action.arguments.value(QStringLiteral("code")).toString();
    if (!target.languages().contains(code))
        return rejected(Operator::tr("There is no catalog for the language \"%1\"; available: %2.")
                            .arg(code, target.languages().join(QStringLiteral(", "))));
    return accepted(action, {{QStringLiteral("code"), code}}, [&target, code] { target.setLanguage(code); });
}

// Only the journal, and what is derived from it, depends on the unit.
PreparedAction unit(OperatorTarget &, const OperatorAction &action)
{
    const QString number = action.arguments.value(QStringLiteral("unit")).toString();
    const QString problem = unitNumberProblem(number);
    if (!problem.isEmpty())
        return rejected(problem);
    return accepted(action, {{QStringLiteral("unit"), number}}, [] {});
}

PreparedAction enterFactoryMode(OperatorTarget &target, const OperatorAction &action)
{
    return accepted(action, {}, [&target] { target.enterFactoryMode(); });
}

PreparedAction exitFactoryMode(OperatorTarget &target, const OperatorAction &action)
{
    return accepted(action, {}, [&target] { target.exitFactoryMode(); });
}

}

PreparedAction prepareAction(OperatorTarget &target, const OperatorAction &action)
{
    using Kind = OperatorAction::Kind;
    static const QMap<Kind, PreparedAction (*)(OperatorTarget &, const OperatorAction &)> preparations = {
        {Kind::Navigate, navigate},
        {Kind::Press, panelKey},
        {Kind::Hold, panelKey},
        {Kind::Release, panelKey},
        {Kind::Soft, soft},
        {Kind::Touch, touch},
        {Kind::TouchDown, touch},
        {Kind::TouchMove, touch},
        {Kind::TouchUp, touchUp},
        {Kind::TBar, tbar},
        {Kind::Plug, port},
        {Kind::Unplug, port},
        {Kind::Block, port},
        {Kind::Unblock, port},
        {Kind::Calibration, calibration},
        {Kind::Part, part},
        {Kind::Fault, fault},
        {Kind::Language, language},
        {Kind::Unit, unit},
        {Kind::EnterFactoryMode, enterFactoryMode},
        {Kind::ExitFactoryMode, exitFactoryMode},
    };
    return preparations.value(action.kind)(target, action);
}

}
