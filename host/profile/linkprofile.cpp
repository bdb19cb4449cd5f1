// The parts "net" and "usb" of a board profile.

#include "profile/profilereader.h"

#include "yaml/limits.h"

#include <net/if.h>

namespace panelhost {

namespace {

bool isInterfaceName(const QString &name)
{
    const QByteArray bytes = name.toUtf8();
    return !bytes.isEmpty() && bytes.size() < IFNAMSIZ && !name.contains(QLatin1Char('/'))
        && !name.contains(QLatin1Char(' ')) && !name.contains(QLatin1Char(':'));
}

// Returns the elements of a list with one element for each port.
QVector<YamlNode> ports(ProfileReader &reader, const YamlNode &value, const QString &expected)
{
    const auto items = value.items();
    if (!items.isEmpty() && items.size() <= limits::Ports)
        return items;
    reader.yaml.errorExpected(value, QStringLiteral("a list of one to %1 %2").arg(limits::Ports).arg(expected));
    return {};
}

QStringList readPaths(ProfileReader &reader, const YamlNode &node)
{
    const QString expected = QStringLiteral("the path of a USB port such as 1-1.2, or a list of paths");
    const auto paths = reader.yaml.texts(node, expected);
    if (!paths)
        return {};
    if (paths->isEmpty())
        reader.yaml.errorExpected(node, expected);
    for (const QString &path : *paths) {
        if (usbHubPortName(path).isEmpty())
            reader.yaml.errorExpected(node, expected);
    }
    return *paths;
}

}

void readNet(ProfileReader &reader, const YamlNode &value)
{
    QStringList &interfaces = reader.board.net.interfaces;
    const auto nodes = ports(reader, value, QStringLiteral("network interfaces"));
    for (const YamlNode &node : nodes) {
        const QString name = YamlReader::scalar(node);
        if (!isInterfaceName(name))
            reader.yaml.errorExpected(node, QStringLiteral("the name of a network interface such as eth0"));
        else if (interfaces.contains(name))
            reader.yaml.error(node, QStringLiteral("the interface \"%1\" is that of another port").arg(name));
        interfaces << name;
        reader.board.netWhere << reader.where(node);
    }
}

void readUsb(ProfileReader &reader, const YamlNode &value)
{
    QStringList seen;
    const auto nodes = ports(reader, value, QStringLiteral("USB ports"));
    for (const YamlNode &node : nodes) {
        const QStringList paths = readPaths(reader, node);
        for (const QString &path : paths) {
            if (seen.contains(path))
                reader.yaml.error(node, QStringLiteral("the path %1 is that of another port").arg(path));
            seen << path;
        }
        reader.board.usb.ports << paths;
    }
}

}
