#include "records/portstates.h"

#include <QtCore/QJsonArray>

namespace panelhost {

namespace {

constexpr int UsbPortNode = 26;
constexpr int MaxPorts = 64;

QString stateText(bool plugged, bool blocked)
{
    if (blocked)
        return QStringLiteral("blocked");
    return plugged ? QStringLiteral("plugged") : QStringLiteral("unplugged");
}

}

PortFamily portFamily(const QString &name)
{
    if (name.startsWith(QLatin1String("lcdMemoryCacheNetworkPort.")))
        return PortFamily::Net;
    return name.startsWith(QLatin1String("lcdMemoryCacheNodeUSB.")) ? PortFamily::Usb : PortFamily::None;
}

QMap<QString, QString> portStates(PortFamily family, const QJsonObject &data)
{
    const bool isUsb = family == PortFamily::Usb;
    const QString form = isUsb ? QStringLiteral("usb%1") : QStringLiteral("net%1");
    const QJsonArray records = data.value(QLatin1String("records")).toArray();
    QMap<QString, QString> states;
    for (const QJsonValue &value : records) {
        const QJsonObject record = value.toObject();
        const int port = record.value(isUsb ? QLatin1String("portId") : QLatin1String("port")).toInt(-1);
        if (port < 0 || port >= MaxPorts)
            continue;
        if (isUsb && record.value(QLatin1String("nodeType")).toInt() != UsbPortNode)
            continue;
        const bool plugged = record.value(isUsb ? QLatin1String("linkActive") : QLatin1String("link")).toInt() != 0;
        const bool blocked = isUsb && record.value(QLatin1String("linkBlocked")).toInt() != 0;
        states.insert(form.arg(port + 1), stateText(plugged, blocked));
    }
    return states;
}

QStringList portsDown(const QMap<QString, QString> &states)
{
    QStringList down;
    for (auto state = states.begin(); state != states.end(); ++state) {
        if (state.value() != QLatin1String("plugged"))
            down << state.key();
    }
    return down;
}

}
