#pragma once

#include <QtCore/QJsonObject>
#include <QtCore/QMap>
#include <QtCore/QString>
#include <QtCore/QStringList>

namespace panelhost {

/// The kind of ports that a link event is about.
enum class PortFamily {
    None,
    Net,
    Usb
};

/// Returns the kind of ports that the journal's event @p name is about; None if it isn't a link event.
PortFamily portFamily(const QString &name);

/// Returns the states in the records of a link event, by port: "plugged", "unplugged" or "blocked" for a name such as
/// "net1" or "usb2". Records of hubs and records with invalid port numbers are left out.
QMap<QString, QString> portStates(PortFamily family, const QJsonObject &data);

/// Returns the names of the ports in @p states that aren't plugged.
QStringList portsDown(const QMap<QString, QString> &states);

}
