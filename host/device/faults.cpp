#include "device/faults.h"

#include <algorithm>

namespace panelhost {

namespace {

FaultInfo fault(const char *name, const char *description, const char *where, const QStringList &arguments = {})
{
    return {QString::fromLatin1(name), QString::fromUtf8(description), QString::fromUtf8(where), arguments};
}

bool fail(QString *error, const QString &sentence)
{
    if (error)
        *error = sentence;
    return false;
}

QStringList faultNames()
{
    QStringList names;
    for (const FaultInfo &info : Faults::all())
        names << info.name;
    return names;
}

// "27" and 27 are the same key.
bool isSame(const QVariant &left, const QVariant &right)
{
    return left.toString() == right.toString();
}

}

const QList<FaultInfo> &Faults::all()
{
    static const QStringList key = {QStringLiteral("key")};
    static const QStringList step = {QStringLiteral("step")};
    static const QStringList service = {QStringLiteral("service")};
    constexpr const char *keys = QT_TRANSLATE_NOOP("panelhost::Faults", "keys of the panel");
    constexpr const char *calibration = QT_TRANSLATE_NOOP("panelhost::Faults", "T-Bar calibration");
    constexpr const char *links =
        QT_TRANSLATE_NOOP("panelhost::Faults", "reports and changes of the net and USB ports");
    constexpr const char *stick = QT_TRANSLATE_NOOP("panelhost::Faults", "log export");
    static const QList<FaultInfo> faults = {
        fault("key-dead", QT_TRANSLATE_NOOP("panelhost::Faults", "A key gives no event"), keys, key),
        fault("key-repeats", QT_TRANSLATE_NOOP("panelhost::Faults", "A key gives three events for each press"), keys,
              key),
        fault("key-releases", QT_TRANSLATE_NOOP("panelhost::Faults", "Keys also give an event when they are released"),
              keys),
        fault("led-stuck", QT_TRANSLATE_NOOP("panelhost::Faults", "The LED of a key keeps what it shows"),
              QT_TRANSLATE_NOOP("panelhost::Faults", "LEDs of the keys"), key),
        fault("calibration-fails",
              QT_TRANSLATE_NOOP("panelhost::Faults", "The T-Bar calibration fails at a step, 1 to 7"), calibration,
              step),
        fault("calibration-hangs", QT_TRANSLATE_NOOP("panelhost::Faults", "The T-Bar calibration never answers"),
              calibration),
        fault("service-absent", QT_TRANSLATE_NOOP("panelhost::Faults", "A service can't be found"),
              QT_TRANSLATE_NOOP("panelhost::Faults", "services that the component asks for from then on"), service),
        fault("wrong-payload", QT_TRANSLATE_NOOP("panelhost::Faults", "Link reports hold a value of another type"),
              links),
        fault("null-payload", QT_TRANSLATE_NOOP("panelhost::Faults", "Link reports hold a null pointer"), links),
        fault("empty-payload", QT_TRANSLATE_NOOP("panelhost::Faults", "Link reports hold no value at all"), links),
        fault("empty-report", QT_TRANSLATE_NOOP("panelhost::Faults", "Link reports hold no record"), links),
        fault("garbage-ports",
              QT_TRANSLATE_NOOP("panelhost::Faults", "Link reports hold ports with negative and huge numbers as well"),
              links),
        fault("duplicate-reports", QT_TRANSLATE_NOOP("panelhost::Faults", "Each link report comes twice"), links),
        fault("usb-stick-missing", QT_TRANSLATE_NOOP("panelhost::Faults", "There is no USB stick, or it was unplugged"),
              stick),
        fault("usb-stick-full", QT_TRANSLATE_NOOP("panelhost::Faults", "Half of the data fit onto the USB stick"),
              stick),
        fault("usb-stick-read-only", QT_TRANSLATE_NOOP("panelhost::Faults", "The USB stick is write-protected"), stick),
        fault("factory-reset-fails", QT_TRANSLATE_NOOP("panelhost::Faults", "A factory reset fails"),
              QT_TRANSLATE_NOOP("panelhost::Faults", "factory reset")),
        fault("event-while-replacing",
              QT_TRANSLATE_NOOP("panelhost::Faults", "A key event arrives while the key listener is being replaced"),
              QT_TRANSLATE_NOOP("panelhost::Faults", "registration of a key listener")),
    };
    return faults;
}

const FaultInfo *Faults::find(const QString &name)
{
    const auto found =
        std::find_if(all().begin(), all().end(), [&name](const FaultInfo &info) { return info.name == name; });
    return found == all().end() ? nullptr : &*found;
}

QStringList Faults::allowedValues(const QString &argument)
{
    static const QMap<QString, QStringList> values = {
        {QStringLiteral("step"),
         {QStringLiteral("1"), QStringLiteral("2"), QStringLiteral("3"), QStringLiteral("4"), QStringLiteral("5"),
          QStringLiteral("6"), QStringLiteral("7")}},
        {QStringLiteral("service"),
         {QStringLiteral("lcdKeyboardEvent"), QStringLiteral("lcdFactoryModeBiz"),
          QStringLiteral("lcdFactoryModeWidget"), QStringLiteral("lcdMemoryCacheNetworkPort"),
          QStringLiteral("lcdMemoryCacheNodeUSB"), QStringLiteral("lcdMemoryCacheScreenDetail"),
          QStringLiteral("lcdTBarCalibration"), QStringLiteral("lcdConfig"), QStringLiteral("lcdLogExport"),
          QStringLiteral("lcdFactoryReset")}},
    };
    return values.value(argument);
}

bool Faults::check(const QString &name, bool on, const QVariantMap &arguments, QString *error)
{
    const FaultInfo *info = find(name);
    if (!info)
        return fail(error,
                    QStringLiteral("There is no fault \"%1\"; available: %2.")
                        .arg(name, faultNames().join(QStringLiteral(", "))));
    for (const QString &argument : info->arguments) {
        const QString value = arguments.value(argument).toString();
        if (on && value.isEmpty())
            return fail(error, QStringLiteral("The fault \"%1\" needs \"%2\".").arg(name, argument));
        const QStringList allowed = allowedValues(argument);
        if (!value.isEmpty() && !allowed.isEmpty() && !allowed.contains(value))
            return fail(error,
                        QStringLiteral("The fault \"%1\" has no \"%2\" %3; available: %4.")
                            .arg(name, argument, value, allowed.join(QStringLiteral(", "))));
    }
    return true;
}

bool Faults::set(const QString &name, bool on, const QVariantMap &arguments, QString *error)
{
    if (!check(name, on, arguments, error))
        return false;
    QVariantMap known;
    for (const QString &argument : find(name)->arguments) {
        if (arguments.contains(argument))
            known.insert(argument, arguments.value(argument));
    }
    const auto isKnown = [&known](const QVariantMap &other) {
        return known.isEmpty() || std::equal(known.begin(), known.end(), other.begin(), other.end(), isSame);
    };
    const std::lock_guard lock(m_mutex);
    QList<QVariantMap> &active = m_on[name];
    active.erase(std::remove_if(active.begin(), active.end(), isKnown), active.end());
    if (on)
        active << known;
    return true;
}

bool Faults::isOn(const QString &name) const
{
    const std::lock_guard lock(m_mutex);
    return !m_on.value(name).isEmpty();
}

bool Faults::isOn(const QString &name, const QString &argument, const QVariant &value) const
{
    const std::lock_guard lock(m_mutex);
    const QList<QVariantMap> active = m_on.value(name);
    return std::any_of(active.begin(), active.end(),
                       [&](const QVariantMap &on) { return isSame(on.value(argument), value); });
}

QVariant Faults::argument(const QString &name, const QString &argument) const
{
    const std::lock_guard lock(m_mutex);
    const QList<QVariantMap> active = m_on.value(name);
    return active.isEmpty() ? QVariant() : active.last().value(argument);
}

}
