#include "factorymenuconfigparser.h"

#include "log.h"
#include "xmlfile.h"

namespace LCD::FactoryModeImpl {

namespace {

constexpr XmlFile xmlFile("[FactoryMenuConfigParser]");

const QString menuTag = QStringLiteral("MenuBar");
const QString itemTag = QStringLiteral("MenuItem");

template <class Item>
Item readItem(const QDomElement &element)
{
    Item item;
    item.key = element.attribute(QStringLiteral("Key"));
    if (item.key.isEmpty())
        item.key = element.attribute(QStringLiteral("key"));
    if (item.key.isEmpty())
        return item;
    item.titleKey = item.key.mid(item.key.lastIndexOf(QLatin1Char('.')) + 1);
    item.containerKey = QStringLiteral("container.") + item.titleKey.toLower();
    return item;
}

FactoryMenuLevel2Item readLevel2Item(const QDomElement &element)
{
    auto item = readItem<FactoryMenuLevel2Item>(element);
    if (item.key.startsWith(QLatin1String("em.factorytest.repairmode.")))
        item.containerKey = QStringLiteral("container.factorytest.repairmode.") + item.titleKey.toLower();
    qCDebug(componentLog) << "[FactoryMenuConfigParser] Parsing Level2 item - Key:" << item.key
                          << "titleKey:" << item.titleKey << "containerKey:" << item.containerKey;
    return item;
}

FactoryMenuLevel1Item readLevel1Item(const QDomElement &element)
{
    auto item = readItem<FactoryMenuLevel1Item>(element);
    qCDebug(componentLog) << "[FactoryMenuConfigParser] Parsing Level1 item - Key:" << item.key
                          << "titleKey:" << item.titleKey << "containerKey:" << item.containerKey;
    for (QDomElement child = element.firstChildElement(itemTag); !child.isNull();
         child = child.nextSiblingElement(itemTag))
        item.children.append(readLevel2Item(child));
    if (!item.children.isEmpty())
        qCDebug(componentLog) << "[FactoryMenuConfigParser] Level1 item" << item.key << "has" << item.children.count()
                              << "children";
    return item;
}

void reportMissingMenu(const QDomElement &root, const QString &path)
{
    qCWarning(componentLog) << "[FactoryMenuConfigParser] No MenuBar element found in:" << path;
    qCWarning(componentLog) << "[FactoryMenuConfigParser] Root element has" << root.childNodes().count() << "children";
    for (QDomElement child = root.firstChildElement(); !child.isNull(); child = child.nextSiblingElement())
        qCWarning(componentLog) << "[FactoryMenuConfigParser] Child element:" << child.tagName();
}

}

const char *FactoryMenuConfigParser::defaultConfigFileName()
{
    return "factorymenu.xml";
}

bool FactoryMenuConfigParser::load(const QString &dir, QList<FactoryMenuLevel1Item> &items)
{
    const QString path = QStringLiteral("%1/%2").arg(dir, QLatin1String(defaultConfigFileName()));
    qCDebug(componentLog) << "[FactoryMenuConfigParser] load: Attempting to load from:" << path;
    return loadFromFile(path, items);
}

bool FactoryMenuConfigParser::loadFromFile(const QString &path, QList<FactoryMenuLevel1Item> &items)
{
    const auto data = xmlFile.read(path);
    return data && parseDocument(*data, path, items);
}

bool FactoryMenuConfigParser::parseDocument(const QByteArray &data, const QString &path,
                                            QList<FactoryMenuLevel1Item> &items) const
{
    const QDomDocument document = xmlFile.document(data, path);
    if (document.isNull())
        return false;
    const QDomElement root = document.documentElement();
    if (!XmlFile::isSupportedVersion(root)) {
        qCWarning(componentLog) << "[FactoryMenuConfigParser] XML version is not 1.0, got:"
                                << root.attribute(QStringLiteral("version")) << "in file:" << path;
        return false;
    }
    items.clear();
    const QDomElement menu = root.firstChildElement(menuTag);
    if (menu.isNull()) {
        reportMissingMenu(root, path);
        return false;
    }
    for (QDomElement child = menu.firstChildElement(itemTag); !child.isNull();
         child = child.nextSiblingElement(itemTag))
        items.append(readLevel1Item(child));
    qCDebug(componentLog) << "[FactoryMenuConfigParser] Successfully loaded" << items.count()
                          << "Level1 items from:" << path;
    if (items.isEmpty())
        qCWarning(componentLog) << "[FactoryMenuConfigParser] No menu items found in MenuBar!";
    return true;
}

}
