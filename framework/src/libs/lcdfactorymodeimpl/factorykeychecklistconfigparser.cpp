#include "factorykeychecklistconfigparser.h"

#include "log.h"
#include "xmlfile.h"

namespace LCD::FactoryModeImpl {

namespace {

constexpr XmlFile xmlFile("[FactoryKeyCheckListConfigParser]");

const QString keysTag = QStringLiteral("LcdKeys");
const QString keyTag = QStringLiteral("LcdKey");

// A value that isn't a decimal integer is read as 0.
QPair<int, QString> readKey(const QDomElement &element)
{
    return {element.attribute(QStringLiteral("Value"), QStringLiteral("0")).toInt(nullptr, 10),
            element.attribute(QStringLiteral("Name")).trimmed()};
}

}

const char *FactoryKeyCheckListConfigParser::defaultConfigFileName()
{
    return "factorykeychecklist.xml";
}

bool FactoryKeyCheckListConfigParser::load(const QString &dir, QList<QPair<int, QString>> &keys)
{
    const QString path = QStringLiteral("%1/%2").arg(dir, QLatin1String(defaultConfigFileName()));
    qCDebug(componentLog) << "[FactoryKeyCheckListConfigParser] load: Attempting to load from:" << path;
    return loadFromFile(path, keys);
}

bool FactoryKeyCheckListConfigParser::loadFromFile(const QString &path, QList<QPair<int, QString>> &keys) const
{
    const auto data = xmlFile.read(path);
    return data && parseDocument(*data, path, keys);
}

bool FactoryKeyCheckListConfigParser::parseDocument(const QByteArray &data, const QString &path,
                                                    QList<QPair<int, QString>> &keys) const
{
    const QDomDocument document = xmlFile.document(data, path);
    if (document.isNull())
        return false;
    const QDomElement root = document.documentElement();
    if (!XmlFile::isSupportedVersion(root)) {
        qCWarning(componentLog) << "[FactoryKeyCheckListConfigParser] XML version is not 1.0 in file:" << path;
        return false;
    }
    keys.clear();
    const QDomElement list = root.firstChildElement(keysTag);
    if (list.isNull()) {
        qCWarning(componentLog) << "[FactoryKeyCheckListConfigParser] No LcdKeys element found in:" << path;
        return false;
    }
    for (QDomElement child = list.firstChildElement(keyTag); !child.isNull(); child = child.nextSiblingElement(keyTag))
        keys.append(readKey(child));
    qCDebug(componentLog) << "[FactoryKeyCheckListConfigParser] Successfully loaded" << keys.count()
                          << "LcdKey(s) from:" << path;
    return true;
}

}
