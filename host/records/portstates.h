#pragma once

#include <QtCore/QJsonObject>
#include <QtCore/QMap>
#include <QtCore/QString>
#include <QtCore/QStringList>

namespace panelhost {

/// Which ports a link event tells of.
enum class PortFamily {
    None,
    Net,
    Usb
};

/// The family that the journal's event @p name tells of, None if it isn't a link event.
PortFamily portFamily(const QString &name);

/// What the records of a link event say: "net1" or "usb2" to "plugged", "unplugged" or "blocked". Records of hubs, and
/// those with impossible numbers, are left out.
QMap<QString, QString> portStates(PortFamily family, const QJsonObject &data);

/// The ports of @p states that aren't plugged.
QStringList portsDown(const QMap<QString, QString> &states);

}
