#include "check/menucheck.h"

#include "check/configfile.h"
#include "check/knowntitles.h"
#include "diagnostics/suggestion.h"

#include <QtCore/QHash>

namespace panelhost {

namespace {

const QString ItemTag = QStringLiteral("MenuItem");
const QString KeyAttribute = QStringLiteral("Key");

/// A MenuItem as the component understands it.
struct Item
{
    QDomElement element;
    QString key;
    QString tail;
    QString container;
    bool opensContainer = true; ///< false for a submenu: its key gives a title and nothing else
};

class MenuCheck
{
public:
    explicit MenuCheck(const QString &path) : m_file(path) { m_file.setVersionMessageNamesValue(true); }

    Diagnostics run();

private:
    void checkItems(const QDomElement &parent, int level);
    void checkKey(const Item &item);
    void checkContainer(const Item &item);

    ConfigFile m_file;
    QHash<QString, QDomElement> m_itemOfContainer;
};

QString containerOf(const QString &key, const QString &tail, int level)
{
    const bool isRepair = level == 2 && key.startsWith(QLatin1String("em.factorytest.repairmode."));
    return (isRepair ? QStringLiteral("container.factorytest.repairmode.%1") : QStringLiteral("container.%1"))
        .arg(tail.toLower());
}

Item itemOf(const QDomElement &element, int level)
{
    Item item;
    item.element = element;
    item.key = element.attribute(KeyAttribute);
    if (item.key.isEmpty())
        item.key = element.attribute(QStringLiteral("key"));
    item.tail = item.key.section(QLatin1Char('.'), -1);
    if (!item.key.isEmpty())
        item.container = containerOf(item.key, item.tail, level);
    item.opensContainer = level == 2 || element.firstChildElement(ItemTag).isNull();
    return item;
}

Diagnostics MenuCheck::run()
{
    if (!m_file.load())
        return m_file.diagnostics();
    m_file.validateAgainst(QStringLiteral("factorymenu.xsd"));
    const auto bar = m_file.list(QStringLiteral("MenuBar"));
    if (!bar.isNull() && bar.firstChildElement(ItemTag).isNull())
        m_file.warn(bar, QStringLiteral("No menu items found in MenuBar!"));
    checkItems(bar, 1);
    return m_file.diagnostics();
}

void MenuCheck::checkItems(const QDomElement &parent, int level)
{
    for (const auto &element : childrenOf(parent, ItemTag)) {
        const auto item = itemOf(element, level);
        checkKey(item);
        if (item.opensContainer)
            checkContainer(item);
        if (level == 1)
            checkItems(element, 2);
    }
}

void MenuCheck::checkKey(const Item &item)
{
    const auto &element = item.element;
    if (!element.hasAttribute(KeyAttribute) && !element.hasAttribute(QStringLiteral("key")))
        m_file.warn(element, QStringLiteral("MenuItem has no Key: it shows no title and opens nothing"));
    if (item.key.isEmpty())
        return;
    if (element.attribute(KeyAttribute).isEmpty())
        m_file.warn(element, QStringLiteral("found attribute \"key\" of MenuItem, expected \"Key\""));
    if (item.opensContainer && !item.tail.isEmpty() && !isKnownTitle(item.tail))
        m_file.warn(element,
                    QStringLiteral("unknown title \"%1\": the menu shows it unchanged").arg(item.tail)
                        + suggestionFor(item.tail, knownTitles().values()));
}

// A repeated key is reported by the schema.
void MenuCheck::checkContainer(const Item &item)
{
    if (item.container.isEmpty())
        return;
    const auto first = m_itemOfContainer.value(item.container);
    if (first.isNull())
        m_itemOfContainer.insert(item.container, item.element);
    else if (first.attribute(KeyAttribute).isEmpty() || first.attribute(KeyAttribute) != item.key)
        m_file.warn(item.element,
                    QStringLiteral("opens \"%1\", as does the item in line %2")
                        .arg(item.container)
                        .arg(m_file.locationOf(first).line));
}

}

Diagnostics checkMenu(const QString &path)
{
    return MenuCheck(path).run();
}

}
