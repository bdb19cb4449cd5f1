#include "device/faults.h"

#include <algorithm>

namespace panelhost {

namespace {

FaultInfo fault(const char *name, const char *description, const QStringList &arguments = {})
{
    return {QString::fromLatin1(name), QString::fromUtf8(description), arguments};
}

bool refuse(QString *error, const QString &sentence)
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

// "27" and 27 are one key, whoever wrote it.
bool isSame(const QVariant &left, const QVariant &right)
{
    return left.toString() == right.toString();
}

}

const QList<FaultInfo> &Faults::all()
{
    static const QString key = QStringLiteral("key");
    static const QList<FaultInfo> faults = {
        fault("key-dead", "A key gives no event", {key}),
        fault("key-repeats", "A key gives three events for each press", {key}),
        fault("key-releases", "Keys give an event when they go up, too"),
        fault("led-stuck", "The LED of a key keeps what it shows", {key}),
        fault("calibration-fails", "The T-Bar calibration fails at a step, 1 to 7", {QStringLiteral("step")}),
        fault("calibration-hangs", "The T-Bar calibration never answers"),
        fault("service-absent", "A service can't be found", {QStringLiteral("service")}),
        fault("wrong-payload", "Link reports hold a value of another type"),
        fault("null-payload", "Link reports hold a null pointer"),
        fault("empty-payload", "Link reports hold no value at all"),
        fault("empty-report", "Link reports hold no record"),
        fault("garbage-ports", "Link reports hold ports with negative and huge numbers as well"),
        fault("duplicate-reports", "Each link report comes twice"),
        fault("event-while-replacing", "A key event arrives while the key listener is being replaced"),
    };
    return faults;
}

const FaultInfo *Faults::find(const QString &name)
{
    const auto found =
        std::find_if(all().begin(), all().end(), [&name](const FaultInfo &info) { return info.name == name; });
    return found == all().end() ? nullptr : &*found;
}

bool Faults::check(const QString &name, bool on, const QVariantMap &arguments, QString *error)
{
    const FaultInfo *info = find(name);
    if (!info)
        return refuse(error,
                      QStringLiteral("There is no fault \"%1\"; there are %2.")
                          .arg(name, faultNames().join(QStringLiteral(", "))));
    for (const QString &argument : info->arguments) {
        if (on && arguments.value(argument).toString().isEmpty())
            return refuse(error, QStringLiteral("The fault \"%1\" needs \"%2\".").arg(name, argument));
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
