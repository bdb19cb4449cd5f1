#include "playing/sessionfacts.h"

#include "session/devicenames.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDateTime>
#include <QtCore/QDir>
#include <QtCore/QSysInfo>

namespace panelhost {

namespace {

QString versionOf(const ComponentLibrary *library)
{
    if (!library || !library->pluginInfo())
        return QStringLiteral("none");
    const char *version = library->pluginInfo()->pluginVersion;
    return QString::fromUtf8(version ? version : "?") + QStringLiteral(", ") + library->path();
}

QString deviceText(const Session::Options &device)
{
    const QString tbar = device.tbarType == TBarType::Fader ? QStringLiteral("fader") : QStringLiteral("slider");
    return QStringLiteral("LCD %1x%2, language %3, T-Bar %4, %5 net ports, %6 USB ports")
        .arg(device.lcdSize.width())
        .arg(device.lcdSize.height())
        .arg(device.language, tbar)
        .arg(device.netPorts)
        .arg(device.usbPorts);
}

QString valueText(const QString &argument, const QVariant &value, const DeviceNames &names)
{
    const QString key = argument == QLatin1String("key") ? names.keys.key(value.toInt()) : QString();
    return key.isEmpty() ? value.toString() : key;
}

QString faultText(const QString &name, const QVariantMap &arguments, const DeviceNames &names)
{
    QStringList values;
    for (auto argument = arguments.begin(); argument != arguments.end(); ++argument)
        values << QStringLiteral("%1 %2").arg(argument.key(), valueText(argument.key(), argument.value(), names));
    return values.isEmpty() ? name : QStringLiteral("%1 (%2)").arg(name, values.join(QStringLiteral(", ")));
}

void addFaults(const QVector<Step> &steps, const DeviceNames &names, QStringList *texts)
{
    for (const Step &step : steps) {
        addFaults(step.steps, names, texts);
        for (const OperatorAction &action : step.actions) {
            QVariantMap arguments = action.arguments;
            const QString name = arguments.take(QStringLiteral("name")).toString();
            if (action.kind == OperatorAction::Kind::Fault && arguments.take(QStringLiteral("on")).toBool())
                texts->append(faultText(name, arguments, names));
        }
    }
}

// Those of the device and those that a step switches on.
QString faultsText(const Scenario &scenario)
{
    const DeviceNames names = deviceNamesOf(scenario.device);
    QStringList texts;
    for (const Session::InitialFault &fault : scenario.device.faults)
        texts << faultText(fault.name, fault.arguments, names);
    addFaults(scenario.steps, names, &texts);
    texts.removeDuplicates();
    return texts.isEmpty() ? QStringLiteral("none") : texts.join(QStringLiteral("; "));
}

}

QVector<SessionFact> sessionFacts(const Scenario &scenario, const Session *session)
{
    QVector<SessionFact> facts = {
        {QStringLiteral("Date"), QDateTime::currentDateTimeUtc().toString(Qt::ISODate)},
        {QStringLiteral("panelhost"), QCoreApplication::applicationVersion()},
        {QStringLiteral("Component"), versionOf(session ? &session->library() : nullptr)},
        {QStringLiteral("Repair pages"), versionOf(session ? session->pagesLibrary() : nullptr)},
        {QStringLiteral("System"),
         QStringLiteral("Qt %1, %2").arg(QString::fromLatin1(qVersion()), QSysInfo::prettyProductName())},
        {QStringLiteral("Device"), deviceText(scenario.device)},
        {QStringLiteral("Configuration"), QDir::cleanPath(shareDirectoryOf(scenario.device))},
        {QStringLiteral("Faults"), faultsText(scenario)},
    };
    if (!scenario.unit.isEmpty())
        facts.append({QStringLiteral("Unit"), scenario.unit});
    return facts;
}

}
