#include "device/keylist.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QSet>
#include <QtCore/QXmlStreamReader>

namespace panelhost {

QList<KeyState> readKeyList(const QString &directory)
{
    QFile file(QDir(directory).filePath(QStringLiteral("factorykeychecklist.xml")));
    // Opening a pipe would block.
    if (!QFileInfo(file).isFile() || !file.open(QIODevice::ReadOnly))
        return {};
    QList<KeyState> keys;
    QSet<int> seen;
    QXmlStreamReader xml(&file);
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement || xml.name() != QLatin1String("LcdKey"))
            continue;
        KeyState key;
        key.halKey = xml.attributes().value(QLatin1String("Value")).toInt();
        key.name = xml.attributes().value(QLatin1String("Name")).toString().trimmed();
        if (!seen.contains(key.halKey))
            keys << key;
        seen << key.halKey;
    }
    return keys;
}

}
