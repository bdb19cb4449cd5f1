#include "check/menucheck.h"

#include "check/configfile.h"
#include "check/knowntitles.h"

#include <QtCore/QHash>

namespace panelhost {

namespace {

const QString ItemTag = QStringLiteral("MenuItem");

/// What the component makes of one MenuItem.
struct Item
{
    QDomElement element;
    QString key;
    QString tail;
    QString container;
    bool hasChildren = false;
};

class MenuCheck
{
public:
    explicit MenuCheck(const QString &path) : m_file(path) { m_file.setVersionMessageNamesValue(true); }

    Findings run();

private:
    void checkItems(const QDomElement &parent, int level);
    void checkKey(const Item &item);
    void checkContainer(const Item &item);

    ConfigFile m_file;
    QHash<QString, int> m_lineOfContainer;
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
    item.key = element.attribute(QStringLiteral("Key"));
    if (item.key.isEmpty())
        item.key = element.attribute(QStringLiteral("key"));
    item.tail = item.key.section(QLatin1Char('.'), -1);
    if (!item.key.isEmpty())
        item.container = containerOf(item.key, item.tail, level);
    item.hasChildren = !element.firstChildElement(ItemTag).isNull();
    return item;
}

Findings MenuCheck::run()
{
    if (!m_file.load())
        return m_file.findings();
    const auto bar = m_file.list(QStringLiteral("MenuBar"));
    if (!bar.isNull() && bar.firstChildElement(ItemTag).isNull())
        m_file.warn(bar, QStringLiteral("No menu items found in MenuBar!"));
    checkItems(bar, 1);
    return m_file.findings();
}

void MenuCheck::checkItems(const QDomElement &parent, int level)
{
    for (const auto &element : childrenOf(parent, ItemTag)) {
        if (level > 2) {
            m_file.warn(element, QStringLiteral("MenuItem on a third level is ignored"));
            continue;
        }
        const auto item = itemOf(element, level);
        checkKey(item);
        if (level == 2 || !item.hasChildren)
            checkContainer(item);
        checkItems(element, level + 1);
    }
}

void MenuCheck::checkKey(const Item &item)
{
    const auto &element = item.element;
    if (item.key.isEmpty())
        return m_file.warn(element, QStringLiteral("MenuItem has an empty key: it shows no title and opens nothing"));
    if (element.attribute(QStringLiteral("Key")).isEmpty())
        m_file.warn(element, QStringLiteral("MenuItem gives its key as \"key\", expected \"Key\""));
    if (item.tail.isEmpty())
        m_file.warn(element, QStringLiteral("key \"%1\" ends in a dot: the item shows the whole key").arg(item.key));
    else if (!isKnownTitle(item.tail))
        m_file.warn(element, QStringLiteral("no title is known for \"%1\": it shows as it stands").arg(item.tail));
}

void MenuCheck::checkContainer(const Item &item)
{
    if (item.container.isEmpty())
        return;
    const int line = m_lineOfContainer.value(item.container);
    if (line > 0)
        m_file.warn(item.element,
                    QStringLiteral("opens \"%1\" as the item of line %2 does").arg(item.container).arg(line));
    else
        m_lineOfContainer.insert(item.container, m_file.placeOf(item.element).line);
}

}

Findings checkMenu(const QString &path)
{
    return MenuCheck(path).run();
}

}
